#include "tests/e2e/random_user.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "tests/driver/input.h"
#include "tests/driver/menus.h"
#include "tests/driver/steps.h"
#include "tests/driver/wait.h"
#include "tests/e2e/backups.h"

namespace lunara::test {
namespace {

constexpr std::size_t KeptActions = 60;
constexpr std::array<const WCHAR*, 3> Passwords = {L"moonlight 4", L"neap tide", L"tide"};
constexpr WCHAR SignInTitle[] = L"Login user";
constexpr SIZE UsualSize{488, 667};
constexpr DWORD LostClickMs = 5000;  // after that a click is taken for lost

bool IsReadOnly(HWND edit) { return (::GetWindowLongPtrW(edit, GWL_STYLE) & ES_READONLY) != 0; }

}  // namespace

RandomUser::RandomUser(const ProgramFolder& programFolder, const std::wstring& diary, unsigned seed)
    : folder(programFolder), user(diary), random(seed) {}

std::string RandomUser::LastActions() const {
    std::string text;
    for (const std::string& action : log) {
        text += action + "\n";
    }
    return text;
}

void RandomUser::Log(const std::string& action) {
    const std::string line = std::to_string(actions) + " [" + lastSeen + "] " + action;
    if (log.empty() || log.back() != line) {
        log.push_back(line);
    }
    if (log.size() > KeptActions) {
        log.pop_front();
    }
}

POINT RandomUser::PointIn(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return {place.left + Below(std::max<int>(1, place.right - place.left)),
            place.top + Below(std::max<int>(1, place.bottom - place.top))};
}

// ---- Beginning and end ----

bool RandomUser::Begin() {
    program = std::make_unique<Program>(folder);
    Log("start");
    ++seen["start"];
    if (!program->Start() || program->WaitForDialog(SignInTitle) == nullptr ||
        !GiveRightPassword() || !program->WaitForViews()) {
        return false;
    }
    return CompareObjects();
}

bool RandomUser::CompareObjects() {
    for (const UINT view : {CommandViewGraph, CommandViewDiary}) {
        program->Send(view);
        if (!program->PutWarningAway()) {
            ADD_FAILURE() << "the program has gone, exit code " << program->ExitCode();
            return false;
        }
    }
    const int alive = program->LiveGdiObjects();
    if (objects < 0) {
        objects = alive;
    }
    EXPECT_GE(alive, 0) << "the program does not tell its live drawing objects";
    EXPECT_EQ(alive, objects) << "drawing objects";
    return alive >= 0 && alive == objects;
}

bool RandomUser::AfterTheEnd() {
    ++seen["end"];
    EXPECT_EQ(program->ExitCode(), 0u);
    const bool loads = Loads(folder.UserFolder(user));
    EXPECT_TRUE(loads)
        << "the diary does not load after the end:\n"
        << folder.RunCompanion(L"check \"" + folder.UserFolder(user) + L"\"", current).output;
    return loads && program->ExitCode() == 0;
}

bool RandomUser::Loads(const std::wstring& dataFolder) const {
    const auto loads = [&](const std::wstring& password) {
        return folder.RunCompanion(L"check \"" + dataFolder + L"\"", password).exitCode == 0;
    };
    return loads(current) || std::any_of(Passwords.begin(), Passwords.end(), loads);
}

bool RandomUser::End() {
    if (!PutEverythingAway() || !CompareObjects()) {
        return false;
    }
    program->Post(CommandExit);
    if (!WaitFor(
            [&] { return !program->IsRunning() || program->FindDialog(SignInTitle) != nullptr; })) {
        return false;
    }
    if (program->IsRunning() && !GiveRightPassword()) {
        return false;
    }
    return program->WaitForEnd() && AfterTheEnd();
}

bool RandomUser::Leave() {
    if (!PutEverythingAway() || !CompareObjects()) {
        return false;
    }
    const int way = Below(4);
    if (way == 0) {
        Log("leave by Alt+F4");
        PressWith({VK_MENU}, VK_F4);
    } else if (way == 1) {
        Log("leave by the close box");
        ::PostMessageW(program->Main(), WM_SYSCOMMAND, SC_CLOSE, 0);
    } else if (way == 2 && ThreadState().hwndFocus == program->Main()) {
        Log("leave by Ctrl+Q");  // the key goes to the window with the focus
        PressWith({VK_CONTROL}, 'Q');
    } else {
        Log("leave by the command");
        program->Post(CommandExit);
    }
    // The program ends or asks for the password. The next action answers the question.
    const bool left =
        WaitFor([&] { return !program->IsRunning() || program->FindAnyDialog() != nullptr; });
    EXPECT_TRUE(left) << "it does not end";
    return left;
}

// ---- Choices, by what is in front ----

void RandomUser::CountWhatIsSeen(HWND dialog) {
    std::string what;
    if (dialog == nullptr) {
        what = program->IsOnTop(program->Graph()) ? "graph" : "diary";
        if (!OpenMenus(*program).empty()) {
            what += " with menu";
            ++seen["menu"];
        }
    } else {
        std::array<WCHAR, 64> title{};
        ::InternalGetWindowText(dialog, title.data(), static_cast<int>(title.size()));
        what = ToUtf8(title.data());
        if (what == "Login user") {
            what += IsReadOnly(::GetDlgItem(dialog, ControlUserName)) ? " again" : " anew";
        } else if (what == "Warning" || what == "Message" || what == "Error") {
            what += ": " + ToUtf8(Program::BoxText(dialog)).substr(0, 25);
        }
    }
    ++seen[what];
    lastSeen = what;
}

bool RandomUser::Act() {
    ++actions;
    if (!program->IsRunning()) {
        return AfterTheEnd() && Begin();
    }
    const HWND dialog = program->FindAnyDialog();
    CountWhatIsSeen(dialog);
    bool done = true;
    if (dialog == nullptr) {
        done = ActInMain();
    } else if (IsTracking()) {
        ++seen["menu over a dialog"];
        const std::vector<HWND> menus = OpenMenus(*program);
        if (Below(2) == 0 && !menus.empty()) {
            Tap(AnyOf(menus));
        } else {
            Log("Escape");
            program->Press(VK_ESCAPE);
        }
    } else if (Program::TextOf(dialog) == SignInTitle) {
        done = ActInSignIn(dialog);
    } else {
        done = ActInDialog(dialog);
    }
    return done && Settle();
}

bool RandomUser::Settle() {
    // Two fences: the first may be passed by the paint that an opening dialog causes. The dialog
    // itself is complete after the second.
    for (int fence = 0; fence < 2; ++fence) {
        if (!IsComplete()) {
            // The program is ending; a box may still report a save that failed.
            return WaitFor(
                [&] { return !program->IsRunning() || program->FindAnyDialog() != nullptr; });
        }
        if (!BringBack() || (!program->Settle() && program->IsRunning())) {
            return false;
        }
    }
    return BringBack();
}

bool RandomUser::IsComplete() const {
    return program->IsRunning() && ::IsWindow(program->Main()) != 0;
}

bool RandomUser::BringBack() {
    const HWND main = program->Main();
    if (IsComplete() && ::IsIconic(main) != 0) {
        ++seen["minimised"];
        ::ShowWindowAsync(main, SW_RESTORE);  // works also while a dialog disables the window
        if (!WaitFor([&] { return ::IsIconic(main) == 0 || !IsComplete(); })) {
            ADD_FAILURE() << "it stays minimised";
            return false;
        }
    }
    RECT screen{};
    RECT place{};
    RECT common{};
    ::GetWindowRect(::GetDesktopWindow(), &screen);
    if (IsComplete() && ::GetWindowRect(main, &place) != 0 &&
        (::IntersectRect(&common, &screen, &place) == 0 || ::EqualRect(&common, &place) == 0)) {
        ++seen["dragged off the screen"];
        ::SetWindowPos(main, nullptr, 0, 0, UsualSize.cx, UsualSize.cy,
                       SWP_NOZORDER | SWP_NOACTIVATE);
    }
    return true;
}

GUITHREADINFO RandomUser::ThreadState() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    ::GetGUIThreadInfo(::GetWindowThreadProcessId(program->Main(), nullptr), &info);
    return info;
}

bool RandomUser::IsTracking() const {
    return (ThreadState().flags & (GUI_INMOVESIZE | GUI_INMENUMODE)) != 0;
}

bool RandomUser::ActInMain() {
    const HWND main = program->Main();
    const int choice = Below(1000);
    if (IsTracking() && OpenMenus(*program).empty()) {
        // Only keys end a move by the keyboard. A command would open a dialog that gets no clicks.
        ++seen["moved by the keyboard"];
        static constexpr std::array<WORD, 4> Keys = {VK_LEFT, VK_DOWN, VK_RETURN, VK_ESCAPE};
        program->Press(AnyOf(Keys));
        return true;
    }
    if (choice < 2) {
        return Leave();
    }
    const bool chooses = OpenMenus(*program).empty() ? choice >= 480 && choice < 680 : choice < 600;
    if (chooses) {
        ChooseAnyCommand();
    } else if (choice < 230) {
        Tap(main);
    } else if (choice < 400) {
        PressAnyKey();
    } else if (choice < 480) {
        PressAnyCombination();
    } else if (choice < 740) {
        OpenMenu();
    } else if (choice < 860) {
        DragInChart();
    } else if (choice < 900) {
        DragThumb();
    } else if (choice < 930) {
        DragAnywhere(main);
    } else {
        Wheel(main);
    }
    return true;
}

bool RandomUser::ActInDialog(HWND dialog) {
    const int choice = Below(100);
    // Random input would hardly ever fill these dialogs in so that they do their work.
    const std::wstring title = Program::TextOf(dialog);
    if (choice < 25 && title == L"Change password") {
        return ChangePassword(dialog);
    }
    if (choice < 20 && title == L"Backup") {
        return BackUp(dialog);
    }
    if (choice < 20 && title == L"Restore") {
        return Restore(dialog);
    }
    if (choice < 55) {
        TapAnyControl(dialog);
    } else if (choice < 78) {
        PressAnyKey();
    } else if (choice < 84) {
        PressAnyCombination();
    } else if (choice < 90) {
        Tap(program->Main());
    } else if (choice < 95) {
        Wheel(dialog);
    } else {
        DragAnywhere(dialog);
    }
    return true;
}

bool RandomUser::ActInSignIn(HWND dialog) {
    const bool again = IsReadOnly(::GetDlgItem(dialog, ControlUserName));
    const int choice = Below(100);
    if (choice < 40) {
        return GiveRightPassword();
    }
    if (choice < 55) {
        Log("wrong password");
        ++seen["wrong password"];
        return TryPassword(L"wrong" + std::to_wstring(Below(100))) == 0;
    }
    if (choice < 60) {
        Log("give the sign-in up");
        return program->Leave(dialog, ControlCancel);
    }
    if (choice < 70) {
        Log("short password");
        return EnterUser(user, L"a") && AnswerBox(*program, L"Warning").substr(0, 8) == L"Password";
    }
    if (choice < 75 && !again) {
        Log("no name");
        return EnterUser(L"", L"abcd") &&
               AnswerBox(*program, L"Warning").substr(0, 9) == L"User name";
    }
    PressHarmlessKey();
    return true;
}

bool RandomUser::EnterUser(const std::wstring& name, const std::wstring& password) {
    const HWND dialog = program->FindDialog(SignInTitle);
    const auto answered = [&] {
        return ::IsWindow(dialog) == 0 || program->FindDialog(L"Warning") != nullptr;
    };
    if (!program->EnterUser(name, password)) {
        return false;
    }
    if (!WaitFor(answered, LostClickMs)) {
        ++seen["click lost on the way"];
        program->Press(VK_RETURN);
    }
    const bool done = WaitFor(answered);
    EXPECT_TRUE(done) << "the sign-in does not answer";
    return done;
}

int RandomUser::TryPassword(const std::wstring& password) {
    const HWND dialog = program->FindDialog(SignInTitle);
    if (!EnterUser(user, password)) {
        return -1;
    }
    if (::IsWindow(dialog) == 0) {
        current = password;
        return 1;
    }
    const std::wstring said = AnswerBox(*program, L"Warning");
    EXPECT_EQ(said, L"User/Password invalid");
    return said == L"User/Password invalid" ? 0 : -1;
}

bool RandomUser::GiveRightPassword() {
    for (const WCHAR* password : Passwords) {
        Log("password " + ToUtf8(password));
        const int result = TryPassword(password);
        if (result != 0) {
            return result == 1;
        }
    }
    ADD_FAILURE() << "no password opens the diary";
    return false;
}

bool RandomUser::ChangePassword(HWND dialog) {
    const std::wstring next = AnyOf(Passwords);
    Log("change the password to " + ToUtf8(next));
    if (!TypeInto(*program, ::GetDlgItem(dialog, ControlOldPassword), current) ||
        !TypeInto(*program, ::GetDlgItem(dialog, ControlPassword), next) ||
        !TypeInto(*program, ::GetDlgItem(dialog, ControlConfirmation), next) ||
        !program->Leave(dialog, ControlOk)) {
        return false;
    }
    current = next;
    ++seen["password changed"];
    return true;
}

bool RandomUser::BackUp(HWND dialog) {
    static constexpr std::array<const WCHAR*, 6> Names = {L"a", L"b", L"c", L"d", L"e\\f", L"\\g"};
    const std::wstring name = AnyOf(Names);
    Log("back up as " + ToUtf8(name));
    return TypeInto(*program, ::GetDlgItem(dialog, BackupName), name) &&
           program->Leave(dialog, ControlOk);
}

bool RandomUser::Restore(HWND dialog) {
    Log("restore");
    program->Press(static_cast<WORD>('A' + Below(8)));
    if (!Settle()) {
        return false;
    }
    // While the list is open, a click beside it only closes the list.
    ::SendDlgItemMessageW(dialog, RestoreList, CB_SHOWDROPDOWN, FALSE, 0);
    if (!program->Leave(dialog, ControlOk)) {
        return false;
    }
    if (AnswerBox(*program, L"Warning", ControlYes) !=
        L"Restore from backup and loose current data?") {
        return false;
    }
    ++seen["restore"];
    return true;
}

bool RandomUser::PutEverythingAway() {
    constexpr int MostSteps = 60;
    for (int step = 0; step < MostSteps; ++step) {
        if (!program->IsRunning()) {
            return AfterTheEnd() && Begin();
        }
        if (!Settle()) {
            return false;
        }
        const HWND dialog = program->FindAnyDialog();
        if (dialog == nullptr) {
            Log("Escape");
            program->Press(VK_ESCAPE);  // ends a menu or a move by the keyboard
            if (!Settle()) {
                return false;
            }
            // The program may be ending just now: Close, chosen from a menu, saves first.
            if (program->IsRunning() && !IsTracking() && program->FindAnyDialog() == nullptr) {
                return true;
            }
            continue;
        }
        CountWhatIsSeen(dialog);
        if (IsTracking()) {
            program->Press(VK_ESCAPE);
            continue;
        }
        if (Program::TextOf(dialog) == SignInTitle) {
            if (!GiveRightPassword()) {
                return false;
            }
            continue;
        }
        int button = ControlOk;
        for (const int other : {ControlNo, ControlCancel}) {
            if (::GetDlgItem(dialog, other) != nullptr) {
                button = other;
            }
        }
        Log("put away");
        ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        WaitFor([&] { return ::IsWindow(dialog) == 0; }, 2000);
    }
    ADD_FAILURE() << "a dialog cannot be put away";
    return false;
}

}  // namespace lunara::test
