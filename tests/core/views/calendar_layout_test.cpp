#include "views/calendar_layout.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/support/box.h"
#include "tests/support/dates.h"

namespace lunara::test {
namespace {

constexpr RECT Column = {0, 0, 60, 240};   // vertical strip: 20 cells of 12 px
constexpr RECT Row = {0, 0, 240, 60};      // horizontal strip: 20 cells of 12 px
constexpr RECT LongRow = {0, 0, 250, 60};  // 20 cells of 12 px and 10 px to spare

CalendarLayout VerticalStrip() { return {Column, 20, true}; }
CalendarLayout HorizontalStrip() { return {Row, 20, false}; }

/// The labels of the days as "cell:day cell:day ...".
std::string LabelText(const CalendarLayout& layout, const SYSTEMTIME& start) {
    std::ostringstream text;
    const char* separator = "";
    for (const DayLabel& label : layout.DayLabels(start)) {
        text << separator << label.cell << ":" << label.day;
        separator = " ";
    }
    return text.str();
}

/// The segments of the months as "year-month@start+length ...", start and length in px.
std::string SegmentText(const CalendarLayout& layout, const SYSTEMTIME& start) {
    std::ostringstream text;
    const char* separator = "";
    for (const MonthSegment& segment : layout.MonthSegments(start)) {
        text << separator << segment.date.wYear << "-" << segment.date.wMonth << "@"
             << segment.start << "+" << segment.length;
        separator = " ";
    }
    return text.str();
}

TEST(CalendarLayout, HorizontalStripLiesAboveItsBand) {
    const CalendarLayout layout = HorizontalStrip();
    EXPECT_EQ(layout.CellSize(), 12);
    EXPECT_EQ(BoxOf(layout.DayStrip()), (Box{0, 0, 240, 12}));
    EXPECT_EQ(BoxOf(layout.MonthBand()), (Box{0, 12, 240, 60}));
    EXPECT_EQ(BoxOf(layout.CellRectangle(2)), (Box{24, 0, 37, 13}));
}

TEST(CalendarLayout, VerticalStripLiesRightOfItsBand) {
    const CalendarLayout layout = VerticalStrip();
    EXPECT_EQ(layout.CellSize(), 12);
    EXPECT_EQ(BoxOf(layout.DayStrip()), (Box{48, 0, 60, 240}));
    EXPECT_EQ(BoxOf(layout.MonthBand()), (Box{0, 0, 48, 240}));
    EXPECT_EQ(BoxOf(layout.CellRectangle(2)), (Box{48, 24, 60, 37}));
}

TEST(CalendarLayout, SegmentsShareTheirBorders) {
    const MonthSegment segment{24, 120, Day(2026, 3, 1)};
    EXPECT_EQ(BoxOf(HorizontalStrip().SegmentRectangle(segment)), (Box{24, 12, 145, 61}));
    EXPECT_EQ(BoxOf(VerticalStrip().SegmentRectangle(segment)), (Box{0, 24, 49, 145}));
}

struct CountCase {
    const char* label;
    LONG extent;
    std::int32_t requested;
    std::int32_t expected;
};

TEST(FittingDayCount, FillsTheExtentWithWholeCells) {
    const CountCase cases[] = {
        {"20 days on 240 px", 240, 20, 20},
        {"10 px to spare", 250, 20, 20},
        {"cells of 1 px", 39, 20, 39},
        {"as many as pixels", 20, 20, 20},
        {"more days than pixels", 19, 20, 19},
        {"a single pixel", 1, 20, 1},
        {"no extent", 0, 20, 0},
        {"negative extent", -5, 20, 0},
        {"no days", 240, 0, 0},
        {"negative days", 240, -1, 0},
    };
    for (const CountCase& c : cases) {
        EXPECT_EQ(FittingDayCount(c.extent, c.requested), c.expected) << c.label;
    }
}

TEST(CalendarLayout, SparePixelsStayBehindTheLastCell) {
    const CalendarLayout layout(LongRow, 20, false);
    EXPECT_EQ(layout.CellSize(), 12);
    EXPECT_EQ(layout.CellStart(20), 240);
    EXPECT_EQ(layout.VisibleCells(), 21);
}

TEST(CalendarLayout, WithoutRoomNothingIsShown) {
    const CalendarLayout layouts[] = {
        {RECT{0, 0, 0, 0}, 20, true},    {RECT{0, 0, 10, 10}, 20, false},
        {RECT{0, 0, 100, 100}, 0, true}, {RECT{0, 0, 100, 100}, -3, false},
        {RECT{0, 0, -5, -5}, 5, true},
    };
    const SYSTEMTIME start = Day(2026, 3, 1);
    for (const CalendarLayout& layout : layouts) {
        EXPECT_EQ(layout.CellSize(), 0);
        EXPECT_EQ(layout.VisibleCells(), 0);
        EXPECT_TRUE(layout.MonthSegments(start).empty());
        EXPECT_TRUE(layout.DayLabels(start).empty());
        EXPECT_EQ(ToDateKey(layout.HitTest({3, 3}, start).date), ToDateKey(start));
    }
}

TEST(DaysInMonth, FollowsTheUsualTable) {
    const int expected[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (WORD month = 1; month <= 12; ++month) {
        EXPECT_EQ(DaysInMonth(2026, month), expected[month - 1]) << month;
    }
    EXPECT_EQ(DaysInMonth(2028, 2), 29);
    EXPECT_EQ(DaysInMonth(2026, 0), 31);
    EXPECT_EQ(DaysInMonth(2026, 13), 31);
}

// Every fourth year has a 29 February here, although 2100 is no leap year.
TEST(DaysInMonth, Year2100HasA29February) { EXPECT_EQ(DaysInMonth(2100, 2), 29); }

TEST(MonthSegments, StartOnThe31stIsOneCellLong) {
    EXPECT_EQ(SegmentText(VerticalStrip(), Day(2026, 1, 31)), "2026-1@0+12 2026-2@12+228");
}

TEST(MonthSegments, DecemberIsFollowedByJanuaryOfTheNextYear) {
    EXPECT_EQ(SegmentText(VerticalStrip(), Day(2025, 12, 31)), "2025-12@0+12 2026-1@12+228");
}

TEST(MonthSegments, LaterSegmentsAreWholeMonths) {
    const CalendarLayout layout({0, 0, 365, 30}, 73, false);  // cells of 5 px
    EXPECT_EQ(SegmentText(layout, Day(2026, 1, 20)),
              "2026-1@0+60 2026-2@60+140 2026-3@200+155 "
              "2026-4@355+10");
}

TEST(MonthSegments, The29FebruaryOf2100TakesACell) {
    EXPECT_EQ(SegmentText(VerticalStrip(), Day(2100, 2, 28)), "2100-2@0+24 2100-3@24+216");
}

// A later segment's date advances year and month and keeps the day and the day of the week of the
// first: a segment's colour depends on its month alone.
TEST(MonthSegments, LaterOnesKeepTheDayOfTheFirst) {
    const SYSTEMTIME start = Day(2026, 1, 31);
    const auto segments = VerticalStrip().MonthSegments(start);
    ASSERT_EQ(segments.size(), 2U);
    EXPECT_EQ(segments[1].date.wDay, 31);
    EXPECT_EQ(segments[1].date.wDayOfWeek, start.wDayOfWeek);
}

TEST(MonthSegments, ADayBeyondItsMonthStillGetsOneCell) {
    SYSTEMTIME start = Day(2026, 2, 28);
    start.wDay = 31;
    EXPECT_EQ(SegmentText(VerticalStrip(), start), "2026-2@0+12 2026-3@12+228");
}

std::vector<Spot> MarkerSpots(const CalendarLayout& layout, const MonthSegment& segment,
                              const SYSTEMTIME& start, const SYSTEMTIME& today) {
    TodayMarker marker{};
    std::vector<Spot> spots;
    if (layout.FindTodayMarker(segment, start, today, marker)) {
        for (const POINT& point : marker) {
            spots.push_back(SpotOf(point));
        }
    }
    return spots;
}

TEST(TodayMarker, PointsAtTheDayInTheHorizontalForm) {
    const SYSTEMTIME start = Day(2026, 3, 1);
    const CalendarLayout layout = HorizontalStrip();
    const auto segments = layout.MonthSegments(start);
    // The tip is over the middle of cell 3, x = 3 * 12 + 6 = 42 px; the band begins at y = 12.
    const std::vector<Spot> expected = {{42, 13}, {38, 17}, {40, 17}, {40, 25},
                                        {44, 25}, {44, 17}, {46, 17}, {42, 13}};
    EXPECT_EQ(MarkerSpots(layout, segments[0], start, Day(2026, 3, 4)), expected);
}

TEST(TodayMarker, PointsAtTheDayInTheVerticalForm) {
    const SYSTEMTIME start = Day(2026, 3, 1);
    const CalendarLayout layout = VerticalStrip();
    const auto segments = layout.MonthSegments(start);
    // The tip is beside the middle of cell 3, y = 42 px; the band ends at x = 48.
    const std::vector<Spot> expected = {{47, 42}, {43, 38}, {43, 40}, {35, 40},
                                        {35, 44}, {43, 44}, {43, 46}, {47, 42}};
    EXPECT_EQ(MarkerSpots(layout, segments[0], start, Day(2026, 3, 4)), expected);
}

TEST(TodayMarker, BelongsToTheSegmentOfItsDay) {
    const SYSTEMTIME start = Day(2026, 3, 25);
    const CalendarLayout layout = VerticalStrip();
    const auto segments = layout.MonthSegments(start);
    ASSERT_EQ(segments.size(), 2U);
    EXPECT_FALSE(MarkerSpots(layout, segments[0], start, Day(2026, 3, 31)).empty());
    EXPECT_TRUE(MarkerSpots(layout, segments[1], start, Day(2026, 3, 31)).empty());
    EXPECT_TRUE(MarkerSpots(layout, segments[0], start, Day(2026, 4, 1)).empty());
    EXPECT_FALSE(MarkerSpots(layout, segments[1], start, Day(2026, 4, 1)).empty());
}

// The marker of the day after the last cell is half a cell behind that cell, and drawn only where
// spare pixels leave room for it.
TEST(TodayMarker, NeedsSparePixelsForTheDayAfterTheLastCell) {
    const SYSTEMTIME start = Day(2026, 3, 1);
    const SYSTEMTIME dayAfter = Day(2026, 3, 21);
    const CalendarLayout roomy(LongRow, 20, false);
    const auto spots = MarkerSpots(roomy, roomy.MonthSegments(start)[0], start, dayAfter);
    ASSERT_EQ(spots.size(), 8U);
    EXPECT_EQ(spots[0], (Spot{246, 13}));

    const CalendarLayout tight = HorizontalStrip();
    EXPECT_TRUE(MarkerSpots(tight, tight.MonthSegments(start)[0], start, dayAfter).empty());
}

TEST(TodayMarker, IsNotDrawnOutsideTheStrip) {
    const SYSTEMTIME start = Day(2026, 3, 2);
    const CalendarLayout layout(LongRow, 20, false);
    const auto segments = layout.MonthSegments(start);
    EXPECT_TRUE(MarkerSpots(layout, segments[0], start, Day(2026, 3, 1)).empty());
    EXPECT_TRUE(MarkerSpots(layout, segments[0], start, Day(2026, 3, 23)).empty());
}

struct LabelCase {
    const char* label;
    SYSTEMTIME start;
    const char* expected;
};

TEST(DayLabels, StandAtTheFirstAndEveryFifthDayAndAtBothEnds) {
    const LabelCase cases[] = {
        {"starts on day 1, ends on 20", Day(2026, 3, 1), "0:1 4:5 9:10 14:15 19:20"},
        {"second day is a fifth", Day(2026, 3, 4), "1:5 6:10 11:15 16:20 19:23"},
        {"first day between fifths", Day(2026, 3, 2), "0:2 3:5 8:10 13:15 18:20"},
        {"last day is a 12", Day(2026, 2, 21), "0:21 4:25 8:1 12:5 17:10 19:12"},
        {"last day is a 2", Day(2026, 2, 11), "0:11 4:15 9:20 14:25 18:1"},
        {"last day is a 1", Day(2026, 2, 10), "0:10 5:15 10:20 15:25 19:1"},
        {"second day is a 1", Day(2026, 2, 28), "1:1 5:5 10:10 15:15 19:19"},
        {"last day is a 31", Day(2026, 3, 12), "0:12 3:15 8:20 13:25 18:30"},
    };
    for (const LabelCase& c : cases) {
        EXPECT_EQ(LabelText(VerticalStrip(), c.start), c.expected) << c.label;
        EXPECT_EQ(LabelText(HorizontalStrip(), c.start), c.expected) << c.label;
    }
}

TEST(DayLabels, LeaveOutACutOffCell) {
    // Cell 20 (25 March) is cut off: it begins at 240 px of 250.
    EXPECT_EQ(LabelText({LongRow, 20, false}, Day(2026, 3, 5)), "0:5 5:10 10:15 15:20 19:24");
}

TEST(DayLabels, StandAtASingleDay) {
    EXPECT_EQ(LabelText({Row, 1, false}, Day(2026, 3, 3)), "0:3");
    EXPECT_EQ(LabelText({Row, 1, false}, Day(2026, 3, 5)), "0:5");
    // The first cell gives way to a labelled neighbour, here the 5th, but as the last cell it is
    // labelled all the same.
    EXPECT_EQ(LabelText({Row, 1, false}, Day(2026, 3, 4)), "0:4");
}

struct HitCase {
    const char* label;
    POINT point;
    CalendarArea area;
    DateKey date;
    Box cell;
};

void ExpectHits(const CalendarLayout& layout, const SYSTEMTIME& start,
                std::initializer_list<HitCase> cases) {
    for (const HitCase& c : cases) {
        const CalendarHit hit = layout.HitTest(c.point, start);
        EXPECT_EQ(hit.area, c.area) << c.label;
        EXPECT_EQ(ToDateKey(hit.date), c.date) << c.label;
        EXPECT_EQ(BoxOf(hit.cell), c.cell) << c.label;
    }
}

TEST(CalendarHitTest, FindsThePartsOfTheHorizontalForm) {
    ExpectHits(HorizontalStrip(), Day(2026, 3, 1),
               {
                   {"first pixel", {0, 0}, CCHT_DAY, 0x07EA0301, {0, 0, 12, 12}},
                   {"second cell", {12, 11}, CCHT_DAY, 0x07EA0302, {12, 0, 24, 12}},
                   {"band", {35, 12}, CCHT_MONTHBAND, 0x07EA0303, {24, 0, 36, 12}},
                   {"last pixel", {239, 59}, CCHT_MONTHBAND, 0x07EA0314, {228, 0, 240, 12}},
                   {"left of it", {-7, 5}, CCHT_OUTSIDE, 0x07EA0301, {0, 0, 12, 12}},
                   {"right of it", {500, 5}, CCHT_OUTSIDE, 0x07EA0315, {240, 0, 252, 12}},
                   {"below it", {30, 60}, CCHT_OUTSIDE, 0x07EA0303, {24, 0, 36, 12}},
               });
}

TEST(CalendarHitTest, FindsThePartsOfTheVerticalForm) {
    ExpectHits(VerticalStrip(), Day(2026, 3, 1),
               {
                   {"strip", {48, 0}, CCHT_DAY, 0x07EA0301, {48, 0, 60, 12}},
                   {"band", {47, 25}, CCHT_MONTHBAND, 0x07EA0303, {48, 24, 60, 36}},
                   {"above it", {50, -4}, CCHT_OUTSIDE, 0x07EA0301, {48, 0, 60, 12}},
                   {"left of it", {-9, 30}, CCHT_OUTSIDE, 0x07EA0303, {48, 24, 60, 36}},
                   // y is not clamped: x is what is compared with the bottom, and it is smaller.
                   {"below it", {50, 264}, CCHT_OUTSIDE, 0x07EA0317, {48, 264, 60, 276}},
               });
}

// The vertical form compares x with the bottom edge. In a strip wider than high a point outside,
// but not above, moves to the bottom when its x is beyond the bottom's coordinate.
TEST(CalendarHitTest, VerticalFormComparesXWithTheBottom) {
    const CalendarLayout layout({0, 0, 300, 100}, 10, true);
    ExpectHits(layout, Day(2026, 3, 1),
               {
                   {"right of it", {300, 15}, CCHT_OUTSIDE, 0x07EA030B, {290, 100, 300, 110}},
                   {"far right", {5000, 15}, CCHT_OUTSIDE, 0x07EA030B, {290, 100, 300, 110}},
                   {"below, x beyond", {150, 250}, CCHT_OUTSIDE, 0x07EA030B, {290, 100, 300, 110}},
                   {"below, x at it", {100, 250}, CCHT_OUTSIDE, 0x07EA031A, {290, 250, 300, 260}},
                   {"above, x beyond", {300, -1}, CCHT_OUTSIDE, 0x07EA0301, {290, 0, 300, 10}},
                   {"inside, x beyond", {150, 15}, CCHT_MONTHBAND, 0x07EA0302, {290, 10, 300, 20}},
               });
}

TEST(CalendarDayRect, IncludesTheSharedBorder) {
    RECT cell{};
    ASSERT_TRUE(HorizontalStrip().FindDay(Day(2026, 3, 3), Day(2026, 3, 1), cell));
    EXPECT_EQ(BoxOf(cell), (Box{24, 0, 37, 13}));
    ASSERT_TRUE(VerticalStrip().FindDay(Day(2026, 3, 20), Day(2026, 3, 1), cell));
    EXPECT_EQ(BoxOf(cell), (Box{48, 228, 60, 241}));
}

TEST(CalendarDayRect, ComparesYearMonthAndDayOnly) {
    SYSTEMTIME date = Day(2026, 3, 3);
    date.wDayOfWeek = 6;
    date.wHour = 23;
    RECT cell{};
    EXPECT_TRUE(HorizontalStrip().FindDay(date, Day(2026, 3, 1), cell));
}

TEST(CalendarDayRect, LeavesTheCellOfADateThatIsNotShown) {
    RECT cell = {1, 2, 3, 4};
    EXPECT_FALSE(VerticalStrip().FindDay(Day(2026, 2, 28), Day(2026, 3, 1), cell));
    EXPECT_FALSE(VerticalStrip().FindDay(Day(2026, 3, 21), Day(2026, 3, 1), cell));
    EXPECT_FALSE(CalendarLayout(Column, 0, true).FindDay(Day(2026, 3, 1), Day(2026, 3, 1), cell));
    EXPECT_EQ(BoxOf(cell), (Box{1, 2, 3, 4}));
}

// The range is closed: the day after the last of N cells counts as shown.
TEST(IsDateInStrip, IncludesTheDayAfterTheLastCell) {
    const SYSTEMTIME start = Day(2026, 3, 1);
    EXPECT_FALSE(IsDateInStrip(Day(2026, 2, 28), start, 20));
    EXPECT_TRUE(IsDateInStrip(start, start, 20));
    EXPECT_TRUE(IsDateInStrip(Day(2026, 3, 20), start, 20));
    EXPECT_TRUE(IsDateInStrip(Day(2026, 3, 21), start, 20));
    EXPECT_FALSE(IsDateInStrip(Day(2026, 3, 22), start, 20));
}

}  // namespace
}  // namespace lunara::test
