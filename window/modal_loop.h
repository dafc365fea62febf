#pragma once

// Dialogs that stay open until their owner is content: the dialog posts WM_DIALOG_OK or
// WM_DIALOG_CANCEL, and the loop of its owner acts on them.

#include <functional>

#include "window/dialog.h"

namespace lunara {

/// What such a dialog needs of the main window around it.
class DialogHost {
  public:
    DialogHost() = default;
    DialogHost(const DialogHost&) = delete;
    DialogHost& operator=(const DialogHost&) = delete;
    virtual ~DialogHost() = default;

    virtual Window& Frame() = 0;
    virtual void HideButtons() = 0;
    virtual void ShowButtons() = 0;
};

/// Shows `dialog` (template `templateId`) over the disabled main window and runs messages until it
/// is answered. `accept` is asked at each WM_DIALOG_OK whether that ends the loop; `cancelled` is
/// told of WM_DIALOG_CANCEL, which does. Returns 1 when it was accepted, 0 when it was cancelled,
/// could not be made, was destroyed, or the program ends (the quit message is left for the outer
/// loop).
int RunDialog(DialogHost& host, Dialog& dialog, UINT templateId,
              const std::function<bool()>& accept, const std::function<void()>& cancelled = {});

}  // namespace lunara
