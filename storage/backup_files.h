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

/// Puts the backup's files in place of the user's. What cannot be taken away is shown ("Fail to
/// delete file '%s'") and stays beside them. 1, or 0 with the user's files as they were, or where
/// RecoverInterruptedRestore finds them.
int RestoreFiles(WideView userName, WideView backupName);

/// Whether a restore failed in a way that leaves the user's folder without some of her files until
/// it is ended. What is in memory is whole then, and must be saved whole or not at all.
bool IsRestoreCutOff(WideView userName);

/// Shows "A restore was cut off, and its files are still in use!".
void ShowRestoreCutOff(HWND owner);

/// Ends a restore that was cut off (the program or the device stopped): the user's folder is then
/// what it was before, or, when the copies had begun to go in, what it was to become. Also tidies
/// up after one that was done. To be called before the files are read. 1, or 0 while a file that
/// has to be moved cannot be: nothing is lost then, but the folder may hold some files of either.
int RecoverInterruptedRestore(WideView userName);

}  // namespace lunara
