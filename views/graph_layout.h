#pragma once

// Geometry of the graph view. Pure functions without a window; lengths are px.

#include <cstdint>

#include "platform/win32.h"

namespace lunara {

/// Width of the column left of the calendar: unit buttons, legend and the chart's margin.
inline constexpr LONG GraphLeftColumnPx = 34;
/// Days to show at least; whole cells fill the calendar, so there can be more.
inline constexpr std::int32_t GraphDaysShown = 15;

/// What the layout depends on besides the client area: sizes of system parts and of texts in the
/// shell font.
struct GraphMetrics {
    LONG textHeight;       // of one line
    LONG scrollBarWidth;   // of a vertical scroll bar; the spin control is as wide
    LONG scrollBarHeight;  // of a horizontal scroll bar
    SIZE dateLabel;
    SIZE valueLabel;
};

struct GraphLayout {
    RECT chart;
    RECT calendar;
    RECT scrollBar;
    RECT fahrenheitButton;
    RECT celsiusButton;
    RECT legendArea;  // the legend picture is centred in it
    RECT dateLabel;
    RECT datePicker;
    RECT valueLabel;
    RECT valueEdit;
    RECT valueSpin;
};

/// Stacks, from the bottom up, the row of labels and fields, the scroll bar and the calendar; the
/// chart takes the rest over the whole width, left column included. No rectangle has a negative
/// size.
GraphLayout LayOutGraph(const RECT& client, const GraphMetrics& metrics);

/// The calendar's height: three lines of text, as on the device, where a cell is about one line
/// high. Cells much larger than the font need more: a cell, a day number below it and the month's
/// name below that, whose sizes follow the cell. Then the height is three cells, but at most half
/// of `clientHeight`, which leaves a low window room for its chart.
LONG GraphCalendarHeight(LONG textHeight, LONG cellSize, LONG clientHeight);

/// A rectangle of `size` in the middle of `area`; a larger one sticks out on all sides.
RECT CenteredIn(const RECT& area, SIZE size);

/// The number of day columns to the right of the chart's margin, a last one that is cut off
/// included; 0 without room.
std::int32_t GraphColumns(LONG chartWidth, LONG dayWidth);

}  // namespace lunara
