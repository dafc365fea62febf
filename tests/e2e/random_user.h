#pragma once

// A monkey tester: taps, types, drags and chooses at random through every dialog and in and out of
// the program. It knows the passwords and nothing else, and counts what was on the screen. Where
// something is wrong the current test fails.

#include <deque>
#include <map>
#include <memory>
#include <random>
#include <string>

#include "tests/driver/program.h"

namespace lunara::test {

class RandomUser {
  public:
    /// `diary` names a user whose diary exists under the first of the passwords. The same seed
    /// gives the same choices, though not the same run: the timing of the program differs.
    RandomUser(const ProgramFolder& programFolder, const std::wstring& diary, unsigned seed);

    /// Starts the program and signs in; false when that fails.
    bool Begin();
    /// Does one random action, suited to what is in front, and waits until it has been handled.
    /// Starts the program again when it has ended. False when the run cannot go on.
    bool Act();
    /// Closes dialogs and menus until the main window is in front and idle.
    bool PutEverythingAway();
    /// Ends the program by its command, after a check for leaked drawing objects, and answers its
    /// question for the password, so that everything is saved.
    bool End();

    /// How often each screen was in front and each notable action was done.
    const std::map<std::string, int>& Seen() const { return seen; }
    /// The last actions, one line each, the oldest first.
    std::string LastActions() const;
    /// Whether the companion can read the diary in that folder under one of the passwords.
    bool Loads(const std::wstring& dataFolder) const;
    /// The process of now; a reference is valid until the next `Begin` or `Act`.
    Program& TheProgram() { return *program; }

  private:
    /// A random number in [0, limit).
    int Below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random); }
    template <typename Table>
    const auto& AnyOf(const Table& table) {
        return table[static_cast<std::size_t>(Below(static_cast<int>(table.size())))];
    }
    /// A random point of the window, in screen coordinates.
    POINT PointIn(HWND window);
    /// Appends to the last actions; a repetition of the line before is left out.
    void Log(const std::string& action);

    // ---- Single actions ----
    void Tap(HWND window);
    void PressAnyKey();
    void PressAnyCombination();
    void PressHarmlessKey();
    void ChooseAnyCommand();
    void OpenMenu();
    POINT PointOnCurve(HWND chart);
    void DragInChart();
    void DragThumb();
    void DragAnywhere(HWND window);
    void Wheel(HWND window);
    void TapAnyControl(HWND dialog);
    bool ChangePassword(HWND dialog);
    bool BackUp(HWND dialog);
    bool Restore(HWND dialog);
    bool Leave();

    // ---- Choices, by what is in front ----
    bool ActInMain();
    bool ActInDialog(HWND dialog);
    bool ActInSignIn(HWND dialog);
    /// Waits until the action has been handled and the dialog it opened, if any, is there.
    bool Settle();
    /// Restores the main window when it is minimised, and moves it back when a part of it
    /// is off the screen.
    bool BringBack();
    /// Whether the process runs and its main window exists.
    bool IsComplete() const;
    GUITHREADINFO ThreadState() const;
    /// Whether a modal loop of the system has captured the input: a menu, or moving and sizing by
    /// keys.
    bool IsTracking() const;
    /// Tries the passwords one after the other until one opens the diary.
    bool GiveRightPassword();
    /// Fills the sign-in in, clicks OK and waits until the dialog closes or shows a warning.
    bool EnterUser(const std::wstring& name, const std::wstring& password);
    /// Enters the user's name and `password` in the sign-in. Returns 1 when they opened the diary,
    /// 0 when they were refused, -1 when neither happened in time.
    int TryPassword(const std::wstring& password);

    /// Counts the screen in front. `dialog` is the dialog there; null when there is none.
    void CountWhatIsSeen(HWND dialog);
    /// Shows both views, then compares the live drawing objects with those after the first start.
    bool CompareObjects();
    /// Checks the exit code and that the diary can be read.
    bool AfterTheEnd();

    const ProgramFolder& folder;
    std::wstring user;
    std::wstring current;  // the password of the diary in the program
    std::mt19937 random;
    std::unique_ptr<Program> program;
    std::map<std::string, int> seen;
    std::deque<std::string> log;  // the newest at the back
    std::string lastSeen;         // the screen before the last action
    int actions = 0;
    int objects = -1;  // live drawing objects of an idle program; -1 until first counted
};

}  // namespace lunara::test
