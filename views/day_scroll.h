#pragma once

// Scrolling of a view by days: keeps the first day shown, and moves the view's scroll bar and
// calendar strip along with it. One step of the bar is one day. The range of the bar and the
// distance of each scroll request are computed in views/diary_layout.h.

#include "diary/user_data.h"
#include "platform/win32.h"
#include "views/calendar_ctrl.h"
#include "views/diary_layout.h"

namespace lunara {

class DayScroll {
  public:
    /// Starts today. Sends each new start to `calendar`, which must outlive this object; without a
    /// window `calendar` misses it.
    explicit DayScroll(CalendarCtrl& calendar);

    /// Sets the scroll bar control and double-buffers its painting. The view keeps ownership and
    /// sets null when the control is destroyed.
    void SetBar(HWND control);
    HWND Bar() const { return bar; }

    /// The first day shown.
    const SYSTEMTIME& Start() const { return start; }
    /// Scrolls to `date` as first day. False, with nothing changed, when it is the start already or
    /// all zero (what AddDays gives for a day outside the calendar).
    bool MoveTo(const SYSTEMTIME& date);
    /// Scrolls to today and sets the bar's range: from the first recorded day to a year ahead.
    void Reset(const UserData& data);
    /// The first day that a scroll request (an SB_ code) asks for; all zero outside the calendar.
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
