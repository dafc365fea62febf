#pragma once

// The table of the main window's commands. Menu, menu-bar buttons and accelerators all use it, so
// that each command is described once.

#include <span>

#include "app/main_window.h"
#include "resources/ids.h"

namespace lunara {

/// A command: its id, its handler, and the views that offer it as a button.
struct Command {
    UINT id = 0;
    void (MainWindow::*run)() = nullptr;
    /// The show flag that the command's button toggles, in the diary view and in the graph view. 0:
    /// that view does not offer the button.
    std::uint32_t diaryFlag = 0;
    std::uint32_t graphFlag = 0;

    /// The flag for `view`, ViewDiary or ViewGraph; 0 for any other value.
    constexpr std::uint32_t FlagIn(DWORD view) const {
        return view == ViewDiary ? diaryFlag : view == ViewGraph ? graphFlag : 0;
    }
    constexpr bool HasButton() const { return (diaryFlag | graphFlag) != 0; }
};

struct CommandTable {
    static constexpr Command Entries[] = {
        {IDOK, &MainWindow::Exit},  // sent by the accelerator Ctrl+Q
        {IDM_EXIT, &MainWindow::Exit},
        {IDM_ABOUT, &MainWindow::About},
        {IDM_VIEW_DIARY, &MainWindow::ViewDiaryCommand},
        {IDM_VIEW_GRAPH, &MainWindow::ViewGraphCommand},
        {IDM_SHOW_NOTES, &MainWindow::ToggleNotes, DiaryShowNotes, 0},
        {IDM_SHOW_BLEEDING, &MainWindow::ToggleBleeding, DiaryShowBleeding, GraphShowBleeding},
        {IDM_SHOW_PERIOD, &MainWindow::TogglePeriod, DiaryShowPeriod, 0},
        {IDM_SHOW_OVULATION, &MainWindow::ToggleOvulation, DiaryShowOvulation, 0},
        {IDM_SHOW_PREGNANCY, &MainWindow::TogglePregnancy, DiaryShowPregnancy, 0},
        {IDM_SHOW_TEMPERATURE, &MainWindow::ToggleTemperature, 0, GraphShowTemperature},
        {IDM_CHANGE_PASSWORD, &MainWindow::ChangePasswordCommand},
        {IDM_HISTORY, &MainWindow::HistoryCommand},
        {IDM_BACKUP, &MainWindow::BackupCommand},
        {IDM_RESTORE, &MainWindow::RestoreCommand},
        {IDM_HELP, &MainWindow::Help},
    };

    /// The command with that id; null when there is none.
    static constexpr const Command* Find(UINT id) {
        for (const Command& command : Entries) {
            if (command.id == id) {
                return &command;
            }
        }
        return nullptr;
    }
};

}  // namespace lunara
