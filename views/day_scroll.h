#pragma once

// The first day that a view shows, with its scroll bar and its calendar strip, which follow it. One
// step of the bar is a day. Where the range ends and how far a request moves is in
// views/diary_layout.h.

#include "diary/user_data.h"
#include "platform/win32.h"
#include "views/calendar_ctrl.h"
#include "views/diary_layout.h"

namespace lunara {

class DayScroll {
  public:
    /// Starts today. `calendar` is told of each new start, once it has a window.
    explicit DayScroll(CalendarCtrl& calendar);

    /// The scroll bar control, which stays the view's; null when it is gone.
    void SetBar(HWND control);
    HWND Bar() const { return bar; }

    const SYSTEMTIME& Start() const { return start; }
    /// False when nothing moved: the start stands there already, or `date` is none.
    bool MoveTo(const SYSTEMTIME& date);
    /// Back to today, with the range that the recorded days ask for.
    void Reset(const UserData& data);
    /// The start that a scroll request (an SB_ code) asks for.
    SYSTEMTIME AskedStart(int request) const;

  private:
    void Begin(const SYSTEMTIME& date);
    ScrollState GetState() const;
    void SetState(const ScrollState& state);

    CalendarCtrl& strip;
    HWND bar = nullptr;
    SYSTEMTIME start;
};

}  // namespace lunara
