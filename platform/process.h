#pragma once

// What there is one of in the process: the instance that resources are loaded from, and the
// program's main window.

#include "platform/win32.h"

namespace lunara {

/// The application instance, set once at start and read by every resource load.
void SetAppInstance(HINSTANCE instance);
HINSTANCE AppInstance();

/// The program's one top-level window, which owns dialogs and boxes that name no other owner; null
/// while there is none.
void SetMainWindowHandle(HWND window);
HWND MainWindowHandle();

}  // namespace lunara
