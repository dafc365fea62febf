#pragma once

// Backups as they lie in the documents folder, and the two dialogs that make and restore them.

#include <string>
#include <vector>

#include "tests/e2e/driver.h"

namespace lunara::e2e {

/// The folder of all backups, of all users.
std::wstring BackupRoot();
/// No backups of anybody, as nothing but the tests uses this documents folder.
void ForgetBackups();
/// Every folder below `folder` that holds data files, itself included.
std::vector<std::wstring> DiaryFoldersBelow(const std::wstring& folder);

/// Opens Backup from the menu, fills it in (a name of "" leaves the one that is offered) and has it
/// begin. The boxes that follow are left to the caller.
bool BeginBackup(Program& program, const std::wstring& name, bool saveFirst);
/// Opens Restore from the menu and, with a click, the list in it; null when that did not come
/// about.
HWND OpenBackupList(Program& program);
/// Opens Restore from the menu and chooses the backup, the only one whose name begins with that
/// letter; null when that did not come about.
HWND ChooseBackup(Program& program, const std::wstring& name);

}  // namespace lunara::e2e
