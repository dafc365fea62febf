#pragma once

// <commctrl.h>, which does not bring the system's header that it needs.

// clang-format off: the order is the point
#include <commctrl.h>
#include "platform/win32.h"
// clang-format on
