// The smallest program with a painted window: what any start costs on this machine.

#include <windows.h>

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: {
            PAINTSTRUCT paint{};
            const HDC dc = ::BeginPaint(window, &paint);
            ::FillRect(dc, &paint.rcPaint, static_cast<HBRUSH>(::GetStockObject(LTGRAY_BRUSH)));
            ::EndPaint(window, &paint);
            return 0;
        }
        case WM_DESTROY:
            ::PostQuitMessage(0);
            return 0;
        default:
            return ::DefWindowProcW(window, message, wParam, lParam);
    }
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPWSTR /*line*/, int show) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = L"LunaraBareWindow";
    ::RegisterClassW(&windowClass);
    const HWND window = ::CreateWindowExW(0, L"LunaraBareWindow", L"Bare window",
                                          WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 496,
                                          679, nullptr, nullptr, instance, nullptr);
    ::ShowWindow(window, show);
    ::UpdateWindow(window);
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}
