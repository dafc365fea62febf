#include "tests/driver/menus.h"

#include <commctrl.h>

#include <cstdint>

#include "tests/driver/remote.h"
#include "tests/driver/wait.h"

namespace lunara::test {
namespace {

constexpr WCHAR MenuClass[] = L"#32768";
constexpr UINT PopUp = 0xFFFFFFFF;  // GetMenuItemID of an item that opens a sub-menu, here Options

/// Clicks the first item with this id in an open menu; false when there is none. A remote call is
/// needed for each item: the menu's handle and window belong to the program.
bool ClickMenuItem(const Program& program, HWND menuWindow, UINT id) {
    const LRESULT menu = ::SendMessageW(menuWindow, MN_GETHMENU, 0, 0);
    constexpr int MostItems = 30;
    for (int position = 0; position < MostItems; ++position) {
        std::uint64_t found = 0;
        program.Call("GetMenuItemID",
                     {static_cast<std::uint64_t>(menu), static_cast<std::uint64_t>(position)},
                     found);
        if (static_cast<UINT>(found) != id) {
            continue;
        }
        RECT item{};
        RemoteBlock block(program.Process(), sizeof item);
        std::uint64_t done = 0;
        if (!program.Call("GetMenuItemRect",
                          {reinterpret_cast<std::uintptr_t>(menuWindow),
                           static_cast<std::uint64_t>(menu), static_cast<std::uint64_t>(position),
                           reinterpret_cast<std::uintptr_t>(block.Address())},
                          done) ||
            static_cast<BOOL>(done) == FALSE || !block.Read(&item, sizeof item)) {
            return false;
        }
        return Program::ClickScreen({(item.left + item.right) / 2, (item.top + item.bottom) / 2});
    }
    return false;
}

}  // namespace

int ButtonState(const Program& program, UINT command) {
    return static_cast<int>(::SendMessageW(program.MenuBar(), TB_GETSTATE, command, 0));
}

int ButtonStyle(const Program& program, UINT command) {
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_STYLE;
    LRESULT index = -1;
    return program.SendRecord(program.MenuBar(), TB_GETBUTTONINFOW, command, &info, sizeof info,
                              &index) &&
                   index >= 0
               ? info.fsStyle
               : -1;
}

bool ClickButton(Program& program, UINT command) {
    RECT button{};
    if (!program.SendRecord(program.MenuBar(), TB_GETRECT, command, &button, sizeof button) ||
        ::IsRectEmpty(&button) != 0) {
        return program.Fail(L"no such button on the menu bar");
    }
    // A third from the left: a drop-down button may have a separate arrow at its right.
    return program.ClickAt(program.MenuBar(), {(2 * button.left + button.right) / 3,
                                               (button.top + button.bottom) / 2});
}

std::vector<HWND> OpenMenus(const Program& program) {
    const DWORD process = ::GetProcessId(program.Process());
    std::vector<HWND> menus;
    for (HWND menu = ::FindWindowExW(nullptr, nullptr, MenuClass, nullptr); menu != nullptr;
         menu = ::FindWindowExW(nullptr, menu, MenuClass, nullptr)) {
        DWORD owner = 0;
        ::GetWindowThreadProcessId(menu, &owner);
        if (owner == process && ::IsWindowVisible(menu) != 0) {
            menus.push_back(menu);
        }
    }
    return menus;
}

bool ChooseFromMenu(Program& program, UINT command) {
    const auto waitForMenus = [&](std::size_t count) {
        return WaitFor([&] { return OpenMenus(program).size() == count; });
    };
    if (!ClickButton(program, CommandTools) || !waitForMenus(1)) {
        return program.Fail(L"the menu does not open");
    }
    const HWND tools = OpenMenus(program).front();
    if (!ClickMenuItem(program, tools, command)) {
        if (!ClickMenuItem(program, tools, PopUp) || !waitForMenus(2)) {
            return program.Fail(L"the Options menu does not open");
        }
        const std::vector<HWND> menus = OpenMenus(program);
        if (!ClickMenuItem(program, menus[0] == tools ? menus[1] : menus[0], command)) {
            return program.Fail(L"the menu does not hold the command");
        }
    }
    return waitForMenus(0) || program.Fail(L"the menu does not close");
}

bool SwitchByButton(Program& program, UINT command) {
    return ClickButton(program, command) && program.Settle();
}

bool SwitchByMenu(Program& program, UINT command) {
    return ChooseFromMenu(program, command) && program.Settle();
}

}  // namespace lunara::test
