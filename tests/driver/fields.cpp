#include "tests/driver/fields.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "tests/driver/failure.h"
#include "tests/driver/wait.h"

namespace lunara::test {
namespace {

RECT ClientOf(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    return client;
}

MCHITTESTINFO HitTest(const Program& program, HWND calendar, POINT point) {
    MCHITTESTINFO hit{};
    hit.cbSize = sizeof hit;
    hit.pt = point;
    program.SendRecord(calendar, MCM_HITTEST, 0, &hit, sizeof hit);
    return hit;
}

/// The first day of the first month that a drop-down calendar shows whole.
Day MonthShown(const Program& program, HWND calendar) {
    std::array<SYSTEMTIME, 2> range{};
    program.SendRecord(calendar, MCM_GETMONTHRANGE, GMR_VISIBLE, range.data(), sizeof range);
    return ToDay(range[0]);
}

/// Months since the year 0.
int MonthNumber(Day day) { return day.year * 12 + day.month; }

constexpr LONG StepPx = 8;  // smaller than every part of a calendar
constexpr POINT Nowhere{-1, -1};

bool IsNowhere(POINT point) { return point.x < 0; }

/// The first place at height `y` whose hit test fulfils `isIt`; Nowhere when there is none.
template <typename Condition>
POINT FindInRow(const Program& program, HWND calendar, LONG y, Condition&& isIt) {
    const LONG width = ClientOf(calendar).right;
    for (LONG x = StepPx; x < width; x += StepPx) {
        if (isIt(HitTest(program, calendar, {x, y}))) {
            return {x, y};
        }
    }
    return Nowhere;
}

/// One of the two arrows beside the calendar's title; Nowhere when it shows none.
POINT FindTitleArrow(const Program& program, HWND calendar, UINT arrow) {
    const LONG height = ClientOf(calendar).bottom;
    POINT place = Nowhere;
    for (LONG y = StepPx; y < height && IsNowhere(place); y += StepPx) {
        place = FindInRow(program, calendar, y,
                          [&](const MCHITTESTINFO& hit) { return hit.uHit == arrow; });
    }
    return place;
}

/// The cell of a day of the month that the calendar shows; Nowhere when it shows another month.
POINT FindDay(const Program& program, HWND calendar, Day day) {
    constexpr int DaysPerWeek = 7;
    const RECT client = ClientOf(calendar);
    POINT place = Nowhere;
    for (LONG y = StepPx; y < client.bottom && IsNowhere(place); y += StepPx) {
        // Each hit test is a round trip to the other process. Only a row with a day in its middle
        // that is less than a week away can hold the day; its own days before and after the month
        // count.
        const MCHITTESTINFO middle = HitTest(program, calendar, {client.right / 2, y});
        if ((middle.uHit & MCHT_CALENDARDATE) == MCHT_CALENDARDATE &&
            std::abs(DaysBetween(ToDay(middle.st), day)) < DaysPerWeek) {
            place = FindInRow(program, calendar, y, [&](const MCHITTESTINFO& hit) {
                return hit.uHit == MCHT_CALENDARDATE && ToDay(hit.st) == day;
            });
        }
    }
    return place;
}

/// Clicks the calendar's arrow, one month at a time, until it shows the month of `day`.
bool TurnToMonth(Program& program, HWND calendar, Day day) {
    int away = MonthNumber(MonthShown(program, calendar)) - MonthNumber(day);
    if (away == 0) {
        return true;
    }
    const UINT arrow = away > 0 ? MCHT_TITLEBTNPREV : MCHT_TITLEBTNNEXT;
    const POINT place = FindTitleArrow(program, calendar, arrow);
    while (away != 0) {
        if (IsNowhere(place) || !program.ClickAt(calendar, place)) {
            return false;
        }
        const int before = away;
        if (!WaitFor([&] {
                away = MonthNumber(MonthShown(program, calendar)) - MonthNumber(day);
                return away != before;
            })) {
            return false;
        }
    }
    return true;
}

/// Order of day, month and year in the user's short dates: "MDY", "DMY" or "YMD".
std::string_view LocaleOrder() {
    std::array<WCHAR, 4> order{};
    ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_IDATE, order.data(),
                     static_cast<int>(order.size()));
    return order[0] == L'1' ? "DMY" : order[0] == L'2' ? "YMD" : "MDY";
}

/// The middle of an up-down control's arrow.
POINT ArrowOf(HWND spin, bool up) {
    const RECT client = ClientOf(spin);
    return {client.right / 2, up ? client.bottom / 4 : client.bottom - client.bottom / 4};
}

}  // namespace

Day PickedDay(const Program& program, HWND picker) {
    SYSTEMTIME date{};
    program.SendRecord(picker, DTM_GETSYSTEMTIME, 0, &date, sizeof date);
    return ToDay(date);
}

bool PickFromCalendar(Program& program, HWND picker, Day day) {
    const RECT client = ClientOf(picker);
    const auto calendar = reinterpret_cast<HWND>(::SendMessageW(picker, DTM_GETMONTHCAL, 0, 0));
    if (!program.ClickAt(picker, {client.right - 6, client.bottom / 2}) ||
        !WaitFor([&] { return ::IsWindowVisible(calendar) != 0; })) {
        return ReportFailure("the calendar does not drop down");
    }
    if (!TurnToMonth(program, calendar, day)) {
        return ReportFailure("the calendar does not turn to the month");
    }
    const POINT cell = FindDay(program, calendar, day);
    if (IsNowhere(cell)) {
        return ReportFailure("the calendar does not show " + ToUtf8(IsoDate(day)));
    }
    if (!program.ClickAt(calendar, cell) ||
        !WaitFor([&] { return ::IsWindowVisible(calendar) == 0; })) {
        return ReportFailure("the calendar does not take the click");
    }
    return program.Settle();
}

bool TypeDate(Program& program, HWND picker, Day day) {
    const RECT client = ClientOf(picker);
    if (!program.ClickAt(picker, {client.left + 5, client.bottom / 2}) || !program.Settle()) {
        return false;
    }
    for (const char part : LocaleOrder()) {
        program.Type(std::to_wstring(part == 'D' ? day.day : part == 'M' ? day.month : day.year));
        program.Press(VK_RIGHT);
    }
    return program.Settle();
}

bool ClickArrow(Program& program, HWND spin, bool up) {
    return program.ClickAt(spin, ArrowOf(spin, up)) && program.Settle();
}

bool HoldArrow(Program& program, HWND spin, bool up, const std::function<bool()>& reached) {
    const POINT arrow = ArrowOf(spin, up);
    bool came = false;
    return program.Drag(spin, arrow, arrow, [&] { came = WaitFor(reached); }) && came &&
           program.Settle();
}

bool ClickArrowUntil(Program& program, HWND spin, bool up, HWND field, const std::wstring& text,
                     int most) {
    for (int clicks = 0; Program::TextOf(field) != text; ++clicks) {
        if (clicks == most || !ClickArrow(program, spin, up)) {
            return ReportFailure("the field comes to show \"" + ToUtf8(Program::TextOf(field)) +
                                 "\" instead of \"" + ToUtf8(text) + "\"");
        }
    }
    return true;
}

}  // namespace lunara::test
