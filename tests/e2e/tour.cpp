// The tour of all screens with the sample diary: one picture each, for people who have no display
// at hand and for judging the screens at several sizes. Run with scripts/tour.sh.

#include <array>

#include "tests/e2e/fixture.h"
#include "tests/e2e/menus.h"
#include "tests/e2e/steps.h"
#include "tests/e2e/wait.h"

namespace lunara::e2e {
namespace {

struct ClientSize {
    int width;
    int height;
};

class Tour : public EndToEnd, public ::testing::WithParamInterface<ClientSize> {
  protected:
    static constexpr WCHAR User[] = L"Sample";

    void SetUp() override {
        EndToEnd::SetUp();
        MakeSampleDiary(User, L"");
        WriteText(L"LastUser", User);
    }

    /// The main window's client area becomes what the parameter says.
    void Resize() {
        const HWND main = program.FindMain();
        RECT frame{};
        RECT client{};
        ::GetWindowRect(main, &frame);
        ::GetClientRect(main, &client);
        ::SetWindowPos(main, nullptr, 0, 0,
                       frame.right - frame.left - client.right + GetParam().width,
                       frame.bottom - frame.top - client.bottom + GetParam().height,
                       SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    }

    /// Opens a dialog by its command, looks at it and closes it again.
    void Visit(UINT command, const WCHAR* title, const WCHAR* name, int button = ControlCancel) {
        program.Post(command);
        const HWND dialog = program.WaitForDialog(title);
        ASSERT_NE(dialog, nullptr) << ToUtf8(title);
        Look(name);
        ASSERT_TRUE(program.Leave(dialog, button));
    }

    void Look(const WCHAR* name) { KeepWhenStill(program, name); }

    Program program{folder};
};

TEST_P(Tour, EveryScreen) {
    ASSERT_TRUE(program.Start());
    const HWND signIn = program.WaitForDialog(L"Login user");
    ASSERT_NE(signIn, nullptr);
    Resize();
    Look(L"sign-in");
    ::PostMessageW(signIn, WM_COMMAND, ControlOk, 0);
    ASSERT_TRUE(program.WaitForViews());
    Look(L"diary");

    const HWND notes = OpenNote(program, TodaysRow);
    ASSERT_NE(notes, nullptr);
    Look(L"notes");
    ASSERT_TRUE(program.Leave(notes, ControlCancel));

    program.Send(CommandViewGraph);
    program.Send(CommandShowTemperature);
    Look(L"graph-temperature-fahrenheit");
    ::SendMessageW(program.Graph(), WM_COMMAND, MAKEWPARAM(GraphCelsius, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(program.Graph(), GraphCelsius)));
    Look(L"graph-temperature-celsius");
    program.Send(CommandShowBleeding);
    Look(L"graph-bleeding");
    program.Send(CommandViewDiary);

    Visit(CommandHistory, L"Menstrual Period History", L"history");
    Visit(CommandBackup, L"Backup", L"backup", ControlOk);
    const HWND done = program.WaitForDialog(L"Message");
    ASSERT_NE(done, nullptr);
    ASSERT_TRUE(program.Leave(done, ControlOk));
    Visit(CommandRestore, L"Restore", L"restore");
    Visit(CommandChangePassword, L"Login user", L"password-asked-again");
    Visit(CommandAbout, L"About Lunara", L"about", ControlOk);

    ClickButton(program, CommandTools);
    ASSERT_TRUE(WaitFor([&] { return !OpenMenus(program).empty(); }));
    Look(L"menu");
    program.Press(VK_ESCAPE);
    program.Press(VK_ESCAPE);
    EXPECT_TRUE(program.Exit());
}

INSTANTIATE_TEST_SUITE_P(Sizes, Tour,
                         ::testing::Values(ClientSize{480, 640}, ClientSize{240, 320},
                                           ClientSize{720, 960}),
                         [](const ::testing::TestParamInfo<ClientSize>& size) {
                             return std::to_string(size.param.width) + "x" +
                                    std::to_string(size.param.height);
                         });

}  // namespace
}  // namespace lunara::e2e
