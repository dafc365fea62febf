#include "platform/subclass.h"

#include <algorithm>
#include <vector>

namespace lunara {
namespace {

/// One procedure that subclasses one window.
struct Subclassing {
    HWND window;
    WNDPROC procedure;
    WNDPROC previous;  // receives the messages that `procedure` passes on
};

/// All subclassings, oldest first. Searched linearly, because there are few: of the main window,
/// its bar, the scroll bars, and a dialog or two with their fields.
std::vector<Subclassing>& Subclassings() {
    static std::vector<Subclassing> subclassings;
    return subclassings;
}

std::vector<Subclassing>::iterator Find(HWND window, WNDPROC procedure) {
    return std::find_if(Subclassings().begin(), Subclassings().end(),
                        [=](const Subclassing& known) {
                            return known.window == window && known.procedure == procedure;
                        });
}

WNDPROC CurrentProcedure(HWND window) {
    return reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(window, GWLP_WNDPROC));
}

}  // namespace

WNDPROC AddSubclass(HWND window, WNDPROC procedure) {
    if (::IsWindow(window) == FALSE || Find(window, procedure) != Subclassings().end()) {
        return nullptr;
    }
    // Add the entry first: SetWindowLongPtrW may send a message to `procedure`, which needs it.
    const WNDPROC previous = CurrentProcedure(window);
    Subclassings().push_back({window, procedure, previous});
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    return previous;
}

void RemoveSubclass(HWND window, WNDPROC procedure) {
    const auto removed = Find(window, procedure);
    if (removed == Subclassings().end()) {
        return;
    }
    const auto above =
        std::find_if(Subclassings().begin(), Subclassings().end(), [&](const Subclassing& known) {
            return known.window == window && known.previous == procedure;
        });
    if (above != Subclassings().end()) {
        above->previous = removed->previous;
    } else if (CurrentProcedure(window) == procedure) {
        ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(removed->previous));
    } else if (::IsWindow(window) != FALSE) {
        // Foreign code subclassed the window later and still calls `procedure`. Keep the entry
        // until the window is destroyed, so that CallPrevious can pass messages on.
        return;
    }
    Subclassings().erase(removed);
}

LRESULT CallPrevious(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = Find(window, procedure);
    if (found == Subclassings().end()) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    const LRESULT result = ::CallWindowProcW(found->previous, window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        std::erase_if(Subclassings(), [=](const Subclassing& known) {
            return known.window == window && known.procedure == procedure;
        });
    }
    return result;
}

std::size_t SubclassCount() { return Subclassings().size(); }

}  // namespace lunara
