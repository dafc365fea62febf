#pragma once

// Helpers with which the two views create their children. All children are created visible.

#include "platform/win32.h"
#include "window/window.h"

namespace lunara {

inline LONG Width(const RECT& rect) { return rect.right - rect.left; }
inline LONG Height(const RECT& rect) { return rect.bottom - rect.top; }

inline HMENU ControlId(int id) { return reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)); }

/// Creates a child of one of the system's window classes, without a title. Null when that fails.
inline HWND CreateSystemControl(const WCHAR* className, DWORD exStyle, DWORD style,
                                const RECT& place, HWND parent, int id) {
    return ::CreateWindowExW(exStyle, className, nullptr, WS_CHILD | WS_VISIBLE | style, place.left,
                             place.top, Width(place), Height(place), parent, ControlId(id),
                             AppInstance(), nullptr);
}

/// Creates the window of one of our own controls. False when that fails.
inline bool CreateControl(Window& control, const WCHAR* title, DWORD style, const RECT& place,
                          HWND parent, int id) {
    return control.Create(0, nullptr, title, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                          Width(place), Height(place), parent, ControlId(id)) != 0;
}

}  // namespace lunara
