#pragma once

// Window procedure and message loop of the programs with which start_bench compares Lunara.

#include <windows.h>

/// Fills the window with grey (192, 192, 192) on WM_PAINT and leaves every other message to the
/// system.
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

/// Dispatches messages until WM_QUIT; the result is the exit code.
inline int RunMessages() {
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}
