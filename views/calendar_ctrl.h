#pragma once

// The calendar strip: a child window that shows consecutive days as a row or column of square
// cells, with a band of coloured months beside it. The parent scrolls it by setting another start
// date. The strip has no selection and no focus: marking the selected day is the parent's task.

#include "platform/gdi.h"
#include "views/calendar_layout.h"
#include "window/notification.h"

namespace lunara {

inline constexpr WCHAR CalendarClassName[] = TEXT("CalendarCtrl");

/// Window style: the cells form a column, with the month band on its left. Without the style they
/// form a row, with the band below.
inline constexpr DWORD CCS_VERTICAL = 0x0001;

/// Sets the first day shown. lParam: SYSTEMTIME, day of week included, which the letters follow.
/// Result 0.
inline constexpr UINT CCM_SETSTARTDATE = WM_USER + 1;
/// Sets the number of days to show. wParam: the days wanted, 1..extent of the strip in px. They
/// decide the cell size; the strip then shows as many whole cells as fit, which may be more. 0, and
/// a window without a size, keep the present number. Result 0.
inline constexpr UINT CCM_SETDAYCOUNT = WM_USER + 2;
/// Tells which day lies under a point. lParam: CalendarHitTest. Result: a CalendarArea; date and
/// cell are filled in for every area.
inline constexpr UINT CCM_HITTEST = WM_USER + 3;
/// Finds the cell of a date. lParam: CalendarDayRect. Result 1; 0, with `cell` untouched, when the
/// date is not shown.
inline constexpr UINT CCM_GETDAYRECT = WM_USER + 4;

struct CalendarHitTest {
    POINT pt;         // in, client coordinates
    SYSTEMTIME date;  // out
    RECT cell;        // out, without the border shared with the next cell
};

struct CalendarDayRect {
    SYSTEMTIME date;  // in
    RECT cell;        // out, with the 1 px border shared with the next cell
};

/// CalendarMonthColor, sent once per month segment while painting. The parent sets `color` and
/// answers non-zero; on 0 the segment takes the colour of the one before, the first one white.
inline constexpr UINT CCN_GETMONTHCOLOR = 1;
/// CalendarClick, sent when the left button or stylus goes up. The answer is ignored.
inline constexpr UINT CCN_CLICK = 3;

struct CalendarMonthColor {
    NMHDR header;
    SYSTEMTIME date;  // only year and month are the segment's
    COLORREF color;
};

struct CalendarClick {
    NMHDR header;
    POINT pt;  // client coordinates
};

class CalendarCtrl : public NotifyingControl {
  public:
    /// Shows 15 days, starting today.
    CalendarCtrl();

    /// True for the days shown and for the day after the last one (see IsDateInStrip).
    bool IsDateShown(const SYSTEMTIME& date) const;

    /// Paints the strip, laid out for a client area `client`, with the device context's pen, its
    /// brush (today's marker) and the face of its font.
    void Draw(HDC dc, const RECT& client);

    int PreCreateWindow(CREATESTRUCTW& parameters) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    CalendarLayout ClientLayout() const;
    bool IsVertical() const;

    void OnPaint();
    void OnLButtonUp(POINT point);
    void OnSetStartDate(const SYSTEMTIME& date);
    void OnSetDayCount(std::int32_t requested);
    LRESULT OnHitTest(CalendarHitTest& request) const;
    LRESULT OnGetDayRect(CalendarDayRect& request) const;

    COLORREF AskMonthColor(const SYSTEMTIME& date, COLORREF current);
    void DrawMonthBand(HDC dc, const CalendarLayout& layout, HFONT uprightFont, HFONT bandFont);
    void DrawDayStrip(HDC dc, const CalendarLayout& layout, LONG textDrop) const;

    SYSTEMTIME startDate;
    std::int32_t dayCount = 15;
};

/// Makes the font of a strip with cells of `cellSize` px: that high and thin, with the face,
/// character set and pitch of the font selected in `dc`. `tenthsOfDegrees` turns the text
/// counterclockwise.
Font MakeStripFont(HDC dc, LONG cellSize, LONG tenthsOfDegrees);

}  // namespace lunara
