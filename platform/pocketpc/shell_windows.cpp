#include <cstdint>

#include "platform/pocketpc/aygshell.h"

namespace {

/// Parameter of TakeEnabledPopup: a search for a visible, enabled window with root owner `root`.
struct Search {
    HWND root;
    HWND found;
};

/// EnumWindows callback; stops at the first match.
BOOL CALLBACK TakeEnabledPopup(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (::GetAncestor(window, GA_ROOTOWNER) != search.root || ::IsWindowVisible(window) == FALSE ||
        ::IsWindowEnabled(window) == FALSE) {
        return TRUE;
    }
    search.found = window;
    return FALSE;
}

/// The window to activate in place of `window`. A disabled window has a dialog over it, which may
/// have a dialog of its own: the enabled one is meant.
HWND WindowInFront(HWND window) {
    if (::IsWindowEnabled(window) != FALSE) {
        return window;
    }
    Search search{window, window};
    ::EnumWindows(&TakeEnabledPopup, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

}  // namespace

BOOL SHHandleWMSettingChange(HWND window, WPARAM /*wParam*/, LPARAM /*lParam*/,
                             SHACTIVATEINFO* info) {
    // On the device the window moves out of the input panel's way; a desktop has no panel.
    return window != nullptr && info != nullptr && info->cbSize == sizeof(SHACTIVATEINFO) ? TRUE
                                                                                          : FALSE;
}

BOOL SHSetForegroundWindow(HWND window) {
    const auto bits = reinterpret_cast<std::uintptr_t>(window);
    if ((bits & 1U) == 0) {
        return ::SetForegroundWindow(window);
    }
    const auto target = reinterpret_cast<HWND>(bits & ~std::uintptr_t{1});
    if (::IsIconic(target) != FALSE) {
        ::ShowWindow(target, SW_RESTORE);
    }
    return ::SetForegroundWindow(WindowInFront(target));
}
