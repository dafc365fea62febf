#pragma once

// The system's names, and the only way the portable core reaches them: <windows.h> on Windows,
// elsewhere a stand-in with just the types and calls that the core makes. Each stand-in behaves
// as the platform's does, its failures and its last error included.

#ifdef _WIN32
#include <windows.h>
#else
#include "platform/posix/win32_posix.h"
#endif

static_assert(sizeof(WCHAR) == 2, "texts are UTF-16 on every target");
