#pragma once

// Takes part in the messages of a window that belongs to somebody else, before its own procedure.
//
// Windows has subclassing for this, but keeps what belongs to it in properties of the window, and
// looks them up at every message: on some systems (Wine) that is a request to another process each
// time, and a fifth of all that a start of the program asks for. Here it is a list of our own.

#include <cstddef>

#include "platform/win32.h"

namespace lunara {

/// One message on its way to a window.
struct HookedMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    std::size_t hooksLeft;  // how many older hooks have not been asked

    /// What the older hooks and, in the end, the window's own procedure answer.
    LRESULT PassOn() const;
};

using WindowHook = LRESULT (*)(const HookedMessage& message, void* reference);

/// From here on `hook` is asked before all that were added earlier, with `reference`, which has to
/// live until the hook is removed. A window that is destroyed loses its hooks by itself, after
/// WM_NCDESTROY. On the thread of the window.
void AddWindowHook(HWND window, WindowHook hook, void* reference);

/// Also from within a hook. Nothing happens when it is not there.
void RemoveWindowHook(HWND window, WindowHook hook, void* reference);

}  // namespace lunara
