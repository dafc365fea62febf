#include "dialogs/change_password_dialog.h"

#include "platform/text.h"
#include "resources/ids.h"
#include "window/data_exchange.h"

namespace lunara {

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
