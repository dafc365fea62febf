#include "views/chart_layout.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/box.h"
#include "tests/support/dates.h"

namespace lunara::test {
namespace {

constexpr ChartScale Temperature[] = {
    {100, 10, 10, 50, 1}, {200, 10, 50, 100, 1}, {300, 10, 50, 100, 1}, {400, 50, 0, 100, 1}};
constexpr ChartScale Bleeding[] = {{4, 1, 0, 1, 0}};
constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Least = std::numeric_limits<std::int32_t>::min();

/// Chart points with these values, at x = 0, 10, 20 ... px.
std::vector<ChartPoint> PointsOf(std::initializer_list<std::int32_t> values) {
    std::vector<ChartPoint> points;
    for (const std::int32_t value : values) {
        points.push_back({static_cast<std::int32_t>(points.size()) * 10, value});
    }
    return points;
}

struct AxisCase {
    const char* label;
    std::vector<std::int32_t> values;
    std::int32_t lowest;
    std::int32_t highest;
    std::span<const ChartScale> scales;
    std::int32_t minimum;
    std::int32_t maximum;
    std::int32_t span;  // of the chosen scale, as is `step`; step 50 means the default scale
    std::int32_t step;
};

TEST(ChooseAxis, TakesTheFirstScaleWithATenthToSpare) {
    const AxisCase cases[] = {
        {"default range, no values", {-100, -100}, 9700, 9800, Temperature, 9650, 9850, 200, 10},
        {"celsius", {-100, -100}, 3600, 3700, Temperature, 3550, 3750, 200, 10},
        {"smaller than the first scale", {0, 9710}, 9710, 9800, Temperature, 9705, 9805, 100, 10},
        {"just fits 100", {0, 0}, 0, 91, Temperature, -4, 96, 100, 10},
        {"just misses 100", {0, 0}, 0, 92, Temperature, -54, 146, 200, 10},
        {"wider below", {0, 9650}, 9700, 9800, Temperature, 9625, 9825, 200, 10},
        {"just fits 200", {0, 9880, 9700}, 9700, 9800, Temperature, 9690, 9890, 200, 10},
        {"just fits 200, by truncation", {0, 9882}, 9700, 9800, Temperature, 9691, 9891, 200, 10},
        {"just misses 200", {0, 9883}, 9700, 9800, Temperature, 9642, 9942, 300, 10},
        {"fits 400", {0, 10000}, 9700, 9800, Temperature, 9650, 10050, 400, 50},
        {"beyond every scale", {0, 9400, 9900}, 9700, 9800, Temperature, 9375, 9925, 550, 50},
        {"bleeding", {0, 3, 0}, 0, 3, Bleeding, 0, 4, 4, 1},
        {"a level too many", {0, 4}, 0, 3, Bleeding, 0, 4, 4, 1},
        {"a level beyond", {0, 40}, 0, 3, Bleeding, -2, 42, 44, 50},
        {"no table", {0, 9900}, 9700, 9800, {}, 9690, 9910, 220, 50},
        {"nothing at all", {}, 0, 0, {}, 0, 0, 0, 50},
        {"huge", {0, Most}, 0, 3, Bleeding, -107374182, Most, Most, 50},
        {"the whole range", {0, 0}, Least, Most, Temperature, Least, Most, Most, 50},
    };
    for (const AxisCase& c : cases) {
        std::vector<ChartPoint> points;
        for (const std::int32_t value : c.values) {
            points.push_back({0, value});
        }
        const ChartAxis axis = ChooseAxis(points, c.lowest, c.highest, c.scales);
        EXPECT_EQ(axis.minimum, c.minimum) << c.label;
        EXPECT_EQ(axis.maximum, c.maximum) << c.label;
        EXPECT_EQ(axis.scale.span, c.span) << c.label;
        EXPECT_EQ(axis.scale.step, c.step) << c.label;
    }
}

TEST(ChooseAxis, DefaultScaleHasSolidLinesOnly) {
    const ChartAxis axis = ChooseAxis({}, 9700, 9800, {});
    EXPECT_EQ(axis.scale.minor, 0);
    EXPECT_EQ(axis.scale.major, 100);
    EXPECT_EQ(axis.scale.centre, 1);
}

// The first point belongs to the day before the first one shown.
TEST(ChooseAxis, FirstPointDoesNotCount) {
    const ChartAxis axis = ChooseAxis(PointsOf({9999, 9750}), 9700, 9800, Temperature);
    EXPECT_EQ(axis.minimum, 9650);
    EXPECT_EQ(axis.maximum, 9850);
}

TEST(ChooseAxis, NegativeValuesDoNotCount) {
    const ChartAxis axis = ChooseAxis(PointsOf({9750, -1, -100, Least}), 9700, 9800, Temperature);
    EXPECT_EQ(axis.minimum, 9650);
}

ChartAxis AxisOf(std::int32_t minimum, std::int32_t maximum) {
    return {minimum, maximum, {maximum - minimum, 10, 50, 100, 1}};
}

struct PixelCase {
    const char* label;
    ChartPoint point;
    Spot pixel;
};

TEST(ChartMapping, PutsTheAxisIntoTheAreaRightOfTheMargin) {
    const ChartMapping mapping({0, 0, 480, 400}, 34, AxisOf(9650, 9850));
    EXPECT_EQ(BoxOf(mapping.Area()), (Box{34, 0, 480, 400}));
    const PixelCase cases[] = {
        {"minimum", {34, 9650}, {34, 400}},
        {"maximum", {480, 9850}, {480, 0}},
        {"middle", {100, 9750}, {100, 200}},
        {"one up", {100, 9751}, {100, 198}},
        {"left of the margin", {19, 9750}, {19, 200}},
        {"a day to come", {50, -100}, {50, 19900}},
        {"far away", {50, Most}, {50, -(1 << 24)}},
    };
    for (const PixelCase& c : cases) {
        EXPECT_EQ(SpotOf(mapping.ToPixel(c.point)), c.pixel) << c.label;
    }
}

TEST(ChartMapping, TruncatesPixels) {
    // 238 px for 200 hundredths of a degree: 1.19 px each.
    const ChartMapping mapping({0, 0, 240, 238}, 34, AxisOf(9650, 9850));
    EXPECT_EQ(mapping.ToPixel({100, 9653}).y, 234);  // 234.43
    EXPECT_EQ(mapping.ToPixel({100, 9651}).y, 236);  // 236.81
    // Above the top y is negative, and truncation towards zero moves it down.
    EXPECT_EQ(mapping.ToPixel({100, 9850}).y, 0);
    EXPECT_EQ(mapping.ToPixel({100, 9851}).y, -1);  // -1.19
}

struct ValueCase {
    const char* label;
    Spot pixel;
    std::int32_t x;
    std::int32_t value;
};

TEST(ChartMapping, MapsPixelsBack) {
    const ChartMapping temperature({0, 0, 480, 400}, 34, AxisOf(9650, 9850));
    const ChartMapping bleeding({0, 0, 480, 400}, 34, {0, 4, Bleeding[0]});
    const ValueCase warm[] = {{"top", {60, 0}, 60, 9850},
                              {"bottom", {60, 400}, 60, 9650},
                              {"middle", {60, 200}, 60, 9750},
                              {"odd pixel", {60, 199}, 60, 9750},
                              {"below", {60, 420}, 60, 9640}};
    for (const ValueCase& c : warm) {
        const ChartPoint point = temperature.FromPixel({c.pixel.x, c.pixel.y});
        EXPECT_EQ(point.x, c.x) << c.label;
        EXPECT_EQ(point.value, c.value) << c.label;
    }
    const ValueCase levels[] = {{"top", {60, 0}, 60, 4},     {"next row", {60, 1}, 60, 3},
                                {"heavy", {60, 100}, 60, 3}, {"below heavy", {60, 101}, 60, 2},
                                {"none", {60, 400}, 60, 0},  {"above none", {60, 301}, 60, 0}};
    for (const ValueCase& c : levels) {
        EXPECT_EQ(bleeding.FromPixel({c.pixel.x, c.pixel.y}).value, c.value) << c.label;
    }
}

TEST(ChartMapping, EveryValueComesBackWherePixelsAreFineEnough) {
    const ChartMapping mapping({0, 0, 480, 512}, 34, AxisOf(9650, 9850));
    for (std::int32_t value = 9650; value <= 9850; ++value) {
        const ChartPoint back = mapping.FromPixel(mapping.ToPixel({100, value}));
        EXPECT_EQ(back.value, value);
        EXPECT_EQ(back.x, 100);
    }
}

TEST(ChartMapping, WithoutHeightEverythingStandsAtTheBottom) {
    const ChartMapping flatAxis({0, 0, 480, 400}, 34, AxisOf(9700, 9700));
    EXPECT_EQ(SpotOf(flatAxis.ToPixel({50, 9800})), (Spot{50, 400}));
    EXPECT_EQ(flatAxis.FromPixel({50, 17}).value, 9700);
    const ChartMapping noArea({0, 0, 0, 0}, 0, AxisOf(9650, 9850));
    EXPECT_EQ(SpotOf(noArea.ToPixel({50, 9800})), (Spot{50, 0}));
    EXPECT_EQ(noArea.FromPixel({50, 17}).value, 9650);
    EXPECT_EQ(noArea.FromPixel({50, 17}).x, 50);
    const ChartMapping onlyMargin({0, 0, 34, 100}, 34, AxisOf(9650, 9850));
    EXPECT_EQ(SpotOf(onlyMargin.ToPixel({50, 9750})), (Spot{50, 50}));
    EXPECT_EQ(noArea.ClampToArea(7), 0);
}

TEST(ChartMapping, ClampsHeightsIntoTheChart) {
    const ChartMapping mapping({0, 0, 480, 400}, 34, AxisOf(9650, 9850));
    EXPECT_EQ(mapping.ClampToArea(-3), 0);
    EXPECT_EQ(mapping.ClampToArea(0), 0);
    EXPECT_EQ(mapping.ClampToArea(250), 250);
    EXPECT_EQ(mapping.ClampToArea(400), 400);
    EXPECT_EQ(mapping.ClampToArea(4000), 400);
}

/// The ticks, separated by blanks: the value, M (major), m (minor) or . (plain), and y in px.
std::string TickText(const ChartAxis& axis, const RECT& client) {
    std::ostringstream text;
    const char* separator = "";
    for (const ChartTick& tick : ChartTicks(axis, {client, 34, axis})) {
        const char kind = tick.kind == TickKind::Major   ? 'M'
                          : tick.kind == TickKind::Minor ? 'm'
                                                         : '.';
        text << separator << tick.value << kind << tick.y;
        separator = " ";
    }
    return text.str();
}

TEST(ChartTicks, FillTheDefaultTemperatureRange) {
    const ChartAxis axis = ChooseAxis({}, 9700, 9800, Temperature);
    EXPECT_EQ(TickText(axis, {0, 0, 480, 400}),
              "9650m400 9660.380 9670.360 9680.340 9690.320 9700M300 9710.280 9720.260 9730.240 "
              "9740.220 9750m200 9760.180 9770.160 9780.140 9790.120 9800M100 9810.80 9820.60 "
              "9830.40 9840.20 9850m0");
}

TEST(ChartTicks, AreAllMajorForBleeding) {
    const ChartAxis axis = ChooseAxis({}, 0, 3, Bleeding);
    EXPECT_EQ(TickText(axis, {0, 0, 480, 400}), "0M400 1M300 2M200 3M100 4M0");
}

TEST(ChartTicks, BeginAtTheFirstMultipleOfTheStep) {
    EXPECT_EQ(TickText({9646, 9676, {30, 10, 50, 100, 1}}, {0, 0, 100, 300}),
              "9650m260 9660.160 9670.60");
    EXPECT_EQ(TickText({-15, 5, {20, 10, 0, 10, 1}}, {0, 0, 100, 200}), "-10M150 0M50");
}

TEST(ChartTicks, AreLeftOutWhereTheyWouldBeDenserThanPixels) {
    EXPECT_EQ(TickText({0, 200, {200, 1, 0, 1, 1}}, {0, 0, 100, 199}), "");
    EXPECT_NE(TickText({0, 200, {200, 1, 0, 1, 1}}, {0, 0, 100, 200}), "");
    EXPECT_EQ(TickText({Least, Most, {Most, 50, 0, 100, 1}}, {0, 0, 480, 640}), "");
    EXPECT_EQ(TickText({0, 200, {200, 0, 0, 0, 1}}, {0, 0, 100, 400}), "");
    EXPECT_EQ(TickText({0, 200, {200, -5, 0, 0, 1}}, {0, 0, 100, 400}), "");
}

TEST(ChartTicks, GrowWithTheirRank) {
    EXPECT_EQ(TickLength(TickKind::Plain, 34), 8);
    EXPECT_EQ(TickLength(TickKind::Minor, 34), 16);
    EXPECT_EQ(TickLength(TickKind::Major, 34), 24);
    EXPECT_EQ(TickLength(TickKind::Major, 3), 0);
}

TEST(ChartLabels, StandBelowTheirLineOrAtTheBottom) {
    EXPECT_EQ(LabelTop(100, 13, 400), 101);
    EXPECT_EQ(LabelTop(0, 13, 400), 1);
    EXPECT_EQ(LabelTop(387, 13, 400), 388);
    // Below its line the label would be cut off at the bottom.
    EXPECT_EQ(LabelTop(388, 13, 400), 388);
    EXPECT_EQ(LabelTop(400, 13, 400), 388);
    EXPECT_EQ(LabelTop(420, 13, 400), 388);
}

TEST(ChartMarkers, AreASquareOf11OrACircleOf7) {
    EXPECT_EQ(BoxOf(MarkerBox({50, 60}, true)), (Box{45, 55, 56, 66}));
    EXPECT_EQ(BoxOf(MarkerBox({50, 60}, false)), (Box{47, 57, 54, 64}));
}

struct TapCase {
    const char* label;
    POINT tap;
    std::int32_t index;
};

TEST(FindChartPoint, TakesTheFirstWithinFivePixels) {
    const ChartMapping mapping({0, 0, 100, 400}, 0, AxisOf(9650, 9850));
    // Their pixels: (0, 200), (10, 100), (13, 104), (40, 19900).
    const std::vector<ChartPoint> points = {{0, 9750}, {10, 9800}, {13, 9798}, {40, -100}};
    const TapCase cases[] = {
        {"on the point", {10, 100}, 1},
        {"four left", {6, 100}, 1},
        {"five left", {5, 100}, -1},
        {"four above", {10, 96}, 1},
        {"five above", {10, 95}, -1},
        {"both, first wins", {13, 104}, 1},
        {"only the second", {13, 106}, 2},
        {"first point", {-4, 204}, 0},
        {"four right, five below", {4, 205}, -1},
        {"day without value, inside", {40, 399}, -1},
    };
    for (const TapCase& c : cases) {
        EXPECT_EQ(FindChartPoint(points, mapping, c.tap), c.index) << c.label;
    }
    EXPECT_EQ(FindChartPoint({}, mapping, {0, 0}), -1);
}

struct BandCase {
    const char* label;
    std::int32_t index;
    Spot left;
    Spot right;
};

TEST(RubberBand, RunsOverTheNeighboursThatHaveValues) {
    const ChartMapping mapping({0, 0, 100, 400}, 0, AxisOf(9650, 9850));
    const std::vector<ChartPoint> points = PointsOf({-1, 9700, 9750, 9800, -1, 9700, 9800});
    const BandCase cases[] = {
        {"between two", 2, {10, 300}, {30, 100}},
        {"left neighbour without value", 1, {10, 300}, {20, 200}},
        {"right neighbour without value", 3, {20, 200}, {30, 100}},
        {"a gap on the left", 5, {50, 300}, {60, 100}},
        {"last", 6, {50, 300}, {60, 100}},
        {"first", 0, {0, 19702}, {10, 300}},
    };
    for (const BandCase& c : cases) {
        const RubberBand band = MakeRubberBand(points, c.index, mapping);
        EXPECT_EQ(SpotOf(band.line[0]), c.left) << c.label;
        EXPECT_EQ(SpotOf(band.line[2]), c.right) << c.label;
        EXPECT_EQ(band.line[1].x, c.index * 10) << c.label;
    }
    const RubberBand band = MakeRubberBand(points, 2, mapping);
    EXPECT_EQ(BoxOf(band.Box()), (Box{17, 197, 24, 204}));
}

TEST(RubberBand, RunsOverNeighboursOfValueZero) {
    const ChartMapping mapping({0, 0, 100, 400}, 0, AxisOf(0, 400));
    const std::vector<ChartPoint> points = PointsOf({0, 100, 0});
    const RubberBand band = MakeRubberBand(points, 1, mapping);
    EXPECT_EQ(SpotOf(band.line[0]), (Spot{0, 400}));
    EXPECT_EQ(SpotOf(band.line[2]), (Spot{20, 400}));
}

}  // namespace
}  // namespace lunara::test
