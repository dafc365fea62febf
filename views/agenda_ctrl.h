#pragma once

// The agenda: a child window with one row per day, each with a number of coloured item cells and a
// text in a bubble beside them. It knows nothing of days: it asks its parent for every row while it
// paints, and tells it of taps.

#include "platform/gdi.h"
#include "views/agenda_layout.h"
#include "window/notification.h"

namespace lunara {

inline constexpr WCHAR AgendaClassName[] = TEXT("AgendaCtrl");

/// wParam: line count, the number of item cells of a row; lParam: cell width in px. Result 1; 0,
/// and nothing changes, unless both are in 1..MaxAgendaMeasure.
inline constexpr UINT AGM_SETMEASURES = WM_USER + 1;
/// lParam: AgendaHitTest. Result: an AgendaArea.
inline constexpr UINT AGM_HITTEST = WM_USER + 2;

struct AgendaHitTest {
    POINT pt;           // in, client coordinates
    std::int32_t line;  // the item's column, stored for an item cell only
};

/// AgendaRowRequest, once for each row while painting, from the top down. Non-zero: it was filled
/// in.
inline constexpr UINT AGN_GETROW = 1;
/// AgendaTap, when the button or stylus goes up.
inline constexpr UINT AGN_TAP = 2;

inline constexpr int AgendaTextCapacity = 128;

struct AgendaItem {
    COLORREF color;   // initially white
    HBITMAP bitmap;   // or null; united with the colour: black shows it, white stays white
    HBITMAP overlay;  // or null; laid over both: white leaves them, black marks
};

/// `lineCount` AgendaItem records follow it in memory.
struct AgendaRowRequest {
    NMHDR header;
    std::int32_t rowIndex;           // in; 0 for the top row
    std::int32_t rowHeight;          // px; a row of no height ends the agenda
    WCHAR text[AgendaTextCapacity];  // a first line ended by a line feed is shown bold
    std::int32_t lineCount;          // in

    AgendaItem* Items() { return reinterpret_cast<AgendaItem*>(this + 1); }
};
static_assert(sizeof(AgendaRowRequest) % alignof(AgendaItem) == 0);

struct AgendaTap {
    NMHDR header;
    POINT pt;
};

class AgendaCtrl : public NotifyingControl {
  public:
    AgendaCtrl() = default;

    /// Paints the agenda as it would look in a client area `client`, in the device context's font
    /// and pen.
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
