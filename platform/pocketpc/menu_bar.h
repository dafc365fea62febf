#pragma once

// The menu bar: on the device a bar of the shell at the bottom of the screen, here a toolbar at the
// bottom of its parent.
//
// The RCDATA resource that describes a bar is a row of 16-bit words:
//
//   menu id, number of buttons, and for each button four words:
//     image     index into the bar's bitmap, or MENU_BAR_NO_IMAGE
//     command   sent with WM_COMMAND when the button is tapped
//     kind      MENU_BAR_DROP_DOWN: opens the first pop-up of the menu; MENU_BAR_CHECK: stays down
//     text      string id of the label, 0 for none
//
// (The constants stand in resources/ids.h.)

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/win32.h"

// NOLINTBEGIN(readability-identifier-naming): this is the shell's own spelling.

/// Sent to a menu bar: lParam is the id of a drop-down button, the result its HMENU (null for other
/// ids). The menu belongs to the bar.
inline constexpr UINT SHCMBM_GETSUBMENU = WM_USER + 401;

// NOLINTEND(readability-identifier-naming)

namespace lunara {

struct MenuBarButton {
    std::uint16_t image;
    std::uint16_t command;
    std::uint16_t kind;
    std::uint16_t text;
};

struct MenuBarDescription {
    std::uint16_t menu = 0;
    std::vector<MenuBarButton> buttons;
};

/// Reads a description; nothing when the words are fewer than it says or a kind is unknown.
std::optional<MenuBarDescription> ReadMenuBarDescription(std::span<const std::uint16_t> words);

}  // namespace lunara
