#pragma once

#include "platform/win32.h"

namespace lunara {

/// From here on the control of the system's is painted into memory first and copied from there in
/// one piece, so that nobody sees it half painted. Under Wine that takes less time, too: a visual
/// style makes a picture for each of its parts, and makes them in memory then (see MakePicture).
///
/// For controls that paint into the device context that comes with WM_PAINT. One that does not goes
/// on painting as it always did.
void PaintThroughMemory(HWND control);

}  // namespace lunara
