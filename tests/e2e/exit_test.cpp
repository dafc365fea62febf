// Every way to end the program saves the diary and the settings.

#include "tests/driver/menus.h"
#include "tests/driver/steps.h"
#include "tests/driver/wait.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

class Exit : public EndToEnd {
  protected:
    /// Adds a note and hides an item, ends the program by `leave`, and checks what is on disk.
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

    /// Clicks the close box, found by the frame's own hit test.
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

TEST_F(Exit, ByTheMenuSaves) {
    Check([](Program& program) {
        ASSERT_TRUE(ChooseFromMenu(program, CommandExit));
        ASSERT_TRUE(program.WaitForEnd());
        EXPECT_EQ(program.ExitCode(), 0u);
    });
}

TEST_F(Exit, ByCtrlQSaves) {
    Check([](Program& program) {
        program.Press('Q', true);
        ASSERT_TRUE(program.WaitForEnd());
        EXPECT_EQ(program.ExitCode(), 0u);
    });
}

TEST_F(Exit, ByTheCloseBoxSaves) {
    Check([](Program& program) {
        ASSERT_TRUE(ClickCloseBox(program));
        ASSERT_TRUE(program.WaitForEnd());
        EXPECT_EQ(program.ExitCode(), 0u);
    });
}

TEST_F(Exit, ByTheEndOfTheSessionSaves) {
    Check([](Program& program) {
        DWORD_PTR answer = 0;
        ASSERT_NE(::SendMessageTimeoutW(program.Main(), WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL,
                                        PatienceMs, &answer),
                  0);
        EXPECT_NE(answer, 0u);
        ASSERT_NE(::SendMessageTimeoutW(program.Main(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL,
                                        PatienceMs, &answer),
                  0);
        // The system gives a program no more time after WM_ENDSESSION.
        program.Kill();
    });
}

TEST_F(Exit, DoesNotHappenWhenTheEndOfTheSessionIsCancelled) {
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
}  // namespace lunara::test
