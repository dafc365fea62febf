#pragma once

// The program's menu bar, its buttons and the menu that opens from it, used with clicks.

#include <windows.h>

#include <vector>

#include "tests/e2e/driver.h"

namespace lunara::e2e {

/// TBSTATE_ bits of a menu-bar button; -1 when there is no such button.
int ButtonState(const Program& program, UINT command);
/// TBSTYLE_ bits of a menu-bar button; -1 when there is no such button.
int ButtonStyle(const Program& program, UINT command);
bool ClickButton(Program& program, UINT command);

/// The menus that are open, in no certain order.
std::vector<HWND> OpenMenus(const Program& program);
/// Opens the Tools menu, and Options when the command is there, and chooses it. What the command
/// does may still go on.
bool ChooseFromMenu(Program& program, UINT command);

/// The same two ways to a command that opens nothing; both wait until the program has done it.
bool SwitchByButton(Program& program, UINT command);
bool SwitchByMenu(Program& program, UINT command);

}  // namespace lunara::e2e
