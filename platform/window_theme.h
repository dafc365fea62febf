#pragma once

#include "platform/win32.h"

namespace lunara {

/// Takes the desktop's visual style off a control, so that it draws itself as on the device. A
/// styled check box ignores the text colour that its dialog sets.
void DropVisualStyle(HWND control);

}  // namespace lunara
