#pragma once

// Injects mouse and keyboard input at the place where the system receives that of the devices.

#include <windows.h>

#include <initializer_list>

namespace lunara::test {

/// One keyboard event: `key` is a virtual key; `scan` a UTF-16 unit with KEYEVENTF_UNICODE.
INPUT KeyInput(WORD key, WORD scan, DWORD flags);

/// A button event (MOUSEEVENTF_*; 0 for a mere move) that carries its place on the screen in
/// pixels. A separate move before the event would not do: the display may move the pointer on in
/// between.
INPUT MouseInput(DWORD button, POINT screen);

/// Presses and releases `key` while the modifiers are held.
void PressWith(std::initializer_list<WORD> held, WORD key);

/// Drags with the left button, in that many moves (1 or more) of equal length.
void DragOnScreen(POINT from, POINT to, int steps);

/// Turns the wheel at that place; a positive number of notches turns it away from the user.
void TurnWheel(POINT screen, int notches);

}  // namespace lunara::test
