#pragma once

// One run of the built program, operated the way a user operates it: by looking at its windows,
// clicking, typing. What cannot be seen on the screen is asked of the windows from outside. Every
// operation waits until the program is ready for it. Menus, fields and whole dialogs have files of
// their own (menus, fields, steps, backups, graph).
//
// A run that cannot go on (a window that does not come) adds a test failure with what was waited
// for.

#include <windows.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/machine.h"
#include "tests/e2e/picture.h"
#include "tests/e2e/program_ids.h"
#include "tests/e2e/remote.h"

namespace lunara::e2e {

/// A day's row as the diary answers it to its agenda.
struct Row {
    struct Cell {
        COLORREF color;
        HBITMAP bitmap;
        HBITMAP overlay;
    };
    LRESULT answered;
    int height;
    std::wstring text;
    std::vector<Cell> cells;
};

/// The calendar's answer to a hit test: the day there and its cell, in client coordinates.
struct CalendarHit {
    POINT point;
    SYSTEMTIME date;
    RECT cell;
};

class Program {
  public:
    explicit Program(const ProgramFolder& programFolder) : folder(programFolder) {}
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    /// A program that still runs is ended the hard way.
    ~Program();

    // ---- Its life ----
    /// Starts it; true when it runs. `showCommand` as in the start information.
    bool Start(WORD showCommand = SW_SHOWNORMAL);
    bool IsRunning() const;
    /// Waits until it ends by itself; false when it does not.
    bool WaitForEnd();
    DWORD ExitCode() const;
    void Kill();
    HANDLE Process() const { return process.hProcess; }

    // ---- Windows ----
    /// The main window, also while it is being created; null when there is none.
    HWND FindMain() const;
    HWND Main() const { return main; }
    /// A visible dialog or message box of the program with this title; waits for it.
    HWND WaitForDialog(const WCHAR* title);
    HWND FindDialog(const WCHAR* title) const;
    bool WaitForNoDialog(const WCHAR* title);
    /// Any visible dialog or box.
    HWND FindAnyDialog() const;
    /// The view with this window text, child of the main window.
    HWND FindView(const WCHAR* title) const;
    HWND Diary() const { return FindView(L"Diary view"); }
    HWND Graph() const { return FindView(L"Graph view"); }
    /// Whether the view lies above its sibling.
    bool IsOnTop(HWND view) const;
    HWND Agenda() const { return ::GetDlgItem(Diary(), ControlAgenda); }
    HWND Calendar() const { return ::GetDlgItem(Diary(), ControlCalendar); }
    HWND ScrollBar() const { return ::GetDlgItem(Diary(), ControlScrollBar); }
    HWND MenuBar() const;

    // ---- Entries ----
    static std::wstring TextOf(HWND window);
    static void SetTextOf(HWND window, const std::wstring& text);
    /// The text of a message box.
    static std::wstring BoxText(HWND box);
    /// Real input: a press and release of the left button, of keys, of characters.
    bool Click(HWND window);
    bool ClickAt(HWND window, POINT client);
    static bool ClickScreen(POINT screen);
    /// Moves the pointer there, and waits until it stays.
    bool PutPointer(POINT screen);
    /// Presses at `from`, moves to `to`, calls `held`, releases.
    bool Drag(HWND window, POINT from, POINT to, const std::function<void()>& held);
    /// The middle of the scroll bar's thumb, in its own client coordinates.
    POINT ThumbCentre() const;
    void Press(WORD key, bool control = false);
    void Type(const std::wstring& text);
    /// Clicks a dialog's button and waits until the dialog is gone.
    bool Leave(HWND dialog, int button);
    void Send(UINT command);
    void Post(UINT command);
    /// Waits until everything clicked, typed and posted so far has been handled. Only when the main
    /// window is complete and not minimised.
    bool Settle();

    // ---- Whole steps ----
    /// Waits for the sign-in dialog and fills it in, by typing what is not there yet; OK is
    /// clicked.
    bool EnterUser(const std::wstring& user, const std::wstring& password);
    /// The main window is complete; a prediction warning is read and put away.
    bool WaitForViews();
    bool SignIn(const std::wstring& user, const std::wstring& password);
    bool StartAndSignIn(const std::wstring& user, const std::wstring& password);
    /// The text of the warning that `WaitForViews` or `PutWarningAway` put away; empty when none
    /// came.
    const std::wstring& Warning() const { return warning; }
    bool PutWarningAway();
    /// Exit by the command; true when it ended with exit code 0.
    bool Exit();

    // ---- What it shows ----
    Row AskRow(int index, int cells);
    SCROLLINFO Scroll() const;
    /// The first day of a view's calendar, and its cell.
    CalendarHit FirstCell(HWND calendar) const;
    /// The first day that the diary shows.
    Day FirstDay() const;
    /// Sends a message whose lParam is the address of a record, which the control reads or fills
    /// in.
    bool SendRecord(HWND window, UINT message, WPARAM wParam, void* record, std::size_t size,
                    LRESULT* result = nullptr) const;
    /// Calls a function of user32 inside it; false when that did not come to its end.
    bool Call(const char* function, const std::array<std::uint64_t, 4>& arguments,
              std::uint64_t& result) const;
    /// Client area of a window as it is on the screen.
    static Picture Look(HWND window);
    /// Keeps a picture of the screen round the main window: <test>-<number>-<name>.bmp.
    void Keep(const WCHAR* name);
    /// Fails the test with what was waited for and what is in the way, and keeps a picture. Answers
    /// false.
    bool Fail(const std::wstring& what);
    /// Live drawing objects of the program; -1 when it does not answer.
    int LiveGdiObjects() const;

  private:
    /// Waits until a click there would reach the window; `screen` is the same place on the screen.
    bool WaitUntilUncovered(HWND window, POINT client, POINT& screen);
    Visitor& Inside() const;

    const ProgramFolder& folder;
    PROCESS_INFORMATION process{};
    mutable std::unique_ptr<Visitor> visitor;  // made when first needed
    HWND main = nullptr;
    std::wstring warning;
    int kept = 0;
};

}  // namespace lunara::e2e
