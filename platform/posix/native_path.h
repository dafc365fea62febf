#pragma once

#include <string>

#include "platform/posix/win32_posix.h"

namespace lunara {

/// The path as the system's calls take it: UTF-8, with '/' between folders.
std::string NativePath(LPCWSTR path);

}  // namespace lunara
