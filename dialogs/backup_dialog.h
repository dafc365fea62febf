#pragma once

// The dialog that asks for the name of a backup. Modal; ends with IDOK (make the backup) or
// IDCANCEL.

#include <array>

#include "platform/text.h"
#include "window/dialog.h"

namespace lunara {

class BackupDialog : public Dialog {
  public:
    /// Presets the name with a date stamp of the current time, and ticks "save first".
    explicit BackupDialog(Window* owner = nullptr);

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void DoDataExchange(DataExchange& exchange) override;

    int saveFirst = 1;  // 1 (ticked) or 0: whether to save unsaved entries before the backup
    std::array<WCHAR, PathCapacity> backupName{};  // as typed, not checked for a valid path
};

}  // namespace lunara
