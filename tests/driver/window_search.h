#pragma once

// Finds windows of other processes and reads their state, without sending them a message: the
// thread that owns a window may be busy.

#include <windows.h>

namespace lunara::test {

/// Compares without regard to case, as the system does with class names.
bool HasClass(HWND window, const WCHAR* className);

/// A top-level window of that process; null when there is none. Titles are compared whole and with
/// case; a null title matches any. With `visible`, hidden windows do not match.
HWND FindTopLevel(DWORD process, const WCHAR* className, const WCHAR* title, bool visible);
/// A descendant of `parent` at any depth, hidden or not, that belongs to that process; null when
/// there is none. Titles as in `FindTopLevel`.
HWND FindChild(HWND parent, DWORD process, const WCHAR* className, const WCHAR* title);

/// Whether the window is visible and has an update region.
bool NeedsPaint(HWND window);
/// Whether a descendant of `parent` needs paint; false when `parent` no longer exists.
bool HasUnpainted(HWND parent);

/// Whether the window or a descendant has the focus of the thread that owns it.
bool HasFocus(HWND window);

}  // namespace lunara::test
