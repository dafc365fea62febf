#pragma once

#include "platform/win32.h"

namespace lunara {

/// Makes a control draw itself as on the device. With the desktop's visual styles a check box would
/// take the colour of its text from them and not from its dialog.
void DropVisualStyle(HWND control);

}  // namespace lunara
