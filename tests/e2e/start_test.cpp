// Starting the program: for the first time, again, and while it is already running.

#include "tests/driver/wait.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

class Start : public EndToEnd {};

/// A window of this process, which is not the program's, in front of all others.
class OtherWindow {
  public:
    OtherWindow()
        : window(::CreateWindowExW(0, L"static", L"Other", WS_POPUP | WS_VISIBLE, 600, 300, 200,
                                   200, nullptr, nullptr, nullptr, nullptr)) {
        ::SetForegroundWindow(window);
    }
    OtherWindow(const OtherWindow&) = delete;
    OtherWindow& operator=(const OtherWindow&) = delete;
    ~OtherWindow() { ::DestroyWindow(window); }

    /// Waits until `wanted` is in the foreground. Handles this process's own messages meanwhile,
    /// without which the foreground could not change.
    static bool WaitForFront(HWND wanted) {
        return WaitFor([&] {
            MSG message{};
            while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
                ::DispatchMessageW(&message);
            }
            return ::GetForegroundWindow() == wanted;
        });
    }
    HWND Handle() const { return window; }

  private:
    HWND window;
};

TEST_F(Start, FirstStartWithoutSettingsShowsTheGraph) {
    Program program(folder);
    ASSERT_TRUE(program.Start());
    ASSERT_TRUE(program.EnterUser(L"Anna", L""));
    ASSERT_TRUE(program.WaitForViews());
    program.Keep(L"first-start");
    EXPECT_TRUE(program.IsOnTop(program.Graph()));
    EXPECT_EQ(program.Warning(), L"");
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(ReadNumber(L"CurrentView"), ViewGraph);
    EXPECT_EQ(ReadText(L"LastUser"), L"Anna");
    EXPECT_EQ(ReadNumber(L"DiaryView_ShowFlags"), 31u);
}

TEST_F(Start, KeyWithoutValuesShowsTheGraph) {
    MakeEmptySettings();
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", L""));
    EXPECT_TRUE(program.IsOnTop(program.Graph()));
    EXPECT_TRUE(program.Exit());
}

TEST_F(Start, NextStartKnowsUserAndView) {
    WriteText(L"LastUser", L"Anna");
    WriteNumber(L"CurrentView", ViewDiary);
    Program program(folder);
    ASSERT_TRUE(program.Start());
    const HWND dialog = program.WaitForDialog(L"Login user");
    ASSERT_NE(dialog, nullptr);
    program.Keep(L"sign-in");
    EXPECT_EQ(Program::TextOf(::GetDlgItem(dialog, ControlUserName)), L"Anna");
    ASSERT_TRUE(program.SignIn(L"Anna", L""));
    program.Keep(L"diary");
    EXPECT_TRUE(program.IsOnTop(program.Diary()));
    EXPECT_EQ(program.Warning(), L"No statistical data. ");
    EXPECT_TRUE(program.Exit());
}

TEST_F(Start, LongLastUserIsCutToWhatTheFieldHolds) {
    WriteText(L"LastUser", L"abcdefghijklmnopqrstuvwxyz0123456789");
    Program program(folder);
    ASSERT_TRUE(program.Start());
    const HWND dialog = program.WaitForDialog(L"Login user");
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(Program::TextOf(::GetDlgItem(dialog, ControlUserName)),
              L"abcdefghijklmnopqrstuvwxyz01234");
}

TEST_F(Start, StrayViewShowsTheGraphAndIsKept) {
    WriteNumber(L"CurrentView", 5);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", L""));
    EXPECT_TRUE(program.IsOnTop(program.Graph()));
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(ReadNumber(L"CurrentView"), 5u);
}

TEST_F(Start, SettingsOfTheWrongTypeCountAsMissing) {
    WriteText(L"CurrentView", L"3000");
    WriteText(L"DiaryView_ShowFlags", L"1");
    WriteNumber(L"LastUser", 77);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", L""));
    EXPECT_TRUE(program.IsOnTop(program.Graph()));
    ASSERT_TRUE(program.Exit());
    EXPECT_EQ(ReadNumber(L"CurrentView"), ViewGraph);
    EXPECT_EQ(ReadNumber(L"DiaryView_ShowFlags"), 31u);
    EXPECT_EQ(ReadText(L"LastUser"), L"Anna");
}

TEST_F(Start, SecondStartBringsTheFirstForward) {
    WriteNumber(L"CurrentView", ViewDiary);
    Program first(folder);
    ASSERT_TRUE(first.StartAndSignIn(L"Anna", L""));
    ::PostMessageW(first.Main(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    ASSERT_TRUE(WaitFor([&] { return ::IsIconic(first.Main()) != 0; }));
    const OtherWindow other;
    ASSERT_TRUE(OtherWindow::WaitForFront(other.Handle()));

    Program second(folder);
    ASSERT_TRUE(second.Start());
    EXPECT_TRUE(OtherWindow::WaitForFront(first.Main()));
    EXPECT_FALSE(::IsIconic(first.Main()));
    ASSERT_TRUE(second.WaitForEnd());
    EXPECT_EQ(second.ExitCode(), 0u);
    first.Keep(L"brought-forward");
    EXPECT_TRUE(first.Exit());
}

TEST_F(Start, SecondStartDuringTheSignInBringsTheDialogForward) {
    Program first(folder);
    ASSERT_TRUE(first.Start());
    const HWND dialog = first.WaitForDialog(L"Login user");
    ASSERT_NE(dialog, nullptr);
    {
        const OtherWindow other;
        ASSERT_TRUE(OtherWindow::WaitForFront(other.Handle()));
        Program second(folder);
        ASSERT_TRUE(second.Start());
        EXPECT_TRUE(OtherWindow::WaitForFront(dialog));
        ASSERT_TRUE(second.WaitForEnd());
        EXPECT_EQ(second.ExitCode(), 0u);
    }
    ASSERT_TRUE(first.SignIn(L"Anna", L""));
    EXPECT_TRUE(first.Exit());
}

}  // namespace
}  // namespace lunara::test
