// The graph view's children: creation and layout; and what the view paints itself.

#include <algorithm>

#include "platform/pocketpc/placement.h"
#include "resources/ids.h"
#include "views/graph_view.h"
#include "views/view_children.h"

// Includes <commctrl.h>, which needs <windows.h> before it.
#include "platform/pocketpc/common_controls.h"

namespace lunara {
namespace {

constexpr WCHAR DateLabel[] = TEXT("Date: ");
constexpr WCHAR BleedingLabel[] = TEXT("Bleeding: ");
constexpr WCHAR FahrenheitLabel[] = TEXT("Temp \u00B0F: ");
constexpr WCHAR CelsiusLabel[] = TEXT("Temp \u00B0C: ");
constexpr COLORREF White = RGB(255, 255, 255);

SIZE TextSize(HDC dc, const WCHAR* text) {
    SIZE size{};
    ::GetTextExtentPoint32W(dc, text, ::lstrlenW(text), &size);
    return size;
}

void DrawLabel(HDC dc, const WCHAR* text, RECT place) {
    ::DrawTextW(dc, text, -1, &place, DT_LEFT | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
}

}  // namespace

GraphMetrics GraphView::Metrics() const {
    const MeasuringDc dc;
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc.Dc(), &metrics);
    SIZE valueLabel = TextSize(dc.Dc(), FahrenheitLabel);
    // As wide as the widest of the three labels: which one that is depends on the font, and a
    // narrower place would let a label run under the field.
    for (const WCHAR* label : {CelsiusLabel, BleedingLabel}) {
        valueLabel.cx = std::max(valueLabel.cx, TextSize(dc.Dc(), label).cx);
    }
    return {metrics.tmHeight, ::GetSystemMetrics(SM_CXVSCROLL), ::GetSystemMetrics(SM_CYHSCROLL),
            TextSize(dc.Dc(), DateLabel), valueLabel};
}

HWND GraphView::CreateField(const WCHAR* className, DWORD exStyle, DWORD style, const RECT& place,
                            int id) {
    const HWND field = CreateSystemControl(className, exStyle, style, place, Handle(), id);
    ::SendMessageW(field, WM_SETFONT, reinterpret_cast<WPARAM>(ShellFont()), FALSE);
    return field;
}

bool GraphView::CreateChildren() {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    layout = LayOutGraph(client, Metrics());
    datePicker = CreateField(DATETIMEPICK_CLASSW, WS_EX_STATICEDGE, WS_TABSTOP, layout.datePicker,
                             DatePickerId);
    valueEdit = CreateField(TEXT("edit"), WS_EX_STATICEDGE, WS_TABSTOP | ES_CENTER | ES_MULTILINE,
                            layout.valueEdit, ValueEditId);
    // UDS_AUTOBUDDY takes the window created just before, the edit, as buddy.
    valueSpin =
        CreateField(UPDOWN_CLASSW, 0, UDS_AUTOBUDDY | UDS_ARROWKEYS, layout.valueSpin, ValueSpinId);
    const bool hasCalendar =
        CreateControl(calendar, nullptr, 0, layout.calendar, Handle(), CalendarId);
    scroll.SetBar(CreateField(TEXT("scrollbar"), 0, SBS_HORZ, layout.scrollBar, ScrollBarId));
    return datePicker != nullptr && valueEdit != nullptr && valueSpin != nullptr && hasCalendar &&
           scroll.Bar() != nullptr &&
           CreateControl(fahrenheitButton, TEXT("\u00B0F"), 0, layout.fahrenheitButton, Handle(),
                         FahrenheitId) &&
           CreateControl(celsiusButton, TEXT("\u00B0C"), 0, layout.celsiusButton, Handle(),
                         CelsiusId) &&
           CreateControl(chart, nullptr, 0, layout.chart, Handle(), ChartId);
}

void GraphView::PlaceChildren() {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    layout = LayOutGraph(client, Metrics());
    PutAt(datePicker, layout.datePicker);
    PutAt(valueEdit, layout.valueEdit);
    PutAt(valueSpin, layout.valueSpin);
    PutAt(calendar.Handle(), layout.calendar);
    PutAt(scroll.Bar(), layout.scrollBar);
    PutAt(fahrenheitButton.Handle(), layout.fahrenheitButton);
    PutAt(celsiusButton.Handle(), layout.celsiusButton);
    PutAt(chart.Handle(), layout.chart);
}

void GraphView::FitColumns() {
    ::SendMessageW(calendar.Handle(), CCM_SETDAYCOUNT, GraphDaysShown, 0);
    CalendarHitTest first{};
    ::SendMessageW(calendar.Handle(), CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&first));
    dayWidth = Width(first.cell);
}

std::int32_t GraphView::Columns() const { return GraphColumns(Width(layout.chart), dayWidth); }

void GraphView::OnSize() {
    if (!HasChildren()) {
        return;
    }
    const SYSTEMTIME current = GetCurrentDate();
    const bool wasShown = calendar.IsDateShown(current);
    PlaceChildren();
    FitColumns();
    ResetChart();
    if (wasShown) {
        BringIntoView(current);
    }
    Invalidate(true);
}

void GraphView::OnPaint() {
    const PaintScope paint(Handle());
    const HDC dc = paint.Dc();
    const BackgroundModeScope transparent(dc, TRANSPARENT);
    DrawLabel(dc, DateLabel, layout.dateLabel);
    if (mode == GraphShowTemperature) {
        DrawLabel(dc, measure == MeasureCelsius ? CelsiusLabel : FahrenheitLabel,
                  layout.valueLabel);
        return;
    }
    DrawLabel(dc, BleedingLabel, layout.valueLabel);
    BITMAP picture{};
    if (::GetObjectW(legend.Get(), sizeof(picture), &picture) == 0) {
        return;
    }
    const RECT place = CenteredIn(layout.legendArea, {picture.bmWidth, picture.bmHeight});
    const MemoryDc memory(::CreateCompatibleDC(dc));
    const SelectScope selected(memory.Get(), legend.Get());
    ::BitBlt(dc, place.left, place.top, Width(place), Height(place), memory.Get(), 0, 0, SRCCOPY);
}

void GraphView::OnEraseBackground(HDC dc) const {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
}

LRESULT GraphView::OnFieldColor(HDC dc) const {
    // White, because the system draws a read-only edit in grey.
    ::SetBkColor(dc, White);
    return reinterpret_cast<LRESULT>(::GetStockObject(WHITE_BRUSH));
}

}  // namespace lunara
