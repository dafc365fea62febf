#pragma once

// The geometry of the calendar strip: client rectangle, number of days and direction in,
// rectangles, labels and hit days out. Knows no window.
//
// The strip runs along one axis: x in the horizontal form, y in the vertical one. Cells are
// squares; pixels that no whole cell fills stay behind the last one.

#include <array>
#include <cstdint>
#include <vector>

#include "platform/win32.h"

namespace lunara {

/// What a point of the strip belongs to.
enum CalendarArea : int {
    CCHT_DAY = 1,        // the day strip
    CCHT_MONTHBAND = 2,  // the band with the months
    CCHT_OUTSIDE = 3,    // neither; the point was clamped first
};

/// One month's part of the band.
struct MonthSegment {
    LONG start;   // px along the strip
    LONG length;  // px, > 0, cut at the band's end
    /// The strip's first day for the first segment; for later ones only year and month have moved
    /// on.
    SYSTEMTIME date;
};

/// A cell whose day of the month stands beside it in the band.
struct DayLabel {
    std::int32_t cell;
    WORD day;
};

/// The marker's outline; the last point is the first again.
using TodayMarker = std::array<POINT, 8>;

struct CalendarHit {
    CalendarArea area;
    SYSTEMTIME date;
    RECT cell;  // without the border shared with the next cell
};

/// 28, 29, 30 or 31. Every fourth year has a 29 February, 2100 as well. A number that is no month
/// counts as one of 31 days.
int DaysInMonth(WORD year, WORD month);

/// How many whole cells fill `extent` px when `requested` days are asked for: cells become
/// extent / requested px wide, and as many as fit are shown. More days than pixels give one cell
/// for every pixel; 0 when there is no extent or no day.
std::int32_t FittingDayCount(LONG extent, std::int32_t requested);

class CalendarLayout {
  public:
    /// `days` < 1 and a client area too small for it give cells of size 0: nothing is drawn and no
    /// day is found.
    CalendarLayout(const RECT& clientArea, std::int32_t days, bool isVertical);

    LONG CellSize() const { return cellSize; }
    const RECT& DayStrip() const { return strip; }
    const RECT& MonthBand() const { return band; }
    /// The cells that begin inside the strip, a last one that is cut off included.
    std::int32_t VisibleCells() const;

    LONG CellStart(std::int32_t cell) const { return StripStart() + cell * cellSize; }
    /// What is drawn for a cell or segment: neighbours overlap by a pixel and share their border.
    RECT CellRectangle(std::int32_t cell) const;
    RECT SegmentRectangle(const MonthSegment& segment) const;

    std::vector<MonthSegment> MonthSegments(const SYSTEMTIME& start) const;

    /// Whether today's marker belongs to this segment; then `marker` is its arrow, pointing at the
    /// day strip.
    bool FindTodayMarker(const MonthSegment& segment, const SYSTEMTIME& start,
                         const SYSTEMTIME& today, TodayMarker& marker) const;

    /// The cells that carry their day number, in ascending order, each once.
    std::vector<DayLabel> DayLabels(const SYSTEMTIME& start) const;

    CalendarHit HitTest(POINT point, const SYSTEMTIME& start) const;
    /// The cell of the date with its shared border; false, `cell` untouched, when it is not shown.
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

/// Whether the difference in days from `start` to `date` lies in 0..dayCount.
bool IsDateInStrip(const SYSTEMTIME& date, const SYSTEMTIME& start, std::int32_t dayCount);

}  // namespace lunara
