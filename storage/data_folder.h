#pragma once

// Where a user's files live: a folder beside the program, named after her.

#include "platform/text.h"

namespace lunara {

/// The user's name as one folder name. Characters that a folder name cannot hold, or with which it
/// would reach out of the program's folder, are percent-escaped (docs/file-format.md), and so is a
/// '%' that would read as an escape: two different names never share a folder name. Other names
/// stay as they are.
WideString FolderNameOfUser(WideView userName);

/// The program's folder followed by `FolderNameOfUser`, cut at `PathCapacity` - 1 characters. A
/// path that cannot exist when the program's folder is not known.
WideString DataFolderOfUser(WideView userName);

/// Creates the folder and any missing parents. 1 when it is there afterwards, else 0 with the
/// system's error in the last error.
int CreateDirectoryTree(const WCHAR* folder);

}  // namespace lunara
