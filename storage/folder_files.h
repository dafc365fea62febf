#pragma once

// Operations on paths and on the files of one folder, for backup and restore. A path has at most
// `PathCapacity` UTF-16 units, terminator included; a longer one is refused, never cut. Patterns
// that work on every system are "*.*" (every file) and '*' followed by the end of the name.

#include <vector>

#include "platform/text.h"

namespace lunara {

/// Appends `name` to `path` with exactly one backslash between them, also when `path` ends or
/// `name` begins with one. Returns 1; 0, with `path` unchanged, when the result is longer than a
/// path may be.
int AppendPath(WideString& path, WideView name);

/// What `DeleteFolderFiles` could not delete.
struct NotDeleted {
    std::vector<WideString> files;  // paths of files, and of sub-folders, which are never deleted
    WideString folder;              // path of the folder; empty if deleted or meant to stay

    bool IsNothing() const { return files.empty() && folder.empty(); }
};

/// Whether `DeleteFolderFiles` deletes the folder after its files.
enum class FolderItself { Stays, Goes };

/// Deletes the files in `folder` that match `pattern`, then the folder itself if `itself` is Goes,
/// which succeeds only if it is empty. Continues after a failure and returns all of them. Matching
/// sub-folders are failures, except those whose names begin with ".", which are ignored.
NotDeleted DeleteFolderFiles(const WCHAR* folder, const WCHAR* pattern, FolderItself itself);

/// Whether backup and restore ignore an entry: its name begins with ".".
bool IsPassedOver(const WIN32_FIND_DATAW& entry);

/// Copies the files of `source` that match `pattern`, except those for which `IsPassedOver` is
/// true, into the existing folder `target`, replacing files of the same name. Returns 1. Stops at
/// the first failure and returns 0; the copies made so far stay. A sub-folder is such a failure.
int CopyFolderFiles(const WCHAR* source, const WCHAR* target, const WCHAR* pattern);

/// Deletes the files of folder `copies` that match `pattern` and have no file of the same name in
/// folder `source`. Deletes nothing when no file of `source` matches: `source` is then more likely
/// lost than emptied. Continues after a failure. Returns 1, or 0 when a file could not be deleted.
int DeleteFilesGoneFrom(const WCHAR* source, const WCHAR* copies, const WCHAR* pattern);

/// The names of the sub-folders of `folder`, in the file system's order, without those that begin
/// with ".". Empty when there are none or the folder cannot be read.
std::vector<WideString> SubFolders(const WCHAR* folder);

/// Whether an entry of `folder` forbids renaming the folder: a sub-folder, a file that is open
/// elsewhere without FILE_SHARE_DELETE, or an entry whose path is too long.
bool HasUnmovableEntries(const WCHAR* folder);

/// Moves the files of `source`, except those for which `IsPassedOver` is true, into the existing
/// folder `target`, replacing files of the same name. Continues after a failure. Returns the source
/// paths of the entries that were not moved; a sub-folder is never moved. Stops at an entry whose
/// path would be too long, and neither moves nor returns that one and those after it.
std::vector<WideString> MoveFolderFiles(const WCHAR* source, const WCHAR* target);

/// Moves all files of `source`, except those for which `IsPassedOver` is true, into the existing
/// folder `target`, replacing files of the same name. Returns 1. Stops at the first failure, moves
/// the files moved so far back, and returns 0; files of `target` that were replaced are lost.
int MoveAllFolderFiles(const WCHAR* source, const WCHAR* target);

/// Deletes `folder` with its files, read-only ones included. Returns 1, also when it did not exist;
/// 0 when a file cannot be deleted or the folder has a sub-folder, which stay.
int RemoveFolder(const WideString& folder);

}  // namespace lunara
