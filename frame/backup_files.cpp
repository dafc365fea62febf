#include "frame/backup_files.h"

#include <algorithm>

#include "frame/folder_files.h"
#include "frame/messages.h"
#include "platform/pocketpc/documents_folder.h"
#include "records/data_folder.h"
#include "resources/ids.h"

namespace lunara {
namespace {

constexpr WCHAR BackupRoot[] = TEXT("LunaraBackup");
constexpr WCHAR AllFiles[] = TEXT("*.*");

// Beside the user's folder. No user's folder can have such a name: "%7E" would be an escape, and a
// '~' is never escaped.
constexpr WCHAR StagedSuffix[] = TEXT("%7Erestore");  // the copies, until they are in place
constexpr WCHAR BeforeSuffix[] = TEXT("%7Ebefore");   // the user's files as they were

bool IsFolder(const WideString& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool Rename(const WideString& from, const WideString& to) {
    return ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != FALSE;
}

void RemoveFolder(const WideString& folder) {
    if (IsFolder(folder)) {
        DeleteFolderFiles(folder.c_str(), AllFiles, true, true);
    }
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
    WideString before;
};

RestorePlaces PlacesOf(WideView userName) {
    const WideString folder = DataFolderOfUser(userName);
    return {folder, folder + StagedSuffix, folder + BeforeSuffix};
}

/// Whether no file of the folder is held open in a way that keeps it from being deleted. A folder
/// with such a file can be renamed on some systems, but the file would have to be shown all the
/// same.
bool CanAllFilesGo(const WideString& folder) {
    WIN32_FIND_DATAW entry{};
    WideString path = folder;
    const HANDLE search = AppendPath(path, AllFiles) != 0 ? ::FindFirstFileW(path.c_str(), &entry)
                                                          : INVALID_HANDLE_VALUE;
    bool free = true;
    for (BOOL found = search != INVALID_HANDLE_VALUE; found != FALSE && free;
         found = ::FindNextFileW(search, &entry)) {
        path = folder;
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ||
            AppendPath(path, entry.cFileName) == 0) {
            continue;
        }
        const HANDLE file = ::CreateFileW(path.c_str(), DELETE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, 0, nullptr);
        free = file != INVALID_HANDLE_VALUE;
        if (free) {
            ::CloseHandle(file);
        }
    }
    if (search != INVALID_HANDLE_VALUE) {
        ::FindClose(search);
    }
    return free;
}

/// The two folders change places. Fails, with everything as it was, while somebody holds a file in
/// the user's folder open.
bool SwapFolders(const RestorePlaces& places) {
    if (!IsFolder(places.user)) {
        return Rename(places.staged, places.user);
    }
    if (!CanAllFilesGo(places.user) || !Rename(places.user, places.before)) {
        return false;
    }
    if (Rename(places.staged, places.user)) {
        return true;
    }
    Rename(places.before, places.user);
    return false;
}

/// The same file by file, for a folder that cannot change places as a whole: what can be set aside
/// is, the rest is shown, and when a copy then finds its place taken, all go back where they were.
bool SwapFiles(const RestorePlaces& places) {
    if (CreateDirectoryTree(places.before.c_str()) == 0) {
        return false;
    }
    MarkFilesForArchive(places.user.c_str());
    MoveFolderFiles(places.user.c_str(), places.before.c_str(), OnMoveFailure::ShowAndGoOn);
    if (MoveFolderFiles(places.staged.c_str(), places.user.c_str(), OnMoveFailure::UndoAndStop) !=
        0) {
        RemoveFolder(places.staged);  // from here on the copies count, whatever happens
        return true;
    }
    MoveFolderFiles(places.before.c_str(), places.user.c_str(), OnMoveFailure::ShowAndGoOn);
    return false;
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

int BackupFiles(WideView userName, WideView backupName) {
    const WideString source = DataFolderOfUser(userName);
    const WideString target = BackupFolder(userName, backupName);
    if (target.empty() || CreateDirectoryTree(target.c_str()) == 0) {
        ShowMessage(nullptr, IDS_NO_BACKUP_FOLDER, CaptionError, MB_OK);
        return 0;
    }
    MarkFilesForArchive(source.c_str());
    return CopyFolderFiles(source.c_str(), target.c_str(), AllFiles, false, true, false);
}

int RestoreFiles(WideView userName, WideView backupName) {
    const WideString source = BackupFolder(userName, backupName);
    const RestorePlaces places = PlacesOf(userName);
    RecoverInterruptedRestore(userName);
    if (source.empty() || !IsFolder(source) || CreateDirectoryTree(places.staged.c_str()) == 0) {
        return 0;
    }
    MarkFilesForArchive(source.c_str());
    const bool restored =
        CopyFolderFiles(source.c_str(), places.staged.c_str(), AllFiles, false, true, false) != 0 &&
        (SwapFolders(places) || SwapFiles(places));
    RemoveFolder(places.staged);
    RemoveFolder(places.before);
    return restored ? 1 : 0;
}

void RecoverInterruptedRestore(WideView userName) {
    const RestorePlaces places = PlacesOf(userName);
    if (IsFolder(places.before)) {
        if (!IsFolder(places.user)) {
            Rename(places.before, places.user);
        } else if (IsFolder(places.staged)) {
            MoveFolderFiles(places.before.c_str(), places.user.c_str(), OnMoveFailure::ShowAndGoOn);
        }
        // With the user's folder there and no copies left over, only the tidying up was missed.
    }
    RemoveFolder(places.staged);
    RemoveFolder(places.before);
}

}  // namespace lunara
