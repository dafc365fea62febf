#include "views/diary_layout.h"

#include <algorithm>

#include "records/dates.h"

namespace lunara {
namespace {

constexpr std::int32_t DaysAhead = 365;
constexpr std::int32_t DaysPerPage = 10;
constexpr LONG CalendarWidthInLines = 3;

// Values of the system's SB_ codes, whose names native builds lack.
constexpr int RequestLineUp = 0;
constexpr int RequestLineDown = 1;
constexpr int RequestPageUp = 2;
constexpr int RequestPageDown = 3;
constexpr int RequestThumbPosition = 4;

}  // namespace

DiaryLayout LayOutDiary(const RECT& client, LONG scrollBarWidth, LONG calendarWidth) {
    DiaryLayout layout{client, client, client};
    layout.scrollBar.right = client.left + scrollBarWidth;
    layout.calendar.left = layout.scrollBar.right - 1;
    layout.calendar.right = layout.calendar.left + calendarWidth;
    layout.agenda.left = layout.calendar.right - 1;
    layout.agenda.right = std::max(client.right, layout.agenda.left);
    return layout;
}

LONG CalendarWidth(LONG textHeight, LONG cellSize, LONG numberWidth) {
    // The month's name runs downwards and is about as wide as a cell; 2 px keep it and the number
    // apart.
    const LONG needed = 2 * cellSize + numberWidth + 2;
    return std::max(CalendarWidthInLines * textHeight, needed);
}

std::int32_t RowsToFill(LONG height, LONG rowHeight) {
    return rowHeight < 1 || height < 1 ? 0 : (height + rowHeight - 1) / rowHeight;
}

ScrollState InitialScroll(std::int32_t daysSinceFirstRecord) {
    const std::int32_t past = std::max(daysSinceFirstRecord, 0);
    return {0, past + DaysAhead, past};
}

ScrollState MoveScroll(ScrollState scroll, std::int32_t days) {
    const std::int32_t position = scroll.position + days;
    if (position < scroll.minimum) {
        return {0, scroll.maximum - position + scroll.minimum, 0};
    }
    if (position > scroll.maximum) {
        return {0, position, position};
    }
    return {scroll.minimum, scroll.maximum, position};
}

std::int32_t ScrollDistance(int request, std::int32_t trackDistance) {
    switch (request) {
        case RequestLineUp:
            return -1;
        case RequestLineDown:
            return 1;
        case RequestPageUp:
            return -DaysPerPage;
        case RequestPageDown:
            return DaysPerPage;
        case RequestThumbPosition:
            return trackDistance;
        default:
            // SB_THUMBTRACK included: dragging scrolls only when the thumb is released.
            return 0;
    }
}

SYSTEMTIME StartToShow(const SYSTEMTIME& date, const SYSTEMTIME& start, std::int32_t rows) {
    SYSTEMTIME result{};
    AddDays(date, IsDateBefore(date, start) != 0 ? -2 : -(rows - 2), result);
    return result;
}

}  // namespace lunara
