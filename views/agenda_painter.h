#pragma once

// How the agenda draws its rows: the tools of one paint, and the steps of one row.

#include <deque>
#include <string_view>
#include <vector>

#include "platform/gdi.h"
#include "views/agenda_ctrl.h"

namespace lunara {

/// Makes the tools when it is made and releases them at the end of its scope.
class AgendaPainter {
  public:
    AgendaPainter(HDC targetDc, const RECT& clientArea, std::int32_t lineCount,
                  std::int32_t cellWidth);

    /// White wherever no row is drawn.
    void DrawBackground();

    /// Draws the row that begins at `y`.
    void DrawRow(const AgendaRowRequest& row, const AgendaItem* items, LONG y);

  private:
    /// The brush of a column, made anew only when the row before had another colour there. Without
    /// one of its own it is white.
    struct ColumnBrush {
        COLORREF color = RGB(255, 255, 255);
        Brush brush;
    };

    /// A picture in a device context of its own for the whole paint. To select one is slow on some
    /// systems (Wine asks its server about the display each time), and rows use the same few.
    struct PictureSource {
        PictureSource(HDC target, HBITMAP shown);

        HBITMAP picture;
        SIZE size;
        MemoryDc dc;
        SelectScope selected;
    };

    void DrawItem(std::int32_t column, const AgendaItem& item, LONG y, LONG rowHeight);
    void DrawPicture(const PictureSource& picture, const RECT& place, DWORD operation);
    void DrawBubble(std::wstring_view text, LONG y);
    void DrawArrow(POINT from, POINT to);
    HBRUSH BrushFor(std::int32_t column, COLORREF color);
    const PictureSource& SourceOf(HBITMAP picture);

    HDC dc;
    RECT client;
    LONG textHeight;
    AgendaLayout layout;
    Font boldFont;
    Brush bubbleBrush;
    std::deque<PictureSource> pictures;
    std::vector<ColumnBrush> brushes;
    LONG nextBubbleY;
};

}  // namespace lunara
