#pragma once

// Backups in the documents folder, and the two dialogs that make and restore them.

#include <string>
#include <vector>

#include "tests/driver/program.h"

namespace lunara::test {

/// The folder of all backups of all users; empty when the documents folder is unknown.
std::wstring BackupRoot();
/// Deletes all backups of all users. Safe, because the documents folder lies in the run's own
/// prefix.
void ForgetBackups();
/// `folder` and the folders below it, in no particular order, as far as they hold data files.
std::vector<std::wstring> DiaryFoldersBelow(const std::wstring& folder);

/// Opens Backup from the menu, fills the dialog in and clicks its button. An empty name keeps the
/// offered one. Boxes that follow are left to the caller.
bool BeginBackup(Program& program, const std::wstring& name, bool saveFirst);
/// Opens Restore from the menu and drops its list down with a click. The dialog; null when that
/// fails.
HWND OpenBackupList(Program& program);
/// Opens Restore from the menu and chooses the backup by typing its first letter, which no other
/// backup may begin with. The dialog; null when that fails.
HWND ChooseBackup(Program& program, const std::wstring& name);

}  // namespace lunara::test
