#pragma once

#include "platform/win32.h"

namespace lunara {

/// The process-wide application instance, set once at start and read by every resource load.
void SetAppInstance(HINSTANCE instance);
HINSTANCE AppInstance();

}  // namespace lunara
