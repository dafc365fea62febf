#pragma once

// Where backups lie, and how a user's files go there and come back.
//
// A backup is a folder with copies of all files of the user's folder. A restore first gathers the
// copies in a folder beside the user's, then the two folders change places, so that the user's
// folder holds the files of one side only.

#include <vector>

#include "platform/text.h"

namespace lunara {

/// "<documents>\LunaraBackup\<user>": the user's backups, a sub-folder each. Empty when the path
/// does not fit.
WideString BackupsFolderOfUser(WideView userName);

enum class BackupResult {
    Done,
    NoFolder,  // the backup's folder could not be created
    Failed,    // a file could not be copied; the copies made so far stay
};

/// Copies the user's files into the backup of that name, which is created with all its parents;
/// files there are replaced. `backupName` may hold sub-folders, but must not lead out of the
/// backups folder.
[[nodiscard]] BackupResult BackupFiles(WideView userName, WideView backupName);

struct RestoreResult {
    /// Whether the backup's files are in place. If not, the user's files are as they were, or where
    /// RecoverInterruptedRestore finds them.
    bool isRestored = false;
    /// Paths of files of the user's folder that could not be removed and stay beside the backup's.
    std::vector<WideString> filesLeft;
};

/// Puts the backup's files in place of the user's.
[[nodiscard]] RestoreResult RestoreFiles(WideView userName, WideView backupName);

/// Whether a restore was cut off in a way that leaves the user's folder without some of its files
/// until RecoverInterruptedRestore has ended it. Until then only the data set in memory is whole,
/// and it must be saved whole or not at all.
bool IsRestoreCutOff(WideView userName);

/// Ends a restore that was cut off because the program or the device stopped: the user's folder
/// becomes what it was before, or, when the copies had begun to go in, what it was to become. Also
/// removes what a finished restore left behind. To be called before the user's files are read.
/// Returns 1, or 0 while a file that has to be moved cannot be; the folder may hold files of both
/// sides then, and none is lost.
[[nodiscard]] int RecoverInterruptedRestore(WideView userName);

}  // namespace lunara
