#pragma once

// Steps through the program's dialogs that several tests share.

#include <string>

#include "tests/driver/program.h"

namespace lunara::test {

inline constexpr int TodaysRow = 10;  // the diary opens ten days before today

/// Clicks the field and replaces its text by typing; false when the field does not come to hold it.
bool TypeInto(Program& program, HWND field, const std::wstring& text);

/// Taps an agenda cell. Rows count from the first one on the screen, columns from the left, both
/// from 0.
void TapCell(Program& program, int row, int column);
/// Taps the notes cell of the row and waits for the dialog; null, and a failure, when none comes.
HWND OpenNote(Program& program, int row);
/// Replaces the note of the row's day, by typing in the dialog.
bool WriteNote(Program& program, int row, const std::wstring& text);

/// Keeps a picture of the screen once several looks in a row were the same: a window that has just
/// opened is still being painted.
void KeepWhenStill(Program& program, const WCHAR* name);

/// Waits for the message box with this title and clicks the button. Its text; empty when none came.
std::wstring AnswerBox(Program& program, const WCHAR* title, int button = ControlOk);

}  // namespace lunara::test
