#pragma once

// What the dialogs that ask for passwords share. They check what can be checked without the diary
// and post WM_DIALOG_OK or WM_DIALOG_CANCEL; the loops of app/sign_in.h act on it.

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

}  // namespace lunara
