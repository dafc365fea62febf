// The graph view: its child windows, its settings, its two graphs and units, and its painting.

#include "views/graph_view.h"

#include <algorithm>

#include "tests/ui/views/graph_view_test_support.h"
#include "window/settings.h"

namespace lunara::test {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr DWORD NoSetting = 77;

DWORD Setting(const WCHAR* name) {
    DWORD value = NoSetting;
    Settings().ReadDword(name, value);
    return value;
}

class RecordedListener : public GraphListener {
  public:
    void BleedingGraphSelected() override { log.emplace_back("bleeding"); }
    void TemperatureGraphSelected() override { log.emplace_back("temperature"); }
    void MeasureSelected(TemperatureMeasure measure) override {
        log.push_back("measure " + std::to_string(measure));
    }

    std::vector<std::string> log;
};

// ---- Creation and settings ----

TEST_F(GraphView, WithoutAKeyItShowsTemperatureInFahrenheit) {
    SetSettingsLocation({nullptr, nullptr, TEXT("")});
    Make();
    EXPECT_EQ(view->GetShowFlags(), GraphShowTemperature);
    EXPECT_EQ(view->GetMeasure(), MeasureFahrenheit);
}

// A settings key without the values has another default than no key at all. Deliberate.
TEST_F(GraphView, AKeyWithoutTheValuesShowsBleedingAndFahrenheit) {
    Store(TEXT("CurrentView"), 3001);
    Make();
    EXPECT_EQ(view->GetShowFlags(), GraphShowBleeding);
    EXPECT_EQ(view->GetMeasure(), MeasureFahrenheit);
}

TEST_F(GraphView, SettingsAreFoundAgain) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    view->SetShowTemperature(true);
    Tap(View::CelsiusId);
    // Settings are written when the window is destroyed, not before.
    EXPECT_EQ(Setting(TEXT("GraphView_ShowFlags")), GraphShowBleeding);
    ::DestroyWindow(view->Handle());
    EXPECT_EQ(Setting(TEXT("GraphView_ShowFlags")), GraphShowTemperature);
    EXPECT_EQ(Setting(TEXT("TemperatureMeasure")), MeasureCelsius);
    view = std::make_unique<View>(*data);
    Make();
    EXPECT_EQ(view->GetShowFlags(), GraphShowTemperature);
    EXPECT_EQ(view->GetMeasure(), MeasureCelsius);
    EXPECT_EQ(SendTo(View::CelsiusId, BM_GETCHECK), 1);
    EXPECT_EQ(SendTo(View::FahrenheitId, BM_GETCHECK), 0);
    EXPECT_EQ(SpinRange(), (std::pair{350, 378}));
}

TEST_F(GraphView, StraySettingsAreAsIfMissing) {
    MakeIn(7, 9);
    EXPECT_EQ(view->GetShowFlags(), GraphShowBleeding);
    EXPECT_EQ(view->GetMeasure(), MeasureFahrenheit);
}

class GraphViewPlaces : public GraphView {
  protected:
    /// Checks the children against each other and against a view of this size.
    void ExpectPlaces(int width, int height) {
        const Box chart = BoxOf(Item(View::ChartId));
        const Box calendar = BoxOf(Item(View::CalendarId));
        const Box bar = BoxOf(Item(View::ScrollBarId));
        const Box picker = BoxOf(Item(View::DatePickerId));
        const Box edit = BoxOf(Item(View::ValueEditId));
        const Box spin = BoxOf(Item(View::ValueSpinId));
        EXPECT_EQ(chart.left, 0);
        EXPECT_EQ(chart.top, 0);
        EXPECT_EQ(chart.right, width);
        EXPECT_EQ(chart.bottom, calendar.top);
        EXPECT_EQ(calendar.left, 34);
        EXPECT_EQ(calendar.right, width);
        EXPECT_EQ(calendar.bottom, bar.top);
        EXPECT_EQ(bar.left, 34);
        EXPECT_EQ(bar.right, width);
        EXPECT_EQ(BoxOf(Item(View::FahrenheitId)).top, chart.bottom);
        EXPECT_EQ(BoxOf(Item(View::FahrenheitId)).right, 34);
        EXPECT_EQ(BoxOf(Item(View::CelsiusId)).top, BoxOf(Item(View::FahrenheitId)).bottom);
        EXPECT_EQ(picker.right + 5, width / 2);
        EXPECT_EQ(spin.right, width - 5);
        EXPECT_EQ(edit.right, spin.left);
        EXPECT_GT(picker.bottom, height - 10);
        EXPECT_EQ(picker.top, edit.top);
        EXPECT_EQ(picker.top, spin.top);
    }
};

TEST_F(GraphViewPlaces, ChildrenFollowTheSizeOfTheView) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    ExpectPlaces(Width, Height);
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, Width + 100, Height + 60, SWP_NOZORDER);
    ExpectPlaces(Width + 100, Height + 60);
}

TEST_F(GraphView, ChildrenHaveTheirClassesAndStyles) {
    Make();
    const struct {
        const char* label;
        int id;
        const wchar_t* className;
        LONG_PTR style;
        LONG_PTR exStyle;
    } rows[] = {
        {"calendar", View::CalendarId, L"CalendarCtrl", 0, 0},
        {"scroll bar", View::ScrollBarId, L"ScrollBar", 0, 0},
        {"picker", View::DatePickerId, L"SysDateTimePick32", WS_TABSTOP, WS_EX_STATICEDGE},
        {"edit", View::ValueEditId, L"Edit", WS_TABSTOP | ES_CENTER | ES_MULTILINE | ES_READONLY,
         WS_EX_STATICEDGE},
        {"spin", View::ValueSpinId, L"msctls_updown32", UDS_AUTOBUDDY | UDS_ARROWKEYS, 0},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        EXPECT_EQ(ClassOf(Item(row.id)), row.className);
        EXPECT_EQ(::GetWindowLongPtrW(Item(row.id), GWL_STYLE) & row.style, row.style);
        EXPECT_EQ(::GetWindowLongPtrW(Item(row.id), GWL_EXSTYLE) & row.exStyle, row.exStyle);
    }
    EXPECT_EQ(reinterpret_cast<HWND>(SendTo(View::ValueSpinId, UDM_GETBUDDY)),
              Item(View::ValueEditId));
    EXPECT_EQ(TextOf(Item(View::FahrenheitId)), L"\u00B0F");
    EXPECT_EQ(TextOf(Item(View::CelsiusId)), L"\u00B0C");
}

// ---- Graph and unit ----

TEST_F(GraphView, BleedingHidesTheUnitButtons) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    EXPECT_TRUE(::IsWindowVisible(Item(View::FahrenheitId)));
    EXPECT_TRUE(::IsWindowVisible(Item(View::CelsiusId)));
    EXPECT_EQ(SpinRange(), (std::pair{950, 1000}));
    view->SetShowBleeding(true);
    EXPECT_FALSE(::IsWindowVisible(Item(View::FahrenheitId)));
    EXPECT_FALSE(::IsWindowVisible(Item(View::CelsiusId)));
    EXPECT_EQ(SpinRange(), (std::pair{0, 3}));
    view->SetShowTemperature(true);
    EXPECT_TRUE(::IsWindowVisible(Item(View::FahrenheitId)));
    EXPECT_EQ(SpinRange(), (std::pair{950, 1000}));
}

TEST_F(GraphView, ListenersHearOfEverySwitch) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    RecordedListener listener;
    view->AttachListener(listener);
    view->SetShowTemperature(true);   // shown already
    view->SetShowTemperature(false);  // hiding the graph shown is refused
    view->SetShowBleeding(false);
    EXPECT_TRUE(listener.log.empty());
    view->SetShowBleeding(true);
    EXPECT_EQ(view->GetShowFlags(), GraphShowBleeding);
    view->SetShowBleeding(true);
    view->SetShowTemperature(true);
    Tap(View::CelsiusId);
    EXPECT_EQ(listener.log, (std::vector<std::string>{"bleeding", "temperature", "measure 1"}));
    view->DetachListener(listener);
    view->SetShowBleeding(true);
    EXPECT_EQ(listener.log.size(), 3U);
}

TEST_F(GraphView, UnitButtonsExcludeEachOther) {
    Warm(0, 9860);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    EXPECT_EQ(Entry(), L"98.6");
    EXPECT_EQ(SpinPosition(), 986);
    Tap(View::CelsiusId);
    EXPECT_EQ(view->GetMeasure(), MeasureCelsius);
    EXPECT_EQ(SendTo(View::CelsiusId, BM_GETCHECK), 1);
    EXPECT_EQ(SendTo(View::FahrenheitId, BM_GETCHECK), 0);
    EXPECT_EQ(Entry(), L"37.0");
    EXPECT_EQ(SpinRange(), (std::pair{350, 378}));
    EXPECT_EQ(SpinPosition(), 370);
    Tap(View::FahrenheitId);
    EXPECT_EQ(view->GetMeasure(), MeasureFahrenheit);
    EXPECT_EQ(Entry(), L"98.6");
    EXPECT_EQ(data->GetTemperature(), 9860);
}

TEST_F(GraphView, ATapOnTheCheckedUnitDoesNothing) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    RecordedListener listener;
    view->AttachListener(listener);
    Tap(View::FahrenheitId);
    EXPECT_TRUE(listener.log.empty());
    EXPECT_FALSE(WaitsForPaint(Item(View::ChartId)));
}

// ---- Painting ----

TEST_F(GraphView, ItsBackgroundIsWhite) {
    Make();
    MemoryCanvas canvas(Width, Height, RGB(1, 2, 3));
    EXPECT_EQ(Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc())), 1);
    EXPECT_EQ(canvas.CountOf(White), Width * Height);
}

TEST_F(GraphView, TheReadOnlyEntryIsWhite) {
    Make();
    MemoryCanvas canvas(10, 10, RGB(1, 2, 3));
    const LRESULT brush = Send(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(canvas.Dc()),
                               reinterpret_cast<LPARAM>(Item(View::ValueEditId)));
    EXPECT_EQ(reinterpret_cast<HGDIOBJ>(brush), ::GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(::GetBkColor(canvas.Dc()), White);
}

/// The number of pixels that are not white in a rectangle of a window on the screen.
int InkIn(HWND window, const RECT& area) {
    ::GdiFlush();
    MemoryCanvas copy(area.right - area.left, area.bottom - area.top);
    copy.CopyFrom(window, area.left, area.top);
    return copy.Bounds().right * copy.Bounds().bottom - copy.CountOf(White);
}

TEST_F(GraphView, TheBleedingGraphHasALegendBesideTheCalendar) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    const Box calendar = BoxOf(Item(View::CalendarId));
    const RECT column = {0, calendar.top, 34, calendar.bottom};
    EXPECT_GT(InkIn(view->Handle(), column), 150);
    view->SetShowTemperature(true);
    ::DestroyWindow(Item(View::FahrenheitId));  // the unit buttons would cover the legend
    ::DestroyWindow(Item(View::CelsiusId));
    ::RedrawWindow(view->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    EXPECT_EQ(InkIn(view->Handle(), column), 0);
}

TEST_F(GraphView, LabelsNameTheDateAndTheValue) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    const Box picker = BoxOf(Item(View::DatePickerId));
    const Box edit = BoxOf(Item(View::ValueEditId));
    EXPECT_GT(InkIn(view->Handle(), {10, picker.top, picker.left, picker.bottom}), 20);
    const RECT label = {Width / 2, edit.top, edit.left, edit.bottom};
    const int fahrenheit = InkIn(view->Handle(), label);
    EXPECT_GT(fahrenheit, 20);
    Tap(View::CelsiusId);
    Paint();
    const int celsius = InkIn(view->Handle(), label);
    EXPECT_NE(celsius, fahrenheit);
    view->SetShowBleeding(true);
    Paint();
    // "Bleeding" is the longest of the three labels.
    EXPECT_GT(InkIn(view->Handle(), label), std::max(celsius, fahrenheit));
}

// ---- Requests, help, end ----

TEST_F(GraphView, AnswersMonthColors) {
    Make();
    CalendarMonthColor request{};
    request.header.hwndFrom = Item(View::CalendarId);
    request.header.idFrom = View::CalendarId;
    request.header.code = CCN_GETMONTHCOLOR;
    request.date = Today();
    EXPECT_EQ(Send(WM_NOTIFY, View::CalendarId, reinterpret_cast<LPARAM>(&request)), 1);
    EXPECT_EQ(request.color, static_cast<COLORREF>(RGB(190, 255, 190)));
}

TEST_F(GraphView, HelpOpensItsOwnAnchor) {
    Make();
    Send(WM_HELP);
    ASSERT_EQ(help.anchors.size(), 1U);
    EXPECT_EQ(help.anchors[0], L"Lunara.htm#_Calendar_graph");
}

TEST_F(GraphView, StopsObservingTheDataSetWhenItsWindowIsDestroyed) {
    Make();
    ::DestroyWindow(view->Handle());
    data->SetBleeding(2);
    data->SetCurrentDate(DayFromToday(100));
    view->SetShowTemperature(true);
    view->SetShowBleeding(true);
    view->Refresh();
    view->Reload();
    EXPECT_EQ(data->DetachObserver(*view), 0);
}

}  // namespace
}  // namespace lunara::test
