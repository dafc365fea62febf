#include "dialogs/password_dialog.h"

#include <array>

#include "platform/pocketpc/aygshell.h"
#include "platform/text.h"
#include "resources/ids.h"
#include "window/data_exchange.h"
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
    // The panel looks at its flags only when it comes up.
    SHSipPreference(dialog, SIP_FORCEDOWN);
    SHSipPreference(dialog, SIP_UP);
}

}  // namespace

// ---- PasswordDialog ----

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
    // A dialog that comes up with a password field gives it the focus while it is still being set
    // up, and once more when it is shown. The flags then are this dialog's own already.
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

// ---- LoginDialog ----

LoginDialog::LoginDialog(Window* owner) : PasswordDialog(IDD_LOGIN, owner) {}

LoginDialog::~LoginDialog() { ::SecureZeroMemory(password, sizeof(password)); }

BOOL LoginDialog::OnInitDialog() {
    const BOOL result = PasswordDialog::OnInitDialog();
    if (!nameIsFixed) {
        return result;
    }
    ::SendDlgItemMessageW(Handle(), IDC_USER_NAME, EM_SETREADONLY, TRUE, 0);
    // Read-only alone looks like a field to type into.
    ::EnableWindow(::GetDlgItem(Handle(), IDC_USER_NAME), FALSE);
    ::SetFocus(::GetDlgItem(Handle(), IDC_PASSWORD));
    return FALSE;  // the focus is where it belongs
}

void LoginDialog::OnOK() {
    UpdateData(true);
    if (userName[0] == 0) {
        Warn(TEXT("User name should not be empty"));
        // To the password, not to the name: the panel is set up for the password then.
        ::SetFocus(::GetDlgItem(Handle(), IDC_PASSWORD));
    } else if (CheckLength(password, IDC_PASSWORD)) {
        ::PostMessageW(Handle(), WM_DIALOG_OK, 0, 0);
    }
}

void LoginDialog::DoDataExchange(DataExchange& exchange) {
    ExchangeText(exchange, IDC_USER_NAME, userName, NameCapacity);
    LimitText(exchange, userName, NameCapacity - 1);
    ExchangeText(exchange, IDC_PASSWORD, password, NameCapacity);
    LimitText(exchange, password, NameCapacity - 1);
}

bool LoginDialog::IsPasswordEdit(int controlId) const { return controlId == IDC_PASSWORD; }

// ---- ChangePasswordDialog ----

ChangePasswordDialog::ChangePasswordDialog(Window* owner)
    : PasswordDialog(IDD_CHANGE_PASSWORD, owner) {}

ChangePasswordDialog::~ChangePasswordDialog() {
    ::SecureZeroMemory(oldPassword, sizeof(oldPassword));
    ::SecureZeroMemory(newPassword, sizeof(newPassword));
    ::SecureZeroMemory(confirmation, sizeof(confirmation));
}

void ChangePasswordDialog::OnOK() {
    UpdateData(true);
    if (WideView(newPassword) != WideView(confirmation)) {
        Warn(TEXT("New passwords do not match!"));
        newPassword[0] = 0;
        confirmation[0] = 0;
        LoadAndFocus(IDC_NEW_PASSWORD);
    } else if (CheckLength(newPassword, IDC_NEW_PASSWORD)) {
        ::PostMessageW(Handle(), WM_DIALOG_OK, 0, 0);
    }
}

void ChangePasswordDialog::DoDataExchange(DataExchange& exchange) {
    ExchangeText(exchange, IDC_OLD_PASSWORD, oldPassword, NameCapacity);
    LimitText(exchange, oldPassword, NameCapacity - 1);
    ExchangeText(exchange, IDC_NEW_PASSWORD, newPassword, NameCapacity);
    LimitText(exchange, newPassword, NameCapacity - 1);
    ExchangeText(exchange, IDC_CONFIRM_PASSWORD, confirmation, NameCapacity);
    LimitText(exchange, confirmation, NameCapacity - 1);
}

bool ChangePasswordDialog::IsPasswordEdit(int controlId) const {
    return controlId == IDC_OLD_PASSWORD || controlId == IDC_NEW_PASSWORD ||
           controlId == IDC_CONFIRM_PASSWORD;
}

}  // namespace lunara
