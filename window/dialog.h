#pragma once

// Dialogs created from templates in the program's resources, modal or modeless. A dialog covers the
// client area of its owner unless `fullScreen` is cleared before it is created.

#include "window/window.h"

namespace lunara {

class Dialog : public Window {
  public:
    /// `shapeId`: resource id of the template that `DoModal` uses. A null `owner` means the
    /// program's main window.
    explicit Dialog(UINT shapeId, Window* owner = nullptr);

    /// Runs the dialog until it ends. Returns its end code: 1 (OK), 2 (Cancel), or -1 when it could
    /// not be created.
    virtual INT_PTR DoModal();
    /// Handles WM_INITDIALOG: loads the controls from the fields (a failed load ends the dialog
    /// with -1) and lays a full-screen dialog over its owner. Returns TRUE, so that the dialog
    /// manager sets the focus; an override returns FALSE when it has set the focus itself.
    virtual BOOL OnInitDialog();
    /// Handles IDOK: reads the controls into the fields and ends the dialog with 1.
    virtual void OnOK();
    /// Handles IDCANCEL: ends the dialog with 2 and leaves the fields alone.
    virtual void OnCancel();

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    /// Creates `dialog` from template `shapeId`, not from the one its constructor was given, and
    /// binds it. Returns false when that fails. The window is hidden unless its template has
    /// WS_VISIBLE.
    static bool CreateModeless(Dialog& dialog, UINT shapeId, Window* owner = nullptr);

    bool fullScreen = true;

  private:
    Window* parent;
    UINT templateId;
};

}  // namespace lunara
