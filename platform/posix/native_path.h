#pragma once

#include <string>

#include "platform/posix/win32_posix.h"

namespace lunara {

/// Converts a path to the form that POSIX calls take: UTF-8, with every '\' turned into '/'.
std::string NativePath(LPCWSTR path);

}  // namespace lunara
