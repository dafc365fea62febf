#include "views/diary_layout.h"

#include <gtest/gtest.h>

#include "tests/support/box.h"
#include "tests/support/dates.h"

namespace lunara::test {
namespace {

TEST(DiaryLayout, PutsThePartsSideBySide) {
    const DiaryLayout layout = LayOutDiary({0, 0, 240, 268}, 13, 45);
    EXPECT_EQ(BoxOf(layout.scrollBar), (Box{0, 0, 13, 268}));
    EXPECT_EQ(BoxOf(layout.calendar), (Box{12, 0, 57, 268}));
    EXPECT_EQ(BoxOf(layout.agenda), (Box{56, 0, 240, 268}));
}

TEST(DiaryLayout, KeepsTheAgendaFromANegativeWidth) {
    const DiaryLayout layout = LayOutDiary({0, 0, 20, 20}, 13, 45);
    EXPECT_EQ(layout.agenda.left, layout.agenda.right);
}

TEST(CalendarWidth, IsThreeLinesOfText) {
    EXPECT_EQ(CalendarWidth(15, 13, 15), 45);
    EXPECT_EQ(CalendarWidth(15, 0, 0), 45);
}

// The calendar holds a cell, a month's name as high as a cell, and a two-digit number.
TEST(CalendarWidth, GrowsWithCellsThatAreMuchLargerThanTheFont) {
    EXPECT_EQ(CalendarWidth(15, 30, 34), 96);
}

TEST(RowsToFill, CountsACutOffRow) {
    EXPECT_EQ(RowsToFill(240, 12), 20);
    EXPECT_EQ(RowsToFill(250, 12), 21);
    EXPECT_EQ(RowsToFill(250, 1), 250);
    EXPECT_EQ(RowsToFill(0, 12), 0);
    EXPECT_EQ(RowsToFill(250, 0), 0);
    EXPECT_EQ(RowsToFill(250, -1), 0);
}

struct ScrollCase {
    const char* label;
    ScrollState before;
    std::int32_t days;
    ScrollState after;
};

TEST(MoveScroll, GrowsTheRangeAtEitherEnd) {
    const ScrollCase cases[] = {
        {"inside", {0, 400, 35}, 1, {0, 400, 36}},
        {"to the first day", {0, 400, 35}, -35, {0, 400, 0}},
        {"to the last day", {0, 400, 35}, 365, {0, 400, 400}},
        {"ten days up from the first day", {0, 400, 0}, -10, {0, 410, 0}},
        {"past the first day", {0, 400, 3}, -10, {0, 407, 0}},
        {"past the last day", {0, 400, 395}, 10, {0, 405, 405}},
    };
    for (const ScrollCase& c : cases) {
        const ScrollState after = MoveScroll(c.before, c.days);
        EXPECT_EQ(after.minimum, c.after.minimum) << c.label;
        EXPECT_EQ(after.maximum, c.after.maximum) << c.label;
        EXPECT_EQ(after.position, c.after.position) << c.label;
    }
}

TEST(InitialScroll, ReachesFromTheFirstRecordToAYearAhead) {
    const ScrollState scroll = InitialScroll(100);
    EXPECT_EQ(scroll.minimum, 0);
    EXPECT_EQ(scroll.maximum, 465);
    EXPECT_EQ(scroll.position, 100);
}

TEST(InitialScroll, WithoutRecordsCoversTheYearAhead) {
    for (const std::int32_t days : {-1, 0, -400}) {
        const ScrollState scroll = InitialScroll(days);
        EXPECT_EQ(scroll.minimum, 0);
        EXPECT_EQ(scroll.maximum, 365);
        EXPECT_EQ(scroll.position, 0);
    }
}

TEST(ScrollDistance, IsADayForALineAndTenForAPage) {
    EXPECT_EQ(ScrollDistance(0, 99), -1);
    EXPECT_EQ(ScrollDistance(1, 99), 1);
    EXPECT_EQ(ScrollDistance(2, 99), -10);
    EXPECT_EQ(ScrollDistance(3, 99), 10);
    EXPECT_EQ(ScrollDistance(4, 99), 99);
    EXPECT_EQ(ScrollDistance(4, -7), -7);
}

// Scroll requests for dragging (5), the ends (6, 7) and the end of scrolling (8) move nothing.
TEST(ScrollDistance, IgnoresEverythingElse) {
    for (const int request : {5, 6, 7, 8, -1, 1000}) {
        EXPECT_EQ(ScrollDistance(request, 99), 0) << request;
    }
}

TEST(StartToShow, PutsALaterDateIntoTheSecondRowFromTheBottom) {
    EXPECT_EQ(ToDateKey(StartToShow(Day(2026, 5, 20), Day(2026, 3, 1), 20)),
              ToDateKey(Day(2026, 5, 2)));
    EXPECT_EQ(ToDateKey(StartToShow(Day(2026, 3, 1), Day(2026, 3, 1), 20)),
              ToDateKey(Day(2026, 2, 11)));
}

TEST(StartToShow, PutsAnEarlierDateIntoTheThirdRow) {
    EXPECT_EQ(ToDateKey(StartToShow(Day(2026, 2, 10), Day(2026, 3, 1), 20)),
              ToDateKey(Day(2026, 2, 8)));
}

}  // namespace
}  // namespace lunara::test
