// Visits every screen of the program with the sample diary and keeps one picture of each: for
// readers without a display, and for judging the screens at several sizes. Run with
// scripts/tour.sh.
//
// Usage: lunara_tour WIDTHxHEIGHT...
// Each argument is a client size of the main window in pixels and makes one round through all
// screens. The exit code is 0 when every round came to its end, 1 when one did not, 2 for wrong
// usage or a date that cannot be set.

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "tests/driver/failure.h"
#include "tests/driver/machine.h"
#include "tests/driver/menus.h"
#include "tests/driver/program.h"
#include "tests/driver/steps.h"
#include "tests/driver/wait.h"

namespace lunara::test {
namespace {

constexpr WCHAR User[] = L"Sample";
constexpr long LargestSidePx = 9999;

/// "480x640"; nothing when the text has another form or a side is not in [1, LargestSidePx].
std::optional<SIZE> ParseSize(const char* text) {
    char* end = nullptr;
    const long width = std::strtol(text, &end, 10);
    if (*end != 'x') {
        return std::nullopt;
    }
    const long height = std::strtol(end + 1, &end, 10);
    if (*end != '\0' || width < 1 || width > LargestSidePx || height < 1 ||
        height > LargestSidePx) {
        return std::nullopt;
    }
    return SIZE{width, height};
}

/// One round through all screens at one size.
class Tour {
  public:
    explicit Tour(SIZE clientSize)
        : size(clientSize),
          folder(std::to_wstring(clientSize.cx) + L"x" + std::to_wstring(clientSize.cy)) {}

    /// False when a screen did not come; the reason has been reported.
    bool Run() {
        return Prepare() && SignIn() && SeeNotes() && SeeGraph() && SeeDialogs() && SeeMenu() &&
               (program.Exit() || program.Fail(L"the program does not end with exit code 0"));
    }

  private:
    bool Prepare() {
        ForgetSettings();
        if (!folder.MakeSampleDiary(folder.UserFolder(User), L"", Today)) {
            return false;
        }
        WriteNumber(L"CurrentView", ViewDiary);
        WriteText(L"LastUser", User);
        return program.Start();
    }

    bool SignIn() {
        const HWND dialog = program.WaitForDialog(L"Login user");
        if (dialog == nullptr) {
            return false;
        }
        Resize();
        Keep(L"sign-in");
        ::PostMessageW(dialog, WM_COMMAND, ControlOk, 0);
        if (!program.WaitForViews()) {
            return false;
        }
        Keep(L"diary");
        return true;
    }

    bool SeeNotes() {
        const HWND notes = OpenNote(program, TodaysRow);
        if (notes == nullptr) {
            return false;
        }
        Keep(L"notes");
        return program.Leave(notes, ControlCancel);
    }

    bool SeeGraph() {
        program.Send(CommandViewGraph);
        program.Send(CommandShowTemperature);
        Keep(L"graph-temperature-fahrenheit");
        ::SendMessageW(program.Graph(), WM_COMMAND, MAKEWPARAM(GraphCelsius, BN_CLICKED),
                       reinterpret_cast<LPARAM>(::GetDlgItem(program.Graph(), GraphCelsius)));
        Keep(L"graph-temperature-celsius");
        program.Send(CommandShowBleeding);
        Keep(L"graph-bleeding");
        program.Send(CommandViewDiary);
        return true;
    }

    bool SeeDialogs() {
        if (!See(CommandHistory, L"Menstrual Period History", L"history") ||
            !See(CommandBackup, L"Backup", L"backup", ControlOk)) {
            return false;
        }
        const HWND done = program.WaitForDialog(L"Message");
        return done != nullptr && program.Leave(done, ControlOk) &&
               See(CommandRestore, L"Restore", L"restore") &&
               See(CommandChangePassword, L"Login user", L"password-asked-again") &&
               See(CommandAbout, L"About Lunara", L"about", ControlOk);
    }

    bool SeeMenu() {
        if (!ClickButton(program, CommandTools)) {
            return false;
        }
        if (!WaitFor([&] { return !OpenMenus(program).empty(); })) {
            return program.Fail(L"the menu does not open");
        }
        Keep(L"menu");
        program.Press(VK_ESCAPE);
        program.Press(VK_ESCAPE);
        return true;
    }

    /// Opens a dialog by its command, keeps its picture and closes it with the button.
    bool See(UINT command, const WCHAR* title, const WCHAR* name, int button = ControlCancel) {
        program.Post(command);
        const HWND dialog = program.WaitForDialog(title);
        if (dialog == nullptr) {
            return false;
        }
        Keep(name);
        return program.Leave(dialog, button);
    }

    void Keep(const WCHAR* name) { KeepWhenStill(program, name); }

    /// Gives the main window's client area the size of this round.
    void Resize() const {
        const HWND main = program.FindMain();
        RECT frame{};
        RECT client{};
        ::GetWindowRect(main, &frame);
        ::GetClientRect(main, &client);
        ::SetWindowPos(main, nullptr, 0, 0, frame.right - frame.left - client.right + size.cx,
                       frame.bottom - frame.top - client.bottom + size.cy,
                       SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    }

    SIZE size;
    ProgramFolder folder;
    Program program{folder};
};

int RunTour(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: lunara_tour WIDTHxHEIGHT...\n", stderr);
        return 2;
    }
    // Without control over the date the pictures would differ from day to day.
    if (!SetToday(Today)) {
        std::fputs("lunara_tour: the date cannot be set; run it with scripts/tour.sh\n", stderr);
        return 2;
    }
    for (int i = 1; i < argc; ++i) {
        const std::optional<SIZE> size = ParseSize(argv[i]);
        if (!size) {
            std::fprintf(stderr, "lunara_tour: not a size: %s\n", argv[i]);
            return 2;
        }
        // A round that fails has reported why; the other rounds still run.
        if (!Tour(*size).Run()) {
            std::fprintf(stderr, "lunara_tour: the round at %s did not come to its end\n", argv[i]);
        }
    }
    return FailureCount() == 0 ? 0 : 1;
}

}  // namespace
}  // namespace lunara::test

int main(int argc, char** argv) { return lunara::test::RunTour(argc, argv); }
