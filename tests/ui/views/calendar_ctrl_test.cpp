// The calendar: a strip of day cells with a band of month colours beside it, in a horizontal and a
// vertical form.

#include "views/calendar_ctrl.h"

#include <memory>

#include "tests/ui/views/view_test_support.h"

namespace lunara::test {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Black = RGB(0, 0, 0);
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Lilac = RGB(200, 100, 200);
constexpr COLORREF Mint = RGB(100, 220, 160);
constexpr int ControlId = 3002;

class CalendarCtrl : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        SetLocalNow(Day(2026, 3, 15));
        ASSERT_EQ(parent.Make(nullptr, 400, 400), 1);
        ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
        calendar = std::make_unique<lunara::CalendarCtrl>();
    }
    void TearDown() override {
        ::DestroyWindow(parent.Handle());
        calendar.reset();
        UiTest::TearDown();
    }

    void Make(DWORD style, int width, int height) {
        ASSERT_EQ(calendar->Create(0, nullptr, nullptr, WS_CHILD | WS_VISIBLE | style, 0, 0, width,
                                   height, parent.Handle(), reinterpret_cast<HMENU>(ControlId)),
                  1);
    }
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) {
        return ::SendMessageW(calendar->Handle(), message, wParam, lParam);
    }
    void SetStart(const SYSTEMTIME& date) {
        EXPECT_EQ(Send(CCM_SETSTARTDATE, 0, reinterpret_cast<LPARAM>(&date)), 0);
    }
    CalendarHitTest HitTest(POINT point, LRESULT expected) {
        CalendarHitTest request{point, {}, {}};
        EXPECT_EQ(Send(CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&request)), expected);
        return request;
    }
    /// Answers the first requests for a month's colour with these colours, in order.
    void ColorMonths(const std::vector<COLORREF>& colors) {
        parent.handler = [this, colors](UINT message, WPARAM, LPARAM lParam, LRESULT& result) {
            if (message != WM_NOTIFY) {
                return false;
            }
            auto& record = *reinterpret_cast<CalendarMonthColor*>(lParam);
            if (record.header.code != CCN_GETMONTHCOLOR) {
                return false;
            }
            if (asked < colors.size()) {
                record.color = colors[asked];
                result = 1;
            }
            ++asked;
            return true;
        };
    }

    ScriptedWindow parent;
    std::unique_ptr<lunara::CalendarCtrl> calendar;
    std::size_t asked = 0;
};

TEST_F(CalendarCtrl, HasItsOwnWindowClass) {
    Make(CCS_VERTICAL, 60, 240);
    EXPECT_EQ(ClassOf(calendar->Handle()), L"CalendarCtrl");
}

TEST_F(CalendarCtrl, ShowsFifteenDaysFromTodayAtFirst) {
    Make(0, 150, 60);
    const CalendarHitTest hit = HitTest({0, 0}, CCHT_DAY);
    EXPECT_EQ(ToDateKey(hit.date), ToDateKey(Day(2026, 3, 15)));
    EXPECT_EQ(BoxOf(hit.cell), (Box{0, 0, 10, 10}));
}

TEST_F(CalendarCtrl, DayCountFillsTheStripWithWholeCells) {
    Make(CCS_VERTICAL, 60, 250);
    EXPECT_EQ(Send(CCM_SETDAYCOUNT, 20, 0), 0);
    EXPECT_EQ(BoxOf(HitTest({50, 0}, CCHT_DAY).cell), (Box{48, 0, 60, 12}));
}

TEST_F(CalendarCtrl, SenselessDayCountsDoNoHarm) {
    Make(CCS_VERTICAL, 60, 250);
    for (const WPARAM days : {WPARAM{0}, static_cast<WPARAM>(-1), WPARAM{1000000}}) {
        EXPECT_EQ(Send(CCM_SETDAYCOUNT, days, 0), 0);
        ::RedrawWindow(calendar->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
    // With more days than pixels, each pixel is a cell.
    EXPECT_EQ(BoxOf(HitTest({59, 0}, CCHT_DAY).cell), (Box{59, 0, 60, 1}));
}

TEST_F(CalendarCtrl, WithoutASizeItKeepsItsDayCount) {
    Make(CCS_VERTICAL, 0, 0);
    Send(CCM_SETDAYCOUNT, 20, 0);
    HitTest({0, 0}, CCHT_OUTSIDE);
    ::SetWindowPos(calendar->Handle(), nullptr, 0, 0, 40, 150, SWP_NOZORDER);
    EXPECT_EQ(BoxOf(HitTest({39, 0}, CCHT_DAY).cell), (Box{30, 0, 40, 10}));
}

// The style is read at each use, so a change takes effect at once.
TEST_F(CalendarCtrl, FollowsItsStyle) {
    Make(0, 240, 240);
    Send(CCM_SETDAYCOUNT, 20, 0);
    HitTest({2, 100}, CCHT_MONTHBAND);
    EXPECT_EQ(BoxOf(HitTest({2, 2}, CCHT_DAY).cell), (Box{0, 0, 12, 12}));
    ::SetWindowLongW(calendar->Handle(), GWL_STYLE, WS_CHILD | WS_VISIBLE | CCS_VERTICAL);
    EXPECT_EQ(BoxOf(HitTest({2, 2}, CCHT_MONTHBAND).cell), (Box{228, 0, 240, 12}));
}

TEST_F(CalendarCtrl, FindsTheCellOfADate) {
    Make(0, 240, 60);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 3, 1));
    CalendarDayRect request{Day(2026, 3, 2), {}};
    EXPECT_EQ(Send(CCM_GETDAYRECT, 0, reinterpret_cast<LPARAM>(&request)), 1);
    EXPECT_EQ(BoxOf(request.cell), (Box{12, 0, 25, 13}));
    request = {Day(2026, 4, 2), {7, 7, 7, 7}};
    EXPECT_EQ(Send(CCM_GETDAYRECT, 0, reinterpret_cast<LPARAM>(&request)), 0);
    EXPECT_EQ(BoxOf(request.cell), (Box{7, 7, 7, 7}));
}

TEST_F(CalendarCtrl, TheDayAfterTheLastCellCountsAsShown) {
    Make(0, 240, 60);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 3, 1));
    EXPECT_TRUE(calendar->IsDateShown(Day(2026, 3, 21)));
    EXPECT_FALSE(calendar->IsDateShown(Day(2026, 3, 22)));
    EXPECT_FALSE(calendar->IsDateShown(Day(2026, 2, 28)));
}

TEST_F(CalendarCtrl, NewStartAndNewDayCountRepaintTheWholeWindowWithoutErasing) {
    Make(CCS_VERTICAL, 60, 240);
    const auto expectInvalid = [this] {
        RECT update{};
        ::GetUpdateRect(calendar->Handle(), &update, FALSE);
        EXPECT_EQ(BoxOf(update), ClientBox(calendar->Handle()));
    };
    PumpMessages();
    ASSERT_FALSE(WaitsForPaint(calendar->Handle()));
    SetStart(Day(2026, 4, 1));
    expectInvalid();
    PumpMessages();
    ASSERT_FALSE(WaitsForPaint(calendar->Handle()));
    Send(CCM_SETDAYCOUNT, 20, 0);
    expectInvalid();
}

TEST_F(CalendarCtrl, ClickIsHandedToEverySinkWithItsSign) {
    Make(CCS_VERTICAL, 60, 240);
    std::vector<POINT> points;
    ScriptedSink sink([&](NMHDR& record) -> LRESULT {
        EXPECT_EQ(record.code, 3U);
        EXPECT_EQ(record.idFrom, static_cast<UINT_PTR>(ControlId));
        EXPECT_EQ(record.hwndFrom, calendar->Handle());
        points.push_back(reinterpret_cast<CalendarClick&>(record).pt);
        return 1;
    });
    calendar->AttachSink(sink);
    EXPECT_EQ(Send(WM_LBUTTONUP, 0, MAKELPARAM(-3, 700)), 0);
    EXPECT_EQ(Send(WM_LBUTTONUP, 0, MAKELPARAM(20, -1)), 0);
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0].x, -3);
    EXPECT_EQ(points[0].y, 700);
    EXPECT_EQ(points[1].x, 20);
    EXPECT_EQ(points[1].y, -1);
    EXPECT_EQ(parent.CountOf(WM_NOTIFY), 2);
}

TEST_F(CalendarCtrl, MonthColorsAreAskedOncePerSegment) {
    Make(0, 240, 60);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2025, 12, 31));
    std::vector<SYSTEMTIME> dates;
    std::vector<COLORREF> offered;
    ScriptedSink sink([&](NMHDR& record) -> LRESULT {
        auto& request = reinterpret_cast<CalendarMonthColor&>(record);
        EXPECT_EQ(record.code, 1U);
        dates.push_back(request.date);
        offered.push_back(request.color);
        request.color = Lilac;
        return 1;
    });
    calendar->AttachSink(sink);
    const MemoryCanvas canvas(240, 60);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    ASSERT_EQ(dates.size(), 2U);
    EXPECT_EQ(dates[0].wYear, 2025);
    EXPECT_EQ(dates[0].wMonth, 12);
    EXPECT_EQ(dates[1].wYear, 2026);
    EXPECT_EQ(dates[1].wMonth, 1);
    // Day and day of week stay those of the first date.
    EXPECT_EQ(dates[1].wDay, 31);
    EXPECT_EQ(dates[1].wDayOfWeek, dates[0].wDayOfWeek);
    EXPECT_EQ(offered[0], White);
    EXPECT_EQ(offered[1], Lilac);
}

TEST_F(CalendarCtrl, LastSinkThatAnswersGivesTheColor) {
    Make(0, 240, 60);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 4, 1));
    const auto answering = [](COLORREF color, LRESULT answer) {
        return [color, answer](NMHDR& record) {
            reinterpret_cast<CalendarMonthColor&>(record).color = color;
            return answer;
        };
    };
    ScriptedSink first(answering(Lilac, 1));
    ScriptedSink second(answering(Mint, 1));
    ScriptedSink silent(answering(Red, 0));
    calendar->AttachSink(first);
    calendar->AttachSink(second);
    calendar->AttachSink(silent);
    const MemoryCanvas canvas(240, 60);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(60, 40), Mint);
}

TEST_F(CalendarCtrl, HorizontalFormDrawsTheStripAboveTheBand) {
    Make(0, 400, 60);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 4, 21));  // ten days of April, ten of May
    ColorMonths({Lilac, Mint});
    const MemoryCanvas canvas(400, 60);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    // Borders of the first cell, and between the band's two months.
    EXPECT_EQ(canvas.Pixel(0, 10), Black);
    EXPECT_EQ(canvas.Pixel(20, 10), Black);
    EXPECT_EQ(canvas.Pixel(10, 0), Black);
    EXPECT_EQ(canvas.Pixel(200, 45), Black);
    EXPECT_EQ(canvas.Pixel(2, 2), White);
    EXPECT_EQ(canvas.Pixel(3, 50), Lilac);
    EXPECT_EQ(canvas.Pixel(396, 50), Mint);
}

TEST_F(CalendarCtrl, VerticalFormDrawsTheBandLeftOfTheStrip) {
    Make(CCS_VERTICAL, 100, 400);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 4, 21));
    ColorMonths({Lilac, Mint});
    const MemoryCanvas canvas(100, 400);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(80, 10), Black);   // the strip's left edge
    EXPECT_EQ(canvas.Pixel(90, 20), Black);   // between two cells
    EXPECT_EQ(canvas.Pixel(40, 200), Black);  // between two months
    EXPECT_EQ(canvas.Pixel(82, 2), White);
    EXPECT_EQ(canvas.Pixel(50, 30), Lilac);
    EXPECT_EQ(canvas.Pixel(50, 390), Mint);
}

TEST_F(CalendarCtrl, WithoutAnAnswerTheFirstMonthIsWhiteAndLaterOnesKeepTheColor) {
    Make(CCS_VERTICAL, 100, 400);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 4, 21));
    const MemoryCanvas plain(100, 400, Red);
    calendar->Draw(plain.Dc(), plain.Bounds());
    EXPECT_EQ(plain.Pixel(50, 30), White);
    ColorMonths({Lilac});
    const MemoryCanvas canvas(100, 400);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(50, 390), Lilac);
}

// The band's month arithmetic takes 2100 for a leap year, the day strip does not. Deliberate: the
// band is one day longer there.
TEST_F(CalendarCtrl, TheBandHasA29thOfFebruary2100ThatTheStripLacks) {
    Make(0, 400, 60);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2100, 2, 27));
    ColorMonths({Lilac, Mint});
    const MemoryCanvas canvas(400, 60);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(58, 50), Lilac);  // 27 and 28 February, and a 29th
    EXPECT_EQ(canvas.Pixel(60, 50), Black);
    EXPECT_EQ(canvas.Pixel(62, 50), Mint);
    EXPECT_EQ(ToDateKey(HitTest({45, 5}, CCHT_DAY).date), ToDateKey(Day(2100, 3, 1)));
}

// Today's marker and the day cells are filled with the brush that the caller selected, not with a
// month's colour.
TEST_F(CalendarCtrl, TodaysMarkerIsFilledWithTheBrushOfTheDeviceContext) {
    Make(CCS_VERTICAL, 100, 400);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 3, 2));
    ColorMonths({Lilac, Mint});
    SetLocalNow(Day(2026, 3, 6));
    const MemoryCanvas canvas(100, 400);
    const Brush red(::CreateSolidBrush(Red));
    {
        const SelectScope selected(canvas.Dc(), red.Get());
        calendar->Draw(canvas.Dc(), canvas.Bounds());
    }
    // Today is the fifth cell: its middle is at y = 4 * 20 + 10 = 90. The band ends at x = 80.
    EXPECT_EQ(canvas.Pixel(70, 90), Red);
    EXPECT_EQ(canvas.Pixel(77, 90), Red);
    EXPECT_EQ(canvas.Pixel(79, 90), Black);  // the tip
    EXPECT_EQ(canvas.Pixel(67, 90), Black);  // the shaft's end
    EXPECT_EQ(canvas.Pixel(64, 90), Lilac);
    // A cell of the strip.
    EXPECT_EQ(canvas.Pixel(82, 2), Red);
}

TEST_F(CalendarCtrl, WithoutTodayInViewThereIsNoMarker) {
    Make(CCS_VERTICAL, 100, 400);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 3, 2));
    ColorMonths({Lilac});
    SetLocalNow(Day(2026, 2, 6));
    const MemoryCanvas canvas(100, 400);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.Pixel(70, 90), Lilac);
}

/// The number of pixels in a box that differ from its background colour.
int InkIn(const MemoryCanvas& canvas, const Box& box, COLORREF ground) {
    int ink = 0;
    for (LONG y = box.top; y < box.bottom; ++y) {
        for (LONG x = box.left; x < box.right; ++x) {
            ink += canvas.Pixel(x, y) != ground ? 1 : 0;
        }
    }
    return ink;
}

TEST_F(CalendarCtrl, NumbersStandBesideTheirDays) {
    Make(CCS_VERTICAL, 140, 400);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 4, 1));
    SetLocalNow(Day(2026, 6, 1));
    ColorMonths({Lilac});
    const MemoryCanvas canvas(140, 400);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    for (int cell = 0; cell < 20; ++cell) {
        // The part of the band next to the strip, without borders and left of it the month's name.
        const Box beside = {100, cell * 20 + 4, 119, cell * 20 + 18};
        const int day = cell + 1;
        const bool labelled = day == 1 || day % 5 == 0;
        EXPECT_EQ(InkIn(canvas, beside, Lilac) > 0, labelled) << "day " << day;
        // Every cell has a letter, labelled or not.
        EXPECT_GT(InkIn(canvas, {122, cell * 20 + 2, 138, cell * 20 + 19}, White), 0) << day;
    }
    // The month's name runs along the middle of its segment, left of the numbers.
    EXPECT_GT(InkIn(canvas, {2, 180, 26, 220}, Lilac), 0);
    EXPECT_EQ(InkIn(canvas, {2, 20, 26, 120}, Lilac), 0);
}

TEST_F(CalendarCtrl, NumbersStandBelowTheirDaysInTheHorizontalForm) {
    Make(0, 400, 100);
    Send(CCM_SETDAYCOUNT, 20, 0);
    SetStart(Day(2026, 4, 2));
    SetLocalNow(Day(2026, 6, 1));
    ColorMonths({Lilac});
    const MemoryCanvas canvas(400, 100);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    // The first day is labelled, since its neighbour, the 3rd, is not. The last one, the 21st, is
    // not, since its neighbour, the 20th, is.
    EXPECT_GT(InkIn(canvas, {2, 22, 19, 42}, Lilac), 0);
    EXPECT_EQ(InkIn(canvas, {26, 22, 39, 42}, Lilac), 0);
    EXPECT_GT(InkIn(canvas, {60, 22, 80, 42}, Lilac), 0);
    EXPECT_GT(InkIn(canvas, {361, 22, 379, 42}, Lilac), 0);
    EXPECT_EQ(InkIn(canvas, {386, 22, 399, 42}, Lilac), 0);
}

TEST_F(CalendarCtrl, DrawingLeavesTheDeviceContextAsItWas) {
    Make(CCS_VERTICAL, 100, 400);
    Send(CCM_SETDAYCOUNT, 20, 0);
    ColorMonths({Lilac, Mint});
    const MemoryCanvas canvas(100, 400);
    const int live = LiveGdiObjects();
    const Selection before(canvas.Dc());
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(Selection(canvas.Dc()), before);
    EXPECT_EQ(LiveGdiObjects(), live);
}

TEST_F(CalendarCtrl, AWindowTooSmallForItsDaysIsWhite) {
    Make(CCS_VERTICAL, 10, 5);
    const MemoryCanvas canvas(10, 5, Red);
    calendar->Draw(canvas.Dc(), canvas.Bounds());
    EXPECT_EQ(canvas.CountOf(White), 50);
}

}  // namespace
}  // namespace lunara::test
