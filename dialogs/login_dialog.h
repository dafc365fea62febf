#pragma once

// The dialog that asks for a user name and a password. Modeless, for `RunDialog`. It posts
// WM_DIALOG_OK when the name is not empty and the password passes `CheckLength`, and
// WM_DIALOG_CANCEL when it is cancelled. The caller tries to load the diary.

#include "dialogs/password_dialog.h"

namespace lunara {

class LoginDialog : public PasswordDialog {
  public:
    explicit LoginDialog(Window* owner = nullptr);
    LoginDialog(const LoginDialog&) = delete;
    LoginDialog& operator=(const LoginDialog&) = delete;
    /// Zeroes the password.
    ~LoginDialog() override;

    BOOL OnInitDialog() override;
    void OnOK() override;
    void DoDataExchange(DataExchange& exchange) override;

    /// Shows the name read-only and asks for the password alone. Set before the dialog is created.
    bool nameIsFixed = false;
    WCHAR userName[NameCapacity] = TEXT("Unknown");
    WCHAR password[NameCapacity] = {};

  protected:
    bool IsPasswordEdit(int controlId) const override;
};

}  // namespace lunara
