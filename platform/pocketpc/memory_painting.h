#pragma once

#include "platform/win32.h"

namespace lunara {

/// From here on the control of the system's is painted into memory first and copied from there in
/// one piece, so that nobody sees it half painted. Under Wine this also halves the time, because
/// each picture that a visual style makes for the screen asks its server several questions.
///
/// For controls that paint into the device context that comes with WM_PAINT. One that does not goes
/// on painting as it always did.
void PaintThroughMemory(HWND control);

}  // namespace lunara
