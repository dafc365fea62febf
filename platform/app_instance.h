#pragma once

#include "platform/win32.h"

namespace lunara {

/// The application's instance handle, set once at start. Windows are created and the program's
/// resources loaded with it.
void SetAppInstance(HINSTANCE instance);
HINSTANCE AppInstance();

}  // namespace lunara
