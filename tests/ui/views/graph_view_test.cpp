#include "views/graph_view.h"

#include "frame/settings.h"
#include "tests/ui/views/graph_view_test_support.h"

namespace lunara {
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

class DateRefuser : public DataObserver {
  public:
    int CanChangeDate(UserData&, const SYSTEMTIME&, const SYSTEMTIME&) override { return 0; }
};

// ---- Creation and settings ----

TEST_F(GraphViewTest, WithoutAKeyItShowsTemperatureInFahrenheit) {
    SetSettingsLocation({nullptr, nullptr, TEXT("")});
    Make();
    EXPECT_EQ(view->GetShowFlags(), GraphShowTemperature);
    EXPECT_EQ(view->GetMeasure(), MeasureFahrenheit);
}

// The default of a key without the values is another one than that without a key.
TEST_F(GraphViewTest, AKeyWithoutTheValuesGivesBleedingAndFahrenheit) {
    Store(TEXT("CurrentView"), 3001);
    Make();
    EXPECT_EQ(view->GetShowFlags(), GraphShowBleeding);
    EXPECT_EQ(view->GetMeasure(), MeasureFahrenheit);
}

TEST_F(GraphViewTest, SettingsAreFoundAgain) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    view->SetShowTemperature(true);
    Tap(GraphView::CelsiusId);
    EXPECT_EQ(Setting(TEXT("GraphView_ShowFlags")), GraphShowBleeding);  // written at the end only
    ::DestroyWindow(view->Handle());
    EXPECT_EQ(Setting(TEXT("GraphView_ShowFlags")), GraphShowTemperature);
    EXPECT_EQ(Setting(TEXT("TemperatureMeasure")), MeasureCelsius);
    view = std::make_unique<GraphView>(*data);
    Make();
    EXPECT_EQ(view->GetShowFlags(), GraphShowTemperature);
    EXPECT_EQ(view->GetMeasure(), MeasureCelsius);
    EXPECT_EQ(SendTo(GraphView::CelsiusId, BM_GETCHECK), 1);
    EXPECT_EQ(SendTo(GraphView::FahrenheitId, BM_GETCHECK), 0);
    EXPECT_EQ(SpinRange(), (std::pair{350, 378}));
}

TEST_F(GraphViewTest, StraySettingsAreAsIfMissing) {
    MakeIn(7, 9);
    EXPECT_EQ(view->GetShowFlags(), GraphShowBleeding);
    EXPECT_EQ(view->GetMeasure(), MeasureFahrenheit);
}

TEST_F(GraphViewTest, ChildrenStandWhereTheLayoutSays) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    const Box chart = PlaceOf(Item(GraphView::ChartId));
    const Box calendar = PlaceOf(Item(GraphView::CalendarId));
    const Box bar = PlaceOf(Item(GraphView::ScrollBarId));
    EXPECT_EQ(chart.left, 0);
    EXPECT_EQ(chart.top, 0);
    EXPECT_EQ(chart.right, Width);
    EXPECT_EQ(chart.bottom, calendar.top);
    EXPECT_EQ(calendar.left, 34);
    EXPECT_EQ(calendar.right, Width);
    EXPECT_EQ(calendar.bottom, bar.top);
    EXPECT_EQ(bar.left, 34);
    EXPECT_EQ(PlaceOf(Item(GraphView::FahrenheitId)).top, chart.bottom);
    EXPECT_EQ(PlaceOf(Item(GraphView::FahrenheitId)).right, 34);
    EXPECT_EQ(PlaceOf(Item(GraphView::CelsiusId)).top,
              PlaceOf(Item(GraphView::FahrenheitId)).bottom);
    EXPECT_EQ(PlaceOf(Item(GraphView::DatePickerId)).right + 5, Width / 2);
    EXPECT_EQ(PlaceOf(Item(GraphView::ValueSpinId)).right, Width - 5);
    EXPECT_EQ(PlaceOf(Item(GraphView::ValueEditId)).right,
              PlaceOf(Item(GraphView::ValueSpinId)).left);
}

TEST_F(GraphViewTest, ChildrenHaveTheirClassesAndStyles) {
    Make();
    const struct {
        const char* label;
        int id;
        const wchar_t* className;
        LONG_PTR style;
        LONG_PTR exStyle;
    } rows[] = {
        {"calendar", GraphView::CalendarId, L"CalendarCtrl", 0, 0},
        {"scroll bar", GraphView::ScrollBarId, L"ScrollBar", 0, 0},
        {"picker", GraphView::DatePickerId, L"SysDateTimePick32", WS_TABSTOP, WS_EX_STATICEDGE},
        {"edit", GraphView::ValueEditId, L"Edit",
         WS_TABSTOP | ES_CENTER | ES_MULTILINE | ES_READONLY, WS_EX_STATICEDGE},
        {"spin", GraphView::ValueSpinId, L"msctls_updown32", UDS_AUTOBUDDY | UDS_ARROWKEYS, 0},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        EXPECT_EQ(ClassOf(Item(row.id)), row.className);
        EXPECT_EQ(::GetWindowLongPtrW(Item(row.id), GWL_STYLE) & row.style, row.style);
        EXPECT_EQ(::GetWindowLongPtrW(Item(row.id), GWL_EXSTYLE) & row.exStyle, row.exStyle);
    }
    EXPECT_EQ(reinterpret_cast<HWND>(SendTo(GraphView::ValueSpinId, UDM_GETBUDDY)),
              Item(GraphView::ValueEditId));
    EXPECT_EQ(TextOf(Item(GraphView::FahrenheitId)), L"\u00B0F");
    EXPECT_EQ(TextOf(Item(GraphView::CelsiusId)), L"\u00B0C");
}

TEST_F(GraphViewTest, StartsSevenDaysBeforeTheCurrentDate) {
    data->SetCurrentDate(DayFromToday(-20));
    Make();
    EXPECT_EQ(Start(), KeyFromToday(-27));
    EXPECT_EQ(Selection(), 8);
    EXPECT_EQ(ToDateKey(Picked()), KeyFromToday(-20));
}

TEST_F(GraphViewTest, ScrollRangeReachesFromTheFirstRecordToAYearAhead) {
    Warm(-100, 9800);
    Bleed(-50, 2);
    Make();
    EXPECT_EQ(Scroll().minimum, 0);
    EXPECT_EQ(Scroll().maximum, 465);
    EXPECT_EQ(Scroll().position, 93);  // 7 days before today
}

TEST_F(GraphViewTest, ScrollRangeWithoutRecordsGrowsAtOnce) {
    Make();
    // At 0 for today, and 7 days back from there.
    EXPECT_EQ(Scroll().maximum, 372);
    EXPECT_EQ(Scroll().position, 0);
}

// ---- Graph and unit ----

TEST_F(GraphViewTest, BleedingHidesTheUnitButtons) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    EXPECT_TRUE(::IsWindowVisible(Item(GraphView::FahrenheitId)));
    EXPECT_TRUE(::IsWindowVisible(Item(GraphView::CelsiusId)));
    EXPECT_EQ(SpinRange(), (std::pair{950, 1000}));
    view->SetShowBleeding(true);
    EXPECT_FALSE(::IsWindowVisible(Item(GraphView::FahrenheitId)));
    EXPECT_FALSE(::IsWindowVisible(Item(GraphView::CelsiusId)));
    EXPECT_EQ(SpinRange(), (std::pair{0, 3}));
    view->SetShowTemperature(true);
    EXPECT_TRUE(::IsWindowVisible(Item(GraphView::FahrenheitId)));
    EXPECT_EQ(SpinRange(), (std::pair{950, 1000}));
}

TEST_F(GraphViewTest, ListenersHearOfEverySwitch) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    RecordedListener listener;
    view->AttachListener(listener);
    view->SetShowTemperature(true);   // already
    view->SetShowTemperature(false);  // no switch
    view->SetShowBleeding(false);
    EXPECT_TRUE(listener.log.empty());
    view->SetShowBleeding(true);
    EXPECT_EQ(view->GetShowFlags(), GraphShowBleeding);
    view->SetShowBleeding(true);
    view->SetShowTemperature(true);
    Tap(GraphView::CelsiusId);
    EXPECT_EQ(listener.log, (std::vector<std::string>{"bleeding", "temperature", "measure 1"}));
    view->DetachListener(listener);
    view->SetShowBleeding(true);
    EXPECT_EQ(listener.log.size(), 3U);
}

TEST_F(GraphViewTest, UnitButtonsExcludeEachOther) {
    Warm(0, 9860);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    EXPECT_EQ(Entry(), L"98.6");
    EXPECT_EQ(SpinPosition(), 986);
    Tap(GraphView::CelsiusId);
    EXPECT_EQ(view->GetMeasure(), MeasureCelsius);
    EXPECT_EQ(SendTo(GraphView::CelsiusId, BM_GETCHECK), 1);
    EXPECT_EQ(SendTo(GraphView::FahrenheitId, BM_GETCHECK), 0);
    EXPECT_EQ(Entry(), L"37.0");
    EXPECT_EQ(SpinRange(), (std::pair{350, 378}));
    EXPECT_EQ(SpinPosition(), 370);
    Tap(GraphView::FahrenheitId);
    EXPECT_EQ(view->GetMeasure(), MeasureFahrenheit);
    EXPECT_EQ(Entry(), L"98.6");
    EXPECT_EQ(data->GetTemperature(), 9860);
}

TEST_F(GraphViewTest, ATapOnTheCheckedUnitDoesNothing) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    RecordedListener listener;
    view->AttachListener(listener);
    Tap(GraphView::FahrenheitId);
    EXPECT_TRUE(listener.log.empty());
    EXPECT_FALSE(WaitsForPaint(Item(GraphView::ChartId)));
}

// ---- The current day's value ----

TEST_F(GraphViewTest, EntryShowsTheCurrentDay) {
    Warm(-1, 9823);
    Bleed(-1, 3);
    const struct {
        const char* label;
        DWORD mode;
        DWORD measure;
        int day;
        const wchar_t* text;
        int position;
    } rows[] = {
        {"fahrenheit", GraphShowTemperature, MeasureFahrenheit, -1, L"98.2", 982},
        {"celsius", GraphShowTemperature, MeasureCelsius, -1, L"36.8", 368},
        {"heavy", GraphShowBleeding, MeasureFahrenheit, -1, L"Heavy", 3},
        {"no temperature", GraphShowTemperature, MeasureFahrenheit, 0, L"97.5", 975},
        {"no temperature, celsius", GraphShowTemperature, MeasureCelsius, 0, L"36.4", 364},
        {"no bleeding", GraphShowBleeding, MeasureFahrenheit, 0, L"None", 0},
        {"temperature to come", GraphShowTemperature, MeasureFahrenheit, 1, L"", 950},
        {"bleeding to come", GraphShowBleeding, MeasureFahrenheit, 1, L"", 0},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        data->SetCurrentDate(DayFromToday(row.day));
        MakeIn(row.mode, row.measure);
        EXPECT_EQ(Entry(), row.text);
        EXPECT_EQ(SpinPosition(), row.position);
        ::DestroyWindow(view->Handle());
    }
}

TEST_F(GraphViewTest, ValuesBeyondTheLimitsAreNotPutIntoTheEntry) {
    Warm(0, 10230);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    EXPECT_EQ(Entry(), L"");
    EXPECT_EQ(SpinPosition(), 1000);
}

TEST_F(GraphViewTest, SpinSetsTheValue) {
    const struct {
        const char* label;
        DWORD mode;
        DWORD measure;
        int position;
        std::int32_t temperature;
        std::int32_t bleeding;
        const wchar_t* text;
    } rows[] = {
        {"fahrenheit", GraphShowTemperature, MeasureFahrenheit, 986, 9860, 0, L"98.6"},
        {"lowest", GraphShowTemperature, MeasureFahrenheit, 950, 9500, 0, L"95.0"},
        {"highest", GraphShowTemperature, MeasureFahrenheit, 1000, 10000, 0, L"100.0"},
        {"beyond", GraphShowTemperature, MeasureFahrenheit, 1001, 10000, 0, L"100.0"},
        {"celsius", GraphShowTemperature, MeasureCelsius, 370, 9860, 0, L"37.0"},
        {"celsius, lowest", GraphShowTemperature, MeasureCelsius, 350, 9500, 0, L"35.0"},
        {"celsius, highest", GraphShowTemperature, MeasureCelsius, 378, 10000, 0, L"37.8"},
        {"celsius, beyond", GraphShowTemperature, MeasureCelsius, 900, 10000, 0, L"37.8"},
        {"heavy", GraphShowBleeding, MeasureFahrenheit, 3, NoTemperature, 3, L"Heavy"},
        {"beyond heavy", GraphShowBleeding, MeasureFahrenheit, 4, NoTemperature, 3, L"Heavy"},
        {"slight", GraphShowBleeding, MeasureFahrenheit, 1, NoTemperature, 1, L"Slight"},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        data->SetTemperature(NoTemperature);
        data->SetBleeding(0);
        MakeIn(row.mode, row.measure);
        Spin(row.position);
        EXPECT_EQ(data->GetTemperature(), row.temperature);
        EXPECT_EQ(data->GetBleeding(), row.bleeding);
        EXPECT_EQ(Entry(), row.text);
        EXPECT_TRUE(WaitsForPaint(Item(GraphView::ChartId)));
        ::DestroyWindow(view->Handle());
    }
}

TEST_F(GraphViewTest, SpinTurnedToNoneRemovesTheRecord) {
    Bleed(0, 2);
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    Spin(0);
    EXPECT_EQ(data->bleeding.Count(), 0);
    EXPECT_EQ(Entry(), L"None");
}

TEST_F(GraphViewTest, SpinOnADayToComeIsRefused) {
    for (const DWORD mode : {GraphShowBleeding, GraphShowTemperature}) {
        data->SetCurrentDate(DayFromToday(1));
        MakeIn(mode, MeasureFahrenheit);
        SendTo(GraphView::ValueSpinId, UDM_SETPOS, 0, SpinRange().second);
        Spin(SpinRange().second);
        EXPECT_EQ(data->bleeding.Count(), 0);
        EXPECT_EQ(data->temperature.Count(), 0);
        EXPECT_EQ(Entry(), L"");
        EXPECT_EQ(SpinPosition(), SpinRange().first);
        ::DestroyWindow(view->Handle());
    }
}

TEST_F(GraphViewTest, ArrowOfTheSpinCountsUp) {
    Bleed(0, 1);
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    const HWND spin = Item(GraphView::ValueSpinId);
    ::SendMessageW(spin, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 3));
    ::SendMessageW(spin, WM_LBUTTONUP, 0, MAKELPARAM(5, 3));
    EXPECT_EQ(data->GetBleeding(), 2);
    EXPECT_EQ(Entry(), L"Norm");
}

TEST_F(GraphViewTest, OtherScrollersAreNotTheSpin) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 3), 0);
    EXPECT_EQ(data->GetBleeding(), 0);
}

TEST_F(GraphViewTest, ChangesFromElsewhereAreShown) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    data->SetBleeding(2);
    EXPECT_EQ(Entry(), L"Norm");
    EXPECT_TRUE(WaitsForPaint(Item(GraphView::ChartId)));
    view->SetShowTemperature(true);
    Paint();
    data->SetTemperature(9700);
    EXPECT_EQ(Entry(), L"97.0");
    EXPECT_TRUE(WaitsForPaint(Item(GraphView::ChartId)));
}

TEST_F(GraphViewTest, RefreshShowsWhatChangedMeanwhile) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    Bleed(0, 3);  // unnoticed
    view->Refresh();
    EXPECT_EQ(Entry(), L"Heavy");
    EXPECT_TRUE(WaitsForPaint(Item(GraphView::ChartId)));
    EXPECT_TRUE(WaitsForPaint(Item(GraphView::CalendarId)));
}

TEST_F(GraphViewTest, ADayThatHasComeCanBeEntered) {
    data->SetCurrentDate(DayFromToday(1));
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    SetLocalNow(DayFromToday(1));
    view->Refresh();
    EXPECT_EQ(Entry(), L"None");
    Spin(2);
    EXPECT_EQ(data->GetBleeding(), 2);
}

// ---- Dates ----

TEST_F(GraphViewTest, PickedDateBecomesTheCurrentOne) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    SYSTEMTIME date = DayFromToday(-3);
    date.wDayOfWeek = 0;  // not every picker fills it in
    Pick(date);
    EXPECT_EQ(Current(), KeyFromToday(-3));
    EXPECT_EQ(IsSameDay(view->GetCurrentDate(), DayFromToday(-3)), 1);
    EXPECT_EQ(Selection(), 5);
    EXPECT_EQ(ToDateKey(Picked()), KeyFromToday(-3));
}

TEST_F(GraphViewTest, PickingNoDateChangesNothing) {
    Make();
    Pick(DayFromToday(-3), GDT_NONE);
    EXPECT_EQ(Current(), KeyFromToday(0));
    Pick({});
    EXPECT_EQ(Current(), KeyFromToday(0));
}

TEST_F(GraphViewTest, ARefusedDateIsTakenBack) {
    Make();
    DateRefuser refuser;
    data->AttachObserver(refuser);
    SYSTEMTIME date = DayFromToday(-3);
    SendTo(GraphView::DatePickerId, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&date));
    Pick(date);
    EXPECT_EQ(Current(), KeyFromToday(0));
    EXPECT_EQ(ToDateKey(Picked()), KeyFromToday(0));
    data->DetachObserver(refuser);
}

TEST_F(GraphViewTest, ANewDateIsBroughtIntoView) {
    Make();  // 15 days of 29 px from today - 7 on: 16 columns
    ASSERT_EQ(DayWidth(), 29);
    const struct {
        const char* label;
        int day;
        int start;
    } rows[] = {
        {"shown already", -7, -7},     {"last day", 7, -7},
        {"day after the last", 8, -7}, {"one more", 9, 9 - 14},
        {"far ahead", 200, 200 - 14},  {"just before", 185, 183},
        {"far back", -400, -402},      {"the last column but one", -400 + 13, -402},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        data->SetCurrentDate(DayFromToday(row.day));
        EXPECT_EQ(Start(), KeyFromToday(row.start));
        EXPECT_EQ(Selection(), row.day - row.start + 1);
        EXPECT_EQ(ToDateKey(Picked()), KeyFromToday(row.day));
    }
}

TEST_F(GraphViewTest, SetCurrentDateComesBackToADateScrolledAway) {
    Make();
    Send(WM_HSCROLL, SB_PAGEDOWN);
    Send(WM_HSCROLL, SB_PAGEDOWN);
    view->SetCurrentDate(Today());
    EXPECT_EQ(Start(), KeyFromToday(-2));
}

TEST_F(GraphViewTest, ScrollsByTheDiarysSteps) {
    Warm(-300, 9800);
    Make();
    const struct {
        const char* label;
        WORD request;
        int start;
    } rows[] = {
        {"line up", SB_LINEUP, -8},
        {"line down", SB_LINEDOWN, -7},
        {"page up", SB_PAGEUP, -17},
        {"page down", SB_PAGEDOWN, -7},
        {"tracking", SB_THUMBTRACK, -7},
        {"end", SB_ENDSCROLL, -7},
        {"top", SB_TOP, -7},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        Send(WM_HSCROLL, row.request);
        EXPECT_EQ(Start(), KeyFromToday(row.start));
        EXPECT_EQ(Scroll().position, 300 + row.start);
        EXPECT_EQ(Selection(), 1 - row.start);
    }
    EXPECT_EQ(Current(), KeyFromToday(0));
}

TEST_F(GraphViewTest, ScrollingPastTheEndsWidensTheRange) {
    Make();
    Send(WM_HSCROLL, SB_PAGEUP);
    EXPECT_EQ(Scroll().minimum, 0);
    EXPECT_EQ(Scroll().maximum, 382);
    EXPECT_EQ(Scroll().position, 0);
}

TEST_F(GraphViewTest, ReloadBeginsAtTheNewDiary) {
    Make();
    Warm(-400, 9800);
    data->bleeding.Set(KeyFromToday(0), 2);
    Send(WM_HSCROLL, SB_PAGEDOWN);
    view->Reload();
    EXPECT_EQ(Start(), KeyFromToday(-7));
    EXPECT_EQ(Scroll().maximum, 765);
    EXPECT_EQ(Selection(), 8);
}

// ---- Size ----

TEST_F(GraphViewTest, DateStaysInViewWhenTheWindowIsResized) {
    for (const DWORD mode : {GraphShowBleeding, GraphShowTemperature}) {
        MakeIn(mode, MeasureFahrenheit);
        data->SetCurrentDate(Today());
        const struct {
            const char* label;
            int width;
            int height;
        } rows[] = {{"device", 240, 320}, {"large", 720, 960}, {"tiny", 60, 100},
                    {"normal", 480, 640}, {"narrow", 52, 640}, {"normal again", 480, 640}};
        for (const auto& row : rows) {
            LUNARA_ROW(row);
            ::SetWindowPos(view->Handle(), nullptr, 0, 0, row.width, row.height, SWP_NOZORDER);
            Paint();
            CalendarDayRect cell{Today(), {}};
            EXPECT_EQ(
                SendTo(GraphView::CalendarId, CCM_GETDAYRECT, 0, reinterpret_cast<LPARAM>(&cell)),
                1);
            EXPECT_EQ(PlaceOf(Item(GraphView::ChartId)).right, row.width);
            EXPECT_EQ(Selection(), DaysBetween(Today(),
                                               [&] {
                                                   SYSTEMTIME start{};
                                                   FromDateKey(Start(), start);
                                                   return start;
                                               }()) +
                                       1);
        }
        ::DestroyWindow(view->Handle());
    }
}

// A narrow window shows more days than 15, one for every pixel.
TEST_F(GraphViewTest, DateThatAWiderWindowWouldLoseIsBroughtBack) {
    Make(GraphLeftColumnPx + 18, Height);
    Send(WM_HSCROLL, SB_PAGEUP);
    ASSERT_EQ(Start(), KeyFromToday(-17));
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, Width, Height, SWP_NOZORDER);
    EXPECT_EQ(Start(), KeyFromToday(-14));
    EXPECT_EQ(Selection(), 15);
    // One that was not in view does not come.
    Send(WM_HSCROLL, SB_PAGEDOWN);
    Send(WM_HSCROLL, SB_PAGEDOWN);
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 240, 320, SWP_NOZORDER);
    EXPECT_EQ(Start(), KeyFromToday(6));
}

TEST_F(GraphViewTest, WithoutAreaItStaysAlive) {
    Make(0, 0);
    view->SetShowTemperature(true);
    data->SetCurrentDate(DayFromToday(30));
    Send(WM_HSCROLL, SB_PAGEDOWN);
    data->SetBleeding(2);
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, Width, Height, SWP_NOZORDER);
    Paint();
    EXPECT_EQ(DayWidth(), 29);
}

// ---- Painting ----

TEST_F(GraphViewTest, GroundIsWhite) {
    Make();
    MemoryCanvas canvas(Width, Height, RGB(1, 2, 3));
    EXPECT_EQ(Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc())), 1);
    EXPECT_EQ(canvas.CountOf(White), Width * Height);
}

TEST_F(GraphViewTest, ReadOnlyEntryIsWhite) {
    Make();
    MemoryCanvas canvas(10, 10, RGB(1, 2, 3));
    const LRESULT brush = Send(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(canvas.Dc()),
                               reinterpret_cast<LPARAM>(Item(GraphView::ValueEditId)));
    EXPECT_EQ(reinterpret_cast<HGDIOBJ>(brush), ::GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(::GetBkColor(canvas.Dc()), White);
}

/// How many pixels of a rectangle of the view are not white.
int InkIn(HWND window, const RECT& area) {
    ::GdiFlush();
    MemoryCanvas copy(area.right - area.left, area.bottom - area.top);
    {
        const WindowDcScope dc(window);
        ::BitBlt(copy.Dc(), 0, 0, copy.Bounds().right, copy.Bounds().bottom, dc.Dc(), area.left,
                 area.top, SRCCOPY);
    }
    return copy.Bounds().right * copy.Bounds().bottom - copy.CountOf(White);
}

TEST_F(GraphViewTest, LegendStandsBesideTheCalendarInTheBleedingGraph) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    const Box calendar = PlaceOf(Item(GraphView::CalendarId));
    const RECT column = {0, calendar.top, 34, calendar.bottom};
    EXPECT_GT(InkIn(view->Handle(), column), 150);
    view->SetShowTemperature(true);
    ::DestroyWindow(Item(GraphView::FahrenheitId));  // they would cover it
    ::DestroyWindow(Item(GraphView::CelsiusId));
    ::RedrawWindow(view->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    EXPECT_EQ(InkIn(view->Handle(), column), 0);
}

TEST_F(GraphViewTest, LabelsNameTheDateAndTheValue) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    const Box picker = PlaceOf(Item(GraphView::DatePickerId));
    const Box edit = PlaceOf(Item(GraphView::ValueEditId));
    EXPECT_GT(InkIn(view->Handle(), {10, picker.top, picker.left, picker.bottom}), 20);
    const RECT label = {Width / 2, edit.top, edit.left, edit.bottom};
    const int fahrenheit = InkIn(view->Handle(), label);
    EXPECT_GT(fahrenheit, 20);
    Tap(GraphView::CelsiusId);
    Paint();
    EXPECT_NE(InkIn(view->Handle(), label), fahrenheit);
}

// ---- The rest ----

TEST_F(GraphViewTest, AnswersMonthColors) {
    Make();
    CalendarMonthColor request{};
    request.header.hwndFrom = Item(GraphView::CalendarId);
    request.header.idFrom = GraphView::CalendarId;
    request.header.code = CCN_GETMONTHCOLOR;
    request.date = Today();
    EXPECT_EQ(Send(WM_NOTIFY, GraphView::CalendarId, reinterpret_cast<LPARAM>(&request)), 1);
    EXPECT_EQ(request.color, static_cast<COLORREF>(RGB(190, 255, 190)));
}

TEST_F(GraphViewTest, HelpOpensItsOwnAnchor) {
    Make();
    Send(WM_HELP);
    ASSERT_EQ(help.anchors.size(), 1U);
    EXPECT_EQ(help.anchors[0], L"Lunara.htm#_Calendar_graph");
}

TEST_F(GraphViewTest, DestroyedItNoLongerWatches) {
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
}  // namespace lunara
