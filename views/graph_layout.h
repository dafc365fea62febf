#pragma once

// Where the parts of the graph view stand. Pure functions.

#include <cstdint>

#include "platform/win32.h"

namespace lunara {

/// Width of the unit buttons and of the chart's left margin.
inline constexpr LONG GraphLeftColumnPx = 34;
inline constexpr std::int32_t GraphDaysShown = 15;

/// Sizes of the system and of texts in the shell font, in px.
struct GraphMetrics {
    LONG textHeight;       // a line
    LONG scrollBarWidth;   // of a vertical one; the spin control is as wide
    LONG scrollBarHeight;  // of a horizontal one
    SIZE dateLabel;
    SIZE valueLabel;
};

struct GraphLayout {
    RECT chart;
    RECT calendar;
    RECT scrollBar;
    RECT fahrenheitButton;
    RECT celsiusButton;
    RECT legendArea;  // the legend picture stands in its middle
    RECT dateLabel;
    RECT datePicker;
    RECT valueLabel;
    RECT valueEdit;
    RECT valueSpin;
};

/// From the bottom upwards: the row of labels and fields; the scroll bar; the calendar; and the
/// chart over the whole rest, above the left column as well. No rectangle has a negative size.
GraphLayout LayOutGraph(const RECT& client, const GraphMetrics& metrics);

/// The calendar's height: three lines of text. On the device a cell is about one line high. Where
/// cells are much larger than the font, three lines do not hold a cell, a day number below it and
/// the month's name below that, whose sizes follow the cell; then it is three cells, but never so
/// much that a low window has no room for its chart.
LONG GraphCalendarHeight(LONG textHeight, LONG cellSize, LONG clientHeight);

/// A rectangle of that size in the middle of the area.
RECT CenteredIn(const RECT& area, SIZE size);

/// How many columns of days the chart has behind its margin, a cut-off one included; 0 without
/// room.
std::int32_t GraphColumns(LONG chartWidth, LONG dayWidth);

}  // namespace lunara
