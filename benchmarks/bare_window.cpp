// The smallest program that paints a window: a peer of start_bench, for what any start costs on
// this machine.

#include "benchmarks/grey_window.h"

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        ::PostQuitMessage(0);
        return 0;
    }
    return GreyProcedure(window, message, wParam, lParam);
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
    return RunMessages();
}
