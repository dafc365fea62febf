// Entering values in the graph, with the arrows, with keys and by dragging in the chart:
// temperatures in both units, bleeding, the limits, and future days, which take no value.

#include <algorithm>
#include <array>
#include <cstdio>

#include "tests/driver/fields.h"
#include "tests/driver/graph.h"
#include "tests/driver/wait.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

constexpr int NoTemperature = 9750;  // a day without a temperature is drawn at this value
constexpr Axis EmptyFahrenheit{9650, 9850};
constexpr Axis EmptyCelsius{3550, 3750};

/// "97.83" for 9783, as the companion exports it.
std::string Hundredths(int value) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%d.%02d", value / 100, value % 100);
    return text.data();
}

/// Rounds a temperature to a tenth of a degree, as the graph shows it. In and out in hundredths.
int Shown(int value) { return (value + 5) / 10 * 10; }

/// "97.8" for 9783, as the value field shows it.
std::wstring Tenths(int value) {
    const int tenths = Shown(value) / 10;
    return std::to_wstring(tenths / 10) + L"." + std::to_wstring(tenths % 10);
}

std::string TemperatureRow(Day day, const std::string& temperature) {
    return ToUtf8(IsoDate(day)) + ",," + temperature + ",,,\r\n";
}

std::string BleedingRow(Day day, int level) {
    return ToUtf8(IsoDate(day)) + "," + std::to_string(level) + ",,,,\r\n";
}

class Graph : public EndToEnd {
  protected:
    static constexpr DWORD Bleeding = 1;
    static constexpr DWORD Temperature = 2;
    static constexpr DWORD Fahrenheit = 0;
    static constexpr DWORD Celsius = 1;

    /// Starts with an empty diary and the graph showing that chart in that unit.
    void StartIn(DWORD chart, DWORD unit) {
        WriteNumber(L"CurrentView", ViewGraph);
        WriteNumber(L"GraphView_ShowFlags", chart);
        WriteNumber(L"TemperatureMeasure", unit);
        ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
        ASSERT_TRUE(program.IsOnTop(program.Graph()));
    }

    /// Clicks the arrow beside the value field once.
    bool Step(bool up) { return ClickArrow(program, graph.Control(GraphSpin), up); }
    bool Hold(bool up, const std::wstring& until) {
        return HoldArrow(program, graph.Control(GraphSpin), up,
                         [&] { return graph.Value() == until; });
    }
    /// Picks the day from the drop-down calendar.
    bool Choose(Day day) {
        return PickFromCalendar(program, graph.Control(GraphDatePicker), day) &&
               graph.CurrentDay() == day;
    }
    void ExpectShown(Day day, const std::wstring& value) {
        EXPECT_EQ(IsoDate(graph.CurrentDay()), IsoDate(day));
        EXPECT_EQ(graph.Value(), value);
    }

    Program program{folder};
    GraphScreen graph{program};
};

// ---- By the arrows ----

TEST_F(Graph, FahrenheitIsSteppedByTheArrows) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Temperature, Fahrenheit));
    ExpectShown(Today, L"97.5");
    for (const WCHAR* value : {L"97.6", L"97.7", L"97.8"}) {
        ASSERT_TRUE(Step(true));
        EXPECT_EQ(graph.Value(), value);
    }
    program.Keep(L"stepped");
    ASSERT_TRUE(Step(false));
    EXPECT_EQ(graph.Value(), L"97.7");

    ASSERT_TRUE(Choose({2006, 3, 4}));
    EXPECT_EQ(graph.Value(), L"97.5");
    ASSERT_TRUE(Step(false));
    EXPECT_EQ(graph.Value(), L"97.4");

    // 97.5 stands for no temperature, and is not stored.
    ASSERT_TRUE(Choose({2006, 3, 3}));
    ASSERT_TRUE(Step(true));
    ASSERT_TRUE(Step(false));
    ExpectShown({2006, 3, 3}, L"97.5");
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"),
              CsvHeader + TemperatureRow({2006, 3, 4}, "97.40") + TemperatureRow(Today, "97.70"));
}

TEST_F(Graph, FahrenheitStopsAtItsLimits) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Temperature, Fahrenheit));
    ASSERT_TRUE(Hold(true, L"100.0"));
    ASSERT_TRUE(Step(true));
    ExpectShown(Today, L"100.0");
    ASSERT_TRUE(Choose({2006, 3, 4}));
    ASSERT_TRUE(Hold(false, L"95.0"));
    ASSERT_TRUE(Step(false));
    program.Keep(L"limits");
    ExpectShown({2006, 3, 4}, L"95.0");
    // The extra click is not remembered: one step leads back from the limit.
    ASSERT_TRUE(Choose({2006, 3, 3}));
    ASSERT_TRUE(Hold(false, L"95.0"));
    ASSERT_TRUE(Step(false));
    ASSERT_TRUE(Step(true));
    ExpectShown({2006, 3, 3}, L"95.1");
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader + TemperatureRow({2006, 3, 3}, "95.10") +
                                   TemperatureRow({2006, 3, 4}, "95.00") +
                                   TemperatureRow(Today, "100.00"));
}

TEST_F(Graph, CelsiusIsSteppedToItsLimitsAndKeptInFahrenheit) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Temperature, Celsius));
    ExpectShown(Today, L"36.4");
    ASSERT_TRUE(Step(true));
    ExpectShown(Today, L"36.5");
    ASSERT_TRUE(Choose({2006, 3, 4}));
    ASSERT_TRUE(Step(false));
    ExpectShown({2006, 3, 4}, L"36.3");
    program.Keep(L"stepped");
    ASSERT_TRUE(Choose({2006, 3, 3}));
    ASSERT_TRUE(Hold(true, L"37.8"));
    ASSERT_TRUE(Step(true));
    ExpectShown({2006, 3, 3}, L"37.8");
    ASSERT_TRUE(Choose({2006, 3, 2}));
    ASSERT_TRUE(Hold(false, L"35.0"));
    ASSERT_TRUE(Step(false));
    ExpectShown({2006, 3, 2}, L"35.0");
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader + TemperatureRow({2006, 3, 2}, "95.00") +
                                   TemperatureRow({2006, 3, 3}, "100.00") +
                                   TemperatureRow({2006, 3, 4}, "97.30") +
                                   TemperatureRow(Today, "97.70"));
}

TEST_F(Graph, BleedingIsSteppedThroughItsLevels) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Bleeding, Fahrenheit));
    ExpectShown(Today, L"None");
    for (const WCHAR* word : {L"Slight", L"Norm", L"Heavy", L"Heavy"}) {
        ASSERT_TRUE(Step(true));
        EXPECT_EQ(graph.Value(), word);
    }
    program.Keep(L"heavy");
    ASSERT_TRUE(Choose({2006, 3, 4}));
    ASSERT_TRUE(Step(true));
    ASSERT_TRUE(Step(true));
    ExpectShown({2006, 3, 4}, L"Norm");
    ASSERT_TRUE(Choose({2006, 3, 3}));
    ASSERT_TRUE(Step(true));
    ExpectShown({2006, 3, 3}, L"Slight");
    ASSERT_TRUE(Choose({2006, 3, 2}));
    for (const WCHAR* word : {L"Slight", L"None", L"None"}) {
        ASSERT_TRUE(Step(word[0] == L'S'));
        EXPECT_EQ(graph.Value(), word);
    }
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader + BleedingRow({2006, 3, 3}, 1) +
                                   BleedingRow({2006, 3, 4}, 2) + BleedingRow(Today, 3));
}

TEST_F(Graph, TheFieldTakesArrowKeysButNoDigits) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Temperature, Fahrenheit));
    ASSERT_TRUE(program.Click(graph.Control(GraphValue)));
    program.Type(L"99.9");
    program.Press(VK_BACK);
    program.Press(VK_DELETE);
    ASSERT_TRUE(program.Settle());
    ExpectShown(Today, L"97.5");
    program.Press(VK_UP);
    program.Press(VK_UP);
    program.Press(VK_DOWN);
    ASSERT_TRUE(program.Settle());
    ExpectShown(Today, L"97.6");
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader + TemperatureRow(Today, "97.60"));
}

// ---- By dragging ----

TEST_F(Graph, FahrenheitIsDraggedInTheChart) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Temperature, Fahrenheit));
    const POINT none = graph.PlaceOf({2006, 3, 2}, NoTemperature, EmptyFahrenheit);
    const POINT warm = graph.PlaceOf({2006, 3, 2}, 9823, EmptyFahrenheit);
    ASSERT_TRUE(program.Drag(graph.Control(GraphChart), none, warm, [&] {
        ASSERT_TRUE(WaitFor([&] { return graph.CurrentDay() == Day{2006, 3, 2}; }));
        program.Settle();
        program.Keep(L"held");
        EXPECT_EQ(graph.Value(), L"97.5") << "taken only when the pen is lifted";
    }));
    ASSERT_TRUE(program.Settle());
    program.Keep(L"dragged");
    const int first = graph.ValueAt(warm.y, EmptyFahrenheit);
    EXPECT_NEAR(first, 9823, 1);
    ExpectShown({2006, 3, 2}, Tenths(first));

    // Another day is dragged without having been chosen first. Its temperature changes the axis.
    const Axis axis = TemperatureAxis(9700, std::max(9800, Shown(first)));
    const LONG cool = graph.PlaceOf(Today, 9721, axis).y;
    ASSERT_TRUE(graph.Drag(graph.PlaceOf(Today, NoTemperature, axis), cool));
    const int second = graph.ValueAt(cool, axis);
    ExpectShown(Today, Tenths(second));
    // A tap without a move selects the day and stores nothing.
    const POINT tapped = graph.PlaceOf({2006, 3, 1}, NoTemperature, axis);
    ASSERT_TRUE(graph.Drag(tapped, tapped.y));
    ExpectShown({2006, 3, 1}, L"97.5");
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader + TemperatureRow({2006, 3, 2}, Hundredths(first)) +
                                   TemperatureRow(Today, Hundredths(second)));
}

TEST_F(Graph, CelsiusIsDraggedAndKeptInFahrenheit) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Temperature, Celsius));
    const POINT from = graph.PlaceOf({2006, 3, 4}, 3640, EmptyCelsius);
    const LONG to = graph.PlaceOf({2006, 3, 4}, 3702, EmptyCelsius).y;
    ASSERT_TRUE(graph.Drag(from, to));
    program.Keep(L"dragged");
    ExpectShown({2006, 3, 4}, L"37.0");
    ASSERT_TRUE(program.Exit());
    // 37.02, or 37.01 when the pixel is the lower one, is rounded to 37.0.
    EXPECT_EQ(Export(L"Anna"), CsvHeader + TemperatureRow({2006, 3, 4}, "98.60"));
}

TEST_F(Graph, DraggedTemperaturesStopAtTheLimits) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Temperature, Fahrenheit));
    constexpr Day HotDay{2006, 3, 4};
    constexpr Day ColdDay{2006, 3, 2};
    constexpr LONG Beyond = 30;  // px outside the chart
    // Each drag reaches as far as the axis, which then grows.
    int hottest = NoTemperature;
    for (int drags = 0; drags < 10; ++drags) {
        const Axis axis = TemperatureAxis(9700, std::max(9800, hottest));
        ASSERT_TRUE(graph.Drag(graph.PlaceOf(HotDay, hottest, axis), -Beyond));
        hottest = Shown(std::min(axis.maximum, 10000));
        ExpectShown(HotDay, Tenths(hottest));
    }
    program.Keep(L"hottest");
    ExpectShown(HotDay, L"100.0");
    int coldest = NoTemperature;
    for (int drags = 0; drags < 10; ++drags) {
        const Axis axis = TemperatureAxis(std::min(9700, coldest), hottest);
        ASSERT_TRUE(
            graph.Drag(graph.PlaceOf(ColdDay, coldest, axis), graph.ChartHeight() + Beyond));
        coldest = Shown(std::max(axis.minimum, 9500));
        ExpectShown(ColdDay, Tenths(coldest));
    }
    program.Keep(L"coldest");
    ExpectShown(ColdDay, L"95.0");
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"),
              CsvHeader + TemperatureRow(ColdDay, "95.00") + TemperatureRow(HotDay, "100.00"));
}

TEST_F(Graph, BleedingIsDraggedToEveryLevel) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Bleeding, Fahrenheit));
    const auto drag = [&](Day day, int from, int to) {
        // Three pixels above the line of the level: below the line, the value truncates to the
        // level below.
        return graph.Drag(graph.PlaceOf(day, from, BleedingAxis),
                          graph.PlaceOf(day, to, BleedingAxis).y - 3);
    };
    ASSERT_TRUE(drag({2006, 3, 1}, 0, 1));
    ExpectShown({2006, 3, 1}, L"Slight");
    ASSERT_TRUE(drag({2006, 3, 2}, 0, 2));
    ExpectShown({2006, 3, 2}, L"Norm");
    ASSERT_TRUE(drag({2006, 3, 3}, 0, 3));
    ExpectShown({2006, 3, 3}, L"Heavy");
    program.Keep(L"levels");
    // Drags beyond both ends stop at the highest and the lowest level.
    const POINT norm = graph.PlaceOf({2006, 3, 2}, 2, BleedingAxis);
    ASSERT_TRUE(graph.Drag(norm, -30));
    ExpectShown({2006, 3, 2}, L"Heavy");
    ASSERT_TRUE(drag({2006, 3, 3}, 3, 1));
    ExpectShown({2006, 3, 3}, L"Slight");
    const POINT slight = graph.PlaceOf({2006, 3, 1}, 1, BleedingAxis);
    ASSERT_TRUE(graph.Drag(slight, graph.ChartHeight() + 30));
    ExpectShown({2006, 3, 1}, L"None");
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"),
              CsvHeader + BleedingRow({2006, 3, 2}, 3) + BleedingRow({2006, 3, 3}, 1));
}

// ---- Future days ----

TEST_F(Graph, AFutureDayTakesNoTemperature) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Temperature, Fahrenheit));
    const Day tomorrow = AddDays(Today, 1);
    // The chart has no point there to be dragged, so that the press does not even choose the day.
    const POINT place = graph.PlaceOf(tomorrow, NoTemperature, EmptyFahrenheit);
    ASSERT_TRUE(graph.Drag(place, place.y - 60));
    ExpectShown(Today, L"97.5");
    ASSERT_TRUE(Choose(tomorrow));
    program.Keep(L"tomorrow");
    ExpectShown(tomorrow, L"");
    for (const bool up : {true, true, false, false, false}) {
        ASSERT_TRUE(Step(up));
        ExpectShown(tomorrow, L"");
    }
    ASSERT_TRUE(graph.Drag(graph.PlaceOf(tomorrow, NoTemperature, EmptyFahrenheit), 10));
    ExpectShown(tomorrow, L"");
    ASSERT_TRUE(graph.ClickUnit(GraphCelsius));
    ASSERT_TRUE(Step(true));
    ExpectShown(tomorrow, L"");
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader);
}

TEST_F(Graph, AFutureDayTakesNoBleeding) {
    ASSERT_NO_FATAL_FAILURE(StartIn(Bleeding, Fahrenheit));
    const Day tomorrow = AddDays(Today, 1);
    const POINT place = graph.PlaceOf(tomorrow, 0, BleedingAxis);
    ASSERT_TRUE(graph.Drag(place, place.y / 2));
    ExpectShown(Today, L"None");
    ASSERT_TRUE(Choose(tomorrow));
    ExpectShown(tomorrow, L"");
    for (const bool up : {false, true, true}) {
        ASSERT_TRUE(Step(up));
        ExpectShown(tomorrow, L"");
    }
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(Export(L"Anna"), CsvHeader);
}

}  // namespace
}  // namespace lunara::test
