#pragma once

// What the graph shows and takes: the values of a run of days in the unit they are shown in, the
// axis they stand on, the words for them, and how one that was entered goes back into the diary.
// Knows no window.

#include <memory>
#include <span>

#include "diary/user_data.h"
#include "views/chart_layout.h"
#include "views/temperature.h"

namespace lunara {

/// The graph that is shown; the two exclude each other. The numbers are those of the setting.
enum GraphShowFlag : std::uint32_t {
    GraphShowBleeding = 1,
    GraphShowTemperature = 2,
};

/// A range of values with both ends.
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

    /// The day's level or shown temperature; null means the current day. Negative for a day to
    /// come; 97.5 °F, in the series' unit, for a day without a temperature.
    std::int32_t DayValue(const UserData& data, const SYSTEMTIME* date = nullptr) const;

    /// The range that the chart's axis covers at least, and how an axis is divided.
    ValueRange AxisRange() const;
    std::span<const ChartScale> Scales() const;

    /// What can be entered.
    ValueRange EntryRange() const;
    /// The same as positions of a spin control, in which a temperature counts tenths of a degree.
    ValueRange SpinRange() const;
    std::int32_t SpinPosition(std::int32_t value) const;
    std::int32_t FromSpinPosition(std::int32_t position) const;

    /// The value's text beside the axis; "" for a level without a word.
    void FormatLabel(std::int32_t value, WCHAR* text, std::size_t size) const;
    /// The same for the entry field: "" for what cannot be entered.
    void FormatEntry(std::int32_t value, WCHAR* text, std::size_t size) const;

    /// The points of the days `start` - 1 .. `start` + columns (columns >= 0): `columns` + 2
    /// points, `dayWidth` px apart, that of `start` in the middle of the first column behind
    /// `margin`.
    std::unique_ptr<ChartPoint[]> MakePoints(const UserData& data, const SYSTEMTIME& start,
                                             std::int32_t columns, LONG margin,
                                             LONG dayWidth) const;

    /// Records a value for the current day, one beyond the limits as the nearest that can be
    /// entered. A value that is shown already changes nothing. 0 for a day to come, and when an
    /// observer refuses.
    int Store(UserData& data, std::int32_t value) const;

  private:
    bool IsBleeding() const { return mode == GraphShowBleeding; }

    GraphShowFlag mode = GraphShowTemperature;
    TemperatureMeasure measure = MeasureFahrenheit;
};

}  // namespace lunara
