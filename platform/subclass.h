#pragma once

// Subclassing: a procedure gets the messages of a window ahead of the procedure that the window
// had, and passes on what it leaves to it. Several procedures may subclass one window and leave it
// in any order.
//
// The common controls' SetWindowSubclass keeps its list in window properties and looks it up at
// each message. Under Wine that is one request to the server a message, a fifth of all requests of
// a start. This list lies in the process, where the lookup costs nothing that can be measured.

#include <cstddef>

#include "platform/win32.h"

namespace lunara {

/// Subclasses `window` with `procedure`, which gets each message before those that were added
/// earlier. Returns the procedure that had them until now; null, with nothing changed, when
/// `window` is none or `procedure` subclasses it already. On the window's thread.
WNDPROC AddSubclass(HWND window, WNDPROC procedure);

/// Ends it; also from within `procedure`, whose current message can no longer be passed on then.
/// Does nothing when `procedure` does not subclass `window`. A window that is destroyed while
/// subclassed is removed by itself once its WM_NCDESTROY was passed on.
void RemoveSubclass(HWND window, WNDPROC procedure);

/// Passes a message on to the procedure that `window` had before `procedure` subclassed it, or to
/// the system's default procedure where `procedure` does not.
LRESULT CallPrevious(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Live subclassings of all windows. Tests end by asserting that none is left over.
std::size_t SubclassCount();

}  // namespace lunara
