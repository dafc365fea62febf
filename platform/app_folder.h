#pragma once

#include "platform/win32.h"

namespace lunara {

/// The folder of the running program's file with its trailing separator, cut at `size` code units,
/// the last of which is always zero (size >= 1). Empty when the path holds no separator. Returns 1.
int GetAppFolder(WCHAR* buffer, int size);

}  // namespace lunara
