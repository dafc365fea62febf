#pragma once

// What the programs that start_bench compares Lunara with have in their windows.

#include <windows.h>

/// A window procedure that fills the window with grey and leaves the rest to the system.
inline LRESULT CALLBACK GreyProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    PAINTSTRUCT paint{};
    const HDC dc = ::BeginPaint(window, &paint);
    ::FillRect(dc, &paint.rcPaint, static_cast<HBRUSH>(::GetStockObject(LTGRAY_BRUSH)));
    ::EndPaint(window, &paint);
    return 0;
}

inline int RunMessages() {
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}
