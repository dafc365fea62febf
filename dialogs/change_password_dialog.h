#pragma once

// The dialog that asks for the old password and twice for a new one. Posts WM_DIALOG_OK or
// WM_DIALOG_CANCEL.

#include "dialogs/password_dialog.h"

namespace lunara {

class ChangePasswordDialog : public PasswordDialog {
  public:
    explicit ChangePasswordDialog(Window* owner = nullptr);
    ChangePasswordDialog(const ChangePasswordDialog&) = delete;
    ChangePasswordDialog& operator=(const ChangePasswordDialog&) = delete;
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
