#pragma once

// The Win32 types and calls of the portable core, which reaches the system through this header
// alone: <windows.h> on Windows, elsewhere a stand-in with only the types and calls that the core
// uses. Each stand-in behaves as the platform does, in its failures and its last error, too.

#ifdef _WIN32
#include <windows.h>
#else
#include "platform/posix/win32_posix.h"
#endif

static_assert(sizeof(WCHAR) == 2, "texts are UTF-16 on every target");
