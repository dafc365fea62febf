#include "views/temperature.h"

#include <array>
#include <cstdio>

#include "platform/text.h"
#include "records/collections.h"

namespace lunara {
namespace {

std::int32_t RoundHalfAway(double value) {
    return static_cast<std::int32_t>(value >= 0.0 ? value + 0.5 : value - 0.5);
}

std::int32_t RoundToTenths(std::int32_t hundredths) { return (hundredths + 5) / 10 * 10; }

}  // namespace

std::int32_t FtoC(std::int32_t fahrenheit) {
    return RoundToTenths(RoundHalfAway((fahrenheit * 0.01 - 32.0) * 55.55555555555556));
}

std::int32_t CtoF(std::int32_t celsius) {
    return RoundToTenths(RoundHalfAway((celsius * 0.018 + 32.0) * 100.0));
}

std::int32_t ShownTemperature(std::int32_t fahrenheit, TemperatureMeasure measure) {
    if (fahrenheit < 0) {
        return fahrenheit;
    }
    return measure == MeasureCelsius ? FtoC(fahrenheit) : RoundToTenths(fahrenheit);
}

TemperatureLimits TemperatureEntryLimits(TemperatureMeasure measure) {
    if (measure == MeasureCelsius) {
        return {FtoC(LowestTemperature), FtoC(HighestTemperature)};
    }
    return {LowestTemperature, HighestTemperature};
}

void FormatTemperature(std::int32_t value, WCHAR* text, std::size_t size) {
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%.1f", value * 0.01);
    WideString wide;
    for (const char* digit = digits.data(); *digit != '\0'; ++digit) {
        wide.push_back(static_cast<WCHAR>(*digit));
    }
    CopyText(text, size, wide);
}

}  // namespace lunara
