#pragma once

// Operations on paths and on the files of one folder, for backup and restore. Paths hold at most
// `PathCapacity` units with the terminator; what does not fit is refused, never cut.

#include <vector>

#include "platform/text.h"

namespace lunara {

/// Joins `path` and `name` with exactly one backslash between them, whichever of them brings it.
/// Returns 1, or 0 with `path` left as it was when the result does not fit into a path.
int AppendPath(WideString& path, WideView name);

/// Deletes what matches `pattern` in the folder, except folders whose name begins with "."; a
/// folder counts as a file that cannot be deleted. A failed deletion is shown ("Fail to delete file
/// '%s'") and the rest goes on; with `quiet` it ends the operation with 1 instead. With
/// `removeFolder` the folder itself goes last; if it cannot, that is shown, or 2 is returned with
/// `quiet`. Otherwise 0.
int DeleteFolderFiles(const WCHAR* folder, const WCHAR* pattern, bool removeFolder, bool quiet);

/// What to do about files with the attribute "normal". On the device it marks what is no user's
/// file; on a desktop, tools that archive files leave her own files with it.
enum class NormalFiles { PassOver, Take };

/// Whether a file is left where it is: all whose name begins with ".", and the normal ones as
/// asked.
bool IsPassedOver(const WIN32_FIND_DATAW& entry, NormalFiles normal);

/// Copies what matches `pattern` from one folder into the other, unless it is passed over.
/// `clearFirst` empties the target first. The first failed copy (a sub-folder is one) ends it with
/// 0; otherwise 1.
int CopyFolderFiles(const WCHAR* source, const WCHAR* target, const WCHAR* pattern, bool clearFirst,
                    bool overwrite, bool quiet, NormalFiles normal = NormalFiles::PassOver);

/// Deletes the files of `copies` that match `pattern` and have none of the same name in `source`.
/// A `source` without any file of the pattern is more likely lost than emptied, and deletes
/// nothing. 1, or 0 when one cannot be deleted.
int DeleteFilesGoneFrom(const WCHAR* source, const WCHAR* copies, const WCHAR* pattern);

/// The names of a folder's sub-folders as they are found, without those that begin with ".".
std::vector<WideString> SubFolders(const WCHAR* folder);

/// Whether a folder has a sub-folder, or a file that is held open in a way that keeps it from being
/// deleted.
bool HasUnmovableEntries(const WCHAR* folder);

/// Shows "Fail to delete file '%s'" for the file.
void ShowFileStays(const WCHAR* path);

/// Moves the files of `source` that are not passed over, the normal ones taken, into `target`,
/// replacing files there. Returns the paths of what could not be moved; a sub-folder never is.
std::vector<WideString> MoveFolderFiles(const WCHAR* source, const WCHAR* target);

/// The same, but the first file that cannot be moved ends it with 0, and what was moved goes back;
/// otherwise 1.
int MoveAllFolderFiles(const WCHAR* source, const WCHAR* target);

/// Whether the path names a folder.
bool IsFolder(const WideString& path);

/// Removes a folder with its files, also with those that are marked read-only. A folder with
/// sub-folders stays. 1 when it is gone, or was not there.
int RemoveFolder(const WideString& folder);

}  // namespace lunara
