#include "views/chart_layout.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace lunara {
namespace {

constexpr LONG FarthestPx = 1 << 24;
constexpr LONG TapReachPx = 5;
constexpr LONG SelectedMarkerReachPx = 5;
constexpr LONG MarkerReachPx = 3;
constexpr std::int32_t DefaultStep = 50;
constexpr std::int32_t DefaultMajor = 100;

/// Clamps to `lowest`..`highest`, then truncates towards zero.
std::int32_t Truncate(double value, double lowest, double highest) {
    return static_cast<std::int32_t>(std::clamp(value, lowest, highest));
}

std::int32_t ToInt32(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

RECT BoxAround(POINT center, LONG reach) {
    // One more to the right and below: GDI excludes those edges.
    return {center.x - reach, center.y - reach, center.x + reach + 1, center.y + reach + 1};
}

/// The least multiple of `step` (> 0) that is >= `value`.
std::int64_t FirstMultiple(std::int64_t value, std::int64_t step) {
    const std::int64_t multiple = value / step * step;
    return multiple < value ? multiple + step : multiple;
}

bool IsMultiple(std::int64_t value, std::int32_t of) { return of > 0 && value % of == 0; }

}  // namespace

ChartAxis ChooseAxis(std::span<const ChartPoint> points, std::int32_t lowest, std::int32_t highest,
                     std::span<const ChartScale> scales) {
    // 64 bits: differences and sums of arbitrary 32-bit values from a file must not overflow.
    std::int64_t low = lowest;
    std::int64_t high = highest;
    // The first point does not count: it is the day before the first one shown, and a value off
    // screen must not squeeze those on it.
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (points[i].value >= 0) {
            low = std::min<std::int64_t>(low, points[i].value);
            high = std::max<std::int64_t>(high, points[i].value);
        }
    }
    const std::int64_t range = high - low;
    for (const ChartScale& scale : scales) {
        if (scale.span >= range + range * 10 / 100) {
            const std::int64_t start = scale.centre == 0 ? low : low + (range - scale.span) / 2;
            return {ToInt32(start), ToInt32(start + scale.span), scale};
        }
    }
    const std::int64_t pad = range * 5 / 100;
    const ChartScale padded{ToInt32(range + 2 * pad), DefaultStep, 0, DefaultMajor, 1};
    return {ToInt32(low - pad), ToInt32(high + pad), padded};
}

ChartMapping::ChartMapping(const RECT& client, std::int32_t margin, const ChartAxis& axis)
    : area{client.left + margin, client.top, client.right, client.bottom},
      minimum(axis.minimum),
      xScale(1.0),
      yScale(0.0) {
    // x is in px already, so the world is as wide as the area and the scale comes out as 1.
    const double worldWidth = client.right - (client.left + margin);
    if (worldWidth != 0.0) {
        xScale = (area.right - area.left) / worldWidth;
    }
    const double range = static_cast<double>(axis.minimum) - axis.maximum;
    if (range < 0.0) {
        yScale = (area.bottom - area.top) / range;
    }
}

POINT ChartMapping::ToPixel(const ChartPoint& point) const {
    const double x = (static_cast<double>(point.x) - area.left) * xScale + area.left;
    const double y = (point.value - minimum) * yScale + area.bottom;
    return {Truncate(x, -FarthestPx, FarthestPx), Truncate(y, -FarthestPx, FarthestPx)};
}

ChartPoint ChartMapping::FromPixel(POINT pixel) const {
    constexpr double Least = std::numeric_limits<std::int32_t>::min();
    constexpr double Most = std::numeric_limits<std::int32_t>::max();
    const double x = (pixel.x - area.left) / xScale + area.left;
    const double value = yScale == 0.0 ? minimum : (pixel.y - area.bottom) / yScale + minimum;
    return {Truncate(x, Least, Most), Truncate(value, Least, Most)};
}

LONG ChartMapping::ClampToArea(LONG y) const {
    return std::clamp(y, area.top, std::max(area.top, area.bottom));
}

std::vector<ChartTick> ChartTicks(const ChartAxis& axis, const ChartMapping& mapping) {
    std::vector<ChartTick> ticks;
    const std::int64_t height = mapping.Area().bottom - mapping.Area().top;
    const std::int64_t range = static_cast<std::int64_t>(axis.maximum) - axis.minimum;
    const ChartScale& scale = axis.scale;
    if (scale.step < 1 || range / scale.step > height) {
        return ticks;
    }
    for (std::int64_t value = FirstMultiple(axis.minimum, scale.step); value <= axis.maximum;
         value += scale.step) {
        const TickKind kind = IsMultiple(value, scale.major)   ? TickKind::Major
                              : IsMultiple(value, scale.minor) ? TickKind::Minor
                                                               : TickKind::Plain;
        const auto tickValue = static_cast<std::int32_t>(value);
        ticks.push_back({tickValue, mapping.ToPixel({0, tickValue}).y, kind});
    }
    return ticks;
}

LONG TickLength(TickKind kind, std::int32_t margin) {
    const LONG unit = margin / 4;
    return kind == TickKind::Major ? 3 * unit : kind == TickKind::Minor ? 2 * unit : unit;
}

LONG LabelTop(LONG lineY, LONG textHeight, LONG clientBottom) {
    return std::min(lineY + 1, clientBottom - textHeight + 1);
}

RECT MarkerBox(POINT center, bool isSelected) {
    return BoxAround(center, isSelected ? SelectedMarkerReachPx : MarkerReachPx);
}

std::int32_t FindChartPoint(std::span<const ChartPoint> points, const ChartMapping& mapping,
                            POINT tap) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        const POINT pixel = mapping.ToPixel(points[i]);
        if (std::abs(pixel.x - tap.x) < TapReachPx && std::abs(pixel.y - tap.y) < TapReachPx) {
            return static_cast<std::int32_t>(i);
        }
    }
    return -1;
}

RECT RubberBand::Box() const { return BoxAround(line[1], MarkerReachPx); }

RubberBand MakeRubberBand(std::span<const ChartPoint> points, std::int32_t index,
                          const ChartMapping& mapping) {
    const auto at = static_cast<std::size_t>(index);
    const bool hasLeft = at > 0 && points[at - 1].value >= 0;
    const bool hasRight = at + 1 < points.size() && points[at + 1].value >= 0;
    return {{mapping.ToPixel(points[hasLeft ? at - 1 : at]), mapping.ToPixel(points[at]),
             mapping.ToPixel(points[hasRight ? at + 1 : at])}};
}

}  // namespace lunara
