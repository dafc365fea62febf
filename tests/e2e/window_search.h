#pragma once

// Windows of other programs: found by what they are, and asked how far they have come.

#include <windows.h>

namespace lunara::e2e {

bool HasClass(HWND window, const WCHAR* className);

/// A window of that process on the desktop. The title is compared whole; null is any title.
HWND FindTopLevel(DWORD process, const WCHAR* className, const WCHAR* title, bool visible);
/// The same among all windows inside `parent`, seen or not.
HWND FindChild(HWND parent, DWORD process, const WCHAR* className, const WCHAR* title);

bool NeedsPaint(HWND window);
/// Whether a window inside this one has something left to paint; none when it is gone.
bool HasUnpainted(HWND parent);

/// Whether the window or one inside it has its program's focus.
bool HasFocus(HWND window);

}  // namespace lunara::e2e
