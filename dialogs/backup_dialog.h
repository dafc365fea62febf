#pragma once

// The dialogs of backup and restore. Both are modal and end with 1 (do it) or 2.

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
