#pragma once

// The folder of the program's executable, in which the diaries lie.

#include "platform/text.h"

namespace lunara {

/// Writes the folder of the running executable, with its trailing separator, cut to `size` (>= 1)
/// units, terminator included. Empty when the path holds no separator or does not fit into
/// `PathCapacity`. Returns 1.
int GetAppFolder(WCHAR* buffer, int size);

/// Returns the folder, with its trailing separator, in a path that GetModuleFileNameW wrote to a
/// buffer of `size` units; `length` is what that call returned. Empty when the path filled the
/// buffer and so was cut: its last separator may then belong to a folder further up, where diaries
/// would be looked for and created.
WideView FolderOfModule(const WCHAR* path, DWORD length, std::size_t size);

}  // namespace lunara
