// The graph view: the entry field and the spin control for the current day's value.

#include "tests/ui/views/graph_view_test_support.h"

namespace lunara::test {
namespace {

TEST_F(GraphView, EntryShowsTheCurrentDay) {
    Warm(-1, 9823);
    Bleed(-1, 3);
    const struct {
        const char* label;
        DWORD mode;
        DWORD measure;
        int day;
        int position;
        const wchar_t* text;
    } rows[] = {
        {"fahrenheit", GraphShowTemperature, MeasureFahrenheit, -1, 982, L"98.2"},
        {"celsius", GraphShowTemperature, MeasureCelsius, -1, 368, L"36.8"},
        {"heavy", GraphShowBleeding, MeasureFahrenheit, -1, 3, L"Heavy"},
        {"no temperature", GraphShowTemperature, MeasureFahrenheit, 0, 975, L"97.5"},
        {"no temperature, celsius", GraphShowTemperature, MeasureCelsius, 0, 364, L"36.4"},
        {"no bleeding", GraphShowBleeding, MeasureFahrenheit, 0, 0, L"None"},
        {"future temperature", GraphShowTemperature, MeasureFahrenheit, 1, 950, L""},
        {"future bleeding", GraphShowBleeding, MeasureFahrenheit, 1, 0, L""},
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

TEST_F(GraphView, AValueBeyondTheLimitsLeavesTheEntryEmpty) {
    Warm(0, 10230);
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    EXPECT_EQ(Entry(), L"");
    EXPECT_EQ(SpinPosition(), 1000);
}

TEST_F(GraphView, TheSpinSetsTheValue) {
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
        EXPECT_TRUE(WaitsForPaint(Item(View::ChartId)));
        ::DestroyWindow(view->Handle());
    }
}

TEST_F(GraphView, TheSpinAtNoneRemovesTheRecord) {
    Bleed(0, 2);
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    Spin(0);
    EXPECT_EQ(data->bleeding.Count(), 0);
    EXPECT_EQ(Entry(), L"None");
}

TEST_F(GraphView, TheSpinIsRefusedOnAFutureDay) {
    for (const DWORD mode : {GraphShowBleeding, GraphShowTemperature}) {
        data->SetCurrentDate(DayFromToday(1));
        MakeIn(mode, MeasureFahrenheit);
        SendTo(View::ValueSpinId, UDM_SETPOS, 0, SpinRange().second);
        Spin(SpinRange().second);
        EXPECT_EQ(data->bleeding.Count(), 0);
        EXPECT_EQ(data->temperature.Count(), 0);
        EXPECT_EQ(Entry(), L"");
        EXPECT_EQ(SpinPosition(), SpinRange().first);
        ::DestroyWindow(view->Handle());
    }
}

TEST_F(GraphView, TheUpArrowOfTheSpinCountsUp) {
    Bleed(0, 1);
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    const HWND spin = Item(View::ValueSpinId);
    ::SendMessageW(spin, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 3));
    ::SendMessageW(spin, WM_LBUTTONUP, 0, MAKELPARAM(5, 3));
    EXPECT_EQ(data->GetBleeding(), 2);
    EXPECT_EQ(Entry(), L"Norm");
}

TEST_F(GraphView, ScrollMessagesOfOtherControlsAreNotTheSpins) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 3), 0);
    EXPECT_EQ(data->GetBleeding(), 0);
}

TEST_F(GraphView, ChangesFromElsewhereAreShown) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    data->SetBleeding(2);
    EXPECT_EQ(Entry(), L"Norm");
    EXPECT_TRUE(WaitsForPaint(Item(View::ChartId)));
    view->SetShowTemperature(true);
    Paint();
    data->SetTemperature(9700);
    EXPECT_EQ(Entry(), L"97.0");
    EXPECT_TRUE(WaitsForPaint(Item(View::ChartId)));
}

TEST_F(GraphView, RefreshShowsChangesThatNotifiedNoObserver) {
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    Bleed(0, 3);  // past the observers
    view->Refresh();
    EXPECT_EQ(Entry(), L"Heavy");
    EXPECT_TRUE(WaitsForPaint(Item(View::ChartId)));
    EXPECT_TRUE(WaitsForPaint(Item(View::CalendarId)));
}

TEST_F(GraphView, AFutureDayThatHasBecomeTodayTakesAValue) {
    data->SetCurrentDate(DayFromToday(1));
    MakeIn(GraphShowBleeding, MeasureFahrenheit);
    SetLocalNow(DayFromToday(1));
    view->Refresh();
    EXPECT_EQ(Entry(), L"None");
    Spin(2);
    EXPECT_EQ(data->GetBleeding(), 2);
}

}  // namespace
}  // namespace lunara::test
