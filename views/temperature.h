#pragma once

// Temperatures. Everywhere they are whole hundredths of a degree: the diary keeps Fahrenheit, and a
// view that shows Celsius converts. Pure functions.

#include <cstddef>
#include <cstdint>

#include "platform/win32.h"

namespace lunara {

/// The unit in which temperatures are shown and entered; the numbers are those of the setting.
enum TemperatureMeasure : std::uint32_t {
    MeasureFahrenheit = 0,
    MeasureCelsius = 1,
};

/// Hundredths of °C from hundredths of °F and back, rounded to a whole tenth of a degree. A tenth
/// of °C survives the way to °F and back for every value that can be entered.
std::int32_t FtoC(std::int32_t fahrenheit);
std::int32_t CtoF(std::int32_t celsius);

/// The value as it is shown: in that unit and rounded to tenths. A negative value is no temperature
/// but a day's mark (a day to come) and stays what it is.
std::int32_t ShownTemperature(std::int32_t fahrenheit, TemperatureMeasure measure);

/// The lowest and highest temperature that can be entered, in hundredths of the unit.
struct TemperatureLimits {
    std::int32_t minimum;
    std::int32_t maximum;
};
/// 95.0..100.0 °F, which is 35.0..37.8 °C.
TemperatureLimits EntryLimits(TemperatureMeasure measure);

/// "98.6" for 9860: one decimal and a point, whatever the locale. Always terminated (size >= 1).
void FormatTemperature(std::int32_t value, WCHAR* text, std::size_t size);

}  // namespace lunara
