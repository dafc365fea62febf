#pragma once

// The dialog that asks for the old password and twice for a new one. Modeless, for `RunDialog`. It
// posts WM_DIALOG_OK when both new passwords are equal and pass `CheckLength`, and WM_DIALOG_CANCEL
// when it is cancelled. The caller checks the old password.

#include "dialogs/password_dialog.h"

namespace lunara {

class ChangePasswordDialog : public PasswordDialog {
  public:
    explicit ChangePasswordDialog(Window* owner = nullptr);
    ChangePasswordDialog(const ChangePasswordDialog&) = delete;
    ChangePasswordDialog& operator=(const ChangePasswordDialog&) = delete;
    /// Zeroes the three passwords.
    ~ChangePasswordDialog() override;

    void OnOK() override;
    void DoDataExchange(DataExchange& exchange) override;

    WCHAR oldPassword[NameCapacity] = {};
    WCHAR newPassword[NameCapacity] = {};
    WCHAR confirmation[NameCapacity] = {};

  protected:
    bool IsPasswordEdit(int controlId) const override;
};

}  // namespace lunara
