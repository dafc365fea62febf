#include "views/agenda_layout.h"

#include <algorithm>
#include <cmath>

namespace lunara {
namespace {

POINT Moved(POINT point, double dx, double dy) {
    return {point.x + static_cast<LONG>(std::round(dx)),
            point.y + static_cast<LONG>(std::round(dy))};
}

}  // namespace

AgendaLayout::AgendaLayout(const RECT& clientArea, std::int32_t lines, std::int32_t itemWidth,
                           LONG lineHeight)
    : client(clientArea),
      lineCount(lines),
      cellWidth(itemWidth),
      textHeight(std::max<LONG>(lineHeight, 1)),
      padding(textHeight / 3) {}

LONG AgendaLayout::TextWidth() const { return std::max<LONG>(client.right - TextLeft(), 1); }

RECT AgendaLayout::ItemRectangle(std::int32_t column, LONG y, LONG rowHeight) const {
    const LONG x = client.left + cellWidth * column;
    return {x, y, x + cellWidth + 1, y + rowHeight + 1};
}

RECT AgendaLayout::PictureRectangle(std::int32_t column, LONG y, LONG rowHeight,
                                    SIZE picture) const {
    // The cell less the 1 px border.
    const LONG room = std::max<LONG>(std::min<LONG>(cellWidth, rowHeight) - 1, 1);
    if (const LONG largest = std::max(picture.cx, picture.cy); largest > room) {
        picture = {picture.cx * room / largest, picture.cy * room / largest};
    }
    const LONG x = client.left + cellWidth * column + (cellWidth - picture.cx) / 2 + 1;
    const LONG top = y + (rowHeight - picture.cy) / 2 + 1;
    return {x, top, x + picture.cx, top + picture.cy};
}

AgendaBubble AgendaLayout::PlaceBubble(LONG rowY, LONG bubbleY, SIZE text) const {
    AgendaBubble result{};
    // A text too wide for its room moves left, over the item cells if it must, until its bubble
    // ends 2 px inside the client area.
    const LONG x = std::min(TextLeft(), client.right - 2 * (padding + 1) - text.cx);
    result.bubble = {x, bubbleY + padding, x + 2 * padding + text.cx,
                     bubbleY + padding + 2 * padding + text.cy};
    result.text = {x + padding, bubbleY + 2 * padding, x + padding + text.cx,
                   bubbleY + 2 * padding + text.cy};
    result.arrowStart = {client.left + cellWidth * lineCount, rowY + 2 * padding};
    result.arrowEnd = {result.text.left, result.text.top};
    result.nextBubbleY = (text.cy / textHeight + 1) * textHeight + bubbleY;
    return result;
}

AgendaArea AgendaLayout::HitTest(POINT point, std::int32_t& column) const {
    if (point.x < client.left || point.x >= client.right || point.y < client.top ||
        point.y >= client.bottom) {
        return AgendaOutside;
    }
    const LONG hit = (point.x - client.left) / cellWidth;
    if (hit >= lineCount) {
        return AgendaRightOfItems;
    }
    column = static_cast<std::int32_t>(hit);
    return AgendaItemCell;
}

bool FindArrow(POINT from, POINT to, AgendaArrow& arrow) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::sqrt(dx * dx + dy * dy);
    if (std::round(length) == 0) {
        return false;
    }
    const double ux = 1 / length * dx;
    const double uy = 1 / length * dy;
    arrow.lineStart = from;
    arrow.tip = Moved(to, -5 * ux, -5 * uy);
    // The other two corners lie 10 px back along the line, 4 px to either side of it.
    arrow.head = {arrow.tip, Moved(arrow.tip, -10 * ux + 4 * uy, -4 * ux - 10 * uy),
                  Moved(arrow.tip, -10 * ux - 4 * uy, 4 * ux - 10 * uy), arrow.tip};
    return true;
}

}  // namespace lunara
