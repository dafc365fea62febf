#include "storage/backup_files.h"

#include <algorithm>
#include <vector>

#include "platform/documents_folder.h"
#include "storage/data_folder.h"
#include "storage/folder_files.h"
#include "storage/replacement_file.h"

namespace lunara {
namespace {

constexpr WCHAR BackupRoot[] = TEXT("LunaraBackup");
constexpr WCHAR AllFiles[] = TEXT("*.*");
constexpr WCHAR DataFiles[] = TEXT("*.dat");

// Suffixes of the folders that a restore creates beside the user's folder. Which of them exist
// tells how far the restore has come (see Mend). No user's folder can have such a name: in a
// folder name '%' begins an escape, "%7E" is that of '~', and '~' is never escaped.
constexpr WCHAR StagedSuffix[] = TEXT("%7Erestore");  // copies of the backup, not in place yet
constexpr WCHAR AsideSuffix[] = TEXT("%7Easide");     // old files; some may still be in place
constexpr WCHAR BeforeSuffix[] = TEXT("%7Ebefore");   // all old files; copies may be put in place

bool Rename(const WideString& from, const WideString& to) {
    return CurrentFileCalls().MoveFolder(from.c_str(), to.c_str()) != FALSE;
}

/// Whether `name` names a folder below the one that it is appended to: at least one part, and none
/// that consists of dots and spaces.
bool IsBackupName(WideView name) {
    bool named = false;
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of(TEXT("\\/")), name.size());
        const WideView part = name.substr(0, end);
        if (part.find_first_not_of(TEXT(". ")) == WideView::npos && !part.empty()) {
            return false;  // ".", "..", or a name that the system reads as one of them
        }
        named = named || !part.empty();
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return named;
}

/// The path of a backup. Empty when the name is not allowed or the path is too long.
WideString BackupFolder(WideView userName, WideView backupName) {
    WideString folder = BackupsFolderOfUser(userName);
    if (folder.empty() || !IsBackupName(backupName) || AppendPath(folder, backupName) == 0) {
        return {};
    }
    return folder;
}

/// The folders of a restore: the user's, and those with the three suffixes.
struct RestorePlaces {
    WideString user;
    WideString staged;
    WideString aside;
    WideString before;
};

RestorePlaces PlacesOf(WideView userName) {
    const WideString folder = DataFolderOfUser(userName);
    return {folder, folder + StagedSuffix, folder + AsideSuffix, folder + BeforeSuffix};
}

/// Whether a folder of an earlier restore still exists. A new restore would take its files for its
/// own.
bool IsAnyLeftOver(const RestorePlaces& places) {
    return IsFolder(places.staged.c_str()) || IsFolder(places.aside.c_str()) ||
           IsFolder(places.before.c_str());
}

/// Renames the user's folder, if there is one, to `before`, and the staged copies to the user's
/// folder. Fails when the user's folder cannot be renamed: a file in it is open elsewhere, or it
/// has a sub-folder, which must stay and be reported to the user. Everything is then as it was, or
/// as after an interrupted restore.
bool SwapFolders(const RestorePlaces& places) {
    if (!IsFolder(places.user.c_str())) {
        return Rename(places.staged, places.user);
    }
    if (HasUnmovableEntries(places.user.c_str()) || !Rename(places.user, places.before)) {
        return false;
    }
    if (Rename(places.staged, places.user)) {
        return true;
    }
    Rename(places.before, places.user);
    return false;
}

/// Moves the files in `aside` back to the user's folder and deletes `aside`. Returns false when
/// that fails; files that cannot be moved stay in `aside`.
bool BringBack(const RestorePlaces& places) {
    return MoveFolderFiles(places.aside.c_str(), places.user.c_str()).empty() &&
           RemoveFolder(places.aside) != 0;
}

/// Restores file by file, for a user's folder that cannot be renamed (see SwapFolders). Moves the
/// old files aside as far as possible, then the staged copies into the user's folder. When a copy
/// cannot be moved there, moves everything back. Returns whether the copies are in place; `left`
/// receives the paths of the old files that stay beside them.
bool SwapFiles(const RestorePlaces& places, std::vector<WideString>& left) {
    if (CreateDirectoryTree(places.aside.c_str()) == 0) {
        return false;
    }
    left = MoveFolderFiles(places.user.c_str(), places.aside.c_str());
    // The rename is the commit point: before it mending moves the old files back, after it
    // mending moves the remaining copies in.
    if (Rename(places.aside, places.before)) {
        if (MoveAllFolderFiles(places.staged.c_str(), places.user.c_str()) != 0) {
            return true;
        }
        Rename(places.before, places.aside);
    }
    BringBack(places);
    return false;
}

/// How Mend ended. `Undone` also when there was nothing to mend.
enum class Mending { Undone, Finished, NotYet };

/// Undoes an interrupted restore, or completes it when copies may be in place already. `NotYet`
/// when a file or folder cannot be moved.
Mending Mend(const RestorePlaces& places) {
    Mending result = Mending::Undone;
    if (IsFolder(places.aside.c_str())) {
        // Interrupted while old files were moved aside: no copy is in place yet, so undo.
        if (CreateDirectoryTree(places.user.c_str()) == 0 || !BringBack(places)) {
            return Mending::NotYet;
        }
    } else if (IsFolder(places.before.c_str())) {
        if (!IsFolder(places.user.c_str())) {
            // Interrupted between the two renames of SwapFolders: undo.
            if (!Rename(places.before, places.user)) {
                return Mending::NotYet;
            }
        } else if (IsFolder(places.staged.c_str())) {
            // Interrupted while copies were moved into place: complete it, if they can be moved.
            if (!MoveFolderFiles(places.staged.c_str(), places.user.c_str()).empty()) {
                return Mending::NotYet;
            }
            result = Mending::Finished;
        }
        // Otherwise the restore was complete, and only its folders remain to be removed.
    }
    RemoveFolder(places.staged);
    RemoveFolder(places.before);
    return result;
}

}  // namespace

WideString BackupsFolderOfUser(WideView userName) {
    WideString folder = DocumentsFolder();
    if (folder.empty() || AppendPath(folder, BackupRoot) == 0 ||
        AppendPath(folder, FolderNameOfUser(userName)) == 0) {
        return {};
    }
    return folder;
}

BackupResult BackupFiles(WideView userName, WideView backupName) {
    const WideString source = DataFolderOfUser(userName);
    const WideString target = BackupFolder(userName, backupName);
    if (target.empty() || CreateDirectoryTree(target.c_str()) == 0) {
        return BackupResult::NoFolder;
    }
    if (MendCutOffRestore(userName) == 0) {
        return BackupResult::Failed;  // the user's folder may lack files
    }
    // A collection that has become empty has no file. Delete the copy that an earlier backup of the
    // same name made of it: a restore would bring deleted entries back, or could not be opened at
    // all if that copy has an older password.
    return CopyFolderFiles(source.c_str(), target.c_str(), AllFiles) != 0 &&
                   DeleteFilesGoneFrom(source.c_str(), target.c_str(), DataFiles) != 0
               ? BackupResult::Done
               : BackupResult::Failed;
}

RestoreResult RestoreFiles(WideView userName, WideView backupName) {
    const WideString source = BackupFolder(userName, backupName);
    const RestorePlaces places = PlacesOf(userName);
    if (Mend(places) == Mending::NotYet || IsAnyLeftOver(places) || source.empty() ||
        !IsFolder(source.c_str()) || CreateDirectoryTree(places.staged.c_str()) == 0) {
        return {};
    }
    RestoreResult result;
    result.isRestored = CopyFolderFiles(source.c_str(), places.staged.c_str(), AllFiles) != 0 &&
                        (SwapFolders(places) ||
                         (IsFolder(places.user.c_str()) && SwapFiles(places, result.filesLeft)));
    if (result.isRestored) {
        RemoveFolder(places.staged);
        RemoveFolder(places.before);
    } else {
        // Undo; when that is not possible any more, Mend completes the restore instead.
        result.isRestored = Mend(places) == Mending::Finished;
    }
    return result;
}

bool IsRestoreCutOff(WideView userName) {
    const RestorePlaces places = PlacesOf(userName);
    return IsFolder(places.aside.c_str()) ||
           (IsFolder(places.before.c_str()) &&
            (!IsFolder(places.user.c_str()) || IsFolder(places.staged.c_str())));
}

int MendCutOffRestore(WideView userName) {
    return Mend(PlacesOf(userName)) != Mending::NotYet ? 1 : 0;
}

}  // namespace lunara
