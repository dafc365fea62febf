#pragma once

// The dialog that chooses a backup to restore. Modal; ends with 1 (restore it) or 2.

#include <array>

#include "platform/text.h"
#include "window/dialog.h"

namespace lunara {

/// Lists the backups of one user and deletes them on request. Without any it says so and ends.
class RestoreDialog : public Dialog {
  public:
    /// `folder`: the user's backups, a sub-folder each.
    explicit RestoreDialog(WideView folder, Window* owner = nullptr);

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void DoDataExchange(DataExchange& exchange) override;

    /// Long enough for any folder's name.
    std::array<WCHAR, PathCapacity> backupName{};

  private:
    void FillList();
    void OnDeleteCurrent();
    void SayThereAreNone();
    HWND List() const;

    WideString backupsFolder;
};

}  // namespace lunara
