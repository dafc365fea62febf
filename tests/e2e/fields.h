#pragma once

// The system's own fields in the program's dialogs and views, used as a person uses them: date
// pickers with their drop-down calendar, and the small arrows beside a value.

#include <windows.h>

#include <functional>
#include <string>

#include "tests/e2e/driver.h"

namespace lunara::e2e {

/// The day that a date picker shows.
Day PickedDay(const Program& program, HWND picker);

/// Drops the picker's calendar down, turns it to the month and clicks the day. True when that was
/// done, whatever the program makes of the day.
bool PickFromCalendar(Program& program, HWND picker, Day day);

/// Clicks the first part of the picker's date and types all three parts, in the order of the user's
/// locale. The picker tells of every part by itself.
bool TypeDate(Program& program, HWND picker, Day day);

/// Clicks the upper or lower arrow and waits until that has been handled.
bool ClickArrow(Program& program, HWND spin, bool up);
/// Keeps the arrow pressed until `reached`; true when that came.
bool HoldArrow(Program& program, HWND spin, bool up, const std::function<bool()>& reached);
/// Clicks the arrow until the text of the field beside it is this one; at most `most` times.
bool ClickArrowUntil(Program& program, HWND spin, bool up, HWND field, const std::wstring& text,
                     int most);

}  // namespace lunara::e2e
