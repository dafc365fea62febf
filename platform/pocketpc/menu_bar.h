#pragma once

// The menu bar: on the device, a bar of the shell at the bottom of the screen; here, a toolbar
// along the bottom edge of its parent window. SHCreateMenuBar (aygshell.h) creates it.
//
// The RCDATA resource that describes a bar is a sequence of 16-bit words:
//
//   menu id, number of buttons, and for each button four words:
//     image     index into the bar's bitmap, or MENU_BAR_NO_IMAGE
//     command   id that WM_COMMAND carries when the button is tapped
//     kind      MENU_BAR_DROP_DOWN: opens the first pop-up of the menu;
//               MENU_BAR_CHECK: a check button, toggled by each tap
//     text      string id of the label, 0 for none
//
// The MENU_BAR_ constants are defined in resources/ids.h.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/win32.h"

// NOLINTBEGIN(readability-identifier-naming): this is the shell's own spelling.

/// Sent to a menu bar to get the pop-up menu of a drop-down button. wParam: 0. lParam: the
/// button's command id. Result: the HMENU, which the bar owns; null for any other id.
inline constexpr UINT SHCMBM_GETSUBMENU = WM_USER + 401;

// NOLINTEND(readability-identifier-naming)

namespace lunara {

/// One button, with the four words of the description.
struct MenuBarButton {
    std::uint16_t image;
    std::uint16_t command;
    std::uint16_t kind;
    std::uint16_t text;
};

/// A description: the menu's resource id, and the buttons from left to right.
struct MenuBarDescription {
    std::uint16_t menu = 0;
    std::vector<MenuBarButton> buttons;
};

/// Parses a description; nullopt when there are fewer words than its counts demand or a kind is
/// unknown. Further words are ignored.
std::optional<MenuBarDescription> ReadMenuBarDescription(std::span<const std::uint16_t> words);

}  // namespace lunara
