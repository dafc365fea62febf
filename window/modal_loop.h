#pragma once

// Modeless dialogs that behave like modal ones but stay open until their owner accepts: the dialog
// posts WM_DIALOG_OK or WM_DIALOG_CANCEL, and the loop that shows it acts on them.

#include <functional>

#include "window/dialog.h"

namespace lunara {

// Sent to the main window when a dialog comes up over it and when the dialog is gone, so that it
// can hide and show what must not be used meanwhile. Both parameters and the result are 0.
// NOLINTBEGIN(readability-identifier-naming): spelt like the system's own messages.
inline constexpr UINT WM_ENTERDIALOG = WM_USER + 3;
inline constexpr UINT WM_EXITDIALOG = WM_USER + 4;
// NOLINTEND(readability-identifier-naming)

/// Sends WM_ENTERDIALOG, and WM_EXITDIALOG at the end of the scope: for a modal dialog.
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

/// Shows `dialog` (template `templateId`) over the disabled main window `main` and runs messages
/// until it is answered. At each WM_DIALOG_OK `accept` is asked whether the loop ends;
/// WM_DIALOG_CANCEL calls `cancelled` and ends it. Returns 1 when the dialog was accepted; 0 when
/// it was cancelled, could not be created, was destroyed, or the program ends (WM_QUIT is posted
/// again for the outer loop).
int RunDialog(Window& main, Dialog& dialog, UINT templateId, const std::function<bool()>& accept,
              const std::function<void()>& cancelled = {});

}  // namespace lunara
