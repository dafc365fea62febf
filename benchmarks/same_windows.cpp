// A peer of start_bench: creates the windows of Lunara's start, sign-in included, with nothing
// behind them. No diary, no prediction, no layout; each child is filled with grey. Its time is the
// least that a start with these windows costs on this machine.

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <array>

#include "benchmarks/grey_window.h"
#include "resources/ids.h"

namespace {

constexpr wchar_t ChildClass[] = L"LunaraSameWindowsChild";
constexpr LONG Width = 480;
constexpr LONG Height = 640;
constexpr LONG BarHeight = 26;
constexpr LONG ViewHeight = Height - BarHeight;
constexpr int ButtonCount = 7;

HINSTANCE instance = nullptr;
bool isSignedIn = false;

void CreateChild(HWND parent, const wchar_t* className, const wchar_t* title, DWORD style,
                 LONG left, LONG right, int id) {
    ::CreateWindowExW(0, className, title, WS_CHILD | style, left, 0, right - left, ViewHeight,
                      parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
}

void CreateBar(HWND parent) {
    const HWND bar =
        ::CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                          WS_CHILD | WS_VISIBLE | CCS_NORESIZE | CCS_NOPARENTALIGN | TBSTYLE_FLAT |
                              TBSTYLE_LIST | TBSTYLE_TOOLTIPS,
                          0, ViewHeight, Width, BarHeight, parent, nullptr, instance, nullptr);
    std::array<TBBUTTON, ButtonCount> buttons{};
    for (TBBUTTON& button : buttons) {
        button.iBitmap = I_IMAGENONE;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = BTNS_CHECK;
    }
    ::SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    ::SendMessageW(bar, TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
}

INT_PTR CALLBACK SignInProcedure(HWND, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_COMMAND && LOWORD(wParam) == IDOK) {
        isSignedIn = true;
    }
    return message == WM_INITDIALOG ? TRUE : FALSE;
}

void SignIn(HWND main) {
    const HWND dialog =
        ::CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_LOGIN), main, &SignInProcedure, 0);
    ::EnableWindow(main, FALSE);
    ::ShowWindow(main, SW_SHOWNOACTIVATE);
    POINT corner{0, 0};
    ::ClientToScreen(main, &corner);
    ::SetWindowPos(dialog, nullptr, corner.x, corner.y, Width, Height, SWP_NOZORDER);
    ::ShowWindow(dialog, SW_SHOW);
    MSG message{};
    while (!isSignedIn && ::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (::IsDialogMessageW(dialog, &message) == FALSE) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
    ::SetActiveWindow(main);
    ::DestroyWindow(dialog);
    ::EnableWindow(main, TRUE);
    ::SetFocus(main);
}

void CreateViews(HWND main) {
    CreateChild(main, ChildClass, L"Diary view", WS_VISIBLE | WS_CLIPCHILDREN, 0, Width, 0);
    CreateChild(main, ChildClass, L"Graph view", 0, 0, Width, 0);
    const HWND diary = ::FindWindowExW(main, nullptr, nullptr, L"Diary view");
    CreateChild(diary, L"scrollbar", L"", WS_VISIBLE | SBS_VERT, 0, 17, 3003);
    CreateChild(diary, ChildClass, L"", WS_VISIBLE, 16, 112, 3002);
    CreateChild(diary, ChildClass, L"", WS_VISIBLE, 111, Width, 3001);
}

LRESULT CALLBACK MainProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            CreateBar(window);
            SignIn(window);
            CreateViews(window);
            return 0;
        case WM_DESTROY:
            ::PostQuitMessage(0);
            return 0;
        default:
            return ::DefWindowProcW(window, message, wParam, lParam);
    }
}

void RegisterWindowClass(const wchar_t* name, WNDPROC procedure) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = name;
    ::RegisterClassW(&windowClass);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE self, HINSTANCE /*previous*/, LPWSTR /*line*/, int show) {
    instance = self;
    INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&controls);
    RegisterWindowClass(ChildClass, &GreyProcedure);
    RegisterWindowClass(L"LunaraSameWindows", &MainProcedure);
    const DWORD style =
        WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_THICKFRAME | WS_CLIPCHILDREN;
    RECT frame{0, 0, Width, Height};
    ::AdjustWindowRectEx(&frame, style, FALSE, 0);
    const HWND window = ::CreateWindowExW(
        0, L"LunaraSameWindows", L"Lunara", style, CW_USEDEFAULT, CW_USEDEFAULT,
        frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr, instance, nullptr);
    ::ShowWindow(window, show);
    ::UpdateWindow(window);
    ::GdiFlush();
    return RunMessages();
}
