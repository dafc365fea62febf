#pragma once

// Where backups lie and how a user's files go there and come back.
//
// A backup is a folder with copies of all files of the user's folder. Restoring never leaves half
// of one and half of the other: the copies are first gathered in a folder beside the user's, and
// then the two change places.

#include "platform/text.h"

namespace lunara {

/// "<documents>\LunaraBackup\<user>": the user's backups, a sub-folder each. Empty when it does not
/// fit into a path.
WideString BackupsFolderOfUser(WideView userName);

/// Copies the user's files into the backup of that name, made with all its parents; files there are
/// replaced. A name may hold sub-folders, but not lead out of the backups folder. Shows "Cannot
/// create backup directory!" when the folder cannot be made. 1, or 0 with the files copied so far
/// left there.
int BackupFiles(WideView userName, WideView backupName);

/// Puts the backup's files in place of the user's. 1, or 0 with the user's files as they were.
int RestoreFiles(WideView userName, WideView backupName);

/// Brings the user's folder back to what it was when a restore was cut off (the program or the
/// device stopped), and tidies up after one that was done. To be called before the files are read.
void RecoverInterruptedRestore(WideView userName);

}  // namespace lunara
