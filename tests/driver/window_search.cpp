#include "tests/driver/window_search.h"

#include <array>

namespace lunara::test {
namespace {

struct Search {
    DWORD process;
    const WCHAR* className;
    const WCHAR* title;  // null: any
    bool visible;
    HWND found;
};

/// Compares the title that the system keeps, without sending a message to the thread of the window.
bool HasTitle(HWND window, const WCHAR* title) {
    std::array<WCHAR, 64> text{};
    ::InternalGetWindowText(window, text.data(), static_cast<int>(text.size()));
    return title == nullptr || ::lstrcmpW(text.data(), title) == 0;
}

BOOL CALLBACK Match(HWND window, LPARAM lParam) {
    auto& search = *reinterpret_cast<Search*>(lParam);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == search.process && HasClass(window, search.className) &&
        HasTitle(window, search.title) && (!search.visible || ::IsWindowVisible(window) != 0)) {
        search.found = window;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK MatchUnpainted(HWND window, LPARAM lParam) {
    auto& found = *reinterpret_cast<bool*>(lParam);
    found = NeedsPaint(window);
    return found ? FALSE : TRUE;
}

}  // namespace

bool HasClass(HWND window, const WCHAR* className) {
    std::array<WCHAR, 64> name{};
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return ::lstrcmpiW(name.data(), className) == 0;
}

HWND FindTopLevel(DWORD process, const WCHAR* className, const WCHAR* title, bool visible) {
    Search search{process, className, title, visible, nullptr};
    ::EnumWindows(Match, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND FindChild(HWND parent, DWORD process, const WCHAR* className, const WCHAR* title) {
    Search search{process, className, title, false, nullptr};
    ::EnumChildWindows(parent, Match, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool NeedsPaint(HWND window) {
    return ::IsWindowVisible(window) != 0 && ::GetUpdateRect(window, nullptr, FALSE) != 0;
}

bool HasUnpainted(HWND parent) {
    bool found = false;
    ::EnumChildWindows(parent, MatchUnpainted, reinterpret_cast<LPARAM>(&found));
    return found;
}

bool HasFocus(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus == window || ::IsChild(window, info.hwndFocus) != 0;
}

}  // namespace lunara::test
