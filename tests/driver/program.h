#pragma once

// One process of the built program, operated as a user operates it: by its windows on the screen,
// with clicks and keys. What the screen does not show is asked of the windows from outside. Every
// operation first waits until the program is ready for it. Menus, fields, the graph and steps
// through whole dialogs have files of their own.
//
// An operation that cannot go on (a window that does not come) reports a failure (failure.h) with
// what it waited for and answers false or null.

#include <windows.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/driver/machine.h"
#include "tests/driver/picture.h"
#include "tests/driver/program_ids.h"
#include "tests/driver/remote.h"

namespace lunara::test {

/// A day's row as the diary answers it when the agenda asks.
struct Row {
    struct Cell {
        COLORREF color;
        HBITMAP bitmap;
        HBITMAP overlay;
    };
    LRESULT answered;  // result of the message; 1 when the diary filled the row in
    int height;        // px
    std::wstring text;
    std::vector<Cell> cells;
};

/// A calendar's answer to a hit test: the day at the point and the day's cell, in client
/// coordinates. Laid out as the control lays it out; the test passes it as the parameter of the
/// message.
struct CalendarHit {
    POINT point;
    SYSTEMTIME date;
    RECT cell;
};

class Program {
  public:
    /// The folder must outlive this object.
    explicit Program(const ProgramFolder& programFolder) : folder(programFolder) {}
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    /// Terminates the process when it still runs.
    ~Program();

    // ---- The process ----
    /// Starts the process, at most once for each object. `showCommand` is a SW_ constant, passed in
    /// the start information.
    bool Start(WORD showCommand = SW_SHOWNORMAL);
    bool IsRunning() const;
    /// Waits until the process ends by itself; false, and a failure, when it does not.
    bool WaitForEnd();
    /// STILL_ACTIVE while the process runs, 0 when it was never started.
    DWORD ExitCode() const;
    /// Terminates the process, with nothing saved, and waits for its end.
    void Kill();
    HANDLE Process() const { return process.hProcess; }

    // ---- Windows ----
    /// The main window, also before it is visible; null when there is none.
    HWND FindMain() const;
    /// The main window as `EnterUser` or `WaitForViews` found it; null before.
    HWND Main() const { return main; }
    /// Waits for a visible dialog or message box with this title, and then for the focus to be in
    /// it. Null, and a failure, when none comes or the program ends.
    HWND WaitForDialog(const WCHAR* title);
    /// A visible dialog or message box with this title; null when there is none now.
    HWND FindDialog(const WCHAR* title) const;
    bool WaitForNoDialog(const WCHAR* title);
    /// Any visible dialog or message box; null when there is none now.
    HWND FindAnyDialog() const;
    /// The view with this window text, inside the main window; null when there is none.
    HWND FindView(const WCHAR* title) const;
    HWND Diary() const { return FindView(L"Diary view"); }
    HWND Graph() const { return FindView(L"Graph view"); }
    /// Whether the view is the upper one of the two in the z-order.
    bool IsOnTop(HWND view) const;
    HWND Agenda() const { return ::GetDlgItem(Diary(), ControlAgenda); }
    HWND Calendar() const { return ::GetDlgItem(Diary(), ControlCalendar); }
    HWND ScrollBar() const { return ::GetDlgItem(Diary(), ControlScrollBar); }
    HWND MenuBar() const;

    // ---- Input ----
    /// The window's text, at most 1023 characters; empty when the window does not answer.
    static std::wstring TextOf(HWND window);
    static void SetTextOf(HWND window, const std::wstring& text);
    /// The texts of all static controls of a message box, joined.
    static std::wstring BoxText(HWND box);
    /// Clicks the middle of the window's client area with the left button, once no other window
    /// covers that place. Real input, as is that of all functions down to `Type`.
    bool Click(HWND window);
    bool ClickAt(HWND window, POINT client);
    /// Clicks without looking at what is there and without waiting.
    static bool ClickScreen(POINT screen);
    /// Moves the pointer there, and waits until the display no longer moves it.
    bool PutPointer(POINT screen);
    /// Presses the left button at `from`, moves to `to`, calls `held`, releases the button. Both
    /// points are client coordinates; `to` may lie outside of the window.
    bool Drag(HWND window, POINT from, POINT to, const std::function<void()>& held);
    /// The middle of the diary scroll bar's thumb, in the bar's client coordinates.
    POINT ThumbCentre() const;
    void Press(WORD key, bool control = false);
    void Type(const std::wstring& text);
    /// Clicks a dialog's button and waits until the dialog is destroyed.
    bool Leave(HWND dialog, int button);
    /// Sends a command to the main window and waits for its handler.
    void Send(UINT command);
    /// Posts a command to the main window: for commands that open a dialog.
    void Post(UINT command);
    /// Waits until all input and all posted messages so far have been handled and all windows have
    /// been painted. Precondition: the main window is complete and not minimised.
    bool Settle();

    // ---- Whole steps ----
    /// Waits for the sign-in dialog, types name and password, and clicks OK. A name that the field
    /// already shows is not typed again.
    bool EnterUser(const std::wstring& user, const std::wstring& password);
    /// Waits until the main window has both views, then puts a warning of the prediction away.
    bool WaitForViews();
    bool SignIn(const std::wstring& user, const std::wstring& password);
    bool StartAndSignIn(const std::wstring& user, const std::wstring& password);
    /// Closes the warning of the prediction, if there is one now, with the Return key.
    bool PutWarningAway();
    /// The text of the warning that the last `WaitForViews` or `PutWarningAway` closed; empty when
    /// there was none.
    const std::wstring& Warning() const { return warning; }
    /// Posts the Exit command; true when the process then ended with exit code 0.
    bool Exit();

    // ---- What it shows ----
    /// The diary's answer for the row at `index`, counted from the first row on the screen, with
    /// that many cells, [0, 5].
    Row AskRow(int index, int cells);
    /// State of the diary's scroll bar.
    SCROLLINFO Scroll() const;
    /// The first day of a view's calendar, and its cell.
    CalendarHit FirstCell(HWND calendar) const;
    /// The first day that the diary shows.
    Day FirstDay() const;
    /// Sends a message whose lParam is the address of a record. The record is copied into the
    /// process and back, so that the control can read it and fill it in. False when that fails.
    bool SendRecord(HWND window, UINT message, WPARAM wParam, void* record, std::size_t size,
                    LRESULT* result = nullptr) const;
    /// Calls a function of user32 inside the process; false when it did not return.
    bool Call(const char* function, const std::array<std::uint64_t, 4>& arguments,
              std::uint64_t& result) const;
    /// The client area of a window as it is on the screen, with whatever covers it.
    static Picture Look(HWND window);
    /// Saves a picture of the whole screen as <test>-<number>-<name>.bmp. Numbers count from 01.
    void Keep(const WCHAR* name);
    /// Reports a failure with what was waited for and with the dialog that is open, and keeps a
    /// picture. Always false.
    bool Fail(const std::wstring& what);
    /// The number of live drawing objects of the program; -1 when it does not answer.
    int LiveGdiObjects() const;

  private:
    /// Waits until a click at that place would reach the window. `screen` receives the place in
    /// screen coordinates.
    bool WaitUntilUncovered(HWND window, POINT client, POINT& screen);
    /// The visitor of this process, which enters it on first use.
    Visitor& Inside() const;

    const ProgramFolder& folder;
    PROCESS_INFORMATION process{};
    mutable std::unique_ptr<Visitor> visitor;
    HWND main = nullptr;
    std::wstring warning;
    int kept = 0;  // pictures so far
};

}  // namespace lunara::test
