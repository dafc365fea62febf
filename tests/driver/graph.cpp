#include "tests/driver/graph.h"

#include <array>
#include <cmath>

#include "tests/driver/fields.h"

namespace lunara::test {
namespace {

constexpr LONG MarginPx = 34;  // left of the first day, for the labels of the axis

}  // namespace

Axis TemperatureAxis(int lowest, int highest) {
    const int range = highest - lowest;
    for (const int span : {100, 200, 300, 400}) {
        if (span >= range + range / 10) {
            const int bottom = lowest + (range - span) / 2;
            return {bottom, bottom + span};
        }
    }
    return {lowest - range / 20, highest + range / 20};
}

Day GraphScreen::FirstDay() const { return ToDay(program.FirstCell(Control(GraphCalendar)).date); }

Day GraphScreen::CurrentDay() const { return PickedDay(program, Control(GraphDatePicker)); }

std::wstring GraphScreen::Value() const { return Program::TextOf(Control(GraphValue)); }

bool GraphScreen::ShowsUnits() const {
    return ::IsWindowVisible(Control(GraphFahrenheit)) != 0 &&
           ::IsWindowVisible(Control(GraphCelsius)) != 0;
}

bool GraphScreen::IsUnit(GraphControl button) const {
    const GraphControl other = button == GraphCelsius ? GraphFahrenheit : GraphCelsius;
    return ::SendMessageW(Control(button), BM_GETCHECK, 0, 0) == BST_CHECKED &&
           ::SendMessageW(Control(other), BM_GETCHECK, 0, 0) == BST_UNCHECKED;
}

LONG GraphScreen::ChartHeight() const {
    RECT client{};
    ::GetClientRect(Control(GraphChart), &client);
    return client.bottom;
}

POINT GraphScreen::PlaceOf(Day day, int value, const Axis& axis) const {
    const CalendarHit first = program.FirstCell(Control(GraphCalendar));
    const LONG dayWidth = first.cell.right - first.cell.left;
    const LONG column = DaysBetween(day, ToDay(first.date));
    const LONG height = ChartHeight();
    const double perValue = static_cast<double>(height) / (axis.maximum - axis.minimum);
    const auto y = static_cast<LONG>(height - (value - axis.minimum) * perValue);
    return {MarginPx + dayWidth / 2 + column * dayWidth, std::min(y, height - 1)};
}

int GraphScreen::ValueAt(LONG y, const Axis& axis) const {
    const double height = ChartHeight();
    return static_cast<int>(
        (height - static_cast<double>(y)) * (axis.maximum - axis.minimum) / height + axis.minimum);
}

bool GraphScreen::Drag(POINT from, LONG toY) const {
    return program.Drag(Control(GraphChart), from, {from.x, toY}, [] {}) && program.Settle();
}

bool GraphScreen::ClickUnit(GraphControl button) const {
    return program.Click(Control(button)) && program.Settle();
}

}  // namespace lunara::test
