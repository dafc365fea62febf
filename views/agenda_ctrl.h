#pragma once

// The agenda control: a child window with one row per day. Each row has coloured item cells on the
// left and a text in a bubble on the right. The control knows nothing of days: it asks its parent
// for every row while it paints (AGN_GETROW) and reports taps (AGN_TAP).

#include "platform/gdi.h"
#include "views/agenda_layout.h"
#include "window/notification.h"

namespace lunara {

inline constexpr WCHAR AgendaClassName[] = TEXT("AgendaCtrl");

/// Sets the number of item cells per row (wParam) and their width in px (lParam), each in
/// 1..MaxAgendaMeasure, and repaints. Result 1; 0, with nothing changed, when either is out of
/// range.
inline constexpr UINT AGM_SETMEASURES = WM_USER + 1;
/// Tells what lies under a point. lParam: AgendaHitTest. Result: an AgendaArea.
inline constexpr UINT AGM_HITTEST = WM_USER + 2;

struct AgendaHitTest {
    POINT pt;           // in, client coordinates
    std::int32_t line;  // out, the item's column (0-based), set for AgendaItemCell only
};

/// AgendaRowRequest, sent once per row while painting, from the top down. The parent fills it in
/// and answers non-zero; 0 ends the agenda above this row.
inline constexpr UINT AGN_GETROW = 1;
/// AgendaTap, sent when the left button or stylus goes up. The answer is ignored.
inline constexpr UINT AGN_TAP = 2;

/// UTF-16 units of a row's text, terminator included.
inline constexpr int AgendaTextCapacity = 128;

struct AgendaItem {
    COLORREF color;   // white unless the parent changes it
    HBITMAP bitmap;   // or null; ORed onto the colour: black pixels show it, white ones stay white
    HBITMAP overlay;  // or null; ANDed onto the result: black pixels mark it, white ones keep it
};

/// One row, to be filled in by the parent. `lineCount` AgendaItem records follow it in memory.
struct AgendaRowRequest {
    NMHDR header;
    std::int32_t rowIndex;           // in; 0 for the top row
    std::int32_t rowHeight;          // px; outside 1..MaxAgendaMeasure it ends the agenda
    WCHAR text[AgendaTextCapacity];  // a first line that ends in a line feed is drawn bold
    std::int32_t lineCount;          // in

    AgendaItem* Items() { return reinterpret_cast<AgendaItem*>(this + 1); }
};
static_assert(sizeof(AgendaRowRequest) % alignof(AgendaItem) == 0);

struct AgendaTap {
    NMHDR header;
    POINT pt;  // client coordinates
};

class AgendaCtrl : public NotifyingControl {
  public:
    AgendaCtrl() = default;

    /// Paints the agenda, laid out for a client area `client`, with the device context's font and
    /// pen.
    void Draw(HDC dc, const RECT& client);

    std::int32_t LineCount() const { return lineCount; }
    std::int32_t CellWidth() const { return cellWidth; }

    int PreCreateWindow(CREATESTRUCTW& parameters) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    void OnPaint();
    void OnLButtonUp(POINT point);
    LRESULT OnSetMeasures(WPARAM newLineCount, LPARAM newCellWidth);
    LRESULT OnHitTest(AgendaHitTest& request) const;

    void DrawEmpty(HDC dc, const RECT& client) const;

    std::int32_t lineCount = 0;
    std::int32_t cellWidth = 0;
};

}  // namespace lunara
