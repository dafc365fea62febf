#pragma once

// The geometry of the agenda: item cells on the left, bubbles with the days' texts on the right, an
// arrow from each row to its bubble. Knows no window; how large a text is comes from the caller.

#include <array>
#include <cstdint>

#include "platform/win32.h"

namespace lunara {

/// What a point of the agenda belongs to.
enum AgendaArea : int {
    AgendaItemCell = 1,
    AgendaRightOfItems = 2,
    AgendaOutside = 3,
};

/// Largest line count and cell width: no window has more pixels, and their product stays in range.
inline constexpr std::int32_t MaxAgendaMeasure = 0x7FFF;

/// A row's text and where it goes.
struct AgendaBubble {
    RECT bubble;       // the rounded rectangle
    RECT text;         // inside it
    POINT arrowStart;  // right edge of the row's item cells
    POINT arrowEnd;    // the text's top-left corner
    LONG nextBubbleY;  // where the next bubble may begin
};

/// A line from `lineStart` to `tip` and a filled triangle; the last point of `head` is the first.
struct AgendaArrow {
    POINT lineStart;
    POINT tip;
    std::array<POINT, 4> head;
};

class AgendaLayout {
  public:
    /// `lines` (item cells of a row) and `itemWidth` in 1..MaxAgendaMeasure; `lineHeight` (one line
    /// of text, px) >= 1.
    AgendaLayout(const RECT& clientArea, std::int32_t lines, std::int32_t itemWidth,
                 LONG lineHeight);

    LONG Padding() const { return padding; }
    /// Where bubbles begin, unless their text needs more room.
    LONG TextLeft() const { return client.left + (lineCount + 2) * cellWidth; }
    /// The width at which texts wrap; >= 1 even where no room is left.
    LONG TextWidth() const;

    /// What is drawn for item `column` of the row that begins at `y`: neighbours share a border.
    RECT ItemRectangle(std::int32_t column, LONG y, LONG rowHeight) const;
    /// A picture of that size, centred in the item's cell. One that is larger than the cell (the
    /// window was made small) is shrunk to fit.
    RECT PictureRectangle(std::int32_t column, LONG y, LONG rowHeight, SIZE picture) const;

    /// Places the bubble of the row that begins at `rowY`. `bubbleY` is where the previous bubble
    /// allows this one to begin, `text` the size of the wrapped text.
    AgendaBubble PlaceBubble(LONG rowY, LONG bubbleY, SIZE text) const;

    /// `column` is stored for an item cell only.
    AgendaArea HitTest(POINT point, std::int32_t& column) const;

  private:
    RECT client;
    std::int32_t lineCount;
    std::int32_t cellWidth;
    LONG textHeight;
    LONG padding;
};

/// The arrow from `from` to `to`, whose tip stops 5 px short; false when there is nothing to draw
/// between the two.
bool FindArrow(POINT from, POINT to, AgendaArrow& arrow);

}  // namespace lunara
