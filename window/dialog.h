#pragma once

// Dialogs made from templates, modal and modeless, full-screen unless told otherwise.

#include "window/window.h"

namespace lunara {

class Dialog : public Window {
  public:
    /// `shapeId` is the template's resource id; `owner` null means the program's main window.
    explicit Dialog(UINT shapeId, Window* owner = nullptr);

    /// Runs the dialog and returns its end code: 1 OK, 2 Cancel, -1 when it could not be made.
    virtual INT_PTR DoModal();
    /// Loads the controls from the fields (failure ends the dialog with -1) and, for a full-screen
    /// dialog, lays it over the main window. Returns TRUE.
    virtual BOOL OnInitDialog();
    /// Reads the controls into the fields and ends with 1.
    virtual void OnOK();
    /// Ends with 2 and reads nothing.
    virtual void OnCancel();

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    /// Whether a dialog window was made; it is not visible yet unless its template says so.
    static bool CreateModeless(Dialog& dialog, UINT shapeId, Window* owner = nullptr);

    bool fullScreen = true;

  private:
    Window* parent;
    UINT templateId;
};

}  // namespace lunara
