#pragma once

// Geometry of the chart: turns client rectangle, margin, points and a table of scales into axis,
// ticks, pixels and rectangles. Needs no window.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/win32.h"

namespace lunara {

/// One day of the chart. A negative value marks a day without one: it is not drawn and does not
/// widen the axis. The first point is an exception: it is always drawn and never widens the axis.
struct ChartPoint {
    std::int32_t x;      // px
    std::int32_t value;  // hundredths of a degree, or a level
};

/// One way to divide an axis.
struct ChartScale {
    std::int32_t span;    // value range of the whole axis
    std::int32_t step;    // distance between ticks
    std::int32_t minor;   // its multiples get a dashed line and a label; 0 for none
    std::int32_t major;   // its multiples get a solid line and a label; 0 for none
    std::int32_t centre;  // 1: the data are centred on the axis; 0: it begins at their low end
};

struct ChartAxis {
    std::int32_t minimum;
    std::int32_t maximum;
    ChartScale scale;
};

/// Chooses an axis that covers the range `lowest`..`highest`, and the values of all points except
/// the first point and negative values. Takes the first scale, in table order, whose span is at
/// least that range plus a tenth of it (truncated). If no scale is wide enough, the axis is the
/// range padded by a twentieth of it (truncated) at each end.
ChartAxis ChooseAxis(std::span<const ChartPoint> points, std::int32_t lowest, std::int32_t highest,
                     std::span<const ChartScale> scales);

/// Maps points to pixels and back. Leaves the left `margin` px of the client area free.
class ChartMapping {
  public:
    ChartMapping(const RECT& client, std::int32_t margin, const ChartAxis& axis);

    /// The point's pixel, clamped to +-2^24 px: coordinates that GDI still accepts.
    POINT ToPixel(const ChartPoint& point) const;
    /// The point at a pixel, its value truncated. On an axis or area without height the value is
    /// the axis minimum.
    ChartPoint FromPixel(POINT pixel) const;
    /// `y` clamped to the top and bottom edges of the area.
    LONG ClampToArea(LONG y) const;

    /// The client rectangle less the margin.
    const RECT& Area() const { return area; }

  private:
    RECT area;
    double minimum;
    double xScale;
    double yScale;  // px per unit of value; negative, because values grow upwards
};

/// How the chart draws a tick. Plain: the tick only. Minor: with a dashed grid line and a label.
/// Major: with a solid grid line and a label.
enum class TickKind { Plain, Minor, Major };

struct ChartTick {
    std::int32_t value;
    LONG y;  // px
    TickKind kind;
};

/// The ticks from the axis minimum to its maximum, in ascending order of value. None when there
/// would be more ticks than pixel rows, as on the axis that a value far from all others makes.
std::vector<ChartTick> ChartTicks(const ChartAxis& axis, const ChartMapping& mapping);

/// Length in px of a tick to the left of the axis: one, two or three quarters of the margin for
/// plain, minor and major ticks.
LONG TickLength(TickKind kind, std::int32_t margin);
/// Top of a label: 1 px below its grid line, but never so low that more than its last pixel row is
/// cut off at the bottom of the client area.
LONG LabelTop(LONG lineY, LONG textHeight, LONG clientBottom);

/// The box of a point's marker: 11 px for the selected point's square, 7 px for the circles of the
/// others.
RECT MarkerBox(POINT center, bool isSelected);

/// Index of the first point whose pixel lies less than 5 px from the tap both in x and in y; -1
/// when there is none.
std::int32_t FindChartPoint(std::span<const ChartPoint> points, const ChartMapping& mapping,
                            POINT tap);

/// The picture of a drag: a line through left neighbour, dragged point and right neighbour, and a
/// box round the dragged point. A neighbour that is missing or has no value is replaced by the
/// dragged point itself.
struct RubberBand {
    std::array<POINT, 3> line;

    /// The box round the dragged point, `line[1]`.
    RECT Box() const;
};
RubberBand MakeRubberBand(std::span<const ChartPoint> points, std::int32_t index,
                          const ChartMapping& mapping);

}  // namespace lunara
