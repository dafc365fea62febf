#pragma once

// Mouse and keyboard, as the system gets them from the devices.

#include <windows.h>

#include <initializer_list>

namespace lunara::e2e {

INPUT KeyInput(WORD key, WORD scan, DWORD flags);

/// A button event at a place of the screen. The place goes with the event: a pointer moved
/// beforehand may have been moved on by the display when the event comes.
INPUT MouseInput(DWORD button, POINT screen);

/// Presses and releases a key while the others are held.
void PressWith(std::initializer_list<WORD> held, WORD key);

/// Presses the left button, moves on in that many steps, releases it.
void DragOnScreen(POINT from, POINT to, int steps);

/// Turns the wheel there, upwards when positive.
void TurnWheel(POINT screen, int notches);

}  // namespace lunara::e2e
