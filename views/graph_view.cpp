#include "views/graph_view.h"

#include <algorithm>
#include <array>

#include "platform/pocketpc/common_controls.h"
#include "records/dates.h"
#include "resources/ids.h"
#include "views/month_colors.h"
#include "window/settings.h"

namespace lunara {
namespace {

constexpr WCHAR ShowFlagsSetting[] = TEXT("GraphView_ShowFlags");
constexpr WCHAR MeasureSetting[] = TEXT("TemperatureMeasure");
constexpr WCHAR HelpAnchor[] = TEXT("Lunara.htm#_Calendar_graph");
constexpr std::int32_t DaysBeforeCurrent = 7;

}  // namespace

GraphView::GraphView(UserData& userData)
    : data(userData),
      scroll(calendar),
      fahrenheitButton(ToggleLook::Flat),
      celsiusButton(ToggleLook::Flat) {}

GraphView::~GraphView() { data.DetachObserver(*this); }

// ---- Creation and settings ----

LRESULT GraphView::OnCreate() {
    data.AttachObserver(*this);
    ReadSettings();
    if ((::GetWindowLongPtrW(Handle(), GWL_STYLE) & WS_VISIBLE) != 0) {
        return EnsureChildren() ? 0 : -1;
    }
    ::PostMessageW(Handle(), GVM_CREATECHILDREN, 0, 0);
    return 0;
}

bool GraphView::EnsureChildren() {
    if (HasChildren()) {
        return true;
    }
    if (!CreateChildren()) {
        return false;
    }
    legend = LoadBitmapResource(IDB_BLEEDING_LEGEND);
    ::SendMessageW(chart.Handle(), CHM_SETMARGIN, GraphLeftColumnPx, 0);
    chart.AttachSink(*this);
    PlaceChildren();  // moves back the spin, which placed itself beside its buddy when created
    FitColumns();
    ShowMeasure();
    ShowMode();
    ResetScroll();
    SelectCurrentColumn();
    ShowPickedDate();
    return true;
}

void GraphView::OnDestroy() {
    Settings settings;
    settings.WriteDword(MeasureSetting, measure);
    settings.WriteDword(ShowFlagsSetting, mode);
    data.DetachObserver(*this);
    chart.DetachSink(*this);
    legend.Reset();
    scroll.SetBar(nullptr);
    datePicker = nullptr;
    valueEdit = nullptr;
    valueSpin = nullptr;
}

void GraphView::ReadSettings() {
    const Settings settings;
    if (!settings.IsOpen()) {
        return;
    }
    DWORD value = GraphShowBleeding;
    settings.ReadDword(ShowFlagsSetting, value);
    mode = value == GraphShowTemperature ? GraphShowTemperature : GraphShowBleeding;
    value = MeasureFahrenheit;
    settings.ReadDword(MeasureSetting, value);
    measure = value == MeasureCelsius ? MeasureCelsius : MeasureFahrenheit;
}

// ---- Graph and unit ----

void GraphView::SetShowBleeding(bool shown) {
    if (shown) {
        SwitchMode(GraphShowBleeding, &GraphListener::BleedingGraphSelected);
    }
}

void GraphView::SetShowTemperature(bool shown) {
    if (shown) {
        SwitchMode(GraphShowTemperature, &GraphListener::TemperatureGraphSelected);
    }
}

void GraphView::SwitchMode(GraphShowFlag wanted, void (GraphListener::*selected)()) {
    if (wanted == mode) {
        return;
    }
    mode = wanted;
    ShowMode();
    // By index: a listener may attach another one from inside its handler.
    for (std::size_t index = 0; index < listeners.size(); ++index) {
        (listeners[index]->*selected)();
    }
}

void GraphView::ShowMode() {
    if (!HasChildren()) {
        return;
    }
    Invalidate(true);
    const int command = mode == GraphShowTemperature ? SW_SHOW : SW_HIDE;
    ::ShowWindow(fahrenheitButton.Handle(), command);
    ::ShowWindow(celsiusButton.Handle(), command);
    ResetChart();
    ShowEntry();
}

void GraphView::ShowMeasure() {
    Invalidate(true);
    ::SendMessageW(fahrenheitButton.Handle(), BM_SETCHECK,
                   measure == MeasureFahrenheit ? BST_CHECKED : BST_UNCHECKED, 0);
    ::SendMessageW(celsiusButton.Handle(), BM_SETCHECK,
                   measure == MeasureCelsius ? BST_CHECKED : BST_UNCHECKED, 0);
    ShowEntry();
    ResetChart();
}

void GraphView::OnCommand(UINT id, UINT notification) {
    if (notification != BN_CLICKED || (id != FahrenheitId && id != CelsiusId)) {
        return;
    }
    const Window& button = id == FahrenheitId ? fahrenheitButton : celsiusButton;
    if (::SendMessageW(button.Handle(), BM_GETCHECK, 0, 0) == BST_CHECKED) {
        return;
    }
    measure = id == FahrenheitId ? MeasureFahrenheit : MeasureCelsius;
    ShowMeasure();
    for (std::size_t index = 0; index < listeners.size(); ++index) {
        listeners[index]->MeasureSelected(measure);
    }
}

void GraphView::AttachListener(GraphListener& listener) { listeners.push_back(&listener); }

void GraphView::DetachListener(GraphListener& listener) { std::erase(listeners, &listener); }

// ---- The current day's value ----

void GraphView::ShowEntry() {
    const GraphSeries series = Series();
    const ValueRange range = series.SpinRange();
    ::SendMessageW(valueSpin, UDM_SETRANGE, 0, MAKELPARAM(range.maximum, range.minimum));
    // Read-only: values change through the spin alone, which cannot leave the entry range.
    ::SendMessageW(valueEdit, EM_SETREADONLY, TRUE, 0);
    const std::int32_t value = series.DayValue(data);
    std::array<WCHAR, ChartLabelCapacity> text{};
    series.FormatEntry(value, text.data(), text.size());
    ::SetWindowTextW(valueEdit, text.data());
    const std::int32_t position =
        std::clamp(series.SpinPosition(value), range.minimum, range.maximum);
    ::SendMessageW(valueSpin, UDM_SETPOS, 0, MAKELPARAM(position, 0));
}

void GraphView::ShowPickedDate() {
    SYSTEMTIME date = GetCurrentDate();
    ::SendMessageW(datePicker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&date));
}

void GraphView::OnSpin(std::int32_t position) {
    const GraphSeries series = Series();
    if (series.Store(data, series.FromSpinPosition(position)) == 0) {
        ShowEntry();  // refused: moves the spin back
    }
}

void GraphView::OnPickDate(const SYSTEMTIME& picked) {
    // The picker leaves the day of week open, which IsSameDay compares; FromDateKey fills it in.
    SYSTEMTIME date{};
    if (FromDateKey(ToDateKey(picked), date) == 0 || data.SetCurrentDate(date) == 0) {
        ShowPickedDate();
    }
}

void GraphView::ValueChanged() {
    if (!HasChildren()) {
        return;
    }
    ResetChart();
    ShowEntry();
}

void GraphView::TemperatureChanged(UserData&, std::int32_t) { ValueChanged(); }

void GraphView::BleedingChanged(UserData&, std::int32_t) { ValueChanged(); }

// ---- Dates and scrolling ----

SYSTEMTIME GraphView::GetCurrentDate() const {
    SYSTEMTIME date{};
    data.GetCurrentDate(date);
    return date;
}

void GraphView::SetCurrentDate(const SYSTEMTIME& date) {
    if (data.SetCurrentDate(date) != 0) {
        // DateChanged is not called when `date` is the current date already, but the graph may have
        // been scrolled away from it.
        BringIntoView(GetCurrentDate());
    }
}

void GraphView::DateChanged(UserData&, const SYSTEMTIME&, const SYSTEMTIME& current) {
    if (!HasChildren()) {
        return;
    }
    BringIntoView(current);
    SelectCurrentColumn();
    ShowPickedDate();
    ShowEntry();
}

void GraphView::BringIntoView(const SYSTEMTIME& date) {
    if (HasChildren() && !calendar.IsDateShown(date)) {
        SetStart(StartToShow(date, scroll.Start(), Columns()));
    }
}

void GraphView::SelectCurrentColumn() {
    const std::int32_t column = DaysBetween(GetCurrentDate(), scroll.Start()) + 1;
    ::SendMessageW(chart.Handle(), CHM_SETSELECTION, static_cast<WPARAM>(column), 0);
}

void GraphView::SetStart(const SYSTEMTIME& newStart) {
    if (scroll.MoveTo(newStart)) {
        ResetChart();
        SelectCurrentColumn();
    }
}

void GraphView::ResetScroll() {
    scroll.Reset(data);
    SYSTEMTIME start{};
    AddDays(GetCurrentDate(), -DaysBeforeCurrent, start);
    SetStart(start);
}

void GraphView::ResetChart() { ::SendMessageW(chart.Handle(), CHM_RESETDATA, 0, 0); }

void GraphView::Refresh() {
    if (HasChildren()) {
        Invalidate(true);
        calendar.Invalidate(false);
        ResetChart();
        ShowEntry();
    }
}

void GraphView::Reload() {
    if (HasChildren()) {
        ResetScroll();
        SelectCurrentColumn();
        ShowPickedDate();
        Refresh();
    }
}

// ---- What the chart and the strip ask ----

LRESULT GraphView::Notify(NMHDR&) { return 0; }

bool GraphView::GetRange(NMHDR&, int& minimum, int& maximum) {
    const ValueRange range = Series().AxisRange();
    minimum = range.minimum;
    maximum = range.maximum;
    return true;
}

void GraphView::OnGetPoints(ChartPoints& request) {
    const std::int32_t columns = Columns();
    request.points =
        Series().MakePoints(data, scroll.Start(), columns, GraphLeftColumnPx, dayWidth).release();
    request.count = columns + 2;
}

bool GraphView::OnSelectPoint(const ChartValue& point) {
    if (point.index != chart.Selection()) {
        SYSTEMTIME day{};
        if (AddDays(scroll.Start(), point.index - 1, day) == 0 || data.SetCurrentDate(day) == 0) {
            return true;
        }
    }
    const GraphSeries series = Series();
    if (!series.EntryRange().Contains(point.value)) {
        return true;
    }
    std::array<WCHAR, ChartLabelCapacity> text{};
    series.FormatEntry(point.value, text.data(), text.size());
    ::SetWindowTextW(valueEdit, text.data());
    return false;
}

bool GraphView::OnChartNotify(NMHDR& record, LRESULT& answer) {
    switch (record.code) {
        case CHN_GETSCALES: {
            auto& request = reinterpret_cast<ChartScales&>(record);
            const std::span<const ChartScale> scales = Series().Scales();
            request.count = static_cast<std::int32_t>(scales.size());
            request.scales = scales.data();
            answer = 1;
            return true;
        }
        case CHN_GETLABEL: {
            auto& request = reinterpret_cast<ChartLabel&>(record);
            Series().FormatLabel(request.value, request.text, ChartLabelCapacity);
            answer = 1;
            return true;
        }
        case CHN_GETPOINTS:
            OnGetPoints(reinterpret_cast<ChartPoints&>(record));
            answer = 1;
            return true;
        case CHN_SELECTPOINT:
            answer = OnSelectPoint(reinterpret_cast<const ChartValue&>(record)) ? 1 : 0;
            return true;
        case CHN_VALUECHANGED:
            Series().Store(data, reinterpret_cast<const ChartValue&>(record).value);
            answer = 0;
            return true;
        default:
            return false;
    }
}

void GraphView::OnHelp() {
    for (std::size_t index = 0; index < listeners.size(); ++index) {
        listeners[index]->HelpRequested(HelpAnchor);
    }
}

bool GraphView::OnNotify(NMHDR& record, LRESULT& answer) {
    switch (record.idFrom) {
        case CalendarId:
            if (record.code == CCN_GETMONTHCOLOR) {
                auto& request = reinterpret_cast<CalendarMonthColor&>(record);
                request.color = MonthColor(request.date.wMonth);
                answer = 1;
                return true;
            }
            return false;
        case DatePickerId:
            if (record.code == DTN_DATETIMECHANGE) {
                const auto& change = reinterpret_cast<const NMDATETIMECHANGE&>(record);
                if (change.dwFlags == GDT_VALID) {
                    OnPickDate(change.st);
                }
                answer = 0;
                return true;
            }
            return false;
        case ChartId:
            return OnChartNotify(record, answer);
        default:
            return false;
    }
}

// ---- Message switch ----

bool GraphView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT answer = 0;
    const bool isFromSpin = valueSpin != nullptr && reinterpret_cast<HWND>(lParam) == valueSpin;
    // clang-format off
    switch (message) {
        case WM_CREATE: answer = OnCreate(); break;
        case WM_DESTROY: OnDestroy(); break;
        case WM_PAINT: OnPaint(); break;
        case WM_ERASEBKGND: OnEraseBackground(reinterpret_cast<HDC>(wParam)); answer = 1; break;
        case WM_SHOWWINDOW: if (wParam == FALSE || HasChildren()) { return false; } EnsureChildren(); break;
        case GVM_CREATECHILDREN: EnsureChildren(); break;
        case WM_SIZE: OnSize(); break;
        case WM_HSCROLL: SetStart(scroll.AskedStart(LOWORD(wParam))); break;
        case WM_VSCROLL: if (!isFromSpin) { return false; } OnSpin(HIWORD(wParam)); break;
        case WM_COMMAND: OnCommand(LOWORD(wParam), HIWORD(wParam)); break;
        case WM_CTLCOLORSTATIC: answer = OnFieldColor(reinterpret_cast<HDC>(wParam)); break;
        case WM_NOTIFY: if (!OnNotify(*reinterpret_cast<NMHDR*>(lParam), answer)) { return false; } break;
        case WM_HELP: OnHelp(); break;
        default: return false;
    }
    // clang-format on
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
