#pragma once

#include "platform/win32.h"

namespace lunara {

/// A picture of 32 bits per pixel in the program's own memory, the caller's to delete; null when it
/// is empty or there is no memory for it. Each bitmap that is made for the display instead, and
/// each selection of one, makes Wine ask its server three questions about the monitors.
HBITMAP CreateMemoryPicture(LONG width, LONG height);

/// From here on the control of the system's is painted into memory first and copied from there in
/// one piece, so that nobody sees it half painted. Under Wine that takes less time, too: a visual
/// style makes a picture for each of its parts, and makes them in memory then.
///
/// For controls that paint into the device context that comes with WM_PAINT. One that does not goes
/// on painting as it always did.
void PaintThroughMemory(HWND control);

}  // namespace lunara
