// Restore: the backup comes back whole, or the diary stays as it was. Also the deletion of backups.

#include "tests/driver/menus.h"
#include "tests/e2e/backup_fixture.h"

namespace lunara::test {
namespace {

class Restore : public BackupTest {
  protected:
    /// Has the backup restored and answers the question with Yes. What follows is left to the
    /// caller.
    static void RestoreBackup(Program& program, const std::wstring& name) {
        const HWND dialog = ChooseBackup(program, name);
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(program.Leave(dialog, ControlOk));
        EXPECT_EQ(AnswerBox(program, L"Warning", ControlYes), RestoreQuestion);
    }

    /// Starts the program, makes an entry that the restore discards, and restores a backup under
    /// another password.
    void RestoreForeignBackup(Program& program) {
        ASSERT_NO_FATAL_FAILURE(MakeSampleBackup(L"foreign", OtherPassword));
        foreignFiles = DataFilesIn(BackupFolder(L"foreign"));
        ASSERT_FALSE(FilesOf(User) == foreignFiles);
        ASSERT_TRUE(program.StartAndSignIn(User, Password));
        ASSERT_TRUE(WriteNote(program, TodaysRow, L"Lost by the restore"));
        RestoreBackup(program, L"foreign");
    }

    std::string foreignFiles;  // of the backup that RestoreForeignBackup restores
};

TEST_F(Restore, BringsTheOlderDiaryOnlyAfterTheAnswerYes) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Older"));
    ASSERT_EQ(MakeBackup(program, L"older"), L"Backup is done!");
    const std::string older = FilesOf(User);
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Newer"));
    ASSERT_TRUE(BeginBackup(program, L"newer", true));
    ASSERT_TRUE(GivePassword(program, Password));
    ASSERT_EQ(AnswerBox(program, L"Message"), L"Backup is done!");
    const std::string newer = FilesOf(User);
    ASSERT_FALSE(newer == older);

    const HWND dialog = ChooseBackup(program, L"older");
    ASSERT_NE(dialog, nullptr);
    KeepWhenStill(program, L"restore");
    ASSERT_TRUE(program.Leave(dialog, ControlOk));
    program.WaitForDialog(L"Warning");
    KeepWhenStill(program, L"restore-question");
    EXPECT_EQ(AnswerBox(program, L"Warning", ControlNo), RestoreQuestion);
    ASSERT_TRUE(program.Settle());
    EXPECT_EQ(program.FindAnyDialog(), nullptr);
    EXPECT_TRUE(FilesOf(User) == newer);
    EXPECT_EQ(NoteOf(program, TodaysRow), L"Newer");

    ASSERT_NO_FATAL_FAILURE(RestoreBackup(program, L"older"));
    ASSERT_NE(program.WaitForDialog(L"Login user"), nullptr);
    EXPECT_TRUE(FilesOf(User) == older);
    ASSERT_TRUE(program.SignIn(User, Password));
    KeepWhenStill(program, L"restored");
    EXPECT_EQ(NoteOf(program, TodaysRow), L"Older");
    EXPECT_TRUE(program.Exit());
    EXPECT_TRUE(FilesOf(User) == older);
}

TEST_F(Restore, ABackupMadeUnderAnotherPasswordNeedsThatPassword) {
    Program program(folder);
    ASSERT_NO_FATAL_FAILURE(RestoreForeignBackup(program));
    ASSERT_NO_FATAL_FAILURE(ExpectWrong(program, Password));
    ASSERT_TRUE(program.SignIn(User, OtherPassword));
    EXPECT_EQ(NoteOf(program, TodaysRow), L"");
    ASSERT_TRUE(program.Exit());
    EXPECT_TRUE(FilesOf(User) == foreignFiles) << "nothing of the diary before it is saved over it";
}

TEST_F(Restore, ABackupMadeOverAnOlderOneOfAnotherPasswordOpens) {
    // The old backup has a collection, the notes, that the diary no longer has. If its file stayed,
    // it would be the only one under the old password.
    const std::wstring other = L"Berta";
    ASSERT_TRUE(Import(BackupRoot() + L"\\" + other + L"\\a", "2006-03-01,2,,,,Deleted later\r\n"));
    ASSERT_TRUE(Import(folder.UserFolder(other), "2006-03-01,2,,,,\r\n", OtherPassword));
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(other, OtherPassword));
    ASSERT_EQ(MakeBackup(program, L"a"), L"Backup is done!");
    ASSERT_NO_FATAL_FAILURE(RestoreBackup(program, L"a"));
    ASSERT_TRUE(program.SignIn(other, OtherPassword));
    EXPECT_TRUE(program.Exit());
    EXPECT_EQ(Export(other, OtherPassword), CsvHeader + "2006-03-01,2,,,,\r\n");
}

TEST_F(Restore, GivingUpTheSignInAfterARestoreEndsTheProgram) {
    Program program(folder);
    ASSERT_NO_FATAL_FAILURE(RestoreForeignBackup(program));
    ASSERT_NO_FATAL_FAILURE(ExpectWrong(program, Password));
    program.Click(::GetDlgItem(program.FindDialog(L"Login user"), ControlCancel));
    ASSERT_TRUE(HasEnded(program));
    EXPECT_TRUE(FilesOf(User) == foreignFiles);
}

TEST_F(Restore, TheEndOfTheSessionDuringTheSignInLeavesTheRestoredFiles) {
    Program program(folder);
    ASSERT_NO_FATAL_FAILURE(RestoreForeignBackup(program));
    ASSERT_NE(program.WaitForDialog(L"Login user"), nullptr);
    DWORD_PTR answer = 0;
    ASSERT_NE(::SendMessageTimeoutW(program.Main(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, PatienceMs,
                                    &answer),
              0);
    program.Kill();  // the system gives a program no more time after WM_ENDSESSION
    EXPECT_TRUE(FilesOf(User) == foreignFiles);
}

TEST_F(Restore, TheListOpensHighEnoughForItsNames) {
    for (const WCHAR* name : {L"a", L"b", L"c", L"d"}) {
        MakeSampleBackup(name, Password);
    }
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    const HWND dialog = OpenBackupList(program);
    ASSERT_NE(dialog, nullptr);
    const auto itemHeight =
        static_cast<LONG>(::SendDlgItemMessageW(dialog, RestoreList, CB_GETITEMHEIGHT, 0, 0));
    const HWND list = ::FindWindowExW(nullptr, nullptr, L"ComboLBox", nullptr);
    RECT place{};
    ASSERT_TRUE(::GetWindowRect(list, &place));
    EXPECT_TRUE(::IsWindowVisible(list));
    EXPECT_GT(itemHeight, 0);
    EXPECT_GE(place.bottom - place.top, 4 * itemHeight);
    program.Press(VK_ESCAPE);  // closes the list only
    ASSERT_TRUE(program.Leave(dialog, ControlCancel));
    EXPECT_TRUE(program.Exit());
}

TEST_F(Restore, DeletingDownToTheLastClosesTheDialog) {
    MakeSampleBackup(L"a", Password);
    MakeSampleBackup(L"b", Password);
    MakeSampleBackup(L"c", Password);
    const std::string before = FilesOf(User);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    const HWND dialog = ChooseBackup(program, L"b");
    ASSERT_NE(dialog, nullptr);
    const HWND list = ::GetDlgItem(dialog, RestoreList);
    const auto deleteCurrent = [&](const WCHAR* name, const WCHAR* next) {
        ASSERT_EQ(Program::TextOf(list), name);
        ASSERT_TRUE(program.Click(::GetDlgItem(dialog, RestoreDelete)));
        EXPECT_TRUE(WaitFor([&] { return Program::TextOf(list) == next; }));
        EXPECT_FALSE(FileExists(BackupFolder(name)));
    };
    deleteCurrent(L"b", L"a");
    deleteCurrent(L"a", L"c");
    ASSERT_TRUE(program.Click(::GetDlgItem(dialog, RestoreDelete)));
    EXPECT_EQ(AnswerBox(program, L"Warning"), L"There are no backups!");
    EXPECT_TRUE(program.WaitForNoDialog(L"Restore"));
    EXPECT_FALSE(FileExists(BackupFolder(L"c")));

    ASSERT_TRUE(ChooseFromMenu(program, CommandRestore));
    EXPECT_EQ(AnswerBox(program, L"Warning"), L"There are no backups!");
    EXPECT_TRUE(program.WaitForNoDialog(L"Restore"));
    EXPECT_TRUE(program.Exit());
    EXPECT_TRUE(FilesOf(User) == before);
}

TEST_F(Restore, AFullDiskStopsTheRestoreAndLeavesTheDiary) {
    MakeSampleBackup(L"older", Password);
    const std::string before = FilesOf(User);
    const std::string older = DataFilesIn(BackupFolder(L"older"));
    ASSERT_FALSE(before == older);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    {
        const FullDisk full(CurrentTestName() + L"/" + User);
        ASSERT_NO_FATAL_FAILURE(RestoreBackup(program, L"older"));
        ASSERT_TRUE(program.Settle());
        EXPECT_EQ(program.FindAnyDialog(), nullptr) << "nothing was restored, so nobody signs in";
    }
    EXPECT_TRUE(FilesOf(User) == before);
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"It goes on"));
    EXPECT_TRUE(program.Exit());
    EXPECT_TRUE(Contains(Export(User), "It goes on"));
    EXPECT_TRUE(DataFilesIn(BackupFolder(L"older")) == older);
}

}  // namespace
}  // namespace lunara::test
