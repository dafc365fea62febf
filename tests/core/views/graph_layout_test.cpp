#include "views/graph_layout.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/box.h"
#include "tests/support/dates.h"

namespace lunara::test {
namespace {

// Metrics of a pocket device: text lines of 13 px, scroll bars of 17 px.
constexpr GraphMetrics Device = {13, 17, 17, {28, 13}, {48, 13}};

TEST(GraphLayout, FillsADeviceScreen) {
    // Cells of 13 px make a calendar of three text lines. The chart ends at
    // 320 - 5 * 13 - 17 = 238 px.
    const GraphLayout layout = LayOutGraph({0, 0, 240, 320}, Device);
    EXPECT_EQ(BoxOf(layout.chart), (Box{0, 0, 240, 238}));
    EXPECT_EQ(BoxOf(layout.calendar), (Box{34, 238, 240, 277}));
    EXPECT_EQ(BoxOf(layout.scrollBar), (Box{34, 277, 240, 294}));
    EXPECT_EQ(BoxOf(layout.fahrenheitButton), (Box{0, 238, 34, 266}));
    EXPECT_EQ(BoxOf(layout.celsiusButton), (Box{0, 266, 34, 294}));
    EXPECT_EQ(BoxOf(layout.legendArea), (Box{0, 251, 34, 279}));
    // The labels begin at 320 - 39 / 2 = 301 px.
    EXPECT_EQ(BoxOf(layout.dateLabel), (Box{10, 301, 38, 314}));
    EXPECT_EQ(BoxOf(layout.datePicker), (Box{38, 297, 115, 318}));
    EXPECT_EQ(BoxOf(layout.valueLabel), (Box{120, 301, 168, 314}));
    EXPECT_EQ(BoxOf(layout.valueEdit), (Box{168, 297, 218, 318}));
    EXPECT_EQ(BoxOf(layout.valueSpin), (Box{218, 297, 235, 318}));
}

TEST(GraphLayout, GivesADesktopWindowLargeCells) {
    // Cells of 446 / 15 = 29 px..
    const GraphLayout layout = LayOutGraph({0, 0, 480, 640}, Device);
    EXPECT_EQ(BoxOf(layout.chart), (Box{0, 0, 480, 510}));
    EXPECT_EQ(BoxOf(layout.calendar), (Box{34, 510, 480, 597}));
    EXPECT_EQ(BoxOf(layout.scrollBar), (Box{34, 597, 480, 614}));
    EXPECT_EQ(BoxOf(layout.celsiusButton), (Box{0, 562, 34, 614}));
    EXPECT_EQ(BoxOf(layout.legendArea), (Box{0, 539, 34, 591}));
}

TEST(GraphLayout, NeverHasNegativeSizes) {
    const RECT clients[] = {{0, 0, 0, 0},    {0, 0, 10, 10},   {0, 0, 34, 60},
                            {0, 0, 60, 100}, {0, 0, 2000, 50}, {0, 0, 30, 2000}};
    for (const RECT& client : clients) {
        const GraphLayout layout = LayOutGraph(client, Device);
        const RECT parts[] = {
            layout.chart,         layout.calendar,   layout.scrollBar, layout.fahrenheitButton,
            layout.celsiusButton, layout.legendArea, layout.dateLabel, layout.datePicker,
            layout.valueLabel,    layout.valueEdit,  layout.valueSpin};
        for (const RECT& part : parts) {
            EXPECT_LE(part.left, part.right) << client.right << " x " << client.bottom;
            EXPECT_LE(part.top, part.bottom) << client.right << " x " << client.bottom;
        }
    }
}

struct HeightCase {
    const char* label;
    LONG textHeight;
    LONG cellSize;
    LONG clientHeight;
    LONG expected;
};

TEST(GraphCalendarHeight, IsThreeLinesOrThreeCells) {
    const HeightCase cases[] = {
        {"cells as high as lines", 13, 13, 320, 39},
        {"large cells", 13, 29, 640, 87},
        {"small cells", 16, 5, 320, 48},
        {"low window", 13, 100, 300, 150},
        {"no cells", 13, 0, 0, 39},
    };
    for (const HeightCase& c : cases) {
        EXPECT_EQ(GraphCalendarHeight(c.textHeight, c.cellSize, c.clientHeight), c.expected)
            << c.label;
    }
}

TEST(GraphLayout, CentresTheLegend) {
    EXPECT_EQ(BoxOf(CenteredIn({0, 251, 34, 279}, {30, 26})), (Box{2, 252, 32, 278}));
}

TEST(GraphColumns, CountsACutOffOne) {
    EXPECT_EQ(GraphColumns(480, 29), 16);  // 446 / 29 = 15.4
    EXPECT_EQ(GraphColumns(34 + 435, 29), 15);
    EXPECT_EQ(GraphColumns(34 + 436, 29), 16);
    EXPECT_EQ(GraphColumns(34, 29), 0);
    EXPECT_EQ(GraphColumns(10, 29), 0);
    EXPECT_EQ(GraphColumns(480, 0), 0);
}

}  // namespace
}  // namespace lunara::test
