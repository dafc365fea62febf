#pragma once

// Where the parts of the diary view stand and what its scroll bar says. Pure functions.

#include <cstdint>

#include "platform/win32.h"

namespace lunara {

struct DiaryLayout {
    RECT scrollBar;
    RECT calendar;
    RECT agenda;
};

/// Scroll bar, calendar and agenda side by side, each over the whole height. Neighbours overlap by
/// a pixel, which hides their double border. The agenda never gets a negative width.
DiaryLayout LayOutDiary(const RECT& client, LONG scrollBarWidth, LONG calendarWidth);

/// The calendar's width: three lines of the shell font (`textHeight` px each). On the device a cell
/// is about one line high. Where cells are much larger than the font, three lines do not hold a
/// cell, the month's name and a day number of two digits, whose sizes follow the cell; then it is
/// as wide as these need. `numberWidth` is the width of "00" in the font of the cells.
LONG CalendarWidth(LONG textHeight, LONG cellSize, LONG numberWidth);

/// How many rows it takes to fill that height, a cut-off one included; 0 without rows.
std::int32_t RowsToFill(LONG height, LONG rowHeight);

struct ScrollState {
    std::int32_t minimum;
    std::int32_t maximum;
    std::int32_t position;
};

/// The scroll bar of a diary that stands at today: one step is a day, and it reaches from the first
/// record (`daysSinceFirstRecord` >= 0 before today; negative when there is none) to a year ahead.
ScrollState InitialScroll(std::int32_t daysSinceFirstRecord);

/// The scroll bar after the start has moved by that many days. Past either end of the range the
/// range grows.
ScrollState MoveScroll(ScrollState scroll, std::int32_t days);

/// How many days the start moves for a scroll request (an SB_ code). `trackDistance` is how far the
/// thumb was dragged. 0 for requests that move nothing.
std::int32_t ScrollDistance(int request, std::int32_t trackDistance);

/// The start that brings a date that is not shown into view: the second row from the bottom for a
/// date on or after the present start, the third one from the top for an earlier one. `rows` as
/// from `RowsToFill`.
SYSTEMTIME StartToShow(const SYSTEMTIME& date, const SYSTEMTIME& start, std::int32_t rows);

}  // namespace lunara
