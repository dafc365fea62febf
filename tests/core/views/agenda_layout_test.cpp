#include "views/agenda_layout.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/box.h"
#include "tests/support/dates.h"

namespace lunara::test {
namespace {

constexpr RECT Client = {0, 0, 300, 600};
constexpr LONG TextHeight = 15;  // px; makes a padding of 5 px

AgendaLayout FiveItems() { return {Client, 5, 20, TextHeight}; }

TEST(AgendaLayout, LeavesTwoCellsBetweenItemsAndTexts) {
    const AgendaLayout layout = FiveItems();
    EXPECT_EQ(layout.Padding(), 5);
    EXPECT_EQ(layout.TextLeft(), 140);
    EXPECT_EQ(layout.TextWidth(), 160);
}

TEST(AgendaLayout, TextsWrapAtOnePixelWhereThereIsNoRoom) {
    EXPECT_EQ(AgendaLayout({0, 0, 100, 100}, 5, 20, TextHeight).TextWidth(), 1);
    EXPECT_EQ(AgendaLayout({0, 0, 0, 0}, MaxAgendaMeasure, MaxAgendaMeasure, 0).TextWidth(), 1);
}

TEST(AgendaLayout, ItemCellsShareTheirBorders) {
    const AgendaLayout layout = FiveItems();
    EXPECT_EQ(BoxOf(layout.ItemRectangle(0, 0, 20)), (Box{0, 0, 21, 21}));
    EXPECT_EQ(BoxOf(layout.ItemRectangle(4, 60, 30)), (Box{80, 60, 101, 91}));
}

TEST(AgendaLayout, PicturesAreCentredInTheirCells) {
    const AgendaLayout layout = FiveItems();
    EXPECT_EQ(BoxOf(layout.PictureRectangle(1, 40, 20, {11, 10})), (Box{25, 46, 36, 56}));
    EXPECT_EQ(BoxOf(layout.PictureRectangle(0, 0, 20, {19, 19})), (Box{1, 1, 20, 20}));
}

TEST(AgendaLayout, PicturesLargerThanTheirCellsAreShrunk) {
    const AgendaLayout layout = FiveItems();
    EXPECT_EQ(BoxOf(layout.PictureRectangle(0, 0, 20, {38, 38})), (Box{1, 1, 20, 20}));
    EXPECT_EQ(BoxOf(layout.PictureRectangle(0, 0, 10, {18, 9})), (Box{6, 4, 15, 8}));
    const Box tiny = BoxOf(layout.PictureRectangle(0, 0, 1, {25, 25}));
    EXPECT_EQ(tiny.right - tiny.left, 1);
}

TEST(AgendaBubble, BeginsAtTheTextsLeftEdge) {
    const AgendaBubble place = FiveItems().PlaceBubble(40, 40, {100, 30});
    EXPECT_EQ(BoxOf(place.bubble), (Box{140, 45, 250, 85}));
    EXPECT_EQ(BoxOf(place.text), (Box{145, 50, 245, 80}));
    EXPECT_EQ(SpotOf(place.arrowStart), (Spot{100, 50}));
    EXPECT_EQ(SpotOf(place.arrowEnd), (Spot{145, 50}));
    EXPECT_EQ(place.nextBubbleY, 40 + 3 * 15);
}

TEST(AgendaBubble, TooWideATextMovesItLeftUntilItEndsTwoPixelsInside) {
    const AgendaBubble place = FiveItems().PlaceBubble(0, 0, {160, 15});
    EXPECT_EQ(place.bubble.right, 298);
    EXPECT_EQ(place.bubble.left, 128);
    EXPECT_EQ(place.text.left, 133);
    // A wider text may cover the item cells, which end at 100 px.
    EXPECT_EQ(FiveItems().PlaceBubble(0, 0, {260, 15}).bubble.left, 28);
}

TEST(AgendaBubble, LongTextsPushTheNextBubblesDown) {
    const AgendaLayout layout = FiveItems();
    constexpr LONG RowHeight = 20;
    LONG nextBubbleY = 0;
    Box before{};
    for (LONG row = 0; row < 3; ++row) {
        const LONG y = row * RowHeight;
        nextBubbleY = std::max(nextBubbleY, y);
        const AgendaBubble place = layout.PlaceBubble(y, nextBubbleY, {100, 45});
        EXPECT_EQ(place.arrowStart.y, y + 10);
        if (row > 0) {
            // Bubbles may overlap by their padding; texts never overlap.
            EXPECT_GE(place.text.top, before.bottom);
        }
        before = BoxOf(place.text);
        nextBubbleY = place.nextBubbleY;
    }
    EXPECT_EQ(nextBubbleY, 3 * 4 * TextHeight);
}

struct HitCase {
    const char* label;
    POINT point;
    AgendaArea area;
    std::int32_t column;
};

TEST(AgendaHitTest, TellsItemsFromTheRest) {
    const HitCase cases[] = {
        {"first cell", {0, 0}, AgendaItemCell, 0},
        {"last pixel of the first cell", {19, 599}, AgendaItemCell, 0},
        {"second cell", {20, 10}, AgendaItemCell, 1},
        {"last pixel of the last cell", {99, 10}, AgendaItemCell, 4},
        {"exactly five cells from the left", {100, 10}, AgendaRightOfItems, -1},
        {"last pixel", {299, 599}, AgendaRightOfItems, -1},
        {"right edge", {300, 10}, AgendaOutside, -1},
        {"bottom edge", {10, 600}, AgendaOutside, -1},
        {"left of it", {-1, 10}, AgendaOutside, -1},
        {"above it", {10, -1}, AgendaOutside, -1},
    };
    for (const HitCase& c : cases) {
        std::int32_t column = -1;
        EXPECT_EQ(FiveItems().HitTest(c.point, column), c.area) << c.label;
        EXPECT_EQ(column, c.column) << c.label;
    }
}

TEST(AgendaArrow, StopsFivePixelsShort) {
    AgendaArrow arrow{};
    ASSERT_TRUE(FindArrow({100, 50}, {145, 50}, arrow));
    EXPECT_EQ(SpotOf(arrow.lineStart), (Spot{100, 50}));
    EXPECT_EQ(SpotOf(arrow.tip), (Spot{140, 50}));
    EXPECT_EQ(SpotOf(arrow.head[0]), (Spot{140, 50}));
    EXPECT_EQ(SpotOf(arrow.head[1]), (Spot{130, 46}));
    EXPECT_EQ(SpotOf(arrow.head[2]), (Spot{130, 54}));
    EXPECT_EQ(SpotOf(arrow.head[3]), (Spot{140, 50}));
}

TEST(AgendaArrow, RoundsHalvesAwayFromZero) {
    // Along the unit vector (0.6, 0.8) the tip is (-3, -4) from the end, and the head's corners are
    // (-2.8, -10.4) and (-9.2, -5.6) from the tip.
    AgendaArrow arrow{};
    ASSERT_TRUE(FindArrow({0, 0}, {30, 40}, arrow));
    EXPECT_EQ(SpotOf(arrow.tip), (Spot{27, 36}));
    EXPECT_EQ(SpotOf(arrow.head[1]), (Spot{24, 26}));
    EXPECT_EQ(SpotOf(arrow.head[2]), (Spot{18, 30}));
    // On a line of 5 px the tip is its start.
    ASSERT_TRUE(FindArrow({0, 0}, {-3, 4}, arrow));
    EXPECT_EQ(SpotOf(arrow.tip), (Spot{0, 0}));
}

TEST(AgendaArrow, BetweenTheSamePointsThereIsNothing) {
    AgendaArrow arrow{};
    EXPECT_FALSE(FindArrow({7, 7}, {7, 7}, arrow));
    EXPECT_TRUE(FindArrow({7, 7}, {8, 7}, arrow));
}

}  // namespace
}  // namespace lunara::test
