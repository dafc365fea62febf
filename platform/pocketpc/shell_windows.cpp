#include <cstdint>

#include "platform/pocketpc/aygshell.h"

namespace {

struct Search {
    HWND root;
    HWND found;
};

BOOL CALLBACK TakeEnabledPopup(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (::GetAncestor(window, GA_ROOTOWNER) != search.root || ::IsWindowVisible(window) == FALSE ||
        ::IsWindowEnabled(window) == FALSE) {
        return TRUE;
    }
    search.found = window;
    return FALSE;
}

/// A disabled window is behind a dialog, or a dialog's dialog, and that is where the user goes on.
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
    // The record's bits follow the input panel on the device; without a panel nothing moves.
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
