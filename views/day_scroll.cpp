#include "views/day_scroll.h"

#include "cycle/predictor.h"
#include "platform/clock.h"
#include "records/dates.h"
#include "window/double_buffer.h"

namespace lunara {

DayScroll::DayScroll(CalendarCtrl& calendar) : strip(calendar), start(LocalNow()) {}

void DayScroll::SetBar(HWND control) {
    bar = control;
    if (bar != nullptr) {
        DoubleBufferControl(bar);
    }
}

bool DayScroll::MoveTo(const SYSTEMTIME& date) {
    // AddDays gives all zeros for a day outside the calendar.
    if (date.wYear == 0) {
        return false;
    }
    const std::int32_t days = DaysBetween(date, start);
    if (days == 0) {
        return false;
    }
    Begin(date);
    SetState(MoveScroll(GetState(), days));
    return true;
}

void DayScroll::Reset(const UserData& data) {
    // The bar's position stands for the first day shown, so the range is computed for a view that
    // starts today.
    Begin(LocalNow());
    SYSTEMTIME first{};
    const bool hasRecords = GetFirstRealRecordDate(data, first) != 0;
    SetState(InitialScroll(hasRecords ? DaysBetween(start, first) : -1));
}

SYSTEMTIME DayScroll::AskedStart(int request) const {
    SCROLLINFO info{};
    if (request == SB_THUMBPOSITION) {
        info.cbSize = sizeof(info);
        info.fMask = SIF_POS | SIF_TRACKPOS;
        ::GetScrollInfo(bar, SB_CTL, &info);
    }
    SYSTEMTIME asked{};
    AddDays(start, ScrollDistance(request, info.nTrackPos - info.nPos), asked);
    return asked;
}

void DayScroll::Begin(const SYSTEMTIME& date) {
    start = date;
    ::SendMessageW(strip.Handle(), CCM_SETSTARTDATE, 0, reinterpret_cast<LPARAM>(&start));
}

ScrollState DayScroll::GetState() const {
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_POS;
    ::GetScrollInfo(bar, SB_CTL, &info);
    return {info.nMin, info.nMax, info.nPos};
}

void DayScroll::SetState(const ScrollState& state) {
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_POS;
    info.nMin = state.minimum;
    info.nMax = state.maximum;
    info.nPos = state.position;
    // Does not redraw at once: the bar is invalidated and painted together with the view.
    ::SetScrollInfo(bar, SB_CTL, &info, FALSE);
    if (::IsWindowVisible(bar) != FALSE) {
        ::InvalidateRect(bar, nullptr, FALSE);
    }
}

}  // namespace lunara
