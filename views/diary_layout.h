#pragma once

// Geometry of the diary view and the arithmetic of its scroll bar. Pure functions without a window;
// lengths are px.

#include <cstdint>

#include "platform/win32.h"

namespace lunara {

struct DiaryLayout {
    RECT scrollBar;
    RECT calendar;
    RECT agenda;
};

/// Places scroll bar, calendar and agenda side by side, from left to right, each over the whole
/// height. Neighbours overlap by 1 px, so that their borders coincide. The agenda's width is
/// clamped to 0.
DiaryLayout LayOutDiary(const RECT& client, LONG scrollBarWidth, LONG calendarWidth);

/// The calendar's width: three lines of the shell font (`textHeight` each), as on the device, where
/// a cell is about one line high. Cells much larger than the font need more: then the width is what
/// a cell, the month's name and a two-digit day number take, whose sizes follow the cell.
/// `numberWidth` is the width of "00" in the font of the cells.
LONG CalendarWidth(LONG textHeight, LONG cellSize, LONG numberWidth);

/// The number of rows that fill `height`, a last one that is cut off included; 0 when either
/// argument is less than 1.
std::int32_t RowsToFill(LONG height, LONG rowHeight);

/// Range and position of a scroll bar, in days.
struct ScrollState {
    std::int32_t minimum;
    std::int32_t maximum;
    std::int32_t position;
};

/// The scroll bar of a diary that starts today. It reaches from the first record to a year ahead.
/// `daysSinceFirstRecord` counts the days from that record to today; negative when the diary is
/// empty or begins in the future, and then the bar begins today.
ScrollState InitialScroll(std::int32_t daysSinceFirstRecord);

/// The scroll bar after the start has moved by `days` (negative: back). A position beyond either
/// end widens the range.
ScrollState MoveScroll(ScrollState scroll, std::int32_t days);

/// The days that the start moves for a scroll request (an SB_ code); 0 for requests that move
/// nothing. `trackDistance` is how far the thumb was dragged, in days.
std::int32_t ScrollDistance(int request, std::int32_t trackDistance);

/// The start that brings a hidden `date` into view: in the second row from the bottom when it is on
/// or after the present `start`, in the third row from the top when it is earlier. `rows` is the
/// result of `RowsToFill`. All zero when that start lies outside the calendar.
SYSTEMTIME StartToShow(const SYSTEMTIME& date, const SYSTEMTIME& start, std::int32_t rows);

}  // namespace lunara
