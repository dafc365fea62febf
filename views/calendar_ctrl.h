#pragma once

// The calendar strip: a child window that shows a run of days as a row or column of square cells,
// with a band of coloured months beside it. Its parent scrolls it by setting another start date,
// and marks the selected day itself: the strip has no selection and no focus.

#include "platform/gdi.h"
#include "views/calendar_layout.h"
#include "window/notification.h"

namespace lunara {

inline constexpr WCHAR CalendarClassName[] = TEXT("CalendarCtrl");

/// Window style: the strip is a column, with the band on its left. Otherwise it is a row, with the
/// band below.
inline constexpr DWORD CCS_VERTICAL = 0x0001;

/// lParam: SYSTEMTIME of the new first day, day of week included. Result 0.
inline constexpr UINT CCM_SETSTARTDATE = WM_USER + 1;
/// wParam: the number of days to fill the strip with (1..its extent in px). Whole cells fill it, so
/// more days may come to be shown. Result 0.
inline constexpr UINT CCM_SETDAYCOUNT = WM_USER + 2;
/// lParam: CalendarHitTest. Result: a CalendarArea; date and cell are filled for each of them.
inline constexpr UINT CCM_HITTEST = WM_USER + 3;
/// lParam: CalendarDayRect. Result 1, or 0 (the cell untouched) when the date is not shown.
inline constexpr UINT CCM_GETDAYRECT = WM_USER + 4;

struct CalendarHitTest {
    POINT pt;  // in, client coordinates
    SYSTEMTIME date;
    RECT cell;
};

struct CalendarDayRect {
    SYSTEMTIME date;  // in
    RECT cell;        // with the border that it shares with the next cell
};

/// CalendarMonthColor, once for each month segment while painting. Non-zero: `color` was supplied.
inline constexpr UINT CCN_GETMONTHCOLOR = 1;
/// CalendarClick, when the button or stylus goes up. The answer is ignored.
inline constexpr UINT CCN_CLICK = 3;

struct CalendarMonthColor {
    NMHDR header;
    SYSTEMTIME date;  // year and month are the segment's
    COLORREF color;
};

struct CalendarClick {
    NMHDR header;
    POINT pt;
};

class CalendarCtrl : public NotifyingControl {
  public:
    /// 15 days from today on.
    CalendarCtrl();

    /// Whether the date is one of the days shown, or the one after the last.
    bool IsDateShown(const SYSTEMTIME& date) const;

    /// Paints the strip as it would look in a client area `client`, with the device context's font
    /// (for its face), pen and brush (for today's marker).
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

/// The font of a strip with cells of that size, like the device context's own in all else.
/// `tenthsOfDegrees` turns the text counterclockwise.
Font MakeStripFont(HDC dc, LONG cellSize, LONG tenthsOfDegrees);

}  // namespace lunara
