// The input panel's functions on a desktop, which has none: they store the flags and return them.

#include "platform/pocketpc/aygshell.h"

namespace {

DWORD panelFlags = SIPF_DOCKED;

}  // namespace

BOOL SHSipInfo(UINT action, UINT /*parameter*/, void* info, UINT /*profile*/) {
    auto* record = static_cast<SIPINFO*>(info);
    if (record == nullptr || record->cbSize != sizeof(SIPINFO)) {
        return FALSE;
    }
    switch (action) {
        case SPI_GETSIPINFO:
            record->fdwFlags = panelFlags;
            ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &record->rcVisibleDesktop, 0);
            record->rcSipRect = RECT{};
            return TRUE;
        case SPI_SETSIPINFO:
            panelFlags = record->fdwFlags;
            return TRUE;
        default:
            return FALSE;
    }
}

BOOL SHSipPreference(HWND window, SIPSTATE state) {
    if (window == nullptr) {
        return FALSE;
    }
    switch (state) {
        case SIP_UP:
            panelFlags |= SIPF_ON;
            break;
        case SIP_DOWN:
        case SIP_FORCEDOWN:
            panelFlags &= ~SIPF_ON;
            break;
        default:
            break;
    }
    return TRUE;
}

BOOL SHInputDialog(HWND /*dialog*/, UINT /*message*/, WPARAM /*wParam*/) {
    // Nothing to raise: on a desktop the user types on a keyboard.
    return FALSE;
}
