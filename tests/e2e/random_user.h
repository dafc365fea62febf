#pragma once

// Somebody who taps, types, drags and chooses without knowing what for, through every dialog and in
// and out of the program; knows only the passwords, and keeps count of what was on the screen.

#include <deque>
#include <map>
#include <memory>
#include <random>
#include <string>

#include "tests/e2e/driver.h"

namespace lunara::e2e {

class RandomUser {
  public:
    /// `diary` is a diary under the first of the passwords.
    RandomUser(const ProgramFolder& programFolder, const std::wstring& diary, unsigned seed);

    /// Starts the program and signs in.
    bool Begin();
    /// Does one thing, or the next step of what the program asks. False when it cannot go on.
    bool Act();
    /// Leaves dialogs and menus until nothing stands before the main window.
    bool PutEverythingAway();
    /// Ends the program by its command, after a look at what it has kept, and answers its questions
    /// so that everything is saved.
    bool End();

    /// How often each thing was on the screen or was done.
    const std::map<std::string, int>& Seen() const { return seen; }
    /// The last things done, one line each.
    std::string LastActions() const;
    /// Whether the companion reads the diary in that folder under one of the passwords.
    bool Loads(const std::wstring& dataFolder) const;
    /// The program that runs now; another one after every end.
    Program& TheProgram() { return *program; }

  private:
    int Below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random); }
    template <typename Table>
    const auto& AnyOf(const Table& table) {
        return table[static_cast<std::size_t>(Below(static_cast<int>(table.size())))];
    }
    POINT PointIn(HWND window);
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

    // ---- By what is in front ----
    bool ActInMain();
    bool ActInDialog(HWND dialog);
    bool ActInSignIn(HWND dialog);
    bool Settle();
    /// Restores the window when it was minimised and moves it back when it was dragged off the
    /// screen.
    bool BringBack();
    /// Whether it runs and has its main window.
    bool IsComplete() const;
    GUITHREADINFO ThreadState() const;
    /// Whether a menu or a move by the keyboard holds mouse and keyboard.
    bool IsTracking() const;
    bool GiveRightPassword();
    /// Fills the sign-in in and waits until it closed or said something.
    bool EnterUser(const std::wstring& name, const std::wstring& password);
    /// 1 when it opened, 0 when it was refused, -1 when neither came about.
    int TryPassword(const std::wstring& password);

    void CountWhatIsSeen(HWND dialog);
    bool CompareObjects();
    bool AfterTheEnd();

    const ProgramFolder& folder;
    std::wstring user;
    std::wstring current;  // the password that the program knows
    std::mt19937 random;
    std::unique_ptr<Program> program;
    std::map<std::string, int> seen;
    std::deque<std::string> log;
    std::string lastSeen;
    int actions = 0;
    int objects = -1;  // alive in a program at rest; -1 until it was counted first
};

}  // namespace lunara::e2e
