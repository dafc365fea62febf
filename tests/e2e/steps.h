#pragma once

// Steps in the program's dialogs that several tests take.

#include <string>

#include "tests/e2e/driver.h"

namespace lunara::e2e {

inline constexpr int TodaysRow = 10;  // the diary begins ten days before today

/// Clicks the field and replaces what it holds by typing; false when it does not take that.
bool TypeInto(Program& program, HWND field, const std::wstring& text);

/// Taps the cell in that column of the agenda's row.
void TapCell(Program& program, int row, int column);
/// Taps the cell of the notes; the dialog that comes, null when none does.
HWND OpenNote(Program& program, int row);
/// Replaces the note of that row's day.
bool WriteNote(Program& program, int row, const std::wstring& text);

/// Keeps a picture of the screen once it has stayed the same for a while: what was just opened is
/// painted last.
void KeepWhenStill(Program& program, const WCHAR* name);

/// Waits for the box with this title, reads it and puts it away with a click on the button.
std::wstring AnswerBox(Program& program, const WCHAR* title, int button = ControlOk);

}  // namespace lunara::e2e
