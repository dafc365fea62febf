// After a backup that saved first, the password is wiped: it is asked for again when it is next
// needed.

#include "resources/ids.h"
#include "tests/ui/app/backup_test_base.h"

namespace lunara::test {
namespace {

constexpr std::int32_t SavedTemperature = 9810;  // the one of FillDiary
constexpr std::int32_t NewTemperature = 9777;

class WipedPassword : public BackupTest {
  protected:
    void SetUp() override {
        BackupTest::SetUp();
        ASSERT_EQ(SignIn(), 1);
        FillDiary(main->Data());
        script->Press(IDOK);
        Command(IDM_BACKUP);
        ASSERT_FALSE(main->Password().IsHeld());
        messages.boxes.clear();
    }
    /// Replaces the temperature that the backup saved.
    void EnterNewTemperature() { main->Data().SetTemperature(NewTemperature); }
    /// The diary in this folder opens and has that temperature.
    static void ExpectTemperatureIn(const std::wstring& folder, std::int32_t temperature) {
        const SYSTEMTIME date = Day(2024, 5, 10);
        UserData data;
        ASSERT_EQ(data.LoadFolder(folder.c_str(), TestPassword), 1);
        EXPECT_EQ(data.GetTemperature(&date), temperature);
        EXPECT_EQ(data.bleeding.Count(), 1);
    }
};

// ---- The next backup ----

TEST_F(WipedPassword, TheSecondBackupAsksForThePassword) {
    EnterNewTemperature();
    script->Type(IDC_BACKUP_NAME, TEXT("second")).Press(IDOK).Press(IDCANCEL);
    Command(IDM_BACKUP);
    EXPECT_TRUE(messages.boxes.empty());
    EXPECT_FALSE(FileExists(BackupFile(L"second")));
    script->Type(IDC_BACKUP_NAME, TEXT("second")).Press(IDOK);
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    Command(IDM_BACKUP);
    EXPECT_EQ(BoxTexts(), Texts{L"Backup is done!"});
    ExpectTemperatureIn(BackupFile(L"second"), NewTemperature);
}

// ---- The end ----

TEST_F(WipedPassword, EntriesAfterABackupAskForThePasswordAtTheEnd) {
    EnterNewTemperature();
    bool readOnly = false;
    std::wstring name;
    script->Then([&](HWND dialog) {
        const HWND edit = ::GetDlgItem(dialog, IDC_USER_NAME);
        name = TextOf(edit);
        readOnly = (::GetWindowLongPtrW(edit, GWL_STYLE) & ES_READONLY) != 0 &&
                   ::IsWindowEnabled(edit) == FALSE;
        ::SetDlgItemTextW(dialog, IDC_PASSWORD, TEXT("wrong"));
        ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    ASSERT_TRUE(Close());
    EXPECT_EQ(name, TestUser);
    EXPECT_TRUE(readOnly);
    EXPECT_EQ(BoxTexts(), Texts{L"User/Password invalid"});
    ExpectTemperatureIn(FolderOf(TestUser), NewTemperature);
}

TEST_F(WipedPassword, WithNothingToSaveTheEndDoesNotAskForThePassword) { EXPECT_TRUE(Close()); }

TEST_F(WipedPassword, GivingUpAtTheEndAsksOnceWhetherToLeave) {
    EnterNewTemperature();
    messages.answers = {IDNO};
    script->Press(IDCANCEL);
    Send(WM_CLOSE);
    EXPECT_EQ(messages.boxes.size(), 1U);
    EXPECT_NE(main->Handle(), nullptr);
    EXPECT_TRUE(main->Data().IsDirty());
    messages.answers = {IDYES};
    script->Press(IDCANCEL);
    ASSERT_TRUE(Close());
    EXPECT_EQ(messages.boxes.size(), 2U);
    ExpectTemperatureIn(FolderOf(TestUser), SavedTemperature);
}

TEST_F(WipedPassword, TheEndOfTheSessionAsksWhileTheUserCanStillAnswer) {
    EnterNewTemperature();
    messages.answers = {IDNO};
    script->Press(IDCANCEL);
    EXPECT_EQ(Send(WM_QUERYENDSESSION), FALSE);
    EXPECT_EQ(BoxTexts(), Texts{L"Leave without saving your last entries?"});
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    EXPECT_EQ(Send(WM_QUERYENDSESSION), TRUE);
    EXPECT_TRUE(main->Data().IsDirty());
    Send(WM_ENDSESSION, TRUE);
    EXPECT_TRUE(TakeQuitMessage());
    ExpectTemperatureIn(FolderOf(TestUser), NewTemperature);
}

// ---- Change of password ----

TEST_F(WipedPassword, ChangingThePasswordAsksForTheCurrentOneFirst) {
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    script->Type(IDC_OLD_PASSWORD, TestPassword)
        .Type(IDC_NEW_PASSWORD, TEXT("newer"))
        .Type(IDC_CONFIRM_PASSWORD, TEXT("newer"))
        .Press(IDOK);
    Command(IDM_CHANGE_PASSWORD);
    ASSERT_TRUE(Close());
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TEXT("newer")), 1);
}

}  // namespace
}  // namespace lunara::test
