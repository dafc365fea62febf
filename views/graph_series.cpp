#include "views/graph_series.h"

#include <algorithm>
#include <array>

#include "platform/text.h"
#include "records/dates.h"

namespace lunara {
namespace {

constexpr std::int32_t HundredthsPerTenth = 10;

constexpr std::array<ChartScale, 4> TemperatureScales = {{
    {100, 10, 10, 50, 1},
    {200, 10, 50, 100, 1},
    {300, 10, 50, 100, 1},
    {400, 50, 0, 100, 1},
}};
constexpr std::array<ChartScale, 1> BleedingScales = {{{4, 1, 0, 1, 0}}};

}  // namespace

const WCHAR* BleedingWord(std::int32_t level) {
    static constexpr std::array<const WCHAR*, HeaviestBleeding + 1> Words = {
        TEXT("None"), TEXT("Slight"), TEXT("Norm"), TEXT("Heavy")};
    return level >= 0 && level <= HeaviestBleeding ? Words[static_cast<std::size_t>(level)]
                                                   : nullptr;
}

std::int32_t GraphSeries::DayValue(const UserData& data, const SYSTEMTIME* date) const {
    return IsBleeding() ? data.GetBleeding(date)
                        : ShownTemperature(data.GetTemperature(date), measure);
}

ValueRange GraphSeries::AxisRange() const {
    if (IsBleeding()) {
        return {0, HeaviestBleeding};
    }
    return measure == MeasureCelsius ? ValueRange{3600, 3700} : ValueRange{9700, 9800};
}

std::span<const ChartScale> GraphSeries::Scales() const {
    if (IsBleeding()) {
        return BleedingScales;
    }
    return TemperatureScales;
}

ValueRange GraphSeries::EntryRange() const {
    if (IsBleeding()) {
        return {0, HeaviestBleeding};
    }
    const TemperatureLimits limits = TemperatureEntryLimits(measure);
    return {limits.minimum, limits.maximum};
}

ValueRange GraphSeries::SpinRange() const {
    const ValueRange range = EntryRange();
    return {SpinPosition(range.minimum), SpinPosition(range.maximum)};
}

std::int32_t GraphSeries::SpinPosition(std::int32_t value) const {
    return IsBleeding() ? value : value / HundredthsPerTenth;
}

std::int32_t GraphSeries::FromSpinPosition(std::int32_t position) const {
    return IsBleeding() ? position : position * HundredthsPerTenth;
}

void GraphSeries::FormatLabel(std::int32_t value, WCHAR* text, std::size_t size) const {
    if (!IsBleeding()) {
        FormatTemperature(value, text, size);
        return;
    }
    const WCHAR* word = BleedingWord(value);
    CopyText(text, size, word == nullptr ? TEXT("") : word);
}

void GraphSeries::FormatEntry(std::int32_t value, WCHAR* text, std::size_t size) const {
    if (EntryRange().Contains(value)) {
        FormatLabel(value, text, size);
    } else {
        CopyText(text, size, TEXT(""));
    }
}

std::unique_ptr<ChartPoint[]> GraphSeries::MakePoints(const UserData& data, const SYSTEMTIME& start,
                                                      std::int32_t columns, LONG margin,
                                                      LONG dayWidth) const {
    const std::int32_t count = columns + 2;
    auto points = std::make_unique<ChartPoint[]>(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) {
        SYSTEMTIME day{};
        AddDays(start, i - 1, day);
        // A day without a temperature gets a point at NoTemperature: the curve has no gaps, and the
        // user drags that point to enter the first value.
        points[static_cast<std::size_t>(i)] = {
            static_cast<std::int32_t>(margin - dayWidth / 2 + i * dayWidth), DayValue(data, &day)};
    }
    return points;
}

int GraphSeries::Store(UserData& data, std::int32_t value) const {
    const std::int32_t shown = DayValue(data);
    if (shown < 0) {
        return 0;
    }
    const ValueRange range = EntryRange();
    const std::int32_t wanted = std::clamp(value, range.minimum, range.maximum);
    if (wanted == shown) {
        // The stored temperature may be finer than the one shown; a mere tap must not round it.
        return 1;
    }
    if (IsBleeding()) {
        return data.SetBleeding(wanted);
    }
    // 36.4 °C converts to NoTemperature, which removes the day's record. The graph looks the same
    // as if it had been stored.
    return data.SetTemperature(measure == MeasureCelsius ? CtoF(wanted) : wanted);
}

}  // namespace lunara
