#pragma once

// Where a user's files live: a folder beside the program, named after the user.

#include "platform/text.h"

namespace lunara {

/// The user's name as the name of one folder. Percent-escapes (docs/file-format.md) what a folder
/// name cannot hold or what would lead out of the program's folder, and a '%' that would read as an
/// escape, so that two names never share a folder. Any other name stays as it is.
WideString FolderNameOfUser(WideView userName);

/// The program's folder followed by `FolderNameOfUser`, cut at `PathCapacity` - 1 units. When the
/// program's folder is unknown, a path that no folder can have.
WideString DataFolderOfUser(WideView userName);

/// Whether the path names a folder. A path that cannot be looked up does not.
bool IsFolder(const WCHAR* path);

/// Creates the folder and its missing parents. 1 when the folder exists afterwards, else 0 with the
/// system's error in the last error.
[[nodiscard]] int CreateDirectoryTree(const WCHAR* folder);

}  // namespace lunara
