#include "views/temperature.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/text.h"
#include "tests/support/dates.h"

namespace lunara::test {
namespace {

struct ConversionCase {
    const char* label;
    std::int32_t given;
    std::int32_t expected;
};

TEST(FtoC, RoundsToTenths) {
    const ConversionCase cases[] = {
        {"lowest entry", 9500, 3500},      {"highest entry", 10000, 3780},
        {"no temperature", 9750, 3640},    {"body heat", 9860, 3700},
        {"a hundredth above", 9861, 3700}, {"freezing", 3200, 0},
        {"below freezing", 3100, -50},     {"zero", 0, -1770},
    };
    for (const ConversionCase& c : cases) {
        EXPECT_EQ(FtoC(c.given), c.expected) << c.label;
    }
}

TEST(CtoF, RoundsToTenths) {
    const ConversionCase cases[] = {
        {"body heat", 3700, 9860},    {"lowest entry", 3500, 9500}, {"highest entry", 3780, 10000},
        {"36.4 is none", 3640, 9750}, {"36.5", 3650, 9770},         {"between tenths", 3655, 9780},
        {"freezing", 0, 3200},
    };
    for (const ConversionCase& c : cases) {
        EXPECT_EQ(CtoF(c.given), c.expected) << c.label;
    }
}

TEST(Temperature, EveryTenthOfCelsiusSurvivesTheWayThereAndBack) {
    const TemperatureLimits limits = TemperatureEntryLimits(MeasureCelsius);
    for (std::int32_t celsius = limits.minimum; celsius <= limits.maximum; celsius += 10) {
        const std::int32_t fahrenheit = CtoF(celsius);
        EXPECT_EQ(FtoC(fahrenheit), celsius);
        EXPECT_GE(fahrenheit, TemperatureEntryLimits(MeasureFahrenheit).minimum);
        EXPECT_LE(fahrenheit, TemperatureEntryLimits(MeasureFahrenheit).maximum);
    }
}

TEST(Temperature, EntryLimitsAreTheSameInBothUnits) {
    EXPECT_EQ(TemperatureEntryLimits(MeasureFahrenheit).minimum, 9500);
    EXPECT_EQ(TemperatureEntryLimits(MeasureFahrenheit).maximum, 10000);
    EXPECT_EQ(TemperatureEntryLimits(MeasureCelsius).minimum, 3500);
    EXPECT_EQ(TemperatureEntryLimits(MeasureCelsius).maximum, 3780);
}

TEST(ShownTemperature, IsRoundedToTenths) {
    EXPECT_EQ(ShownTemperature(9823, MeasureFahrenheit), 9820);
    EXPECT_EQ(ShownTemperature(9825, MeasureFahrenheit), 9830);
    EXPECT_EQ(ShownTemperature(9823, MeasureCelsius), 3680);
}

TEST(ShownTemperature, OfADayToComeIsItsMark) {
    EXPECT_EQ(ShownTemperature(-100, MeasureFahrenheit), -100);
    EXPECT_EQ(ShownTemperature(-100, MeasureCelsius), -100);
}

struct TextCase {
    std::int32_t value;
    const char* expected;
};

TEST(FormatTemperature, HasOneDecimal) {
    const TextCase cases[] = {{9860, "98.6"}, {10000, "100.0"}, {3640, "36.4"}, {9854, "98.5"},
                              {9856, "98.6"}, {0, "0.0"},       {-90, "-0.9"}};
    for (const TextCase& c : cases) {
        std::array<WCHAR, 16> text{};
        FormatTemperature(c.value, text.data(), text.size());
        EXPECT_EQ(ToUtf8(text.data()), c.expected);
    }
}

TEST(FormatTemperature, IsCutToItsBuffer) {
    std::array<WCHAR, 4> text{};
    FormatTemperature(10000, text.data(), text.size());
    EXPECT_EQ(ToUtf8(text.data()), "100");
}

}  // namespace
}  // namespace lunara::test
