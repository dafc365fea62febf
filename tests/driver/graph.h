#pragma once

// The graph view of a running program: its fields, and where its chart draws a day's value.
// Deliberately computes the chart's geometry on its own, from what is visible, instead of with the
// program's code: a mistake there must fail a test.

#include <windows.h>

#include <string>

#include "tests/driver/program.h"

namespace lunara::test {

/// The values at the bottom and at the top of the chart: hundredths of a degree, or bleeding
/// levels.
struct Axis {
    int minimum;
    int maximum;
};

/// The axis of a temperature chart whose lowest and highest value are these, in hundredths of a
/// degree. The caller includes the range that the chart always covers, 9700 to 9800.
Axis TemperatureAxis(int lowest, int highest);
inline constexpr Axis BleedingAxis{0, 4};

class GraphScreen {
  public:
    /// The program must outlive this object.
    explicit GraphScreen(Program& shown) : program(shown) {}

    HWND Control(GraphControl id) const { return ::GetDlgItem(program.Graph(), id); }
    /// The first day that the chart shows.
    Day FirstDay() const;
    /// The day in the date picker, and the text of the value field beside it.
    Day CurrentDay() const;
    std::wstring Value() const;
    /// Whether both unit buttons are visible.
    bool ShowsUnits() const;
    /// Whether this unit button, and not the other one, is checked.
    bool IsUnit(GraphControl button) const;

    /// The pixel of a day's value in the client area of the chart. Clamped to the last row for a
    /// value on the lower edge, which would be one pixel below the window.
    POINT PlaceOf(Day day, int value, const Axis& axis) const;
    /// The value of a point that is dropped at this height, in the unit of the axis.
    int ValueAt(LONG y, const Axis& axis) const;
    LONG ChartHeight() const;  // px

    /// Drags vertically inside the chart from `from` to the height `toY`, which may lie outside of
    /// it, and waits until that has been handled.
    bool Drag(POINT from, LONG toY) const;
    bool ClickUnit(GraphControl button) const;

  private:
    Program& program;
};

}  // namespace lunara::test
