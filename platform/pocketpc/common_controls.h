#pragma once

// <commctrl.h> with its prerequisite: it does not include <windows.h>, which must come first.

// clang-format off
#include "platform/win32.h"
#include <commctrl.h>
// clang-format on
