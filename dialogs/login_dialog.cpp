#include "dialogs/login_dialog.h"

#include "resources/ids.h"
#include "window/data_exchange.h"

namespace lunara {

LoginDialog::LoginDialog(Window* owner) : PasswordDialog(IDD_LOGIN, owner) {}

LoginDialog::~LoginDialog() { ::SecureZeroMemory(password, sizeof(password)); }

BOOL LoginDialog::OnInitDialog() {
    const BOOL result = PasswordDialog::OnInitDialog();
    if (!nameIsFixed) {
        return result;
    }
    ::SendDlgItemMessageW(Handle(), IDC_USER_NAME, EM_SETREADONLY, TRUE, 0);
    // Disabled, too: a read-only field alone looks like one to type into.
    ::EnableWindow(::GetDlgItem(Handle(), IDC_USER_NAME), FALSE);
    ::SetFocus(::GetDlgItem(Handle(), IDC_PASSWORD));
    return FALSE;  // the focus is set
}

void LoginDialog::OnOK() {
    UpdateData(true);
    if (userName[0] == 0) {
        Warn(TEXT("User name should not be empty"));
        // The focus goes to the password field, not to the empty name: gaining it turns the input
        // panel's word completion off. Deliberate.
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

}  // namespace lunara
