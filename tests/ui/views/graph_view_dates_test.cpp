// The graph view: the day it starts at, scrolling, and bringing a date into view.

#include "tests/support/user_data_access.h"
#include "tests/ui/views/graph_view_test_support.h"

namespace lunara::test {
namespace {

class DateRefuser : public DataObserver {
  public:
    int CanChangeDate(UserData&, const SYSTEMTIME&, const SYSTEMTIME&) override { return 0; }
};

// ---- Start and scroll range ----

TEST_F(GraphView, StartsSevenDaysBeforeTheCurrentDate) {
    data->SetCurrentDate(DayFromToday(-20));
    Make();
    EXPECT_EQ(Start(), KeyFromToday(-27));
    EXPECT_EQ(Selection(), 8);
    EXPECT_EQ(ToDateKey(Picked()), KeyFromToday(-20));
}

TEST_F(GraphView, ScrollRangeReachesFromTheFirstRecordToAYearAhead) {
    Warm(-100, 9800);
    Bleed(-50, 2);
    Make();
    EXPECT_EQ(Scroll().minimum, 0);
    EXPECT_EQ(Scroll().maximum, 465);
    EXPECT_EQ(Scroll().position, 93);  // 7 days before today
}

TEST_F(GraphView, ScrollRangeWithoutRecordsGrowsAtOnce) {
    Make();
    // The range for today is [0, 365] at position 0. Starting 7 days earlier adds those.
    EXPECT_EQ(Scroll().maximum, 372);
    EXPECT_EQ(Scroll().position, 0);
}

// ---- Dates ----

TEST_F(GraphView, PickedDateBecomesTheCurrentOne) {
    MakeIn(GraphShowTemperature, MeasureFahrenheit);
    SYSTEMTIME date = DayFromToday(-3);
    date.wDayOfWeek = 0;  // some date pickers leave it out
    Pick(date);
    EXPECT_EQ(Current(), KeyFromToday(-3));
    EXPECT_EQ(IsSameDay(view->GetCurrentDate(), DayFromToday(-3)), 1);
    EXPECT_EQ(Selection(), 5);
    EXPECT_EQ(ToDateKey(Picked()), KeyFromToday(-3));
}

TEST_F(GraphView, PickingNoDateChangesNothing) {
    Make();
    Pick(DayFromToday(-3), GDT_NONE);
    EXPECT_EQ(Current(), KeyFromToday(0));
    Pick({});
    EXPECT_EQ(Current(), KeyFromToday(0));
}

TEST_F(GraphView, ARefusedDateIsTakenBackInThePicker) {
    Make();
    DateRefuser refuser;
    data->AttachObserver(refuser);
    SYSTEMTIME date = DayFromToday(-3);
    SendTo(View::DatePickerId, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&date));
    Pick(date);
    EXPECT_EQ(Current(), KeyFromToday(0));
    EXPECT_EQ(ToDateKey(Picked()), KeyFromToday(0));
    data->DetachObserver(refuser);
}

TEST_F(GraphView, ANewDateIsBroughtIntoView) {
    Make();  // 15 days of 29 px from today - 7 on, with the day before in column 0
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

TEST_F(GraphView, SettingTheCurrentDateAgainBringsItBackIntoView) {
    Make();
    Send(WM_HSCROLL, SB_PAGEDOWN);
    Send(WM_HSCROLL, SB_PAGEDOWN);
    view->SetCurrentDate(Today());
    EXPECT_EQ(Start(), KeyFromToday(-2));
}

TEST_F(GraphView, ScrollsByADayAndByTenDays) {
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

TEST_F(GraphView, ScrollingPastTheEndsWidensTheRange) {
    Make();
    Send(WM_HSCROLL, SB_PAGEUP);
    EXPECT_EQ(Scroll().minimum, 0);
    EXPECT_EQ(Scroll().maximum, 382);
    EXPECT_EQ(Scroll().position, 0);
}

TEST_F(GraphView, AReloadedDataSetIsShownFromItsOwnDate) {
    Make();
    Warm(-400, 9800);
    test::RecordBleeding(*data, KeyFromToday(0), 2);
    Send(WM_HSCROLL, SB_PAGEDOWN);
    view->Reload();
    EXPECT_EQ(Start(), KeyFromToday(-7));
    EXPECT_EQ(Scroll().maximum, 765);
    EXPECT_EQ(Selection(), 8);
}

// ---- Size ----

TEST_F(GraphView, TheCurrentDateStaysInViewWhenTheWindowIsResized) {
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
            EXPECT_EQ(SendTo(View::CalendarId, CCM_GETDAYRECT, 0, reinterpret_cast<LPARAM>(&cell)),
                      1);
            EXPECT_EQ(BoxOf(Item(View::ChartId)).right, row.width);
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

// A window too narrow for 15 days shows more of them, one for each pixel. Widening it would put the
// current date out of view.
TEST_F(GraphView, ADateThatAWiderWindowWouldLoseIsBroughtBack) {
    Make(GraphLeftColumnPx + 18, Height);
    Send(WM_HSCROLL, SB_PAGEUP);
    ASSERT_EQ(Start(), KeyFromToday(-17));
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, Width, Height, SWP_NOZORDER);
    EXPECT_EQ(Start(), KeyFromToday(-14));
    EXPECT_EQ(Selection(), 15);
    // When the date was scrolled out of view, resizing does not bring it back.
    Send(WM_HSCROLL, SB_PAGEDOWN);
    Send(WM_HSCROLL, SB_PAGEDOWN);
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 240, 320, SWP_NOZORDER);
    EXPECT_EQ(Start(), KeyFromToday(6));
}

TEST_F(GraphView, AWindowWithoutAreaDoesNoHarm) {
    Make(0, 0);
    view->SetShowTemperature(true);
    data->SetCurrentDate(DayFromToday(30));
    Send(WM_HSCROLL, SB_PAGEDOWN);
    data->SetBleeding(2);
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, Width, Height, SWP_NOZORDER);
    Paint();
    EXPECT_EQ(DayWidth(), 29);
}

}  // namespace
}  // namespace lunara::test
