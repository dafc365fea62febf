#include "views/calendar_layout.h"

#include <algorithm>

#include "records/dates.h"

namespace lunara {
namespace {

bool Contains(const RECT& rect, POINT point) {
    return point.x >= rect.left && point.x < rect.right && point.y >= rect.top &&
           point.y < rect.bottom;
}

bool HasSameDate(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return a.wYear == b.wYear && a.wMonth == b.wMonth && a.wDay == b.wDay;
}

bool IsNumberedDay(WORD day) { return day == 1 || day % 5 == 0; }

/// The arrow of a horizontal strip, in px from (middle of today's cell, top of the band). A
/// vertical strip turns it by 90 degrees.
constexpr std::array<POINT, 8> HorizontalArrow = {
    {{0, 1}, {-4, 5}, {-2, 5}, {-2, 13}, {2, 13}, {2, 5}, {4, 5}, {0, 1}}};

}  // namespace

int DaysInMonth(WORD year, WORD month) {
    static constexpr std::array<int, 12> Days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > Days.size()) {
        return 31;
    }
    // Deliberately without the century rule: the band keeps the device's leap years, 2100 among
    // them, although the days beside it follow the Gregorian calendar.
    const bool leapYear = (year & 3) == 0;
    return month == 2 && leapYear ? 29 : Days[month - 1];
}

std::int32_t FittingDayCount(LONG extent, std::int32_t requested) {
    if (extent < 1 || requested < 1) {
        return 0;
    }
    const LONG cell = std::max<LONG>(extent / requested, 1);
    return extent / cell;
}

CalendarLayout::CalendarLayout(const RECT& clientArea, std::int32_t days, bool isVertical)
    : client(clientArea),
      dayCount(days),
      vertical(isVertical),
      cellSize(0),
      strip(clientArea),
      band(clientArea) {
    const LONG extent = StripEnd() - StripStart();
    if (dayCount >= 1 && extent >= 1) {
        cellSize = extent / dayCount;
    }
    if (vertical) {
        strip.left = client.right - cellSize;
        band.right = strip.left;
    } else {
        strip.bottom = client.top + cellSize;
        band.top = strip.bottom;
    }
}

std::int32_t CalendarLayout::VisibleCells() const {
    return cellSize < 1 ? 0 : (StripEnd() - StripStart() + cellSize - 1) / cellSize;
}

RECT CalendarLayout::CellRectangle(std::int32_t cell) const {
    const LONG start = CellStart(cell);
    if (vertical) {
        return {strip.left, start, strip.right, start + cellSize + 1};
    }
    return {start, strip.top, start + cellSize + 1, strip.bottom + 1};
}

RECT CalendarLayout::SegmentRectangle(const MonthSegment& segment) const {
    const LONG end = segment.start + segment.length + 1;
    if (vertical) {
        return {band.left, segment.start, band.right + 1, end};
    }
    return {segment.start, band.top, end, band.bottom + 1};
}

std::vector<MonthSegment> CalendarLayout::MonthSegments(const SYSTEMTIME& start) const {
    std::vector<MonthSegment> segments;
    if (cellSize < 1) {
        return segments;
    }
    SYSTEMTIME date = start;
    LONG position = StripStart();
    // A first day beyond the end of its month (29 February of a common year) takes one cell.
    LONG days = std::max(DaysInMonth(date.wYear, date.wMonth) - date.wDay + 1, 1);  // [1, 31]
    while (position < StripEnd()) {
        const LONG length = std::min(days * cellSize, StripEnd() - position);
        segments.push_back({position, length, date});
        position += length;
        // Day and day of week stay those of the strip's first day: the colour depends on the month
        // alone.
        date.wMonth = static_cast<WORD>(date.wMonth % 12 + 1);
        if (date.wMonth == 1) {
            ++date.wYear;
        }
        days = DaysInMonth(date.wYear, date.wMonth);  // [28, 31]
    }
    return segments;
}

bool CalendarLayout::FindTodayMarker(const MonthSegment& segment, const SYSTEMTIME& start,
                                     const SYSTEMTIME& today, TodayMarker& marker) const {
    // IsDateInStrip admits the day after the last cell. Its marker shows only where the pixels left
    // over behind the last cell make more than half a cell.
    if (cellSize < 1 || !IsDateInStrip(today, start, dayCount)) {
        return false;
    }
    const LONG position = CellStart(DaysBetween(today, start)) + cellSize / 2;
    if (position < segment.start || position >= segment.start + segment.length) {
        return false;
    }
    for (std::size_t i = 0; i < marker.size(); ++i) {
        const POINT& offset = HorizontalArrow[i];
        marker[i] = vertical ? POINT{band.right - offset.y, position + offset.x}
                             : POINT{position + offset.x, band.top + offset.y};
    }
    return true;
}

std::vector<DayLabel> CalendarLayout::DayLabels(const SYSTEMTIME& start) const {
    std::vector<DayLabel> labels;
    const std::int32_t cells = VisibleCells();
    for (std::int32_t i = 0; i < cells; ++i) {
        SYSTEMTIME date{};
        AddDays(start, i, date);
        const bool isWhole = StripEnd() - CellStart(i) >= cellSize;
        bool isLabelled = isWhole && IsNumberedDay(date.wDay);
        if (i == 0) {
            // The first cell is labelled unless the second one is.
            SYSTEMTIME second{};
            AddDays(start, 1, second);
            isLabelled = isLabelled || !IsNumberedDay(second.wDay);
        }
        if (i == dayCount - 1) {
            // The last cell is labelled unless the one before it is: the days 2, 6, 11, ..., 31
            // follow a numbered day.
            isLabelled = isLabelled || (date.wDay % 5 != 1 && date.wDay != 2);
        }
        if (isLabelled) {
            labels.push_back({i, i == 0 ? start.wDay : date.wDay});
        }
    }
    return labels;
}

POINT CalendarLayout::Clamp(POINT point) const {
    point.x = std::clamp(point.x, client.left, std::max(client.left, client.right));
    if (vertical) {
        if (point.y < client.top) {
            point.y = client.top;
        } else if (point.x > client.bottom) {
            // Deliberately compares x, not y, with the bottom edge: a point below the strip is not
            // clamped and counts days on beyond the last cell, as the strip's owners expect.
            point.y = client.bottom;
        }
    }
    return point;
}

CalendarHit CalendarLayout::HitTest(POINT point, const SYSTEMTIME& start) const {
    CalendarHit hit{};
    if (Contains(strip, point)) {
        hit.area = CCHT_DAY;
    } else if (Contains(band, point)) {
        hit.area = CCHT_MONTHBAND;
    } else {
        hit.area = CCHT_OUTSIDE;
        point = Clamp(point);
    }
    const LONG offset = vertical ? point.y - client.top : point.x - client.left;
    const LONG index = cellSize < 1 ? 0 : offset / cellSize;
    AddDays(start, index, hit.date);
    const LONG cellStart = CellStart(index);
    hit.cell = vertical
                   ? RECT{client.right - cellSize, cellStart, client.right, cellStart + cellSize}
                   : RECT{cellStart, client.top, cellStart + cellSize, client.top + cellSize};
    return hit;
}

bool CalendarLayout::FindDay(const SYSTEMTIME& date, const SYSTEMTIME& start, RECT& cell) const {
    for (std::int32_t i = 0; i < dayCount; ++i) {
        SYSTEMTIME shown{};
        if (AddDays(start, i, shown) == 0 || !HasSameDate(shown, date)) {
            continue;
        }
        const LONG cellStart = CellStart(i);
        cell =
            vertical
                ? RECT{client.right - cellSize, cellStart, client.right, cellStart + cellSize + 1}
                : RECT{cellStart, client.top, cellStart + cellSize + 1, client.top + cellSize + 1};
        return true;
    }
    return false;
}

bool IsDateInStrip(const SYSTEMTIME& date, const SYSTEMTIME& start, std::int32_t dayCount) {
    const std::int32_t days = DaysBetween(date, start);
    // The day just after the last cell counts as shown: the views do not scroll to bring it in.
    return days >= 0 && days <= dayCount;
}

}  // namespace lunara
