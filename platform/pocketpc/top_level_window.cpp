#include "platform/pocketpc/top_level_window.h"

#include <algorithm>

#include "platform/process.h"
#include "platform/subclass.h"

namespace lunara {
namespace {

constexpr DWORD FrameStyle =
    WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_THICKFRAME | WS_CLIPCHILDREN;

constexpr UINT_PTR IconTimerId = 0x49434F;  // differs from the window's own timer ids

HINSTANCE iconModule = nullptr;
UINT icon = 0;

/// The window size, in pixels, that gives a client area of size `client`.
SIZE FrameSize(SIZE client, DWORD style, DWORD exStyle) {
    RECT frame{0, 0, client.cx, client.cy};
    ::AdjustWindowRectEx(&frame, style, FALSE, exStyle);
    return SIZE{frame.right - frame.left, frame.bottom - frame.top};
}

void LimitSize(HWND window, MINMAXINFO& limits) {
    const SIZE least =
        FrameSize(LeastClient, static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_STYLE)),
                  static_cast<DWORD>(::GetWindowLongPtrW(window, GWL_EXSTYLE)));
    limits.ptMinTrackSize = POINT{least.cx, least.cy};
}

/// Moves the window inside the work area. The system's default positions cascade, so a tall window
/// can extend below the screen.
void KeepOnScreen(HWND window) {
    RECT work{};
    RECT frame{};
    if (::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0) == FALSE ||
        ::GetWindowRect(window, &frame) == FALSE) {
        return;
    }
    const LONG x =
        std::max(work.left, std::min(frame.left, work.right - (frame.right - frame.left)));
    const LONG y =
        std::max(work.top, std::min(frame.top, work.bottom - (frame.bottom - frame.top)));
    if (x != frame.left || y != frame.top) {
        ::SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

/// Timer procedure that sets the window's icons. Loading them takes some milliseconds; WM_TIMER is
/// dispatched only when the queue is empty, so the user does not wait for it at the start.
void CALLBACK GiveIcons(HWND window, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
    ::KillTimer(window, timer);
    struct {
        WPARAM kind;
        int width;
        int height;
    } const kinds[] = {{ICON_BIG, SM_CXICON, SM_CYICON}, {ICON_SMALL, SM_CXSMICON, SM_CYSMICON}};
    for (const auto& [kind, width, height] : kinds) {
        // LR_SHARED: the system owns and frees the icon.
        const HANDLE loaded =
            ::LoadImageW(iconModule, MAKEINTRESOURCEW(icon), IMAGE_ICON, ::GetSystemMetrics(width),
                         ::GetSystemMetrics(height), LR_SHARED);
        if (loaded != nullptr) {
            ::SendMessageW(window, WM_SETICON, kind, reinterpret_cast<LPARAM>(loaded));
        }
    }
}

LRESULT CALLBACK TopLevelProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETMINMAXINFO) {
        LimitSize(window, *reinterpret_cast<MINMAXINFO*>(lParam));
        return 0;
    }
    const LRESULT result = CallPrevious(&TopLevelProc, window, message, wParam, lParam);
    if (message == WM_DESTROY) {
        SetMainWindowHandle(nullptr);
        RemoveSubclass(window, &TopLevelProc);
    }
    return result;
}

}  // namespace

void PrepareTopLevelWindow(CREATESTRUCTW& parameters) {
    const DWORD style = static_cast<DWORD>(parameters.style) | FrameStyle;
    const SIZE wanted = FrameSize(PortraitClient, style, parameters.dwExStyle);
    RECT work{0, 0, wanted.cx, wanted.cy};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    parameters.style = static_cast<LONG>(style);
    parameters.cx = static_cast<int>(std::min(wanted.cx, work.right - work.left));
    parameters.cy = static_cast<int>(std::min(wanted.cy, work.bottom - work.top));
}

void EquipTopLevelWindow(HWND window, HINSTANCE instance, UINT iconId) {
    SetMainWindowHandle(window);
    AddSubclass(window, &TopLevelProc);
    KeepOnScreen(window);
    iconModule = instance;
    icon = iconId;
    ::SetTimer(window, IconTimerId, USER_TIMER_MINIMUM, &GiveIcons);
}

}  // namespace lunara
