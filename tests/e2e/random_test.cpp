// Two thousand random taps, keys and commands.

#include <array>
#include <cwchar>
#include <random>

#include "tests/e2e/fixture.h"
#include "tests/e2e/wait.h"

namespace lunara::e2e {
namespace {

constexpr int Actions = 2000;
/// LUNARA_E2E_SEED chooses another run.
unsigned Seed() {
    std::array<WCHAR, 16> text{};
    const DWORD length =
        ::GetEnvironmentVariableW(L"LUNARA_E2E_SEED", text.data(), static_cast<DWORD>(text.size()));
    return length == 0 ? 20060305 : static_cast<unsigned>(std::wcstoul(text.data(), nullptr, 10));
}

class RandomUse : public EndToEnd {
  protected:
    void SetUp() override {
        EndToEnd::SetUp();
        MakeSampleDiary(L"Anna");
    }

    int Below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random); }

    void Tap(Program& program) {
        RECT client{};
        ::GetClientRect(program.Main(), &client);
        POINT point{Below(client.right), Below(client.bottom)};
        ::ClientToScreen(program.Main(), &point);
        program.ClickScreen(point);
    }

    void PressKey(Program& program) {
        // Everything but Alt, which leads to the system menu and so out of the program, and Ctrl+Q.
        static constexpr std::array<WORD, 26> Keys = {
            VK_UP,  VK_DOWN,      VK_LEFT,       VK_RIGHT,  VK_PRIOR, VK_NEXT, VK_HOME,
            VK_END, VK_TAB,       VK_RETURN,     VK_ESCAPE, VK_SPACE, VK_BACK, VK_DELETE,
            VK_F1,  'A',          'B',           'L',       'U',      'N',     '1',
            '9',    VK_OEM_MINUS, VK_OEM_PERIOD, VK_ADD,    VK_F5};
        program.Press(Keys[static_cast<std::size_t>(Below(static_cast<int>(Keys.size())))]);
    }

    void Command(Program& program) {
        static constexpr std::array<UINT, 14> Commands = {
            CommandAbout,          CommandViewDiary,     CommandViewGraph,
            CommandShowNotes,      CommandShowBleeding,  CommandShowPeriod,
            CommandShowOvulation,  CommandShowPregnancy, CommandShowTemperature,
            CommandChangePassword, CommandHelp,          CommandHistory,
            CommandBackup,         CommandRestore};
        // A disabled window has no menu to choose from.
        if (::IsWindowEnabled(program.Main()) != 0) {
            program.Post(
                Commands[static_cast<std::size_t>(Below(static_cast<int>(Commands.size())))]);
        }
    }

    void Scroll(Program& program) {
        static constexpr std::array<WPARAM, 5> Codes = {SB_LINEUP, SB_LINEDOWN, SB_PAGEUP,
                                                        SB_PAGEDOWN, SB_THUMBPOSITION};
        ::PostMessageW(program.Diary(), WM_VSCROLL,
                       Codes[static_cast<std::size_t>(Below(static_cast<int>(Codes.size())))], 0);
    }

    /// A restored diary asks for its password, as does the end after a backup. To cancel would end
    /// the program.
    static bool SignInAgain(Program& program) {
        return program.FindDialog(L"Login user") == nullptr ||
               (program.EnterUser(L"Anna", Password) && program.WaitForNoDialog(L"Login user") &&
                program.Settle());
    }

    /// Leaves menus and dialogs until nothing stands before the main window.
    static bool PutEverythingAway(Program& program) {
        for (int attempt = 0; attempt < 50; ++attempt) {
            if (!program.Settle() || !SignInAgain(program)) {
                return false;
            }
            const HWND dialog = program.FindAnyDialog();
            if (dialog == nullptr && ::IsWindowEnabled(program.Main()) != 0) {
                program.Press(VK_ESCAPE);  // a menu
                return program.Settle();
            }
            const HWND cancel = ::GetDlgItem(dialog, ControlCancel);
            ::PostMessageW(dialog, WM_COMMAND, cancel != nullptr ? ControlCancel : ControlOk, 0);
            WaitFor([&] { return ::IsWindow(dialog) == 0; }, 2000);
        }
        ADD_FAILURE() << "a dialog cannot be put away";
        return false;
    }

    std::mt19937 random{Seed()};
};

TEST_F(RandomUse, LeavesARunningProgramNoObjectsAndAGoodDiary) {
    Program program(folder);
    ASSERT_TRUE(program.Start());
    ASSERT_TRUE(program.SignIn(L"Anna", Password));
    const int objects = program.LiveGdiObjects();
    EXPECT_GE(objects, 0) << "the program does not tell its live drawing objects";
    for (int action = 0; action < Actions; ++action) {
        SCOPED_TRACE("action " + std::to_string(action));
        switch (Below(8)) {
            case 0:
            case 1:
            case 2:
                Tap(program);
                break;
            case 3:
            case 4:
            case 5:
                PressKey(program);
                break;
            case 6:
                Command(program);
                break;
            default:
                Scroll(program);
                break;
        }
        ASSERT_TRUE(program.Settle());
        ASSERT_TRUE(SignInAgain(program));
        // Otherwise most of the run is spent in the dialog that needs the right password.
        if (action % 25 == 24) {
            ASSERT_TRUE(PutEverythingAway(program));
        }
    }
    program.Keep(L"in-between");
    ASSERT_TRUE(PutEverythingAway(program));
    program.Send(CommandViewDiary);
    ASSERT_TRUE(program.PutWarningAway());
    program.Keep(L"afterwards");
    EXPECT_TRUE(program.IsRunning());
    EXPECT_TRUE(program.IsOnTop(program.Diary()));
    EXPECT_EQ(program.LiveGdiObjects(), objects);
    program.Post(CommandExit);
    ASSERT_TRUE(WaitFor(
        [&] { return !program.IsRunning() || program.FindDialog(L"Login user") != nullptr; }));
    if (program.IsRunning()) {
        ASSERT_TRUE(program.EnterUser(L"Anna", Password));
    }
    ASSERT_TRUE(program.WaitForEnd());
    EXPECT_EQ(program.ExitCode(), 0u);
    EXPECT_TRUE(Opens(L"Anna", Password));
}

}  // namespace
}  // namespace lunara::e2e
