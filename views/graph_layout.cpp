#include "views/graph_layout.h"

#include <algorithm>

#include "views/calendar_layout.h"
#include "views/diary_layout.h"

namespace lunara {
namespace {

constexpr LONG LabelIndentPx = 10;
constexpr LONG GapPx = 5;
constexpr LONG FieldRisePx = 4;   // a field begins this far above its label
constexpr LONG FieldExtraPx = 8;  // a field is this much higher than a line of text
constexpr LONG CalendarLines = 3;

/// The rectangle of that size at (left, top); a negative width or height becomes 0.
RECT At(LONG left, LONG top, LONG width, LONG height) {
    return {left, top, left + std::max<LONG>(width, 0), top + std::max<LONG>(height, 0)};
}

LONG CellSize(LONG stripWidth) {
    const std::int32_t days = FittingDayCount(stripWidth, GraphDaysShown);
    return days < 1 ? 0 : stripWidth / days;
}

void LayOutEntryRow(const RECT& client, const GraphMetrics& metrics, GraphLayout& layout) {
    const LONG top = client.bottom - 3 * metrics.textHeight / 2;
    layout.dateLabel = At(LabelIndentPx, top, metrics.dateLabel.cx, metrics.dateLabel.cy);
    layout.valueLabel =
        At((client.left + client.right) / 2, top, metrics.valueLabel.cx, metrics.valueLabel.cy);
    const LONG fieldTop = top - FieldRisePx;
    const LONG fieldHeight = metrics.textHeight + FieldExtraPx;
    const LONG spinLeft = client.right - GapPx - metrics.scrollBarWidth;
    layout.datePicker = At(layout.dateLabel.right, fieldTop,
                           layout.valueLabel.left - GapPx - layout.dateLabel.right, fieldHeight);
    layout.valueEdit =
        At(layout.valueLabel.right, fieldTop, spinLeft - layout.valueLabel.right, fieldHeight);
    layout.valueSpin = At(layout.valueEdit.right, fieldTop, metrics.scrollBarWidth, fieldHeight);
}

}  // namespace

GraphLayout LayOutGraph(const RECT& client, const GraphMetrics& metrics) {
    GraphLayout layout{};
    LayOutEntryRow(client, metrics, layout);

    const LONG stripLeft = client.left + GraphLeftColumnPx;
    const LONG stripWidth = client.right - client.left - GraphLeftColumnPx;
    const LONG calendarHeight =
        GraphCalendarHeight(metrics.textHeight, CellSize(stripWidth), client.bottom - client.top);
    const LONG entryHeight = 2 * metrics.textHeight;
    const LONG chartBottom = std::max(
        client.top, client.bottom - entryHeight - calendarHeight - metrics.scrollBarHeight);
    layout.chart =
        At(client.left, client.top, client.right - client.left, chartBottom - client.top);
    layout.calendar = At(stripLeft, chartBottom, stripWidth, calendarHeight);
    layout.scrollBar =
        At(stripLeft, chartBottom + calendarHeight, stripWidth, metrics.scrollBarHeight);

    const LONG buttonHeight = (metrics.scrollBarHeight + calendarHeight) / 2;
    layout.fahrenheitButton = At(client.left, chartBottom, GraphLeftColumnPx, buttonHeight);
    layout.celsiusButton =
        At(client.left, chartBottom + buttonHeight, GraphLeftColumnPx, buttonHeight);
    layout.legendArea = At(client.left, chartBottom + calendarHeight / CalendarLines,
                           GraphLeftColumnPx, buttonHeight);
    return layout;
}

LONG GraphCalendarHeight(LONG textHeight, LONG cellSize, LONG clientHeight) {
    const LONG needed = std::min(CalendarLines * cellSize, clientHeight / 2);
    return std::max(CalendarLines * textHeight, needed);
}

RECT CenteredIn(const RECT& area, SIZE size) {
    const LONG left = area.left + (area.right - area.left - size.cx) / 2;
    const LONG top = area.top + (area.bottom - area.top - size.cy) / 2;
    return {left, top, left + size.cx, top + size.cy};
}

std::int32_t GraphColumns(LONG chartWidth, LONG dayWidth) {
    return RowsToFill(chartWidth - GraphLeftColumnPx, dayWidth);
}

}  // namespace lunara
