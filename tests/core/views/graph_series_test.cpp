#include "views/graph_series.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "platform/text.h"
#include "tests/support/dates.h"
#include "tests/support/user_data_access.h"

namespace lunara::test {
namespace {

const GraphSeries Fahrenheit(GraphShowTemperature, MeasureFahrenheit);
const GraphSeries Celsius(GraphShowTemperature, MeasureCelsius);
const GraphSeries Bleeding(GraphShowBleeding, MeasureFahrenheit);

SYSTEMTIME Today() { return Day(2026, 3, 15); }

class GraphSeriesTest : public testing::Test {
  protected:
    GraphSeriesTest() : clock(Today()) { data.SetCurrentDate(Today()); }

    /// Records a value for the day `days` after today; negative for days before.
    void Warm(int days, std::int32_t value) { RecordTemperature(data, KeyOf(days), value); }
    void Bleed(int days, std::int32_t level) { RecordBleeding(data, KeyOf(days), level); }
    static DateKey KeyOf(int days) {
        SYSTEMTIME day{};
        AddDays(Today(), days, day);
        return ToDateKey(day);
    }
    void MoveTo(int days) {
        SYSTEMTIME day{};
        AddDays(Today(), days, day);
        data.SetCurrentDate(day);
    }

    ClockScope clock;
    UserData data;
};

TEST_F(GraphSeriesTest, DayValueIsTheShownOne) {
    Warm(0, 9823);
    Bleed(0, 2);
    EXPECT_EQ(Fahrenheit.DayValue(data), 9820);
    EXPECT_EQ(Celsius.DayValue(data), 3680);
    EXPECT_EQ(Bleeding.DayValue(data), 2);
}

TEST_F(GraphSeriesTest, DayWithoutRecordIs975OrNone) {
    EXPECT_EQ(Fahrenheit.DayValue(data), 9750);
    EXPECT_EQ(Celsius.DayValue(data), 3640);
    EXPECT_EQ(Bleeding.DayValue(data), 0);
}

TEST_F(GraphSeriesTest, DayToComeIsNegative) {
    MoveTo(1);
    EXPECT_EQ(Fahrenheit.DayValue(data), -100);
    EXPECT_EQ(Celsius.DayValue(data), -100);
    EXPECT_EQ(Bleeding.DayValue(data), -1);
}

struct RangeCase {
    const char* label = nullptr;
    GraphSeries series;
    ValueRange axis{};
    ValueRange entry{};
    ValueRange spin{};
    std::size_t scales = 0;
};

TEST_F(GraphSeriesTest, RangesFollowGraphAndUnit) {
    const RangeCase cases[] = {
        {"fahrenheit", Fahrenheit, {9700, 9800}, {9500, 10000}, {950, 1000}, 4},
        {"celsius", Celsius, {3600, 3700}, {3500, 3780}, {350, 378}, 4},
        {"bleeding", Bleeding, {0, 3}, {0, 3}, {0, 3}, 1},
    };
    for (const RangeCase& c : cases) {
        EXPECT_EQ(c.series.AxisRange().minimum, c.axis.minimum) << c.label;
        EXPECT_EQ(c.series.AxisRange().maximum, c.axis.maximum) << c.label;
        EXPECT_EQ(c.series.EntryRange().minimum, c.entry.minimum) << c.label;
        EXPECT_EQ(c.series.EntryRange().maximum, c.entry.maximum) << c.label;
        EXPECT_EQ(c.series.SpinRange().minimum, c.spin.minimum) << c.label;
        EXPECT_EQ(c.series.SpinRange().maximum, c.spin.maximum) << c.label;
        EXPECT_EQ(c.series.Scales().size(), c.scales) << c.label;
    }
}

TEST_F(GraphSeriesTest, TemperatureHasFourScalesAndBleedingOne) {
    const std::array<std::array<std::int32_t, 5>, 4> expected = {
        {{100, 10, 10, 50, 1}, {200, 10, 50, 100, 1}, {300, 10, 50, 100, 1}, {400, 50, 0, 100, 1}}};
    const auto scales = Celsius.Scales();
    ASSERT_EQ(scales.size(), expected.size());
    for (std::size_t i = 0; i < scales.size(); ++i) {
        const ChartScale& s = scales[i];
        EXPECT_EQ((std::array{s.span, s.step, s.minor, s.major, s.centre}), expected[i]) << i;
    }
    const ChartScale& b = Bleeding.Scales()[0];
    EXPECT_EQ((std::array{b.span, b.step, b.minor, b.major, b.centre}),
              (std::array<std::int32_t, 5>{4, 1, 0, 1, 0}));
}

struct TextCase {
    const char* label = nullptr;
    GraphSeries series;
    std::int32_t value = 0;
    const char* axisLabel = nullptr;
    const char* entry = nullptr;
};

TEST_F(GraphSeriesTest, ValuesAreWrittenAsLevelsOrTenthsOfADegree) {
    const TextCase cases[] = {
        {"none", Bleeding, 0, "None", "None"},
        {"slight", Bleeding, 1, "Slight", "Slight"},
        {"norm", Bleeding, 2, "Norm", "Norm"},
        {"heavy", Bleeding, 3, "Heavy", "Heavy"},
        {"no such level", Bleeding, 4, "", ""},
        {"bleeding to come", Bleeding, -1, "", ""},
        {"fahrenheit", Fahrenheit, 9860, "98.6", "98.6"},
        {"lowest", Fahrenheit, 9500, "95.0", "95.0"},
        {"below the lowest", Fahrenheit, 9490, "94.9", ""},
        {"highest", Fahrenheit, 10000, "100.0", "100.0"},
        {"above the highest", Fahrenheit, 10010, "100.1", ""},
        {"temperature to come", Fahrenheit, -100, "-1.0", ""},
        {"celsius", Celsius, 3640, "36.4", "36.4"},
        {"celsius, above the highest", Celsius, 3790, "37.9", ""},
        {"celsius, below the lowest", Celsius, 3490, "34.9", ""},
    };
    for (const TextCase& c : cases) {
        std::array<WCHAR, 16> text{};
        c.series.FormatLabel(c.value, text.data(), text.size());
        EXPECT_EQ(ToUtf8(text.data()), c.axisLabel) << c.label;
        c.series.FormatEntry(c.value, text.data(), text.size());
        EXPECT_EQ(ToUtf8(text.data()), c.entry) << c.label;
    }
}

TEST_F(GraphSeriesTest, SpinCountsTenthsOfDegrees) {
    EXPECT_EQ(Celsius.SpinPosition(3640), 364);
    EXPECT_EQ(Celsius.FromSpinPosition(364), 3640);
    EXPECT_EQ(Bleeding.SpinPosition(3), 3);
    EXPECT_EQ(Bleeding.FromSpinPosition(3), 3);
}

TEST_F(GraphSeriesTest, PointsRunFromTheDayBeforeToTheDayAfter) {
    Warm(-2, 9700);
    Warm(0, 9823);
    SYSTEMTIME start{};
    AddDays(Today(), -1, start);
    const auto points = Fahrenheit.MakePoints(data, start, 3, 34, 29);
    // Point i is at x = 34 - 29 / 2 + 29 * i px.
    const std::array<std::array<std::int32_t, 2>, 5> expected = {
        {{20, 9700}, {49, 9750}, {78, 9820}, {107, -100}, {136, -100}}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ((std::array{points[i].x, points[i].value}), expected[i]) << i;
    }
}

TEST_F(GraphSeriesTest, BleedingPointsAreTheLevels) {
    Bleed(-1, 3);
    SYSTEMTIME start{};
    AddDays(Today(), -1, start);
    const auto points = Bleeding.MakePoints(data, start, 1, 34, 10);
    EXPECT_EQ(points[0].value, 0);
    EXPECT_EQ(points[1].value, 3);
    EXPECT_EQ(points[2].value, 0);
}

// A day without a record is plotted at 97.5 F (36.4 C), as if that had been measured.
TEST_F(GraphSeriesTest, DayWithoutTemperatureIsAPointAt975) {
    const auto points = Celsius.MakePoints(data, Today(), 0, 34, 10);
    EXPECT_EQ(points[1].value, 3640);
}

struct StoreCase {
    const char* label = nullptr;
    GraphSeries series;
    std::int32_t value = 0;
    std::int32_t stored = 0;  // bleeding level or hundredths of a degree Fahrenheit
};

TEST_F(GraphSeriesTest, StoresTemperaturesInFahrenheitWithinTheLimits) {
    const StoreCase cases[] = {
        {"fahrenheit", Fahrenheit, 9823, 9823},
        {"at the upper limit", Fahrenheit, 10000, 10000},
        {"beyond the upper limit", Fahrenheit, 10044, 10000},
        {"at the lower limit", Fahrenheit, 9500, 9500},
        {"beyond the lower limit", Fahrenheit, 9499, 9500},
        {"celsius", Celsius, 3700, 9860},
        {"celsius, upper limit", Celsius, 3780, 10000},
        {"celsius, beyond the upper limit", Celsius, 3850, 10000},
        {"celsius, beyond the lower limit", Celsius, 3000, 9500},
        {"97.5 removes it", Fahrenheit, 9750, NoTemperature},
        {"36.4 degrees Celsius removes it", Celsius, 3640, NoTemperature},
    };
    for (const StoreCase& c : cases) {
        Warm(0, 9600);
        EXPECT_EQ(c.series.Store(data, c.value), 1) << c.label;
        EXPECT_EQ(data.GetTemperature(), c.stored) << c.label;
    }
}

TEST_F(GraphSeriesTest, StoresLevelsWithinTheLimits) {
    const StoreCase cases[] = {{"heavy", Bleeding, 3, 3},
                               {"above heavy", Bleeding, 4, 3},
                               {"slight", Bleeding, 1, 1},
                               {"below none", Bleeding, -5, 0},
                               {"none", Bleeding, 0, 0}};
    for (const StoreCase& c : cases) {
        EXPECT_EQ(c.series.Store(data, c.value), 1) << c.label;
        EXPECT_EQ(data.GetBleeding(), c.stored) << c.label;
    }
}

// A stored temperature may be finer than the tenth that is shown, and must not be rounded to it.
TEST_F(GraphSeriesTest, AValueThatIsShownAlreadyChangesNothing) {
    Warm(0, 9823);
    test::ClearDirty(data);
    EXPECT_EQ(Fahrenheit.Store(data, 9820), 1);
    EXPECT_EQ(Celsius.Store(data, 3680), 1);
    EXPECT_EQ(data.GetTemperature(), 9823);
    EXPECT_FALSE(data.Temperature().dirty);
}

TEST_F(GraphSeriesTest, ADayToComeIsRefused) {
    MoveTo(1);
    EXPECT_EQ(Fahrenheit.Store(data, 9800), 0);
    EXPECT_EQ(Bleeding.Store(data, 2), 0);
    EXPECT_EQ(data.Temperature().Count(), 0);
    EXPECT_EQ(data.Bleeding().Count(), 0);
}

TEST_F(GraphSeriesTest, ARefusedChangeIsReported) {
    class Refuser : public DataObserver {
        int CanChangeBleeding(UserData&, std::int32_t, std::int32_t) override { return 0; }
        int CanChangeTemperature(UserData&, std::int32_t, std::int32_t) override { return 0; }
    } refuser;
    data.AttachObserver(refuser);
    EXPECT_EQ(Fahrenheit.Store(data, 9800), 0);
    EXPECT_EQ(Bleeding.Store(data, 2), 0);
    data.DetachObserver(refuser);
}

}  // namespace
}  // namespace lunara::test
