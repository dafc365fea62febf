#pragma once

// The dialog that chooses a backup to restore. Modal; ends with IDOK (restore it) or IDCANCEL.

#include <array>

#include "platform/text.h"
#include "window/dialog.h"

namespace lunara {

/// Lists the backups of one user, and deletes a backup on request. When there are none, or none any
/// more, it says so and ends with IDCANCEL.
class RestoreDialog : public Dialog {
  public:
    /// `folder`: the user's backups folder, with a sub-folder for each backup. Empty when the user
    /// has none; the list is empty then.
    explicit RestoreDialog(WideView folder, Window* owner = nullptr);

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void DoDataExchange(DataExchange& exchange) override;

    /// The chosen backup: the name of a sub-folder, terminated.
    std::array<WCHAR, PathCapacity> backupName{};

  private:
    void FillList();
    /// Deletes the selected backup with its files and removes it from the list, even when files
    /// stay. Says which files stay.
    void OnDeleteCurrent();
    void SayThereAreNone();
    HWND List() const;

    WideString backupsFolder;
};

}  // namespace lunara
