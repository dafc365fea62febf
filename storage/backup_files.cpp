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

// Beside the user's folder. No user's folder can have such a name: "%7E" would be an escape, and a
// '~' is never escaped. What is there tells how far a restore has come (Recover).
constexpr WCHAR StagedSuffix[] = TEXT("%7Erestore");  // the copies, until they are in place
constexpr WCHAR AsideSuffix[] = TEXT("%7Easide");     // the user's files while they are moved
constexpr WCHAR BeforeSuffix[] = TEXT("%7Ebefore");   // all of them; the copies may go in

bool Rename(const WideString& from, const WideString& to) {
    return CurrentFileCalls().MoveFolder(from.c_str(), to.c_str()) != FALSE;
}

/// Whether the name stays inside the folder that it is appended to, and names something there.
bool IsBackupName(WideView name) {
    bool named = false;
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of(TEXT("\\/")), name.size());
        const WideView part = name.substr(0, end);
        if (part.find_first_not_of(TEXT(". ")) == WideView::npos && !part.empty()) {
            return false;  // ".", "..", or what the system takes for them
        }
        named = named || !part.empty();
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return named;
}

/// Empty when the name is none or the path does not fit.
WideString BackupFolder(WideView userName, WideView backupName) {
    WideString folder = BackupsFolderOfUser(userName);
    if (folder.empty() || !IsBackupName(backupName) || AppendPath(folder, backupName) == 0) {
        return {};
    }
    return folder;
}

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

/// Whether there is still something of an earlier restore that could be taken for this one's.
bool IsAnyLeftOver(const RestorePlaces& places) {
    return IsFolder(places.staged) || IsFolder(places.aside) || IsFolder(places.before);
}

/// The two folders change places. Fails, with everything as it was or as a restore that was cut
/// off, when the user's folder cannot go as a whole: while somebody holds a file in it open, or
/// with a sub-folder in it, which has to be shown.
bool SwapFolders(const RestorePlaces& places) {
    if (!IsFolder(places.user)) {
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

/// The files set aside go back to the user's folder. Fails, with the rest still aside, while one
/// cannot.
bool BringBack(const RestorePlaces& places) {
    return MoveFolderFiles(places.aside.c_str(), places.user.c_str()).empty() &&
           RemoveFolder(places.aside) != 0;
}

/// The same file by file, for a folder that cannot change places as a whole: what can be set aside
/// is, and when a copy then finds its place taken, all go back where they were. Returns whether the
/// copies are in place; `left` is what then stays beside them.
bool SwapFiles(const RestorePlaces& places, std::vector<WideString>& left) {
    if (CreateDirectoryTree(places.aside.c_str()) == 0) {
        return false;
    }
    left = MoveFolderFiles(places.user.c_str(), places.aside.c_str());
    // From here on only the copies are to be found in the user's folder, beside what is left.
    if (Rename(places.aside, places.before)) {
        if (MoveAllFolderFiles(places.staged.c_str(), places.user.c_str()) != 0) {
            return true;
        }
        Rename(places.before, places.aside);
    }
    BringBack(places);
    return false;
}

enum class Recovery { Undone, Finished, NotYet };

/// Ends a restore that was cut off, in the direction that is still open.
Recovery Recover(const RestorePlaces& places) {
    Recovery result = Recovery::Undone;
    if (IsFolder(places.aside)) {
        // Cut off while the user's files were being moved: none of the copies is among them yet.
        if (CreateDirectoryTree(places.user.c_str()) == 0 || !BringBack(places)) {
            return Recovery::NotYet;
        }
    } else if (IsFolder(places.before)) {
        if (!IsFolder(places.user)) {
            // Cut off between the two renames.
            if (!Rename(places.before, places.user)) {
                return Recovery::NotYet;
            }
        } else if (IsFolder(places.staged)) {
            // Cut off while the copies were being put in place, and perhaps still not all can be.
            if (!MoveFolderFiles(places.staged.c_str(), places.user.c_str()).empty()) {
                return Recovery::NotYet;
            }
            result = Recovery::Finished;
        }
        // Without copies left over, only the tidying up was missed.
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
    if (RecoverInterruptedRestore(userName) == 0) {
        return BackupResult::Failed;  // not all of the user's files are in the folder
    }
    // A collection that has become empty has no file any more. A file that an earlier backup of the
    // same name left would bring deleted entries back, or, under an older password, keep the whole
    // backup from ever being opened.
    return CopyFolderFiles(source.c_str(), target.c_str(), AllFiles) != 0 &&
                   DeleteFilesGoneFrom(source.c_str(), target.c_str(), DataFiles) != 0
               ? BackupResult::Done
               : BackupResult::Failed;
}

RestoreResult RestoreFiles(WideView userName, WideView backupName) {
    const WideString source = BackupFolder(userName, backupName);
    const RestorePlaces places = PlacesOf(userName);
    if (Recover(places) == Recovery::NotYet || IsAnyLeftOver(places) || source.empty() ||
        !IsFolder(source) || CreateDirectoryTree(places.staged.c_str()) == 0) {
        return {};
    }
    RestoreResult result;
    result.isRestored =
        CopyFolderFiles(source.c_str(), places.staged.c_str(), AllFiles) != 0 &&
        (SwapFolders(places) || (IsFolder(places.user) && SwapFiles(places, result.filesLeft)));
    if (result.isRestored) {
        RemoveFolder(places.staged);
        RemoveFolder(places.before);
    } else {
        // When the user's files can no longer go back, the copies go in after all.
        result.isRestored = Recover(places) == Recovery::Finished;
    }
    return result;
}

bool IsRestoreCutOff(WideView userName) {
    const RestorePlaces places = PlacesOf(userName);
    return IsFolder(places.aside) ||
           (IsFolder(places.before) && (!IsFolder(places.user) || IsFolder(places.staged)));
}

int RecoverInterruptedRestore(WideView userName) {
    return Recover(PlacesOf(userName)) != Recovery::NotYet ? 1 : 0;
}

}  // namespace lunara
