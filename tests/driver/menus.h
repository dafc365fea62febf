#pragma once

// Clicks through the program's menu bar: its buttons, and the menu that the Tools button opens.

#include <windows.h>

#include <vector>

#include "tests/driver/program.h"

namespace lunara::test {

/// TBSTATE_ bits of a menu-bar button; -1 when there is no such button.
int ButtonState(const Program& program, UINT command);
/// TBSTYLE_ bits of a menu-bar button; -1 when there is no such button.
int ButtonStyle(const Program& program, UINT command);
/// Clicks a menu-bar button, without waiting for what the program does about it. False, and a
/// failure, when there is no such button.
bool ClickButton(Program& program, UINT command);

/// The pop-up menus of the program that are open, in no particular order.
std::vector<HWND> OpenMenus(const Program& program);
/// Opens the Tools menu, and its Options sub-menu when the command is in there, and clicks the
/// item. Returns once the menus are closed; the command itself may still run or have a dialog open.
bool ChooseFromMenu(Program& program, UINT command);

/// Choose a command that opens no window, by its button or in the menu, and wait until the program
/// has handled it.
bool SwitchByButton(Program& program, UINT command);
bool SwitchByMenu(Program& program, UINT command);

}  // namespace lunara::test
