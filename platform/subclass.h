#pragma once

// Window subclassing: a subclass procedure receives a window's messages before the procedure that
// the window had, and passes on those that it does not handle. Several procedures may subclass one
// window and be removed in any order.
//
// It replaces SetWindowSubclass of the common controls, which keeps its list in window properties
// and reads it at each message. Under Wine that is a server request per message, a fifth of all
// requests during start-up. The list here is in the process, and its lookup costs nothing
// measurable.
//
// Call these functions on the window's thread only.

#include <cstddef>

#include "platform/win32.h"

namespace lunara {

/// Subclasses `window` with `procedure`, which receives each message before the procedures added
/// earlier. Returns the window's previous procedure; null, with nothing changed, when `window` is
/// no window or `procedure` subclasses it already.
WNDPROC AddSubclass(HWND window, WNDPROC procedure);

/// Ends the subclassing of `window` by `procedure`; does nothing when there is none. May be called
/// from `procedure` itself, which can then no longer pass its current message on. Not needed for a
/// window that is destroyed: `CallPrevious` removes the subclassing at WM_NCDESTROY.
void RemoveSubclass(HWND window, WNDPROC procedure);

/// Passes a message on to the procedure that `window` had before `procedure` subclassed it. Calls
/// the system's default procedure when `procedure` does not subclass `window`.
LRESULT CallPrevious(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// The number of subclassings of all windows. Tests end by asserting that none is left.
std::size_t SubclassCount();

}  // namespace lunara
