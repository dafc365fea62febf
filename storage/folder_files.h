#pragma once

// Operations on paths and on the files of one folder, for backup and restore. Paths hold at most
// `PathCapacity` units with the terminator; a longer one is refused, never cut.

#include <vector>

#include "platform/text.h"

namespace lunara {

/// Joins `path` and `name` with exactly one backslash between them, whether `path` ends or `name`
/// begins with one. Returns 1, or 0 with `path` unchanged when the result does not fit into a path.
int AppendPath(WideString& path, WideView name);

/// What DeleteFolderFiles could not delete.
struct NotDeleted {
    std::vector<WideString> files;  // paths; a sub-folder counts as a file that stays
    WideString folder;              // the folder itself; empty when it is gone or was to stay

    bool IsNothing() const { return files.empty() && folder.empty(); }
};

enum class FolderItself { Stays, Goes };

/// Deletes the files in `folder` that match `pattern`, but no sub-folder whose name begins with
/// "."; then, if it goes, the folder itself, which must be empty. A failure does not end the
/// operation.
NotDeleted DeleteFolderFiles(const WCHAR* folder, const WCHAR* pattern, FolderItself itself);

/// Whether backup and restore leave a file where it is: its name begins with ".".
bool IsPassedOver(const WIN32_FIND_DATAW& entry);

/// Copies the files of `source` that match `pattern` and are not passed over into the existing
/// folder `target`, over files of the same name. Returns 1, or 0 at the first failed copy (a
/// sub-folder is one) with the earlier copies left there.
int CopyFolderFiles(const WCHAR* source, const WCHAR* target, const WCHAR* pattern);

/// Deletes the files of `copies` that match `pattern` and have no file of the same name in
/// `source`. Deletes nothing when no file of `source` matches: the folder is then more likely lost
/// than emptied. Returns 1, or 0 when a file could not be deleted.
int DeleteFilesGoneFrom(const WCHAR* source, const WCHAR* copies, const WCHAR* pattern);

/// The names of a folder's sub-folders in the order of the system, without those that begin with
/// ".".
std::vector<WideString> SubFolders(const WCHAR* folder);

/// Whether the folder cannot be renamed with what is in it: it has a sub-folder, or a file that is
/// open without FILE_SHARE_DELETE.
bool HasUnmovableEntries(const WCHAR* folder);

/// Moves the files of `source` that are not passed over into `target`, replacing files there.
/// Returns the paths of those that could not be moved; a sub-folder never is moved.
std::vector<WideString> MoveFolderFiles(const WCHAR* source, const WCHAR* target);

/// Moves all files of `source` that are not passed over into `target`, or none: the first that
/// cannot be moved ends it with 0, and the files that were moved go back. Otherwise 1.
int MoveAllFolderFiles(const WCHAR* source, const WCHAR* target);

/// Whether the path names a folder.
bool IsFolder(const WideString& path);

/// Removes a folder with its files, read-only ones included. A folder with sub-folders stays.
/// Returns 1 when the folder is gone or was not there, 0 otherwise.
int RemoveFolder(const WideString& folder);

}  // namespace lunara
