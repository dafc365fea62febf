#pragma once

// Backup and restore of a user's files.
//
// A backup is a folder with copies of all files of the user's folder. A restore first copies the
// backup to a folder beside the user's, then swaps the two by renaming, so that the user's folder
// never mixes old and restored files. If it cannot be renamed, the files are moved one by one.
// MendCutOffRestore completes or undoes a restore that was interrupted.

#include <vector>

#include "platform/text.h"

namespace lunara {

/// The folder of the user's backups, "<documents>\LunaraBackup\<user>", with a sub-folder for each
/// backup. It need not exist. Empty when there is no documents folder or the path is too long.
WideString BackupsFolderOfUser(WideView userName);

/// How `BackupFiles` ended.
enum class BackupResult {
    Done,
    NoFolder,  // the name is not allowed, or the backup's folder could not be created
    Failed,    // a file could not be copied, or an outdated copy not deleted; copies made stay
};

/// Copies the user's files into backup `backupName`, which is created with its parent folders. In a
/// backup that exists, files of the same name are replaced, and data files that the user no longer
/// has are deleted. `backupName` may contain sub-folders, but no part that leads out of the backups
/// folder, such as "..".
[[nodiscard]] BackupResult BackupFiles(WideView userName, WideView backupName);

/// How `RestoreFiles` ended.
struct RestoreResult {
    /// Whether the backup's files are in place. If not, the user's files are unchanged, or the
    /// restore is interrupted (`IsRestoreCutOff`).
    bool isRestored = false;
    /// Paths of the old files and sub-folders that could not be moved out of the user's folder.
    /// After a successful restore they are still there, beside the restored files.
    std::vector<WideString> filesLeft;
};

/// Replaces the user's files by those of backup `backupName`. Recovers from an interrupted restore
/// first. Fails when that is not possible yet, when there is no such backup, or when its files
/// cannot be copied or moved into place.
[[nodiscard]] RestoreResult RestoreFiles(WideView userName, WideView backupName);

/// Whether a restore was interrupted so that the user's folder lacks files until
/// MendCutOffRestore succeeds. Until then the data set in memory is the only complete one;
/// a save must write all of it or nothing.
bool IsRestoreCutOff(WideView userName);

/// Completes or undoes a restore that was interrupted because the program or the device stopped. If
/// no restored file was in place yet, the user's folder becomes what it was; otherwise, what it was
/// to become. Also removes what a finished restore left behind. Idempotent; call it before reading
/// the user's files. Returns 1; 0 when a file cannot be moved yet, and the user's folder may then
/// hold old and restored files, but none is lost.
[[nodiscard]] int MendCutOffRestore(WideView userName);

}  // namespace lunara
