// Signing in and changing the password, through the dialogs of the main window.

#include "app/sign_in.h"

#include <string>
#include <vector>

#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/common_controls.h"
#include "resources/ids.h"
#include "tests/ui/app/main_window_test_base.h"

namespace lunara::test {
namespace {

constexpr WCHAR LengthMessage[] = TEXT("Password should be at least 4 long if specified!");
constexpr WCHAR OtherPassword[] = TEXT("Wxyz9");

DWORD PanelFlags() {
    SIPINFO info{};
    info.cbSize = sizeof(info);
    SHSipInfo(SPI_GETSIPINFO, 0, &info, 0);
    return info.fdwFlags;
}

class SigningIn : public MainWindowTest {
  protected:
    /// Writes one file of these bytes into the folder of the test's user, which is made if missing.
    void PutFile(const WCHAR* fileName, const std::string& bytes) {
        ::CreateDirectoryW(FolderOf(TestUser).c_str(), nullptr);
        Write(Path(fileName), bytes);
    }
    static std::string BytesOf(const WCHAR* fileName) { return Read(Path(fileName)); }
    static std::wstring Path(const WCHAR* fileName) {
        return FolderOf(TestUser) + L"\\" + fileName;
    }

    /// Queues a step that records what the fields hold and which control has the focus.
    void Look() {
        script->Then([this](HWND dialog) {
            name = TextOf(::GetDlgItem(dialog, IDC_USER_NAME));
            password = TextOf(::GetDlgItem(dialog, IDC_PASSWORD));
            focus = ::GetDlgCtrlID(::GetFocus());
        });
    }

    std::wstring name;
    std::wstring password;
    int focus = 0;
};

TEST_F(SigningIn, ANewNameBeginsANewDiarySilently) {
    EXPECT_EQ(SignIn(), 1);
    EXPECT_TRUE(messages.boxes.empty());
    EXPECT_TRUE(main->Data().IsLoaded());
    EXPECT_STREQ(main->UserName(), TestUser);
}

TEST_F(SigningIn, ThePasswordIsHeldMasked) {
    ASSERT_EQ(SignIn(), 1);
    EXPECT_STRNE(main->Password().Text(), TestPassword);
    HeldPassword& held = const_cast<HeldPassword&>(main->Password());
    held.Unmask();
    EXPECT_STREQ(held.Text(), TestPassword);
    held.Unmask();
}

TEST_F(SigningIn, NameIsPresetFromTheSettings) {
    StoreText(TEXT("LastUser"), TEXT("Anna"));
    Look();
    script->Press(IDCANCEL);
    EXPECT_EQ(Create(), 0);
    EXPECT_EQ(name, L"Anna");
    EXPECT_EQ(password, L"");
    EXPECT_EQ(focus, IDC_USER_NAME);
}

TEST_F(SigningIn, WithoutAnyNameTheFieldSaysUnknown) {
    StoreText(TEXT("LastUser"), TEXT(""));
    Look();
    script->Press(IDCANCEL);
    Create();
    EXPECT_EQ(name, L"Unknown");
}

TEST_F(SigningIn, EmptyNameIsRefusedAndTheFocusGoesToThePassword) {
    script->Type(IDC_USER_NAME, TEXT("")).Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    Look();
    script->Press(IDCANCEL);
    EXPECT_EQ(Create(), 0);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, L"User name should not be empty");
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_EQ(focus, IDC_PASSWORD);
    EXPECT_EQ(password, TestPassword) << "only a failed load clears it";
}

TEST_F(SigningIn, PasswordsOfOneToThreeCharactersAreRefused) {
    for (const WCHAR* typed : {TEXT("a"), TEXT("ab"), TEXT("abc")}) {
        script->Type(IDC_USER_NAME, TestUser).Type(IDC_PASSWORD, typed).Press(IDOK);
    }
    Look();
    script->Press(IDCANCEL);
    EXPECT_EQ(Create(), 0);
    ASSERT_EQ(messages.boxes.size(), 3U);
    for (const auto& box : messages.boxes) {
        EXPECT_EQ(box.text, LengthMessage);
        EXPECT_EQ(box.caption, L"Warning");
        EXPECT_EQ(box.flags, static_cast<UINT>(MB_ICONEXCLAMATION));
    }
    EXPECT_EQ(focus, IDC_PASSWORD);
}

TEST_F(SigningIn, AnEmptyPasswordIsAccepted) {
    EXPECT_EQ(SignIn(TestUser, TEXT("")), 1);
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(SigningIn, NameAndPasswordAreCutToThirtyOneCharacters) {
    const std::wstring longText(40, L'x');
    ASSERT_EQ(SignIn(longText.c_str(), longText.c_str()), 1);
    EXPECT_EQ(main->UserName(), std::wstring(31, L'x'));
    Close();
    RemoveUser(std::wstring(31, L'x').c_str());
}

TEST_F(SigningIn, WrongPasswordKeepsTheNameAndMayBeTriedAgain) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    ASSERT_TRUE(Close());

    script->Type(IDC_USER_NAME, TestUser).Type(IDC_PASSWORD, OtherPassword).Press(IDOK);
    Look();
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    EXPECT_EQ(Create(), 1);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, L"User/Password invalid");
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_EQ(name, TestUser);
    EXPECT_EQ(password, L"");
    EXPECT_EQ(focus, IDC_PASSWORD);
    const SYSTEMTIME day = Day(2024, 5, 10);
    EXPECT_EQ(main->Data().GetBleeding(&day), 2);
}

TEST_F(SigningIn, AFileThatCannotBeReadIsNamedAndLeftAlone) {
    const struct {
        const char* label;
        std::string bytes;
        const WCHAR* message;
    } rows[] = {
        {"foreign", "something else entirely", TEXT("Not a valid Lunara data file")},
        {"too new", std::string("LU\x63\x00", 4), TEXT("Data file requires new version of Lunara")},
        {"wrong length", std::string("LU\x01\x00", 4) + "odd",
         TEXT("Data file is corupted or wrong type")},
        {"short header, which sets no last error", "LU",
         TEXT("Data file is corupted or wrong type")},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        messages.boxes.clear();
        PutFile(TEXT("Temperature.dat"), row.bytes);
        script->Type(IDC_USER_NAME, TestUser).Type(IDC_PASSWORD, TEXT("")).Press(IDOK);
        script->Press(IDCANCEL);
        EXPECT_EQ(Create(), 0);
        ASSERT_EQ(messages.boxes.size(), 1U);
        EXPECT_EQ(messages.boxes[0].text, row.message);
        EXPECT_EQ(BytesOf(TEXT("Temperature.dat")), row.bytes);
    }
}

TEST_F(SigningIn, TheMainWindowIsDisabledAndItsButtonsAreHiddenMeanwhile) {
    StoreDword(TEXT("CurrentView"), ViewDiary);
    bool enabled = true;
    BYTE notes = 0;
    script->Then([&, this](HWND dialog) {
        const HWND frame = ::GetWindow(dialog, GW_OWNER);
        enabled = ::IsWindowEnabled(frame) != FALSE;
        notes = StateOf(IDM_SHOW_NOTES);
    });
    ASSERT_EQ(SignIn(), 1);
    EXPECT_FALSE(enabled);
    EXPECT_NE(notes & TBSTATE_HIDDEN, 0);
    EXPECT_TRUE(::IsWindowEnabled(main->Handle()));
    EXPECT_EQ(StateOf(IDM_SHOW_NOTES) & TBSTATE_HIDDEN, 0);
    EXPECT_EQ(::GetFocus(), main->Handle());
}

TEST_F(SigningIn, WordCompletionIsOffWhileThePasswordHasTheFocus) {
    DWORD atName = 0;
    DWORD atPassword = 0;
    DWORD afterwards = 0;
    script->Then([&](HWND) { atName = PanelFlags(); });
    script->Then([&](HWND dialog) { ::SetFocus(::GetDlgItem(dialog, IDC_PASSWORD)); });
    script->Then([&](HWND) { atPassword = PanelFlags(); });
    script->Then([&](HWND dialog) { ::SetFocus(::GetDlgItem(dialog, IDC_USER_NAME)); });
    script->Then([&](HWND) { afterwards = PanelFlags(); });
    script->Press(IDCANCEL);
    Create();
    EXPECT_EQ(atName & (SIPF_ON | SIPF_DISABLECOMPLETION), SIPF_ON);
    EXPECT_EQ(atPassword & (SIPF_ON | SIPF_DISABLECOMPLETION), SIPF_ON | SIPF_DISABLECOMPLETION);
    EXPECT_EQ(afterwards & (SIPF_ON | SIPF_DISABLECOMPLETION), SIPF_ON);
}

TEST_F(SigningIn, AfterwardsTheInputPanelIsDownAndCompletionIsRestored) {
    script->Then([](HWND dialog) { ::SetFocus(::GetDlgItem(dialog, IDC_PASSWORD)); });
    ASSERT_EQ(SignIn(), 1);
    EXPECT_EQ(PanelFlags() & (SIPF_ON | SIPF_DISABLECOMPLETION), 0U);
}

TEST_F(SigningIn, TabMovesBetweenTheFieldsAndEnterAccepts) {
    script->Type(IDC_USER_NAME, TestUser);
    script->Then([](HWND) { ::PostMessageW(::GetFocus(), WM_KEYDOWN, VK_TAB, 0); });
    Look();
    script->Then([](HWND) { ::PostMessageW(::GetFocus(), WM_KEYDOWN, VK_RETURN, 0); });
    EXPECT_EQ(Create(), 1);
    EXPECT_EQ(focus, IDC_PASSWORD);
}

TEST_F(SigningIn, AQuitMessageEndsTheSignInAndStaysInTheQueue) {
    script->Then([](HWND) { ::PostQuitMessage(7); });
    EXPECT_EQ(Create(), 0);
    MSG message{};
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7U);
    EXPECT_FALSE(main->Data().IsLoaded());
}

class ChangingPassword : public SigningIn {
  protected:
    void SetUp() override {
        SigningIn::SetUp();
        ASSERT_EQ(SignIn(), 1);
        messages.boxes.clear();
    }
    void Fill(const WCHAR* oldPassword, const WCHAR* newPassword, const WCHAR* confirmation) {
        script->Type(IDC_OLD_PASSWORD, oldPassword)
            .Type(IDC_NEW_PASSWORD, newPassword)
            .Type(IDC_CONFIRM_PASSWORD, confirmation)
            .Press(IDOK);
    }
    /// Whether the diary on disk opens with that password.
    static bool Opens(const WCHAR* typed) {
        UserData data;
        return data.Load(TestUser, typed) != 0 && data.bleeding.Count() == 1 &&
               data.temperature.Count() == 1 && data.noteFlags.Count() == 1 &&
               data.notePages.Count() == 1;
    }
};

TEST_F(ChangingPassword, AllFourFilesAreWrittenAgainWithTheNewPassword) {
    FillDiary(main->Data());
    ASSERT_TRUE(Close());
    ASSERT_EQ(SignIn(), 1);
    ASSERT_TRUE(Opens(TestPassword));

    Fill(TestPassword, OtherPassword, OtherPassword);
    Command(IDM_CHANGE_PASSWORD);
    EXPECT_TRUE(messages.boxes.empty());
    EXPECT_TRUE(Opens(TestPassword)) << "files are written at the end only";
    ASSERT_TRUE(Close());
    EXPECT_TRUE(Opens(OtherPassword));
    EXPECT_FALSE(Opens(TestPassword));
}

TEST_F(ChangingPassword, AnEmptyNewPasswordIsAllowed) {
    FillDiary(main->Data());
    Fill(TestPassword, TEXT(""), TEXT(""));
    Command(IDM_CHANGE_PASSWORD);
    EXPECT_TRUE(messages.boxes.empty());
    ASSERT_TRUE(Close());
    EXPECT_TRUE(Opens(TEXT("")));
}

TEST_F(ChangingPassword, NewPasswordsThatDifferAreBothCleared) {
    Fill(TestPassword, OtherPassword, TEXT("wxyz9"));
    std::wstring fields[3];
    script->Then([&fields, this](HWND dialog) {
        fields[0] = TextOf(::GetDlgItem(dialog, IDC_OLD_PASSWORD));
        fields[1] = TextOf(::GetDlgItem(dialog, IDC_NEW_PASSWORD));
        fields[2] = TextOf(::GetDlgItem(dialog, IDC_CONFIRM_PASSWORD));
        focus = ::GetDlgCtrlID(::GetFocus());
    });
    script->Press(IDCANCEL);
    Command(IDM_CHANGE_PASSWORD);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, L"New passwords do not match!");
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_EQ(fields[0], TestPassword);
    EXPECT_EQ(fields[1], L"");
    EXPECT_EQ(fields[2], L"");
    EXPECT_EQ(focus, IDC_NEW_PASSWORD);
}

TEST_F(ChangingPassword, AShortNewPasswordIsRefused) {
    Fill(TestPassword, TEXT("abc"), TEXT("abc"));
    script->Then([this](HWND) { focus = ::GetDlgCtrlID(::GetFocus()); });
    script->Press(IDCANCEL);
    Command(IDM_CHANGE_PASSWORD);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, LengthMessage);
    EXPECT_EQ(focus, IDC_NEW_PASSWORD);
}

TEST_F(ChangingPassword, AWrongOldPasswordKeepsTheDialogOpen) {
    Fill(TEXT("ABCD"), OtherPassword, OtherPassword);  // the right one but for its case
    std::wstring oldPassword = L"?";
    std::wstring newPassword;
    script->Then([&, this](HWND dialog) {
        oldPassword = TextOf(::GetDlgItem(dialog, IDC_OLD_PASSWORD));
        newPassword = TextOf(::GetDlgItem(dialog, IDC_NEW_PASSWORD));
        focus = ::GetDlgCtrlID(::GetFocus());
    });
    script->Type(IDC_OLD_PASSWORD, TestPassword).Press(IDOK);
    Command(IDM_CHANGE_PASSWORD);
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].text, L"Old password does not match!");
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_EQ(oldPassword, L"");
    EXPECT_EQ(newPassword, OtherPassword);
    EXPECT_EQ(focus, IDC_OLD_PASSWORD);
    EXPECT_TRUE(main->Data().bleeding.dirty) << "every file is to be written with the new password";
}

TEST_F(ChangingPassword, CancelChangesNothing) {
    script->Type(IDC_OLD_PASSWORD, TestPassword)
        .Type(IDC_NEW_PASSWORD, OtherPassword)
        .Type(IDC_CONFIRM_PASSWORD, OtherPassword)
        .Press(IDCANCEL);
    Command(IDM_CHANGE_PASSWORD);
    EXPECT_FALSE(main->Data().bleeding.dirty);
    EXPECT_TRUE(::IsWindowEnabled(main->Handle()));
    FillDiary(main->Data());
    ASSERT_TRUE(Close());
    EXPECT_TRUE(Opens(TestPassword));
}

TEST_F(ChangingPassword, AQuitMessageEndsTheDialogAndStaysInTheQueue) {
    script->Then([](HWND) { ::PostQuitMessage(3); });
    Command(IDM_CHANGE_PASSWORD);
    MSG message{};
    ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 3U);
}

TEST_F(ChangingPassword, EachOfTheThreeFieldsTurnsWordCompletionOff) {
    std::vector<DWORD> flags;
    for (const int id : {IDC_OLD_PASSWORD, IDC_NEW_PASSWORD, IDC_CONFIRM_PASSWORD, int{IDOK}}) {
        script->Then([id](HWND dialog) { ::SetFocus(::GetDlgItem(dialog, id)); });
        script->Then([&flags](HWND) { flags.push_back(PanelFlags() & SIPF_DISABLECOMPLETION); });
    }
    script->Press(IDCANCEL);
    Command(IDM_CHANGE_PASSWORD);
    EXPECT_EQ(flags, (std::vector<DWORD>{SIPF_DISABLECOMPLETION, SIPF_DISABLECOMPLETION,
                                         SIPF_DISABLECOMPLETION, 0}));
}

}  // namespace
}  // namespace lunara::test
