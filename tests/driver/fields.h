#pragma once

// Operates common controls in the program's dialogs and views as a user does: date pickers with
// their drop-down calendar, and up-down controls.

#include <windows.h>

#include <functional>
#include <string>

#include "tests/driver/program.h"

namespace lunara::test {

/// The day that a date picker shows.
Day PickedDay(const Program& program, HWND picker);

/// Drops the picker's calendar down, turns to the month and clicks the day. True when the click was
/// taken, even if the program then refuses the day.
bool PickFromCalendar(Program& program, HWND picker, Day day);

/// Clicks the first part of the picker's date and types all three parts, in the order of the user's
/// locale. The picker notifies the program after each part, so the program sees up to three dates.
bool TypeDate(Program& program, HWND picker, Day day);

/// Clicks the upper or lower arrow of an up-down control and waits until that has been handled.
bool ClickArrow(Program& program, HWND spin, bool up);
/// Holds the arrow down until `reached` holds; false when it does not come to hold.
bool HoldArrow(Program& program, HWND spin, bool up, const std::function<bool()>& reached);
/// Clicks the arrow until the field shows this text, at most `most` times. False, and a failure,
/// when it does not come to show it.
bool ClickArrowUntil(Program& program, HWND spin, bool up, HWND field, const std::wstring& text,
                     int most);

}  // namespace lunara::test
