#pragma once

// The geometry of the chart: client rectangle, margin, points and scale table in; axis, ticks,
// pixels and rectangles out. Knows no window.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/win32.h"

namespace lunara {

/// One day of the chart. A negative value says that the day has none: it is not drawn and does not
/// count in the range, unless it is the first point.
struct ChartPoint {
    std::int32_t x;      // px
    std::int32_t value;  // hundredths of a degree, or a level
};

/// How an axis of a certain height is divided.
struct ChartScale {
    std::int32_t span;    // height of the value range
    std::int32_t step;    // distance of the ticks
    std::int32_t minor;   // of dashed lines with labels; 0 for none
    std::int32_t major;   // of solid lines with labels; 0 for none
    std::int32_t centre;  // 1: the data stand in the middle; 0: the axis begins at their low end
};

struct ChartAxis {
    std::int32_t minimum;
    std::int32_t maximum;
    ChartScale scale;
};

/// The axis for the default range `lowest`..`highest` widened by the points: the first scale (in
/// the table's order) that leaves a tenth to spare; without one the data padded by a twentieth.
ChartAxis ChooseAxis(std::span<const ChartPoint> points, std::int32_t lowest, std::int32_t highest,
                     std::span<const ChartScale> scales);

/// Points to pixels and back. `margin` px on the left are left free.
class ChartMapping {
  public:
    ChartMapping(const RECT& client, std::int32_t margin, const ChartAxis& axis);

    /// Pixels far outside every screen are drawn in to where drawing calls can still take them.
    POINT ToPixel(const ChartPoint& point) const;
    /// An axis or area without height gives the axis minimum.
    ChartPoint FromPixel(POINT pixel) const;
    /// The nearest height inside the chart.
    LONG ClampToArea(LONG y) const;

    /// The client rectangle less the margin.
    const RECT& Area() const { return area; }

  private:
    RECT area;
    double minimum;
    double xScale;
    double yScale;  // negative: values grow upwards
};

enum class TickKind { Plain, Minor, Major };

struct ChartTick {
    std::int32_t value;
    LONG y;
    TickKind kind;
};

/// The ticks from the axis minimum to its maximum, upwards. None when they would be denser than the
/// pixel rows: a value far from all others makes such an axis.
std::vector<ChartTick> ChartTicks(const ChartAxis& axis, const ChartMapping& mapping);

/// How far the tick reaches out to the left of the axis.
LONG TickLength(TickKind kind, std::int32_t margin);
/// Top of a label: just below its line, or as low as it still shows whole but for its last row.
LONG LabelTop(LONG lineY, LONG textHeight, LONG clientBottom);

/// 11 px for the selected point's square, 7 px for the other points' circles.
RECT MarkerBox(POINT center, bool isSelected);

/// The first point whose pixel lies less than 5 px from the tap in both directions; -1 without one.
std::int32_t FindChartPoint(std::span<const ChartPoint> points, const ChartMapping& mapping,
                            POINT tap);

/// What is drawn while a point is dragged: a line over left neighbour, point and right neighbour,
/// and a box round the point. Where there is no neighbour with a value, the point itself takes its
/// place.
struct RubberBand {
    std::array<POINT, 3> line;

    RECT Box() const;
};
RubberBand MakeRubberBand(std::span<const ChartPoint> points, std::int32_t index,
                          const ChartMapping& mapping);

}  // namespace lunara
