#pragma once

// What a desktop needs to show the program's one top-level window. On the device a window without a
// parent fills the screen and has no frame; on a desktop it needs a frame, a size and an icon.

#include "platform/win32.h"

namespace lunara {

/// Client size of the new window, and the least one that it can be resized to, in pixels at 96 dpi.
inline constexpr SIZE PortraitClient{480, 640};
inline constexpr SIZE LeastClient{240, 320};

/// Changes the creation parameters of a frameless window to a window with caption, close and
/// minimise buttons, a resizable frame and a client area of `PortraitClient`. A work area that is
/// smaller limits the size.
void PrepareTopLevelWindow(CREATESTRUCTW& parameters);

/// Makes `window` the program's main window (MainWindowHandle) until it is destroyed. Limits its
/// client area to at least `LeastClient`, moves it inside the work area, and sets its icon
/// (resource `iconId` of `instance`) when it is first idle. To be called in WM_CREATE.
void EquipTopLevelWindow(HWND window, HINSTANCE instance, UINT iconId);

}  // namespace lunara
