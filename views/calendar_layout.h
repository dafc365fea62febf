#pragma once

// Geometry of the calendar strip: turns client rectangle, number of days and direction into
// rectangles, labels and the day under a point. Needs no window.
//
// The strip runs along one axis: x in the horizontal form, y in the vertical one. Cells are
// squares; pixels left over at the end, too few for a whole cell, follow the last cell.

#include <array>
#include <cstdint>
#include <vector>

#include "platform/win32.h"

namespace lunara {

/// The part of the strip that a point lies in.
enum CalendarArea : int {
    CCHT_DAY = 1,        // the row or column of day cells
    CCHT_MONTHBAND = 2,  // the band with the months
    CCHT_OUTSIDE = 3,    // neither; the day is that of the point clamped to the client area
};

/// One month's part of the band.
struct MonthSegment {
    LONG start;   // px along the strip
    LONG length;  // px, > 0; the last segment is cut off at the end of the band
    /// Year and month are the segment's; day and day of week are those of the strip's first day in
    /// every segment.
    SYSTEMTIME date;
};

/// A cell whose day of the month is written beside it, in the month band.
struct DayLabel {
    std::int32_t cell;
    WORD day;
};

/// Outline of the arrow that marks today; the last point repeats the first.
using TodayMarker = std::array<POINT, 8>;

struct CalendarHit {
    CalendarArea area;
    SYSTEMTIME date;
    RECT cell;  // without the 1 px border shared with the next cell
};

/// Days of the month, 28..31. Every fourth year is a leap year, 2100 included. A month outside
/// 1..12 has 31 days.
int DaysInMonth(WORD year, WORD month);

/// The number of whole cells that fill `extent` px when `requested` days are wanted. Cells become
/// extent / requested px wide, at least 1 px, and as many as fit are shown: often more than
/// requested. 0 when either argument is less than 1.
std::int32_t FittingDayCount(LONG extent, std::int32_t requested);

class CalendarLayout {
  public:
    /// With `days` < 1, or a client area of less than one px per day, cells have size 0: nothing is
    /// drawn and every point belongs to the first day.
    CalendarLayout(const RECT& clientArea, std::int32_t days, bool isVertical);

    LONG CellSize() const { return cellSize; }
    const RECT& DayStrip() const { return strip; }
    const RECT& MonthBand() const { return band; }
    /// The number of cells that begin inside the strip, a last one that is cut off included.
    std::int32_t VisibleCells() const;

    LONG CellStart(std::int32_t cell) const { return StripStart() + cell * cellSize; }
    /// The rectangle of a cell or segment, borders included. Neighbours overlap by 1 px, so that
    /// they share their border.
    RECT CellRectangle(std::int32_t cell) const;
    RECT SegmentRectangle(const MonthSegment& segment) const;

    /// The months of the band, in date order, without gaps. Empty when cells have size 0.
    std::vector<MonthSegment> MonthSegments(const SYSTEMTIME& start) const;

    /// Whether today lies in this segment. Then `marker` is the arrow in the month band that points
    /// at today's cell.
    bool FindTodayMarker(const MonthSegment& segment, const SYSTEMTIME& start,
                         const SYSTEMTIME& today, TodayMarker& marker) const;

    /// The cells labelled with their day number: whole cells of the days 1, 5, 10, ..., 30, and the
    /// first and the last cell unless their neighbour is labelled. Ascending, each cell once.
    std::vector<DayLabel> DayLabels(const SYSTEMTIME& start) const;

    /// The area, day and cell under a point; date and cell are set for every area.
    CalendarHit HitTest(POINT point, const SYSTEMTIME& start) const;
    /// The cell of `date` with the border shared with the next cell; false, with `cell` untouched,
    /// when the date is not shown.
    bool FindDay(const SYSTEMTIME& date, const SYSTEMTIME& start, RECT& cell) const;

  private:
    LONG StripStart() const { return vertical ? client.top : client.left; }
    LONG StripEnd() const { return vertical ? client.bottom : client.right; }
    POINT Clamp(POINT point) const;

    RECT client;
    std::int32_t dayCount;
    bool vertical;
    LONG cellSize;
    RECT strip;
    RECT band;
};

/// Whether `date` is one of the `dayCount` days from `start` on, or the day after them.
bool IsDateInStrip(const SYSTEMTIME& date, const SYSTEMTIME& start, std::int32_t dayCount);

}  // namespace lunara
