#pragma once

// The graph view of a running program: its fields, and where its chart draws a day's value. The
// chart's geometry is worked out here once more, from what can be seen of it.

#include <windows.h>

#include <string>

#include "tests/e2e/driver.h"

namespace lunara::e2e {

/// The values at the bottom and at the top of the chart.
struct Axis {
    int minimum;
    int maximum;
};

/// The axis of a temperature chart on which these are the lowest and the highest value, the usual
/// range of 1 degree included (hundredths of a degree).
Axis TemperatureAxis(int lowest, int highest);
inline constexpr Axis BleedingAxis{0, 4};

class GraphScreen {
  public:
    explicit GraphScreen(Program& shown) : program(shown) {}

    HWND Control(GraphControl id) const { return ::GetDlgItem(program.Graph(), id); }
    Day FirstDay() const;
    /// The day and the value in the row of fields.
    Day CurrentDay() const;
    std::wstring Value() const;
    bool ShowsUnits() const;
    bool IsUnit(GraphControl button) const;

    /// The pixel of a day's value in the chart's client area; inside it, also for a value on its
    /// lower edge.
    POINT PlaceOf(Day day, int value, const Axis& axis) const;
    /// The value that a point let go at this height has.
    int ValueAt(LONG y, const Axis& axis) const;
    LONG ChartHeight() const;

    /// Presses the pen on the place and lets it go on the height `toY`, which may lie outside the
    /// chart; waits until that has been handled.
    bool Drag(POINT from, LONG toY) const;
    bool ClickUnit(GraphControl button) const;

  private:
    Program& program;
};

}  // namespace lunara::e2e
