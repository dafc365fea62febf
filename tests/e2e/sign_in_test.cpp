// Signing in: new users, right and wrong passwords, changed passwords, files that cannot be read.

#include "tests/driver/menus.h"
#include "tests/driver/steps.h"
#include "tests/driver/wait.h"
#include "tests/driver/window_search.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

class SignIn : public EndToEnd {
  protected:
    /// Waits for a warning and closes it with the Return key. Its text; empty when none comes.
    static std::wstring Dismiss(Program& program) {
        const HWND box = program.WaitForDialog(L"Warning");
        if (box == nullptr) {
            return L"";
        }
        std::wstring text = Program::BoxText(box);
        program.Press(VK_RETURN);
        program.WaitForNoDialog(L"Warning");
        return text;
    }

    /// Enters these, expects the warning, and then the sign-in with the name kept and the focus in
    /// the password field.
    static void ExpectRefusal(Program& program, const std::wstring& user,
                              const std::wstring& password, const WCHAR* message) {
        ASSERT_TRUE(program.EnterUser(user, password));
        EXPECT_EQ(Dismiss(program), message);
        const HWND dialog = program.FindDialog(L"Login user");
        ASSERT_NE(dialog, nullptr);
        const HWND field = ::GetDlgItem(dialog, ControlPassword);
        EXPECT_TRUE(WaitFor([field] { return HasFocus(field); }));
        EXPECT_EQ(Program::TextOf(::GetDlgItem(dialog, ControlUserName)), user);
    }

    static LRESULT PasswordLength(const Program& program) {
        return ::SendDlgItemMessageW(program.FindDialog(L"Login user"), ControlPassword,
                                     WM_GETTEXTLENGTH, 0, 0);
    }

    std::wstring FileOf(const std::wstring& user, const WCHAR* name) {
        return folder.UserFolder(user) + L"\\" + name;
    }
};

TEST_F(SignIn, NewUserStartsWithAnEmptyDiary) {
    WriteNumber(L"CurrentView", ViewDiary);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Berta", L"pass"));
    EXPECT_EQ(program.Warning(), L"No statistical data. ");
    program.Keep(L"empty-diary");
    for (int row = 0; row < 20; ++row) {
        EXPECT_EQ(program.AskRow(row, 5).text, L"") << "row " << row;
    }
    ASSERT_TRUE(program.Exit());
    EXPECT_TRUE(FileExists(folder.UserFolder(L"Berta")));
    EXPECT_FALSE(FileExists(folder.UserFolder(L"Berta") + L"\\Bleeding.dat"));
}

TEST_F(SignIn, CancelEndsTheProgramAndWritesNothing) {
    Program program(folder);
    ASSERT_TRUE(program.Start());
    const HWND dialog = program.WaitForDialog(L"Login user");
    ASSERT_TRUE(program.Click(::GetDlgItem(dialog, ControlCancel)));
    ASSERT_TRUE(program.WaitForEnd());
    EXPECT_EQ(program.ExitCode(), 0u);
    EXPECT_EQ(ReadText(L"LastUser"), std::nullopt);
    EXPECT_EQ(ReadNumber(L"CurrentView"), std::nullopt);
}

TEST_F(SignIn, EmptyNameIsRefused) {
    Program program(folder);
    ASSERT_TRUE(program.Start());
    ASSERT_NO_FATAL_FAILURE(
        ExpectRefusal(program, L"", L"password", L"User name should not be empty"));
}

TEST_F(SignIn, PasswordsOfOneToThreeCharactersAreRefused) {
    Program program(folder);
    ASSERT_TRUE(program.Start());
    for (const WCHAR* password : {L"a", L"ab", L"abc"}) {
        SCOPED_TRACE(ToUtf8(password));
        ASSERT_NO_FATAL_FAILURE(ExpectRefusal(program, L"Berta", password,
                                              L"Password should be at least 4 long if specified!"));
    }
    EXPECT_TRUE(program.SignIn(L"Berta", L"abcd"));
    EXPECT_TRUE(program.Exit());
}

TEST_F(SignIn, WrongPasswordIsRefusedThenTheRightOneOpens) {
    MakeSampleDiary(L"Anna");
    const std::string before = FilesOf(L"Anna");
    Program program(folder);
    ASSERT_TRUE(program.Start());
    ASSERT_NO_FATAL_FAILURE(
        ExpectRefusal(program, L"Anna", L"Moonlight 4", L"User/Password invalid"));
    EXPECT_EQ(PasswordLength(program), 0);
    program.Keep(L"refused");
    EXPECT_TRUE(FilesOf(L"Anna") == before);
    ASSERT_TRUE(program.SignIn(L"Anna", Password));
    EXPECT_TRUE(program.Exit());
    EXPECT_TRUE(FilesOf(L"Anna") == before);
}

TEST_F(SignIn, UnreadableFilesKeepTheSignInOpenAndAreLeftAlone) {
    struct Case {
        const char* label;
        const WCHAR* file;
        std::string (*damage)(const std::string& good);
        const WCHAR* message;
    };
    const std::array<Case, 5> cases = {{
        {"foreign", L"Bleeding.dat",
         [](const std::string&) { return std::string("This is no diary at all."); },
         L"Not a valid Lunara data file"},
        {"too new", L"NotePages.dat",
         [](const std::string& good) { return "LU\1\1" + good.substr(4); },
         L"Data file requires new version of Lunara"},
        {"much too new", L"Temperature.dat",
         [](const std::string& good) { return std::string("LU\2\0", 4) + good.substr(4); },
         L"Data file requires new version of Lunara"},
        {"short header", L"Temperature.dat", [](const std::string&) { return std::string("LU"); },
         L"Data file is corupted or wrong type"},
        {"cut record", L"Notes.dat",
         [](const std::string& good) { return good.substr(0, good.size() - 3); },
         L"Data file is corupted or wrong type"},
    }};
    MakeSampleDiary(L"Anna");
    Program program(folder);
    ASSERT_TRUE(program.Start());
    for (const Case& each : cases) {
        SCOPED_TRACE(each.label);
        const std::wstring path = FileOf(L"Anna", each.file);
        const std::string good = ReadFile(path);
        ASSERT_GT(good.size(), 8u);
        ASSERT_TRUE(WriteFile(path, each.damage(good)));
        const std::string damaged = FilesOf(L"Anna");
        ASSERT_NO_FATAL_FAILURE(ExpectRefusal(program, L"Anna", Password, each.message));
        EXPECT_TRUE(FilesOf(L"Anna") == damaged);
        ASSERT_TRUE(WriteFile(path, good));
    }
    ASSERT_TRUE(program.SignIn(L"Anna", Password));
    EXPECT_TRUE(program.Exit());
}

TEST_F(SignIn, FileInUseKeepsTheSignInOpenSoThatNothingIsSavedOverIt) {
    MakeSampleDiary(L"Anna");
    const std::string before = FilesOf(L"Anna");
    Program program(folder);
    ASSERT_TRUE(program.Start());
    for (const WCHAR* name :
         {L"Temperature.dat", L"Bleeding.dat", L"Notes.dat", L"NotePages.dat"}) {
        SCOPED_TRACE(ToUtf8(name));
        const HeldFile held(FileOf(L"Anna", name));
        ASSERT_TRUE(held.IsHeld());
        ASSERT_NO_FATAL_FAILURE(
            ExpectRefusal(program, L"Anna", Password, L"Data file is corupted or wrong type"));
    }
    ASSERT_TRUE(program.SignIn(L"Anna", Password));
    EXPECT_TRUE(program.Exit());
    EXPECT_TRUE(FilesOf(L"Anna") == before);
}

TEST_F(SignIn, ChangedPasswordOpensTheDiaryAndTheOldOneDoesNot) {
    const WCHAR newPassword[] = L"neap tide";
    MakeSampleDiary(L"Anna");
    const std::string records = Export(L"Anna");
    {
        Program program(folder);
        ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
        ASSERT_TRUE(ChooseFromMenu(program, CommandChangePassword));
        const HWND dialog = program.WaitForDialog(L"Change password");
        ASSERT_NE(dialog, nullptr);
        const auto fill = [&](int control, const std::wstring& text) {
            return TypeInto(program, ::GetDlgItem(dialog, control), text);
        };
        ASSERT_TRUE(fill(ControlOldPassword, L"not this"));
        ASSERT_TRUE(fill(ControlPassword, newPassword));
        ASSERT_TRUE(fill(ControlConfirmation, newPassword));
        program.Keep(L"change-password");
        ASSERT_TRUE(program.Click(::GetDlgItem(dialog, ControlOk)));
        EXPECT_EQ(Dismiss(program), L"Old password does not match!");
        ASSERT_TRUE(fill(ControlOldPassword, Password));
        ASSERT_TRUE(program.Leave(dialog, ControlOk));
        ASSERT_TRUE(program.Settle());
        EXPECT_TRUE(Opens(L"Anna", Password)) << "nothing is written before the end";
        ASSERT_TRUE(program.Exit());
    }
    EXPECT_TRUE(Opens(L"Anna", newPassword));
    EXPECT_FALSE(Opens(L"Anna", Password));
    EXPECT_TRUE(Export(L"Anna", newPassword) == records);

    Program again(folder);
    ASSERT_TRUE(again.Start());
    ASSERT_NO_FATAL_FAILURE(ExpectRefusal(again, L"Anna", Password, L"User/Password invalid"));
    ASSERT_TRUE(again.SignIn(L"Anna", newPassword));
    again.Keep(L"new-password");
    EXPECT_TRUE(again.Exit());
    EXPECT_TRUE(Export(L"Anna", newPassword) == records);
}

}  // namespace
}  // namespace lunara::test
