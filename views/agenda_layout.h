#pragma once

// Geometry of the agenda: item cells on the left, bubbles with the days' texts on the right, an
// arrow from each row to its bubble. Needs no window; the caller measures the texts. All lengths
// are px.

#include <array>
#include <cstdint>

#include "platform/win32.h"

namespace lunara {

/// The part of the agenda that a point lies in.
enum AgendaArea : int {
    AgendaItemCell = 1,
    AgendaRightOfItems = 2,
    AgendaOutside = 3,  // outside the client area
};

/// Largest line count and cell width. No window has more pixels, and the product of two such values
/// fits into 32 bits.
inline constexpr std::int32_t MaxAgendaMeasure = 0x7FFF;

/// Where a row's text is drawn, with its bubble and the arrow to it.
struct AgendaBubble {
    RECT bubble;       // the rounded rectangle
    RECT text;         // inside `bubble`
    POINT arrowStart;  // right edge of the row's item cells
    POINT arrowEnd;    // the text's top-left corner
    LONG nextBubbleY;  // the least `bubbleY` for the next row with a text
};

/// A line from `lineStart` to `tip` and a filled triangle, `head`, whose last point repeats the
/// first.
struct AgendaArrow {
    POINT lineStart;
    POINT tip;
    std::array<POINT, 4> head;
};

class AgendaLayout {
  public:
    /// `lines` (item cells per row) and `itemWidth` in 1..MaxAgendaMeasure. `lineHeight` is the
    /// height of a line of text; less than 1 counts as 1.
    AgendaLayout(const RECT& clientArea, std::int32_t lines, std::int32_t itemWidth,
                 LONG lineHeight);

    LONG Padding() const { return padding; }
    /// The left edge of bubbles. One whose text needs more room begins further left.
    LONG TextLeft() const { return client.left + (lineCount + 2) * cellWidth; }
    /// The width at which texts wrap; 1 where no room is left.
    LONG TextWidth() const;

    /// The cell of item `column` (0-based) in the row that begins at `y`, with the 1 px border that
    /// neighbours share.
    RECT ItemRectangle(std::int32_t column, LONG y, LONG rowHeight) const;
    /// Where a picture of size `picture` is drawn: centred in the item's cell. A picture larger
    /// than the cell (the window was made small) is shrunk to fit, with its proportions kept.
    RECT PictureRectangle(std::int32_t column, LONG y, LONG rowHeight, SIZE picture) const;

    /// Places the bubble of the row that begins at `rowY`. `bubbleY` is at least `rowY` and the
    /// `nextBubbleY` of the bubble above; `text` is the size of the wrapped text.
    AgendaBubble PlaceBubble(LONG rowY, LONG bubbleY, SIZE text) const;

    /// The area that `point` lies in. `column` is set for AgendaItemCell only.
    AgendaArea HitTest(POINT point, std::int32_t& column) const;

  private:
    RECT client;
    std::int32_t lineCount;
    std::int32_t cellWidth;
    LONG textHeight;
    LONG padding;
};

/// Computes the arrow from `from` towards `to`; its tip stops 5 px short of `to`. False, with
/// `arrow` untouched, when the two points are the same.
bool FindArrow(POINT from, POINT to, AgendaArrow& arrow);

}  // namespace lunara
