#pragma once

// The two dialogs that ask for passwords. They check what can be checked without the diary and post
// WM_DIALOG_OK or WM_DIALOG_CANCEL; users.h has the loops that act on it.

#include "window/dialog.h"

namespace lunara {

/// Units of a user name or password field, terminator included.
inline constexpr int NameCapacity = 32;
inline constexpr int LeastPasswordLength = 4;

/// A dialog with password fields. Word completion of the input panel is off while one of them has
/// the focus.
class PasswordDialog : public Dialog {
  public:
    using Dialog::Dialog;

    BOOL OnInitDialog() override;
    void OnCancel() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    /// Loads the controls from the fields and puts the focus on a control.
    void LoadAndFocus(int controlId);

  protected:
    virtual bool IsPasswordEdit(int controlId) const = 0;
    void Warn(const WCHAR* text);
    /// Whether the password may be used: empty or long enough. Warns if not, and goes to
    /// `controlId`.
    bool CheckLength(const WCHAR* password, int controlId);

  private:
    void OnPasswordFocus(bool gained);
    void KeepPanelFlags();

    DWORD panelFlags = 0;  // as they were before completion was turned off
    bool completionOff = false;
};

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
