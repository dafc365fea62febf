#pragma once

// The data of the graph: the values of consecutive days in the unit in which they are shown, their
// axis and their texts, and the way of an entered value back into the diary. Needs no window.
//
// A value is a bleeding level, 0..3, or a temperature in hundredths of a degree of the series'
// unit.

#include <memory>
#include <span>

#include "diary/user_data.h"
#include "views/chart_layout.h"
#include "views/temperature.h"

namespace lunara {

/// The graph that is shown, one of the two. The numbers are stored in the settings.
enum GraphShowFlag : std::uint32_t {
    GraphShowBleeding = 1,
    GraphShowTemperature = 2,
};

/// A closed range of values: both ends belong to it.
struct ValueRange {
    std::int32_t minimum;
    std::int32_t maximum;

    bool Contains(std::int32_t value) const { return value >= minimum && value <= maximum; }
};

/// "None", "Slight", "Norm", "Heavy" for the levels 0..3; null for any other number.
const WCHAR* BleedingWord(std::int32_t level);

class GraphSeries {
  public:
    /// Temperature in Fahrenheit.
    GraphSeries() = default;
    GraphSeries(GraphShowFlag shown, TemperatureMeasure unit) : mode(shown), measure(unit) {}

    /// The value of `date`; null means the current day. Negative for a day after today. A day
    /// without a temperature has `NoTemperature` (97.5 °F), converted to the series' unit.
    std::int32_t DayValue(const UserData& data, const SYSTEMTIME* date = nullptr) const;

    /// The range of values that the chart's axis always covers. Points outside it widen the axis.
    ValueRange AxisRange() const;
    /// The ways to divide the axis, smallest span first; valid for the program's lifetime.
    std::span<const ChartScale> Scales() const;

    /// The values that the user can enter.
    ValueRange EntryRange() const;
    /// EntryRange in positions of the spin control, which are levels or tenths of a degree.
    ValueRange SpinRange() const;
    /// The spin control's position for a value; a temperature is truncated to tenths.
    std::int32_t SpinPosition(std::int32_t value) const;
    /// The value at a position of the spin control.
    std::int32_t FromSpinPosition(std::int32_t position) const;

    /// The value's text beside the axis, terminated within `size` (>= 1) units; "" for a level
    /// without a word.
    void FormatLabel(std::int32_t value, WCHAR* text, std::size_t size) const;
    /// The value's text in the entry field: the label's, but "" outside EntryRange.
    void FormatEntry(std::int32_t value, WCHAR* text, std::size_t size) const;

    /// The points of the days from `start` - 1 to `start` + `columns`: `columns` + 2 of them
    /// (columns >= 0), in date order, `dayWidth` px apart. The point of `start` is in the middle of
    /// the first column to the right of `margin`.
    std::unique_ptr<ChartPoint[]> MakePoints(const UserData& data, const SYSTEMTIME& start,
                                             std::int32_t columns, LONG margin,
                                             LONG dayWidth) const;

    /// Records `value`, clamped to EntryRange, for the current day. 1, also when the day shows that
    /// value already and nothing changes; 0 when the day lies after today, an observer refuses or
    /// there is no memory.
    int Store(UserData& data, std::int32_t value) const;

  private:
    bool IsBleeding() const { return mode == GraphShowBleeding; }

    GraphShowFlag mode = GraphShowTemperature;
    TemperatureMeasure measure = MeasureFahrenheit;
};

}  // namespace lunara
