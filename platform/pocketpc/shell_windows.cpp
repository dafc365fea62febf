#include <cstdint>

#include "platform/pocketpc/aygshell.h"

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
    // A disabled window is behind a dialog of its own, and that is where the user has to go on.
    return ::SetForegroundWindow(::GetLastActivePopup(target));
}
