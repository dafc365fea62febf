#pragma once

// Base of the dialogs that ask for passwords. The dialogs check what needs no diary (the length,
// and that a new password is repeated correctly) and post WM_DIALOG_OK or WM_DIALOG_CANCEL.
// `RunDialog` takes these messages; app/sign_in.cpp, which calls it, checks the password against
// the diary.

#include "window/dialog.h"

namespace lunara {

/// Size of a user name or password in UTF-16 units, terminator included.
inline constexpr int NameCapacity = 32;
/// Shortest password that is not empty, in UTF-16 units. An empty password is allowed.
inline constexpr int LeastPasswordLength = 4;

/// A dialog with password fields. While one of them has the focus, the input panel's word
/// completion is turned off.
class PasswordDialog : public Dialog {
  public:
    using Dialog::Dialog;

    BOOL OnInitDialog() override;
    void OnCancel() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    /// Loads the controls from the fields and sets the focus to `controlId`.
    void LoadAndFocus(int controlId);

  protected:
    /// Whether `controlId` is one of the dialog's password fields.
    virtual bool IsPasswordEdit(int controlId) const = 0;
    /// Shows `text` in a message box over the dialog.
    void Warn(const WCHAR* text);
    /// Returns whether `password` is empty or at least LeastPasswordLength units long. If not,
    /// warns the user and sets the focus to `controlId`.
    bool CheckLength(const WCHAR* password, int controlId);

  private:
    /// A password field has gained or lost the focus: turns word completion off or back on.
    void OnPasswordFocus(bool gained);
    /// Saves the input panel's flags in `panelFlags` unless completion is off already.
    void KeepPanelFlags();

    DWORD panelFlags = 0;  // the input panel's flags before completion was turned off
    bool completionOff = false;
};

}  // namespace lunara
