#include "views/agenda_painter.h"

#include <algorithm>

namespace lunara {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Black = RGB(0, 0, 0);
constexpr COLORREF BubbleYellow = 0x80FFFF;
constexpr UINT WrappedText = DT_WORDBREAK | DT_NOPREFIX;

LONG FontHeight(HDC dc) {
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc, &metrics);
    return metrics.tmHeight;
}

Font BoldVariant(HDC dc) {
    LOGFONTW font{};
    ::GetObjectW(::GetCurrentObject(dc, OBJ_FONT), sizeof(font), &font);
    font.lfWeight = FW_BOLD;
    return Font(::CreateFontIndirectW(&font));
}

SIZE PictureSize(HBITMAP picture) {
    BITMAP header{};
    if (::GetObjectW(picture, sizeof(header), &header) == 0) {
        return {0, 0};
    }
    return {header.bmWidth, header.bmHeight};
}

/// Sets the text and background colours, and restores the previous ones at the end of its scope.
class ColorScope {
  public:
    ColorScope(HDC target, COLORREF text, COLORREF background)
        : dc(target),
          previousText(::SetTextColor(dc, text)),
          previousBackground(::SetBkColor(dc, background)) {}
    ColorScope(const ColorScope&) = delete;
    ColorScope& operator=(const ColorScope&) = delete;
    ~ColorScope() {
        ::SetTextColor(dc, previousText);
        ::SetBkColor(dc, previousBackground);
    }

  private:
    HDC dc;
    COLORREF previousText;
    COLORREF previousBackground;
};

}  // namespace

AgendaPainter::AgendaPainter(HDC targetDc, const RECT& clientArea, std::int32_t lineCount,
                             std::int32_t cellWidth)
    : dc(targetDc),
      client(clientArea),
      textHeight(std::max<LONG>(FontHeight(dc), 1)),
      layout(client, lineCount, cellWidth, textHeight),
      boldFont(BoldVariant(dc)),
      bubbleBrush(::CreateSolidBrush(BubbleYellow)),
      nextBubbleY(client.top) {
    brushes.resize(static_cast<std::size_t>(lineCount));
}

void AgendaPainter::DrawBackground() {
    const auto white = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    // Covers the item columns as well: below the last row no cells are drawn.
    ::FillRect(dc, &client, white);
}

HBRUSH AgendaPainter::BrushFor(std::int32_t column, COLORREF color) {
    ColumnBrush& entry = brushes[static_cast<std::size_t>(column)];
    if (entry.color != color) {
        entry.color = color;
        entry.brush = Brush(::CreateSolidBrush(color));
    }
    return entry.brush ? entry.brush.Get() : static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
}

void AgendaPainter::DrawRow(const AgendaRowRequest& row, const AgendaItem* items, LONG y) {
    for (std::int32_t column = 0; column < row.lineCount; ++column) {
        DrawItem(column, items[column], y, row.rowHeight);
    }
    nextBubbleY = std::max(nextBubbleY, y);
    if (row.text[0] != 0 && nextBubbleY < client.bottom) {
        DrawBubble(row.text, y);
    }
}

void AgendaPainter::DrawItem(std::int32_t column, const AgendaItem& item, LONG y, LONG rowHeight) {
    const HBRUSH brush = BrushFor(column, item.color);
    const auto white = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    const RECT cell = layout.ItemRectangle(column, y, rowHeight);
    {
        const SelectScope filled(dc, item.bitmap != nullptr ? white : brush);
        ::Rectangle(dc, cell.left, cell.top, cell.right, cell.bottom);
    }
    if (item.bitmap != nullptr) {
        const PictureSource& picture = SourceOf(item.bitmap);
        const RECT place = layout.PictureRectangle(column, y, rowHeight, picture.size);
        ::FillRect(dc, &place, brush);
        DrawPicture(picture, place, SRCPAINT);
    }
    if (item.overlay != nullptr) {
        const PictureSource& picture = SourceOf(item.overlay);
        DrawPicture(picture, layout.PictureRectangle(column, y, rowHeight, picture.size), SRCAND);
    }
}

AgendaPainter::PictureSource::PictureSource(HDC target, HBITMAP shown)
    : picture(shown),
      size(PictureSize(shown)),
      dc(::CreateCompatibleDC(target)),
      selected(dc.Get(), shown) {}

const AgendaPainter::PictureSource& AgendaPainter::SourceOf(HBITMAP picture) {
    for (const PictureSource& known : pictures) {
        if (known.picture == picture) {
            return known;
        }
    }
    return pictures.emplace_back(dc, picture);
}

void AgendaPainter::DrawPicture(const PictureSource& picture, const RECT& place, DWORD operation) {
    // Blitting a 1-bit picture translates it to the target's text and background colours.
    const ColorScope colors(dc, Black, White);
    const SIZE& size = picture.size;
    const SIZE shown = {place.right - place.left, place.bottom - place.top};
    if (shown.cx == size.cx && shown.cy == size.cy) {
        ::BitBlt(dc, place.left, place.top, size.cx, size.cy, picture.dc.Get(), 0, 0, operation);
        return;
    }
    // Keeps the default stretching mode, BLACKONWHITE: it preserves black pixels when shrinking,
    // and a mark's meaning is in its black lines.
    ::StretchBlt(dc, place.left, place.top, shown.cx, shown.cy, picture.dc.Get(), 0, 0, size.cx,
                 size.cy, operation);
}

void AgendaPainter::DrawBubble(std::wstring_view text, LONG y) {
    const auto length = static_cast<int>(text.size());
    RECT measured = {0, 0, layout.TextWidth(), 0};
    ::DrawTextW(dc, text.data(), length, &measured, WrappedText | DT_CALCRECT);
    const AgendaBubble place =
        layout.PlaceBubble(y, nextBubbleY, {measured.right, measured.bottom});
    {
        const SelectScope noOutline(dc, ::GetStockObject(NULL_PEN));
        const SelectScope filled(dc, bubbleBrush.Get());
        ::RoundRect(dc, place.bubble.left, place.bubble.top, place.bubble.right,
                    place.bubble.bottom, textHeight, textHeight);
    }
    {
        // Opaque text: the first line is drawn twice, and the bold copy must hide the normal one.
        const ColorScope colors(dc, Black, BubbleYellow);
        const BackgroundModeScope opaque(dc, OPAQUE);
        RECT room = place.text;
        ::DrawTextW(dc, text.data(), length, &room, WrappedText);
        if (const std::size_t lineEnd = text.find(L'\n'); lineEnd != std::wstring_view::npos) {
            const SelectScope bold(dc, boldFont.Get());
            room = place.text;
            ::DrawTextW(dc, text.data(), static_cast<int>(lineEnd), &room, WrappedText | DT_NOCLIP);
        }
    }
    DrawArrow(place.arrowStart, place.arrowEnd);
    nextBubbleY = place.nextBubbleY;
}

void AgendaPainter::DrawArrow(POINT from, POINT to) {
    AgendaArrow arrow{};
    if (!FindArrow(from, to, arrow)) {
        return;
    }
    ::MoveToEx(dc, arrow.lineStart.x, arrow.lineStart.y, nullptr);
    ::LineTo(dc, arrow.tip.x, arrow.tip.y);
    const SelectScope filled(dc, ::GetStockObject(WHITE_BRUSH));
    ::Polygon(dc, arrow.head.data(), static_cast<int>(arrow.head.size()));
}

}  // namespace lunara
