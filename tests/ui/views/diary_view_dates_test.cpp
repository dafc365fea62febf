// The diary view: the day it starts at, scrolling, and bringing a date into view.

#include "tests/ui/views/diary_view_test_support.h"

namespace lunara::test {
namespace {

// ---- Start and scroll range ----

TEST_F(DiaryView, WithoutRecordsTheScrollRangeBeginsAtTheFirstRowShown) {
    Make();
    // The range for today is [0, 365] at position 0. Starting ten days earlier adds those at the
    // top.
    ExpectScroll(375, 0);
}

TEST_F(DiaryView, ScrollRangeReachesFromTheFirstRecordToAYearAhead) {
    data->bleeding.Set(ToDateKey(Day(2025, 12, 5)), 2);  // 100 days before
    Make();
    ExpectScroll(465, 90);
}

TEST_F(DiaryView, RecordsOfTheFutureDoNoHarmToTheScrollRange) {
    data->bleeding.Set(ToDateKey(Day(2028, 12, 5)), 2);
    Make();
    ExpectScroll(375, 0);
}

TEST_F(DiaryView, StartsAtTheDataSetsCurrentDate) {
    const SYSTEMTIME date = Day(2026, 5, 20);
    data->SetCurrentDate(date);
    Make();
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 5, 10)));
    ExpectScroll(365, 56);
    EXPECT_EQ(ToDateKey(view->GetCurrentDate()), ToDateKey(date));
}

// ---- Scrolling ----

struct ScrollCase {
    const char* label;
    int request;
    SYSTEMTIME start;
};

TEST_F(DiaryView, ScrollsByADayAndByTenDays) {
    data->bleeding.Set(ToDateKey(Day(2025, 12, 5)), 2);
    Make();
    const ScrollCase cases[] = {
        {"line up", SB_LINEUP, Day(2026, 3, 4)},
        {"line down", SB_LINEDOWN, Day(2026, 3, 5)},
        {"page down", SB_PAGEDOWN, Day(2026, 3, 15)},
        {"page up", SB_PAGEUP, Day(2026, 3, 5)},
        {"dragging", SB_THUMBTRACK, Day(2026, 3, 5)},
        {"to the top", SB_TOP, Day(2026, 3, 5)},
        {"to the bottom", SB_BOTTOM, Day(2026, 3, 5)},
        {"end of scrolling", SB_ENDSCROLL, Day(2026, 3, 5)},
    };
    for (const ScrollCase& c : cases) {
        LUNARA_ROW(c);
        ScrollBy(c.request);
        EXPECT_EQ(Start(), ToDateKey(c.start));
    }
    ExpectScroll(465, 90);
}

TEST_F(DiaryView, ScrollingRepaintsBothControls) {
    Make();
    ASSERT_FALSE(WaitsForPaint(Agenda()));
    ASSERT_FALSE(WaitsForPaint(Calendar()));
    ScrollBy(SB_LINEDOWN);
    EXPECT_TRUE(WaitsForPaint(Agenda()));
    EXPECT_TRUE(WaitsForPaint(Calendar()));
}

TEST_F(DiaryView, PagingUpFromTheFirstDayEnlargesTheRangeAtTheTop) {
    Make();
    ExpectScroll(375, 0);
    ScrollBy(SB_PAGEUP);
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 2, 23)));
    ExpectScroll(385, 0);
}

TEST_F(DiaryView, ScrollingPastTheEndEnlargesTheRangeAtTheBottom) {
    data->SetCurrentDate(Day(2027, 3, 20));
    Make();
    EXPECT_EQ(Start(), ToDateKey(Day(2027, 3, 10)));
    ExpectScroll(365, 360);
    ScrollBy(SB_PAGEDOWN);
    ExpectScroll(370, 370);
}

TEST_F(DiaryView, DraggingTheThumbScrollsWhenItIsReleased) {
    data->bleeding.Set(ToDateKey(Day(2025, 12, 5)), 2);
    Make();
    const HWND bar = Child(View::ScrollBarId);
    SCROLLBARINFO info{};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(::SendMessageW(bar, SBM_GETSCROLLBARINFO, 0, reinterpret_cast<LPARAM>(&info)));
    const LONG x = 5;
    const LONG thumb = (info.xyThumbTop + info.xyThumbBottom) / 2;
    const DateKey before = Start();
    // The scroll bar's own message loop, begun by the button, takes these from the queue.
    ::PostMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, thumb + 60));
    ::PostMessageW(bar, WM_LBUTTONUP, 0, MAKELPARAM(x, thumb + 60));
    ::SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, thumb));
    PumpMessages();
    EXPECT_GT(Start(), before);
    const SCROLLINFO scroll = Scroll();
    EXPECT_GT(scroll.nPos, 90);
    // A position is a day: 90 stands for 5 March.
    SYSTEMTIME expected{};
    AddDays(Day(2026, 3, 5), scroll.nPos - 90, expected);
    EXPECT_EQ(Start(), ToDateKey(expected));
}

TEST_F(DiaryView, ScrollingRedrawsTheScrollBar) {
    Make();
    const HWND bar = Child(View::ScrollBarId);
    ::ShowWindow(::GetAncestor(bar, GA_ROOT), SW_SHOWNOACTIVATE);
    ::ShowWindow(view->Handle(), SW_SHOWNA);
    ::UpdateWindow(bar);
    ASSERT_EQ(::GetUpdateRect(bar, nullptr, FALSE), FALSE);
    ScrollBy(SB_PAGEDOWN);
    EXPECT_NE(::GetUpdateRect(bar, nullptr, FALSE), FALSE);
}

TEST_F(DiaryView, CannotScrollBeforeTheCalendarBegins) {
    Make();
    view->SetCurrentDate(Day(1601, 1, 3));
    EXPECT_EQ(Start(), ToDateKey(Day(1601, 1, 1)));
    ScrollBy(SB_LINEUP);
    for (int i = 0; i < 4; ++i) {
        ScrollBy(SB_LINEDOWN);
    }
    ScrollBy(SB_PAGEUP);
    EXPECT_EQ(Start(), ToDateKey(Day(1601, 1, 5)));
}

// ---- Bringing dates into view ----

TEST_F(DiaryView, ADateInViewDoesNotScroll) {
    Make();
    view->SetCurrentDate(Day(2026, 3, 24));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 5)));
    // The day after the last row counts as shown, too.
    view->SetCurrentDate(Day(2026, 3, 25));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 5)));
    EXPECT_EQ(ToDateKey(view->GetCurrentDate()), ToDateKey(Day(2026, 3, 25)));
}

TEST_F(DiaryView, ALaterDateScrollsIntoTheSecondRowFromTheBottom) {
    Make();
    data->SetCurrentDate(Day(2026, 3, 26));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 8)));  // of 20 rows, 18 above it and one below
}

TEST_F(DiaryView, AnEarlierDateScrollsIntoTheThirdRow) {
    Make();
    data->SetCurrentDate(Day(2026, 3, 4));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 2)));
}

TEST_F(DiaryView, SettingTheCurrentDateAgainBringsItBackIntoView) {
    Make();
    for (int i = 0; i < 5; ++i) {
        ScrollBy(SB_PAGEDOWN);
    }
    view->SetCurrentDate(Day(2026, 3, 15));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 13)));
}

// ---- Size ----

TEST_F(DiaryView, TheCurrentDateStaysInViewWhenTheWindowIsResized) {
    Make(480, 319);  // rows of 15 px, of which 21 fit
    SYSTEMTIME last{};
    ASSERT_EQ(FromDateKey(Start(), last), 1);
    AddDays(last, 20, last);
    data->SetCurrentDate(last);
    const DateKey start = Start();
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, 318, SWP_NOZORDER);
    EXPECT_EQ(Start(), start);
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, 640, SWP_NOZORDER);  // 20 rows fit
    SYSTEMTIME expected{};
    AddDays(last, -18, expected);
    EXPECT_EQ(Start(), ToDateKey(expected));
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, 700, SWP_NOZORDER);
    EXPECT_EQ(Start(), ToDateKey(expected));
    // When the date was scrolled out of view, resizing does not bring it back.
    ScrollBy(SB_PAGEDOWN);
    ScrollBy(SB_PAGEDOWN);
    const DateKey away = Start();
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, 319, SWP_NOZORDER);
    EXPECT_EQ(Start(), away);
}

}  // namespace
}  // namespace lunara::test
