// Backup, and the question for the password that follows the next entry: no entry is lost, whatever
// the user answers and whatever fails on the way.

#include "tests/driver/menus.h"
#include "tests/e2e/backup_fixture.h"

namespace lunara::test {
namespace {

class Backup : public BackupTest {};

// ---- The password after a backup ----

TEST_F(Backup, EntriesAfterABackupAskForThePasswordAtTheEndAndAreKept) {
    {
        Program program(folder);
        ASSERT_TRUE(program.StartAndSignIn(User, Password));
        ASSERT_TRUE(WriteNote(program, TodaysRow - 1, L"Before"));
        ASSERT_TRUE(ChooseFromMenu(program, CommandBackup));
        const HWND dialog = program.WaitForDialog(L"Backup");
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(Program::TextOf(::GetDlgItem(dialog, BackupName)), OfferedName);
        EXPECT_EQ(::SendDlgItemMessageW(dialog, BackupSaveFirst, BM_GETCHECK, 0, 0), BST_CHECKED);
        KeepWhenStill(program, L"dialog");
        ASSERT_TRUE(program.Leave(dialog, ControlOk));
        program.WaitForDialog(L"Message");
        KeepWhenStill(program, L"done");
        EXPECT_EQ(AnswerBox(program, L"Message"), L"Backup is done!");
        EXPECT_TRUE(FilesOf(User) == DataFilesIn(BackupFolder(OfferedName)));
        EXPECT_TRUE(Contains(Export(User), "Before"));
        ASSERT_TRUE(WriteNote(program, TodaysRow, L"Afterwards"));

        Leave(program);
        const HWND question = PasswordQuestion(program);
        ASSERT_NE(question, nullptr);
        KeepWhenStill(program, L"password-asked-again");
        EXPECT_EQ(::IsWindowEnabled(::GetDlgItem(question, ControlUserName)), FALSE);
        ExpectRefusal(program, L"Moonlight 4");
        program.Leave(program.FindDialog(L"Login user"), ControlCancel);
        program.WaitForDialog(L"Warning");
        KeepWhenStill(program, L"leave-without-saving");
        EXPECT_EQ(AnswerBox(program, L"Warning", ControlNo), LeaveQuestion);
        ASSERT_TRUE(program.Settle());
        EXPECT_EQ(program.FindAnyDialog(), nullptr) << "asked once";
        EXPECT_FALSE(Contains(Export(User), "Afterwards"));

        Leave(program);
        ASSERT_TRUE(GivePassword(program, Password));
        ASSERT_TRUE(HasEnded(program));
    }
    EXPECT_TRUE(Opens(User, Password));
    Program again(folder);
    ASSERT_TRUE(again.StartAndSignIn(User, Password));
    EXPECT_EQ(NoteOf(again, TodaysRow - 1), L"Before");
    EXPECT_EQ(NoteOf(again, TodaysRow), L"Afterwards");
    EXPECT_TRUE(again.Exit());
}

TEST_F(Backup, LeavingWithoutSavingKeepsWhatTheBackupSaved) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_TRUE(WriteNote(program, TodaysRow - 1, L"Before"));
    ASSERT_EQ(MakeBackup(program, L""), L"Backup is done!");
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Afterwards"));
    const std::string files = FilesOf(User);
    Leave(program);
    const HWND question = PasswordQuestion(program);
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(program.Leave(question, ControlCancel));
    EXPECT_EQ(AnswerBox(program, L"Warning", ControlYes), LeaveQuestion);
    ASSERT_TRUE(HasEnded(program));
    EXPECT_TRUE(FilesOf(User) == files);
    EXPECT_TRUE(Contains(Export(User), "Before"));
}

TEST_F(Backup, WithNothingToSaveTheEndDoesNotAsk) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Saved by the backup"));
    ASSERT_EQ(MakeBackup(program, L""), L"Backup is done!");
    EXPECT_TRUE(program.Exit());
    EXPECT_TRUE(Contains(Export(User), "Saved by the backup"));
}

TEST_F(Backup, WithoutSavingFirstTheBackupIsWhatWasOnDisk) {
    const std::string before = FilesOf(User);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Not yet saved"));
    ASSERT_EQ(MakeBackup(program, L"as it was", false), L"Backup is done!");
    EXPECT_TRUE(FilesOf(User) == before);
    EXPECT_TRUE(DataFilesIn(BackupFolder(L"as it was")) == before);
    EXPECT_TRUE(program.Exit()) << "the password is still known";
    EXPECT_TRUE(Contains(Export(User), "Not yet saved"));
}

TEST_F(Backup, TheNextBackupAsksForThePasswordOnlyAfterNewEntries) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_EQ(MakeBackup(program, L"first"), L"Backup is done!");
    ASSERT_EQ(MakeBackup(program, L"second"), L"Backup is done!");
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Later"));

    ASSERT_TRUE(BeginBackup(program, L"given up", true));
    const HWND question = PasswordQuestion(program);
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(program.Leave(question, ControlCancel));
    ASSERT_TRUE(program.Settle());
    EXPECT_EQ(program.FindAnyDialog(), nullptr);
    EXPECT_FALSE(FileExists(BackupFolder(L"given up")));

    ASSERT_TRUE(BeginBackup(program, L"third", true));
    ExpectRefusal(program, L"Moonlight 4");
    ASSERT_TRUE(GivePassword(program, Password));
    EXPECT_EQ(AnswerBox(program, L"Message"), L"Backup is done!");
    EXPECT_TRUE(program.Exit()) << "saved, so it does not ask";
    EXPECT_TRUE(Contains(ExportFolder(BackupFolder(L"third")), "Later"));
    EXPECT_FALSE(Contains(ExportFolder(BackupFolder(L"second")), "Later"));
}

TEST_F(Backup, ChangingThePasswordAfterABackupAsksForThePresentOneFirst) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_EQ(MakeBackup(program, L"old password"), L"Backup is done!");
    ASSERT_TRUE(ChooseFromMenu(program, CommandChangePassword));
    ExpectRefusal(program, OtherPassword);
    ASSERT_TRUE(GivePassword(program, Password));
    const HWND dialog = program.WaitForDialog(L"Change password");
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(TypeInto(program, ::GetDlgItem(dialog, ControlOldPassword), OtherPassword));
    ASSERT_TRUE(TypeInto(program, ::GetDlgItem(dialog, ControlPassword), OtherPassword));
    ASSERT_TRUE(TypeInto(program, ::GetDlgItem(dialog, ControlConfirmation), OtherPassword));
    ASSERT_TRUE(program.Click(::GetDlgItem(dialog, ControlOk)));
    EXPECT_EQ(AnswerBox(program, L"Warning"), L"Old password does not match!");
    ASSERT_TRUE(TypeInto(program, ::GetDlgItem(dialog, ControlOldPassword), Password));
    ASSERT_TRUE(program.Leave(dialog, ControlOk));
    ASSERT_TRUE(program.Settle());

    // The program holds the new password; the next backup saves the files under it.
    ASSERT_EQ(MakeBackup(program, L"new password"), L"Backup is done!");
    EXPECT_TRUE(Opens(User, OtherPassword));
    EXPECT_TRUE(FolderOpens(BackupFolder(L"new password"), OtherPassword));
    EXPECT_TRUE(FolderOpens(BackupFolder(L"old password"), Password));
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Afterwards"));
    Leave(program);
    ExpectRefusal(program, Password);
    ASSERT_TRUE(GivePassword(program, OtherPassword));
    ASSERT_TRUE(HasEnded(program));
    EXPECT_TRUE(Contains(Export(User, OtherPassword), "Afterwards"));
}

TEST_F(Backup, BoxesHoldTheWindowsBehindThemUntilTheyAreRead) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_TRUE(BeginBackup(program, L"a", true));
    ASSERT_NE(program.WaitForDialog(L"Message"), nullptr);
    EXPECT_FALSE(::IsWindowEnabled(program.Main()));
    EXPECT_EQ(AnswerBox(program, L"Message"), L"Backup is done!");
    ASSERT_TRUE(program.Settle());
    EXPECT_TRUE(::IsWindowEnabled(program.Main()));

    const HeldFile held(BackupFolder(L"a") + L"\\Bleeding.dat");
    ASSERT_TRUE(held.IsHeld());
    const HWND dialog = ChooseBackup(program, L"a");
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(program.Click(::GetDlgItem(dialog, RestoreDelete)));
    for (const std::wstring& what : {L"file '" + BackupFolder(L"a") + L"\\Bleeding.dat'",
                                     L"folder '" + BackupFolder(L"a") + L"'"}) {
        ASSERT_NE(program.WaitForDialog(L"Error"), nullptr);
        EXPECT_FALSE(::IsWindowEnabled(dialog));
        EXPECT_FALSE(::IsWindowEnabled(program.Main()));
        EXPECT_EQ(AnswerBox(program, L"Error"), L"Fail to delete " + what);
    }
    EXPECT_EQ(AnswerBox(program, L"Warning"), L"There are no backups!");
    EXPECT_TRUE(program.WaitForNoDialog(L"Restore"));
    EXPECT_TRUE(program.Exit());
}

// ---- Failures ----

TEST_F(Backup, NamesWithFoldersAreTakenAndRefusedOnesSaid) {
    const std::string before = FilesOf(User);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    const std::array<std::array<const WCHAR*, 2>, 2> taken = {{
        {L"spring\\march", L"spring\\march"},
        {L"\\summer", L"summer"},
    }};
    for (const auto& [name, place] : taken) {
        SCOPED_TRACE(ToUtf8(name));
        EXPECT_EQ(MakeBackup(program, name), L"Backup is done!");
        EXPECT_TRUE(DataFilesIn(BackupFolder(place)) == before);
    }
    for (const WCHAR* name : {L"a<b", L"a|b", L"what?", L"a*", L"..\\Berta", L"\\"}) {
        SCOPED_TRACE(ToUtf8(name));
        ASSERT_TRUE(BeginBackup(program, name, true));
        EXPECT_EQ(AnswerBox(program, L"Error"), L"Cannot create backup directory!");
        EXPECT_EQ(AnswerBox(program, L"Warning"), L"Backup fails!");
    }
    EXPECT_TRUE(program.Exit());
    EXPECT_EQ(DiaryFoldersBelow(BackupRoot()).size(), 2u);
    EXPECT_TRUE(FilesOf(User) == before);
}

TEST_F(Backup, AFileInUseFailsTheBackupAndLeavesTheDiary) {
    const std::string before = FilesOf(User);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    {
        const HeldFile held(UserFile(L"Bleeding.dat"));
        ASSERT_TRUE(held.IsHeld());
        ASSERT_TRUE(BeginBackup(program, L"", true));
        program.WaitForDialog(L"Warning");
        KeepWhenStill(program, L"fails");
        EXPECT_EQ(AnswerBox(program, L"Warning"), L"Backup fails!");
    }
    EXPECT_TRUE(FilesOf(User) == before);
    EXPECT_TRUE(program.Exit());
    EXPECT_TRUE(FilesOf(User) == before);
}

TEST_F(Backup, AFullDiskFailsTheBackupAndLeavesTheDiary) {
    const std::string before = FilesOf(User);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    {
        const FullDisk full(L"LunaraBackup");
        ASSERT_TRUE(BeginBackup(program, L"", true));
        EXPECT_EQ(AnswerBox(program, L"Warning"), L"Backup fails!");
    }
    EXPECT_TRUE(FilesOf(User) == before);
    EXPECT_FALSE(DataFilesIn(BackupFolder(OfferedName)) == before);
    EXPECT_EQ(MakeBackup(program, L""), L"Backup is done!");
    EXPECT_TRUE(DataFilesIn(BackupFolder(OfferedName)) == before);
    EXPECT_TRUE(program.Exit());
    EXPECT_TRUE(FilesOf(User) == before);
}

TEST_F(Backup, AFullDiskAtTheEndIsSaidAndTheSaveRetried) {
    const std::string before = FilesOf(User);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Kept after all"));
    FullDisk full(CurrentTestName() + L"/" + User);
    Leave(program);
    program.WaitForDialog(L"Error");
    KeepWhenStill(program, L"disk-full");
    EXPECT_TRUE(FilesOf(User) == before);
    full.MakeRoom();
    const std::wstring said = AnswerBox(program, L"Error", ControlRetry);
    EXPECT_TRUE(Says(said, UserFile(L"NotePages.dat")));
    EXPECT_TRUE(Says(said, SystemText(ERROR_DISK_FULL)));
    ASSERT_TRUE(HasEnded(program));
    EXPECT_TRUE(Contains(Export(User), "Kept after all"));
}

TEST_F(Backup, ASaveThatFailsBeforeABackupIsMadeUpForAtTheEnd) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Still there"));
    {
        const HeldFile held(UserFile(L"NotePages.dat"));
        ASSERT_TRUE(held.IsHeld());
        ASSERT_TRUE(BeginBackup(program, L"", true));
        const std::wstring said = AnswerBox(program, L"Error", ControlCancel);
        EXPECT_TRUE(Says(said, UserFile(L"NotePages.dat")));
        EXPECT_EQ(AnswerBox(program, L"Warning"), L"Backup fails!");
    }
    EXPECT_FALSE(Contains(Export(User), "Still there"));
    EXPECT_TRUE(program.Exit()) << "the password is still known";
    EXPECT_TRUE(Contains(Export(User), "Still there"));
}

TEST_F(Backup, ASaveThatFailsAtTheEndNamesTheFileAndIsRetried) {
    const std::string before = FilesOf(User);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Kept after all"));
    HeldFile held(UserFile(L"NotePages.dat"));
    ASSERT_TRUE(held.IsHeld());
    Leave(program);
    program.WaitForDialog(L"Error");
    KeepWhenStill(program, L"save-fails");
    for (int attempt = 0; attempt < 2; ++attempt) {
        const std::wstring said = AnswerBox(program, L"Error", ControlRetry);
        const std::wstring expected = L"Fail to save file '" + UserFile(L"NotePages.dat") + L"':\n";
        EXPECT_EQ(said.substr(0, expected.size()), expected);
        EXPECT_GT(said.size(), expected.size() + 5) << "the reason";
        ASSERT_NE(program.WaitForDialog(L"Error"), nullptr);
    }
    held.Release();
    EXPECT_TRUE(FilesOf(User) == before);
    AnswerBox(program, L"Error", ControlRetry);
    ASSERT_TRUE(HasEnded(program));
    EXPECT_TRUE(Opens(User, Password));
    EXPECT_TRUE(Contains(Export(User), "Kept after all"));
}

TEST_F(Backup, ASaveThatFailsAtTheEndAndIsGivenUpLeavesTheFiles) {
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(User, Password));
    ASSERT_TRUE(WriteNote(program, TodaysRow, L"Given up"));
    // A folder occupies the name of the new file.
    const std::string before = FilesOf(User);
    ASSERT_NE(::CreateDirectoryW(UserFile(L"NotePages.new").c_str(), nullptr), FALSE);
    Leave(program);
    const std::wstring said = AnswerBox(program, L"Error", ControlCancel);
    EXPECT_TRUE(Says(said, UserFile(L"NotePages.dat")));
    ASSERT_TRUE(HasEnded(program));
    EXPECT_TRUE(FilesOf(User) == before);
}

}  // namespace
}  // namespace lunara::test
