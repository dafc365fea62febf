#pragma once

// What the tests of controls and views share: boxes that compare, a sink made of a function, what a
// device context has selected, and a hand that works a modal dialog.

#include <functional>
#include <utility>

#include "platform/clock.h"
#include "records/dates.h"
#include "tests/box.h"
#include "tests/ui/ui_test.h"
#include "window/notification.h"

namespace lunara::test {

inline Box ClientBox(HWND window) {
    RECT rect{};
    ::GetClientRect(window, &rect);
    return BoxOf(rect);
}

/// Where a child stands in its parent's client area.
inline Box BoxOf(HWND child) {
    RECT rect{};
    ::GetWindowRect(child, &rect);
    ::MapWindowPoints(nullptr, ::GetParent(child), reinterpret_cast<POINT*>(&rect), 2);
    return BoxOf(rect);
}

inline std::wstring ClassOf(HWND window) {
    WCHAR name[64] = {};
    ::GetClassNameW(window, name, 64);
    return name;
}

/// Whether anything of a visible window waits to be painted.
inline bool WaitsForPaint(HWND window) { return ::GetUpdateRect(window, nullptr, FALSE) != FALSE; }

/// A sink made of a function.
class ScriptedSink : public NotificationSink {
  public:
    explicit ScriptedSink(std::function<LRESULT(NMHDR&)> answer) : script(std::move(answer)) {}
    LRESULT Notify(NMHDR& record) override { return script(record); }

  private:
    std::function<LRESULT(NMHDR&)> script;
};

/// What a device context has selected.
struct Selection {
    explicit Selection(HDC dc)
        : font(::GetCurrentObject(dc, OBJ_FONT)),
          brush(::GetCurrentObject(dc, OBJ_BRUSH)),
          pen(::GetCurrentObject(dc, OBJ_PEN)),
          backgroundMode(::GetBkMode(dc)),
          textColor(::GetTextColor(dc)),
          backgroundColor(::GetBkColor(dc)) {}
    bool operator==(const Selection&) const = default;

    HGDIOBJ font;
    HGDIOBJ brush;
    HGDIOBJ pen;
    int backgroundMode;
    COLORREF textColor;
    COLORREF backgroundColor;
};

/// While it lives, the next dialog of this thread is handed to `work` once it has come up.
class DialogHand {
  public:
    explicit DialogHand(std::function<void(HWND)> handWork) {
        work = std::move(handWork);
        used = false;
        timer = ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &DialogHand::Look);
    }
    DialogHand(const DialogHand&) = delete;
    DialogHand& operator=(const DialogHand&) = delete;
    ~DialogHand() {
        ::KillTimer(nullptr, timer);
        work = nullptr;
    }
    bool WasUsed() const { return used; }

  private:
    static BOOL CALLBACK TryWindow(HWND window, LPARAM found) {
        if (ClassOf(window) != L"#32770" || ::IsWindowVisible(window) == FALSE) {
            return TRUE;
        }
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
        HWND found = nullptr;
        ::EnumThreadWindows(::GetCurrentThreadId(), &TryWindow, reinterpret_cast<LPARAM>(&found));
        if (found != nullptr && work && !used) {
            used = true;
            work(found);
        }
    }

    UINT_PTR timer;
    static inline std::function<void(HWND)> work;
    static inline bool used = false;
};

}  // namespace lunara::test
