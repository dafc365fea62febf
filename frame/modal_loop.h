#pragma once

// Dialogs that stay open until their owner is content: the dialog posts WM_DIALOG_OK or
// WM_DIALOG_CANCEL, and the loop of its owner acts on them.

#include <functional>

#include "frame/dialog.h"

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
/// is answered. `accept` is asked at each WM_DIALOG_OK whether that ends the loop. Returns 1 then,
/// 0 when the dialog was cancelled, could not be made, or the program ends (the quit message is
/// left for the outer loop).
int RunDialog(DialogHost& host, Dialog& dialog, UINT templateId,
              const std::function<bool()>& accept);

}  // namespace lunara
