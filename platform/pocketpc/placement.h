#pragma once

#include "platform/win32.h"

namespace lunara {

/// Where a child window is in its parent's client area, in pixels.
RECT PlaceOf(HWND child);

/// Puts a child there. Its place in the order stays, by which the keyboard goes. Costs nothing when
/// it is there already, and little while nobody sees it.
void PutAt(HWND child, const RECT& place);

}  // namespace lunara
