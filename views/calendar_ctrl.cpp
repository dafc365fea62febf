#include "views/calendar_ctrl.h"

#include <windowsx.h>

#include <algorithm>
#include <cstddef>

#include "platform/clock.h"
#include "platform/text.h"
#include "window/double_buffer.h"

namespace lunara {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr LONG RunningDownwards = 2700;  // tenths of degrees
constexpr LONG ThinWeight = 100;
constexpr WCHAR MonthNames[] = TEXT("JanFebMarAprMayJunJulAugSepOctNovDec");
constexpr int MonthNameLength = 3;
constexpr WCHAR WeekdayLetters[] = TEXT("SMTWTFS");
constexpr int DaysOfWeek = 7;

SIZE TextSize(HDC dc, const WCHAR* text, int length) {
    SIZE size{};
    ::GetTextExtentPoint32W(dc, text, length, &size);
    return size;
}

void DrawRectangle(HDC dc, const RECT& rect) {
    ::Rectangle(dc, rect.left, rect.top, rect.right, rect.bottom);
}

/// The month's three letters, not terminated; null for a number outside 1..12.
const WCHAR* MonthName(WORD month) {
    return month >= 1 && month <= 12 ? MonthNames + std::ptrdiff_t{MonthNameLength} * (month - 1)
                                     : nullptr;
}

/// Element n: how many px right of its cell's left edge the letter of weekday n (0 is Sunday)
/// begins, so that it stands in the middle.
std::array<LONG, DaysOfWeek> LetterOffsets(HDC dc, LONG cellSize) {
    std::array<LONG, DaysOfWeek> offsets{};
    for (std::size_t day = 0; day < offsets.size(); ++day) {
        offsets[day] = (cellSize - TextSize(dc, WeekdayLetters + day, 1).cx) / 2 + 1;
    }
    return offsets;
}

void DrawDayLabels(HDC dc, const CalendarLayout& layout, const SYSTEMTIME& start, bool vertical,
                   LONG textDrop) {
    for (const DayLabel& label : layout.DayLabels(start)) {
        std::array<WCHAR, 8> text{};
        const int length = FormatText(text.data(), text.size(), vertical ? TEXT("%d") : TEXT("%2d"),
                                      static_cast<int>(label.day));
        const LONG along = layout.CellStart(label.cell);
        const RECT& strip = layout.DayStrip();
        if (vertical) {
            const LONG width = TextSize(dc, text.data(), length).cx;
            ::TextOutW(dc, strip.left - width - 1, along + textDrop, text.data(), length);
        } else {
            ::TextOutW(dc, along, strip.top + layout.CellSize() + 1, text.data(), length);
        }
    }
}

}  // namespace

Font MakeStripFont(HDC dc, LONG cellSize, LONG tenthsOfDegrees) {
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc, &metrics);
    LOGFONTW font{};
    font.lfHeight = -cellSize;
    font.lfWeight = ThinWeight;
    font.lfEscapement = tenthsOfDegrees;
    font.lfOrientation = tenthsOfDegrees;
    font.lfCharSet = metrics.tmCharSet;
    font.lfPitchAndFamily = metrics.tmPitchAndFamily;
    ::GetTextFaceW(dc, LF_FACESIZE, font.lfFaceName);
    return Font(::CreateFontIndirectW(&font));
}

CalendarCtrl::CalendarCtrl() : startDate(LocalNow()) {}

bool CalendarCtrl::IsDateShown(const SYSTEMTIME& date) const {
    return IsDateInStrip(date, startDate, dayCount);
}

bool CalendarCtrl::IsVertical() const {
    // Not cached: the style may change while the window lives.
    return (::GetWindowLongW(Handle(), GWL_STYLE) & static_cast<LONG>(CCS_VERTICAL)) != 0;
}

CalendarLayout CalendarCtrl::ClientLayout() const {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    return {client, dayCount, IsVertical()};
}

void CalendarCtrl::Draw(HDC dc, const RECT& client) {
    const bool vertical = IsVertical();
    const CalendarLayout layout(client, dayCount, vertical);
    if (layout.CellSize() < 1) {
        ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        return;
    }
    // Vertical offset of texts in their cells, px. It comes from the caller's font, so it is
    // measured before the strip's own font is selected.
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc, &metrics);
    const LONG textDrop = metrics.tmDescent - metrics.tmInternalLeading - 1;

    const Font upright = MakeStripFont(dc, layout.CellSize(), 0);
    const Font turned = vertical ? MakeStripFont(dc, layout.CellSize(), RunningDownwards) : Font();
    const BackgroundModeScope transparent(dc, TRANSPARENT);
    const SelectScope selected(dc, upright.Get());
    DrawMonthBand(dc, layout, upright.Get(), vertical ? turned.Get() : upright.Get());
    DrawDayStrip(dc, layout, textDrop);
}

COLORREF CalendarCtrl::AskMonthColor(const SYSTEMTIME& date, COLORREF current) {
    CalendarMonthColor request{MakeHeader(CCN_GETMONTHCOLOR), date, current};
    COLORREF color = current;
    NotifyEach(request.header, [&] { color = request.color; });
    return color;
}

void CalendarCtrl::DrawMonthBand(HDC dc, const CalendarLayout& layout, HFONT uprightFont,
                                 HFONT bandFont) {
    const bool vertical = IsVertical();
    const RECT& band = layout.MonthBand();
    const SYSTEMTIME today = LocalNow();
    COLORREF color = White;
    Brush brush(::CreateSolidBrush(color));
    for (const MonthSegment& segment : layout.MonthSegments(startDate)) {
        // Without an answer the segment takes the colour of the one before.
        const COLORREF wanted = AskMonthColor(segment.date, color);
        if (wanted != color) {
            color = wanted;
            brush = Brush(::CreateSolidBrush(color));
        }
        {
            const SelectScope filled(dc, brush.Get());
            DrawRectangle(dc, layout.SegmentRectangle(segment));
        }
        // Filled with the device context's own brush, not the month's, so that the marker stands
        // out from every month colour.
        TodayMarker marker{};
        if (layout.FindTodayMarker(segment, startDate, today, marker)) {
            ::Polygon(dc, marker.data(), static_cast<int>(marker.size()));
        }
        const WCHAR* name = MonthName(segment.date.wMonth);
        if (name == nullptr) {
            continue;
        }
        // Measured in the upright font: systems disagree on the extent of rotated text.
        SIZE size{};
        {
            const SelectScope measured(dc, uprightFont);
            size = TextSize(dc, name, MonthNameLength);
        }
        const LONG along = segment.start + (segment.length - size.cx) / 2;
        const SelectScope written(dc, bandFont);
        if (vertical) {
            ::TextOutW(dc, band.left + size.cy, along, name, MonthNameLength);
        } else {
            ::TextOutW(dc, along, band.bottom - size.cy, name, MonthNameLength);
        }
    }
}

void CalendarCtrl::DrawDayStrip(HDC dc, const CalendarLayout& layout, LONG textDrop) const {
    const bool vertical = IsVertical();
    const RECT& strip = layout.DayStrip();
    const std::array<LONG, DaysOfWeek> offsets = LetterOffsets(dc, layout.CellSize());
    std::size_t day = startDate.wDayOfWeek % DaysOfWeek;
    for (std::int32_t cell = 0; cell < layout.VisibleCells(); ++cell) {
        DrawRectangle(dc, layout.CellRectangle(cell));
        const LONG along = layout.CellStart(cell);
        if (vertical) {
            ::TextOutW(dc, strip.left + offsets[day], along + textDrop, WeekdayLetters + day, 1);
        } else {
            ::TextOutW(dc, along + offsets[day], strip.top + textDrop, WeekdayLetters + day, 1);
        }
        day = (day + 1) % DaysOfWeek;
    }
    DrawDayLabels(dc, layout, startDate, vertical, textDrop);
}

void CalendarCtrl::OnPaint() {
    const PaintScope paint(Handle());
    RECT client{};
    ::GetClientRect(Handle(), &client);
    const DoubleBuffer buffer(paint.Dc(), client);
    Draw(buffer.Dc(), client);
}

void CalendarCtrl::OnLButtonUp(POINT point) {
    CalendarClick click{MakeHeader(CCN_CLICK), point};
    NotifyAll(click.header);
}

void CalendarCtrl::OnSetStartDate(const SYSTEMTIME& date) {
    startDate = date;
    Invalidate(false);
}

void CalendarCtrl::OnSetDayCount(std::int32_t requested) {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    const LONG extent = IsVertical() ? client.bottom - client.top : client.right - client.left;
    // A window without a size fits no day; it keeps its count.
    if (const std::int32_t fitting = FittingDayCount(extent, requested); fitting > 0) {
        dayCount = fitting;
    }
    Invalidate(false);
}

LRESULT CalendarCtrl::OnHitTest(CalendarHitTest& request) const {
    const CalendarHit hit = ClientLayout().HitTest(request.pt, startDate);
    request.date = hit.date;
    request.cell = hit.cell;
    return hit.area;
}

LRESULT CalendarCtrl::OnGetDayRect(CalendarDayRect& request) const {
    return ClientLayout().FindDay(request.date, startDate, request.cell) ? 1 : 0;
}

int CalendarCtrl::PreCreateWindow(CREATESTRUCTW& parameters) {
    return UseWindowClass(parameters, CalendarClassName);
}

bool CalendarCtrl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT answer = 0;
    // clang-format off
    switch (message) {
        case WM_ERASEBKGND: answer = 1; break;  // WM_PAINT covers the whole client area
        case WM_PAINT: OnPaint(); break;
        case WM_LBUTTONUP: OnLButtonUp({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); break;
        case CCM_SETSTARTDATE: OnSetStartDate(*reinterpret_cast<const SYSTEMTIME*>(lParam)); break;
        case CCM_SETDAYCOUNT: OnSetDayCount(static_cast<std::int32_t>(wParam)); break;
        case CCM_HITTEST: answer = OnHitTest(*reinterpret_cast<CalendarHitTest*>(lParam)); break;
        case CCM_GETDAYRECT: answer = OnGetDayRect(*reinterpret_cast<CalendarDayRect*>(lParam)); break;
        default: return NotifyingControl::OnMessage(message, wParam, lParam, result);
    }
    // clang-format on
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
