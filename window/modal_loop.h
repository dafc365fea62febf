#pragma once

// Dialogs that are modal to the user but modeless to the system. OK does not close such a dialog:
// it posts WM_DIALOG_OK or WM_DIALOG_CANCEL to itself, and the message loop in `RunDialog` asks the
// caller whether the values are accepted.

#include <functional>

#include "window/dialog.h"

namespace lunara {

// Private messages that tell the main window when to hide and show the menu bar's buttons.
// NOLINTBEGIN(readability-identifier-naming): spelt like the system's own messages.
/// Sent to the main window before a dialog is shown. wParam and lParam: 0. Result: 0.
inline constexpr UINT WM_ENTERDIALOG = WM_USER + 3;
/// Sent to the main window after a dialog has ended. wParam and lParam: 0. Result: 0.
inline constexpr UINT WM_EXITDIALOG = WM_USER + 4;
// NOLINTEND(readability-identifier-naming)

/// Sends WM_ENTERDIALOG to the main window, and WM_EXITDIALOG at the end of the scope. Put it
/// around `Dialog::DoModal`; `RunDialog` sends both messages itself.
class DialogScope {
  public:
    explicit DialogScope(const Window& mainWindow) : main(mainWindow.Handle()) {
        ::SendMessageW(main, WM_ENTERDIALOG, 0, 0);
    }
    DialogScope(const DialogScope&) = delete;
    DialogScope& operator=(const DialogScope&) = delete;
    ~DialogScope() { ::SendMessageW(main, WM_EXITDIALOG, 0, 0); }

  private:
    HWND main;
};

/// Creates `dialog` from template `templateId`, shows it over the disabled main window `main`, and
/// runs a message loop until the dialog ends. Each WM_DIALOG_OK calls `accept`: true ends the
/// dialog, false leaves it open. WM_DIALOG_CANCEL calls `cancelled`, if there is one, and ends the
/// dialog. Returns 1 when accepted; 0 when cancelled, when the dialog could not be created or was
/// destroyed, or at WM_QUIT, which is posted again for the outer loop. Calls may be nested.
int RunDialog(Window& main, Dialog& dialog, UINT templateId, const std::function<bool()>& accept,
              const std::function<void()>& cancelled = {});

}  // namespace lunara
