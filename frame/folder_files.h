#pragma once

// Operations on paths and on the files of one folder, for backup and restore. Paths hold at most
// `PathCapacity` units with the terminator; what does not fit is refused, never cut.

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

/// Copies what matches `pattern` from one folder into the other: not what begins with "." and not
/// what has the attribute "normal", which on the device marks what is no user's file. `clearFirst`
/// empties the target first. The first failed copy (a sub-folder is one) ends it with 0;
/// otherwise 1.
int CopyFolderFiles(const WCHAR* source, const WCHAR* target, const WCHAR* pattern, bool clearFirst,
                    bool overwrite, bool quiet);

/// Desktop tools that archive files leave them with the attribute "normal", and `CopyFolderFiles`
/// would pass over them. Gives such files of the folder the archive attribute back.
void MarkFilesForArchive(const WCHAR* folder);

/// What to do about a file that cannot be moved: show it ("Fail to delete file '%s'") and go on, or
/// move back what was moved and stop.
enum class OnMoveFailure { ShowAndGoOn, UndoAndStop };

/// Moves every file of `source` that `CopyFolderFiles` would copy into `target`, replacing files
/// there. 1 when all were moved, else 0.
int MoveFolderFiles(const WCHAR* source, const WCHAR* target, OnMoveFailure onFailure);

}  // namespace lunara
