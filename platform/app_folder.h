#pragma once

#include "platform/text.h"

namespace lunara {

/// The folder of the running program's file with its trailing separator, cut at `size` code units,
/// the last of which is always zero (size >= 1). Empty when the path holds no separator, or is
/// longer than `PathCapacity`. Returns 1.
int GetAppFolder(WCHAR* buffer, int size);

/// The same of a path as GetModuleFileNameW left it in a buffer of `size` units, with the length
/// that it returned. A path that filled the buffer was cut: its folder could be any of those above
/// the right one, and the diaries would be looked for, and made, there.
WideView FolderOfModule(const WCHAR* path, DWORD length, std::size_t size);

}  // namespace lunara
