#pragma once

// Draws the agenda's rows during one paint. Holds that paint's fonts, brushes and pictures, and
// what passes from one row to the next: the columns' colours and where the next bubble may begin.

#include <deque>
#include <string_view>
#include <vector>

#include "platform/gdi.h"
#include "views/agenda_ctrl.h"

namespace lunara {

/// Lives for one paint into `targetDc`. Frees its drawing objects in the destructor.
class AgendaPainter {
  public:
    AgendaPainter(HDC targetDc, const RECT& clientArea, std::int32_t lineCount,
                  std::int32_t cellWidth);

    /// Fills the client area with white.
    void DrawBackground();

    /// Draws the row that begins at `y` px. Call it from the top row down: each bubble is placed
    /// below the one before.
    void DrawRow(const AgendaRowRequest& row, const AgendaItem* items, LONG y);

  private:
    /// The fill brush of one column, kept across rows and recreated only when the colour changes.
    /// A null brush stands for white.
    struct ColumnBrush {
        COLORREF color = RGB(255, 255, 255);
        Brush brush;
    };

    /// A picture that stays selected into a memory device context for the whole paint. Selecting a
    /// bitmap is slow on some systems (Wine asks its server about the display each time), and all
    /// rows share a few pictures.
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
