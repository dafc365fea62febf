#pragma once

// The dialog that asks for a user name and a password. Posts WM_DIALOG_OK or WM_DIALOG_CANCEL.

#include "dialogs/password_dialog.h"

namespace lunara {

class LoginDialog : public PasswordDialog {
  public:
    explicit LoginDialog(Window* owner = nullptr);
    LoginDialog(const LoginDialog&) = delete;
    LoginDialog& operator=(const LoginDialog&) = delete;
    ~LoginDialog() override;

    BOOL OnInitDialog() override;
    void OnOK() override;
    void DoDataExchange(DataExchange& exchange) override;

    /// The name is shown, but not to be changed: only the password is asked for.
    bool nameIsFixed = false;
    WCHAR userName[NameCapacity] = TEXT("Unknown");
    WCHAR password[NameCapacity] = {};

  protected:
    bool IsPasswordEdit(int controlId) const override;
};

}  // namespace lunara
