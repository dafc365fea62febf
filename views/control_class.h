#pragma once

#include "platform/win32.h"

namespace lunara {

/// Registers a window class of that name, like the framework's own in all else, unless there is
/// one. Whether the class exists afterwards.
int RegisterControlClass(const WCHAR* name);

}  // namespace lunara
