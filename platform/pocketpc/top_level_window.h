#pragma once

// The program's one top-level window. On the device every window without a parent fills the screen
// and has no frame; a desktop wants a frame, a size and a pointer.

#include "platform/win32.h"

namespace lunara {

/// Client size at 96 dpi, in pixels, and the least one that the window can be dragged to.
inline constexpr SIZE PortraitClient{480, 640};
inline constexpr SIZE LeastClient{240, 320};

/// Turns the parameters of a bare visible window into those of a portrait window with caption,
/// close and minimise boxes and a resizable frame. A screen that is too small makes it smaller.
void PrepareTopLevelWindow(CREATESTRUCTW& parameters);

/// Makes the window the program's main window (MainWindowHandle) until it is destroyed: limits its
/// size to `LeastClient`, moves it onto the screen where it hangs over an edge, and gives it its
/// icon (resource `iconId` of `instance`) once it is idle. To be called while it is created.
void EquipTopLevelWindow(HWND window, HINSTANCE instance, UINT iconId);

}  // namespace lunara
