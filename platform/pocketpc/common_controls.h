#pragma once

// <commctrl.h>, which does not bring the system's header that it needs; so the order is the point.

// clang-format off
#include "platform/win32.h"
#include <commctrl.h>
// clang-format on
