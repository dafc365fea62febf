#pragma once

#include "platform/win32.h"

namespace lunara {

/// Removes the desktop's visual style from a control, so that it is drawn as on the device. Needed
/// for check boxes with a text colour: a styled one ignores the colour that its dialog sets.
void DropVisualStyle(HWND control);

}  // namespace lunara
