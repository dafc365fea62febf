#include "dialogs/password_dialog.h"

#include <array>

#include "platform/pocketpc/aygshell.h"
#include "platform/text.h"
#include "window/messages.h"

namespace lunara {
namespace {

constexpr std::size_t MessageCapacity = 128;

SIPINFO PanelInfo() {
    SIPINFO info{};
    info.cbSize = sizeof(info);
    SHSipInfo(SPI_GETSIPINFO, 0, &info, 0);
    return info;
}

void SetPanelFlags(HWND dialog, DWORD flags) {
    SIPINFO info = PanelInfo();
    info.fdwFlags = flags;
    SHSipInfo(SPI_SETSIPINFO, 0, &info, 0);
    // The input panel reads its flags only when it is raised, so lower and raise it.
    SHSipPreference(dialog, SIP_FORCEDOWN);
    SHSipPreference(dialog, SIP_UP);
}

}  // namespace

BOOL PasswordDialog::OnInitDialog() {
    const BOOL result = Dialog::OnInitDialog();
    KeepPanelFlags();
    return result;
}

void PasswordDialog::OnCancel() { ::PostMessageW(Handle(), WM_DIALOG_CANCEL, 0, 0); }

void PasswordDialog::LoadAndFocus(int controlId) {
    UpdateData(false);
    ::SetFocus(::GetDlgItem(Handle(), controlId));
}

void PasswordDialog::Warn(const WCHAR* text) {
    ShowText(Handle(), text, CaptionWarning, MB_ICONEXCLAMATION);
}

bool PasswordDialog::CheckLength(const WCHAR* password, int controlId) {
    const std::size_t length = WideView(password).size();
    if (length == 0 || length >= LeastPasswordLength) {
        return true;
    }
    std::array<WCHAR, MessageCapacity> text{};
    FormatText(text.data(), text.size(), TEXT("Password should be at least %d long if specified!"),
               LeastPasswordLength);
    Warn(text.data());
    ::SetFocus(::GetDlgItem(Handle(), controlId));
    return false;
}

void PasswordDialog::KeepPanelFlags() {
    // A password field that is the first control gets the focus twice: during WM_INITDIALOG and
    // when the dialog is shown. The second time, the current flags are already those of this
    // dialog.
    if (!completionOff) {
        panelFlags = PanelInfo().fdwFlags;
    }
}

void PasswordDialog::OnPasswordFocus(bool gained) {
    if (gained) {
        KeepPanelFlags();
        SetPanelFlags(Handle(), panelFlags | SIPF_DISABLECOMPLETION);
    } else {
        SetPanelFlags(Handle(), panelFlags);
    }
    completionOff = gained;
}

bool PasswordDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    SHInputDialog(Handle(), message, wParam);
    if (message == WM_COMMAND && IsPasswordEdit(LOWORD(wParam)) &&
        (HIWORD(wParam) == EN_SETFOCUS || HIWORD(wParam) == EN_KILLFOCUS)) {
        OnPasswordFocus(HIWORD(wParam) == EN_SETFOCUS);
        if (result != nullptr) {
            *result = 0;
        }
        return true;
    }
    return Dialog::OnMessage(message, wParam, lParam, result);
}

}  // namespace lunara
