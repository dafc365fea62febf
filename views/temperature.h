#pragma once

// Temperatures as whole hundredths of a degree: conversion, limits and text. The diary stores
// Fahrenheit; a view that shows Celsius converts. Pure functions.

#include <cstddef>
#include <cstdint>

#include "platform/win32.h"

namespace lunara {

/// The unit in which temperatures are shown and entered. The numbers are stored in the settings.
enum TemperatureMeasure : std::uint32_t {
    MeasureFahrenheit = 0,
    MeasureCelsius = 1,
};

/// Hundredths of °C from hundredths of °F and back, rounded to a whole tenth of a degree. For every
/// tenth of °C that can be entered, FtoC(CtoF(celsius)) is `celsius` again.
std::int32_t FtoC(std::int32_t fahrenheit);
std::int32_t CtoF(std::int32_t celsius);

/// The value as it is shown: in unit `measure`, rounded to tenths. A negative value is no
/// temperature but marks a day after today (FutureTemperature), and is returned unchanged.
std::int32_t ShownTemperature(std::int32_t fahrenheit, TemperatureMeasure measure);

/// The lowest and highest temperature that can be entered, in hundredths of a degree.
struct TemperatureLimits {
    std::int32_t minimum;
    std::int32_t maximum;
};
/// The limits in that unit: 95.0..100.0 °F or 35.0..37.8 °C.
TemperatureLimits TemperatureEntryLimits(TemperatureMeasure measure);

/// Writes "98.6" for 9860: one decimal after a point, whatever the locale. Cut off at `size` units,
/// terminator included (size >= 1).
void FormatTemperature(std::int32_t value, WCHAR* text, std::size_t size);

}  // namespace lunara
