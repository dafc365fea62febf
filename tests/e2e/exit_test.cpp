// Every way out saves the diary and the settings.

#include "tests/e2e/fixture.h"
#include "tests/e2e/menus.h"
#include "tests/e2e/steps.h"
#include "tests/e2e/wait.h"

namespace lunara::e2e {
namespace {

class Leaving : public EndToEnd {
  protected:
    /// A run with one note more; then `leave`; then what must be on disk.
    template <typename Leave>
    void Check(Leave&& leave) {
        WriteNumber(L"CurrentView", ViewDiary);
        Program program(folder);
        ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
        ASSERT_TRUE(WriteNote(program, TodaysRow, L"Kept"));
        ASSERT_TRUE(SwitchByButton(program, CommandShowPeriod));
        EXPECT_FALSE(FileExists(folder.UserFolder(L"Anna") + L"\\NotePages.dat"));

        leave(program);

        ASSERT_TRUE(program.WaitForEnd());
        EXPECT_EQ(Export(L"Anna"), CsvHeader + "2006-03-05,,,,,Kept\r\n");
        EXPECT_EQ(ReadNumber(L"CurrentView"), ViewDiary);
        EXPECT_EQ(ReadText(L"LastUser"), L"Anna");
        EXPECT_EQ(ReadNumber(L"DiaryView_ShowFlags"), 27u);
    }

    /// Where the window's frame answers that it is the close box.
    static bool ClickCloseBox(Program& program) {
        RECT frame{};
        ::GetWindowRect(program.Main(), &frame);
        const LONG y =
            frame.top + ::GetSystemMetrics(SM_CYSIZEFRAME) + ::GetSystemMetrics(SM_CYCAPTION) / 2;
        for (LONG x = frame.right - 1; x > frame.left; --x) {
            if (::SendMessageW(program.Main(), WM_NCHITTEST, 0, MAKELPARAM(x, y)) == HTCLOSE) {
                POINT client{x - 4, y};
                ::ScreenToClient(program.Main(), &client);
                return program.ClickAt(program.Main(), client);
            }
        }
        ADD_FAILURE() << "no close box";
        return false;
    }
};

TEST_F(Leaving, ByTheMenuSaves) {
    Check([](Program& program) {
        ASSERT_TRUE(ChooseFromMenu(program, CommandExit));
        ASSERT_TRUE(program.WaitForEnd());
        EXPECT_EQ(program.ExitCode(), 0u);
    });
}

TEST_F(Leaving, ByCtrlQSaves) {
    Check([](Program& program) {
        program.Press('Q', true);
        ASSERT_TRUE(program.WaitForEnd());
        EXPECT_EQ(program.ExitCode(), 0u);
    });
}

TEST_F(Leaving, ByTheCloseBoxSaves) {
    Check([](Program& program) {
        ASSERT_TRUE(ClickCloseBox(program));
        ASSERT_TRUE(program.WaitForEnd());
        EXPECT_EQ(program.ExitCode(), 0u);
    });
}

TEST_F(Leaving, ByTheEndOfTheSessionSaves) {
    Check([](Program& program) {
        DWORD_PTR answer = 0;
        ASSERT_NE(::SendMessageTimeoutW(program.Main(), WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL,
                                        PatienceMs, &answer),
                  0);
        EXPECT_NE(answer, 0u);
        ASSERT_NE(::SendMessageTimeoutW(program.Main(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL,
                                        PatienceMs, &answer),
                  0);
        // The system gives no more time than that.
        program.Kill();
    });
}

TEST_F(Leaving, SessionThatDoesNotEndAfterAllGoesOn) {
    WriteNumber(L"CurrentView", ViewDiary);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    ::SendMessageW(program.Main(), WM_QUERYENDSESSION, 0, 0);
    ::SendMessageW(program.Main(), WM_ENDSESSION, FALSE, 0);
    EXPECT_TRUE(program.Settle());
    EXPECT_TRUE(::IsWindowVisible(program.Main()));
    EXPECT_TRUE(program.Exit());
}

}  // namespace
}  // namespace lunara::e2e
