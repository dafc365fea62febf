// MainWindow: menu and menu bar, and the buttons that follow what the views show.

#include "app/commands.h"
#include "app/help.h"
#include "app/main_window.h"
#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/common_controls.h"
#include "platform/pocketpc/menu_bar.h"
#include "window/double_buffer.h"

namespace lunara {
namespace {

constexpr int ImageCount = 5;
constexpr int OptionsPosition = 7;
constexpr const WCHAR* ToolTips[] = {TEXT(""),           TEXT("Notes"),     TEXT("Bleeding"),
                                     TEXT("Period"),     TEXT("Ovulation"), TEXT("Pregnancy"),
                                     TEXT("Temperature")};

TBBUTTONINFOW ButtonInfo(DWORD mask) {
    TBBUTTONINFOW info{};
    info.cbSize = sizeof(info);
    info.dwMask = mask;
    return info;
}

}  // namespace

bool MainWindow::CreateBar() {
    SHMENUBARINFO info{};
    info.cbSize = sizeof(info);
    info.hwndParent = Handle();
    info.nToolBarId = IDR_MENU_BAR;
    info.hInstRes = AppInstance();
    info.nBmpId = IDB_MENU_BAR;
    // ImageCount is one less than the six images in the bitmap, which all have a button. It has no
    // effect: the bar takes the number from the bitmap.
    info.cBmpImages = ImageCount;
    if (SHCreateMenuBar(&info) == FALSE || menuBar.Subclass(info.hwndMB) == 0) {
        return false;
    }
    DoubleBufferControl(menuBar.Handle());
    ::SendMessageW(menuBar.Handle(), TB_SETTOOLTIPS_DEVICE, std::size(ToolTips),
                   reinterpret_cast<LPARAM>(ToolTips));
    return true;
}

HMENU MainWindow::ToolsMenu() const {
    return reinterpret_cast<HMENU>(
        ::SendMessageW(menuBar.Handle(), SHCMBM_GETSUBMENU, 0, IDM_TOOLS));
}

/// Always null: position 7 of the Tools menu is not a pop-up. Every change of an Options item is
/// therefore without effect: the items stay enabled and unchecked, and only the buttons show the
/// flags. Deliberate; do not look up the real position of the pop-up.
HMENU MainWindow::OptionsMenu() const { return ::GetSubMenu(ToolsMenu(), OptionsPosition); }

void MainWindow::CheckOption(UINT command, bool checked) {
    ::CheckMenuItem(OptionsMenu(), command, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
}

void MainWindow::EnableOption(UINT command, bool enabled) {
    ::EnableMenuItem(OptionsMenu(), command, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

void MainWindow::CheckView(UINT shown, UINT other) {
    ::CheckMenuItem(ToolsMenu(), shown, MF_BYCOMMAND | MF_CHECKED);
    ::CheckMenuItem(ToolsMenu(), other, MF_BYCOMMAND | MF_UNCHECKED);
}

void MainWindow::SetUpButtons(DWORD view, std::uint32_t flags) {
    for (const Command& command : CommandTable::Entries) {
        if (!command.HasButton()) {
            continue;
        }
        const std::uint32_t flag = command.FlagIn(view);
        const bool checked = (flags & flag) != 0;
        EnableOption(command.id, flag != 0);
        CheckOption(command.id, checked);
        TBBUTTONINFOW info = ButtonInfo(TBIF_STATE | TBIF_STYLE);
        info.fsStyle = view == ViewDiary ? BYTE{TBSTYLE_CHECK} : BYTE{TBSTYLE_CHECKGROUP};
        info.fsState = flag == 0 ? BYTE{TBSTATE_HIDDEN}
                       : checked ? BYTE{TBSTATE_ENABLED | TBSTATE_CHECKED}
                                 : BYTE{TBSTATE_ENABLED};
        ::SendMessageW(menuBar.Handle(), TB_SETBUTTONINFOW, command.id,
                       reinterpret_cast<LPARAM>(&info));
    }
}

void MainWindow::ChangeButtonState(UINT command, BYTE clear, BYTE set) {
    TBBUTTONINFOW info = ButtonInfo(TBIF_STATE);
    if (::SendMessageW(menuBar.Handle(), TB_GETBUTTONINFOW, command,
                       reinterpret_cast<LPARAM>(&info)) < 0) {
        return;
    }
    info.dwMask = TBIF_STATE;
    info.fsState = static_cast<BYTE>((info.fsState & ~clear) | set);
    ::SendMessageW(menuBar.Handle(), TB_SETBUTTONINFOW, command, reinterpret_cast<LPARAM>(&info));
}

void MainWindow::ChangeButtonsOfView(BYTE clear, BYTE set) {
    for (const Command& command : CommandTable::Entries) {
        if (command.FlagIn(currentView) != 0) {
            ChangeButtonState(command.id, clear, set);
        }
    }
}

void MainWindow::HideButtons() { ChangeButtonsOfView(0, TBSTATE_HIDDEN); }

void MainWindow::ShowButtons() { ChangeButtonsOfView(TBSTATE_HIDDEN, 0); }

void MainWindow::CheckButton(UINT command, bool checked) {
    ChangeButtonState(command, TBSTATE_CHECKED, checked ? BYTE{TBSTATE_CHECKED} : BYTE{0});
}

// ---- What the views report ----

void MainWindow::ShownChanged(UINT command, bool shown) {
    CheckOption(command, shown);
    CheckButton(command, shown);
}

void MainWindow::NotesShownChanged(bool shown) { ShownChanged(IDM_SHOW_NOTES, shown); }

void MainWindow::BleedingShownChanged(bool shown) { ShownChanged(IDM_SHOW_BLEEDING, shown); }

void MainWindow::PeriodShownChanged(bool shown) { ShownChanged(IDM_SHOW_PERIOD, shown); }

void MainWindow::OvulationShownChanged(bool shown) { ShownChanged(IDM_SHOW_OVULATION, shown); }

void MainWindow::PregnancyShownChanged(bool shown) { ShownChanged(IDM_SHOW_PREGNANCY, shown); }

void MainWindow::HelpRequested(const WCHAR* anchor) { StartHelp(anchor); }

void MainWindow::GraphSelected(UINT shown, UINT other) {
    ::CheckMenuRadioItem(OptionsMenu(), IDM_SHOW_BLEEDING, IDM_SHOW_TEMPERATURE, shown,
                         MF_BYCOMMAND);
    CheckButton(shown, true);
    CheckButton(other, false);
}

void MainWindow::BleedingGraphSelected() { GraphSelected(IDM_SHOW_BLEEDING, IDM_SHOW_TEMPERATURE); }

void MainWindow::TemperatureGraphSelected() {
    GraphSelected(IDM_SHOW_TEMPERATURE, IDM_SHOW_BLEEDING);
}

}  // namespace lunara
