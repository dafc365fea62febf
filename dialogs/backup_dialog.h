#pragma once

// The dialog that names a backup. Modal; ends with 1 (make it) or 2.

#include <array>

#include "platform/text.h"
#include "window/dialog.h"

namespace lunara {

class BackupDialog : public Dialog {
  public:
    /// The name is the date stamp of the moment, the box is ticked.
    explicit BackupDialog(Window* owner = nullptr);

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void DoDataExchange(DataExchange& exchange) override;

    int saveFirst = 1;
    std::array<WCHAR, PathCapacity> backupName{};
};

}  // namespace lunara
