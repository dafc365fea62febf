#pragma once

// Position and size of child windows in client coordinates of their parent.

#include "platform/win32.h"

namespace lunara {

/// The rectangle of `child` in client coordinates of its parent, in pixels.
RECT PlaceOf(HWND child);

/// Moves and resizes `child` to `place`, in client coordinates of its parent, in pixels. Keeps the
/// z-order, and with it the tab order. Does nothing when the child is there already; does not
/// repaint or copy pixels while it is hidden.
void PutAt(HWND child, const RECT& place);

}  // namespace lunara
