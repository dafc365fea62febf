#pragma once

// The numbers by which the program is known from outside: its window class, commands and controls.
// Deliberately not taken from the program's own headers: a number changed there by mistake must
// fail a test.

#include <windows.h>

namespace lunara::test {

inline constexpr WCHAR MainClass[] = L"wfcWnd_1_0";
inline constexpr WCHAR MainTitle[] = L"Lunara";

enum Command : UINT {
    CommandAbout = 40003,
    CommandViewDiary = 40005,
    CommandViewGraph = 40006,
    CommandShowBleeding = 40007,
    CommandShowPeriod = 40008,
    CommandShowOvulation = 40009,
    CommandShowPregnancy = 40010,
    CommandShowTemperature = 40011,
    CommandChangePassword = 50030,
    CommandShowNotes = 50032,
    CommandHelp = 50033,
    CommandExit = 50034,
    CommandHistory = 50035,
    CommandBackup = 50042,
    CommandRestore = 50043,
    CommandTools = 104,
};

enum Control : int {
    ControlOk = 1,
    ControlCancel = 2,
    ControlRetry = 4,
    ControlYes = 6,
    ControlNo = 7,
    ControlUserName = 1002,
    ControlPassword = 1003,  // in the sign-in; in "Change password" the new one
    ControlConfirmation = 1004,
    ControlOldPassword = 1006,
    ControlCramps = 1014,
    ControlPms = 1015,
    ControlNoteText = 1016,
    ControlNoteDate = 1018,
    ControlAgenda = 3001,
    ControlCalendar = 3002,
    ControlScrollBar = 3003,
};

enum HistoryControl : int {
    HistoryLength = 1016,
    HistoryBleeding = 1017,
    HistoryStart = 1019,
    HistoryEnd = 1020,
    HistoryLengthSpin = 1021,
    HistoryBleedingSpin = 1022,
};

enum BackupControl : int {
    BackupName = 1016,
    BackupSaveFirst = 1024,
};

enum RestoreControl : int {
    RestoreList = 1023,
    RestoreDelete = 1025,
};

enum GraphControl : int {
    GraphChart = 3001,
    GraphCalendar = 3002,
    GraphFahrenheit = 3004,
    GraphCelsius = 3005,
    GraphDatePicker = 3006,
    GraphValue = 3007,
    GraphSpin = 3008,
};

enum View : DWORD { ViewDiary = 3000, ViewGraph = 3001 };

inline constexpr UINT_PTR DayTimer = 1;

/// Registered message to the main window. The result is the number of live drawing objects plus 1,
/// so that 0, the result of a window that does not know the message, cannot pass for "none".
inline constexpr WCHAR LiveGdiObjectsMessage[] = L"Lunara_LiveGdiObjects";

}  // namespace lunara::test
