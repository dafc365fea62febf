#pragma once

// Process-wide values: the instance that resources are loaded from, and the main window.

#include "platform/win32.h"

namespace lunara {

/// Sets the application instance. Called once, at the start of the program.
void SetAppInstance(HINSTANCE instance);
/// The instance that resources are loaded from and window classes registered for.
HINSTANCE AppInstance();

/// Sets the program's one top-level window, or null when it is destroyed.
void SetMainWindowHandle(HWND window);
/// The program's one top-level window, which owns the dialogs and message boxes that name no other
/// owner; null while there is none.
HWND MainWindowHandle();

}  // namespace lunara
