// A restore that was cut off, at each step of it, and what the next start or restore makes of that.

#include "frame/backup_files.h"
#include "resources/ids.h"
#include "tests/ui/frame/backup_test_base.h"

namespace lunara {
namespace {

class RestoreRecoveryTest : public BackupTestBase {};

TEST_F(RestoreRecoveryTest, CutOffBetweenTheRenamesItIsUndone) {
    PutUserFiles();
    PutBackup(L"a");
    const std::wstring folder = FolderOf(TestUser);
    ASSERT_NE(::MoveFileW(folder.c_str(), (folder + Before).c_str()), FALSE);
    MakeFolder(folder + Staged);
    RecoverInterruptedRestore(TestUser);
    ExpectOldDiary();
    EXPECT_FALSE(FileExists(folder + Staged));
}

TEST_F(RestoreRecoveryTest, CutOffWhileFilesAreSetAsideItIsUndone) {
    PutUserFiles();
    Put(Aside, L"Bleeding.dat", "old bleeding");
    ::DeleteFileW(UserFile(L"Bleeding.dat").c_str());
    Put(Staged, L"Bleeding.dat", "saved bleeding");
    Put(Staged, L"Temperature.dat", "saved temperature");
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectOldDiary();
    ExpectNothingBeside();
}

TEST_F(RestoreRecoveryTest, CutOffWhileCopiesGoInItIsFinished) {
    Put(L"", L"Bleeding.dat", "saved bleeding");
    Put(Staged, L"Temperature.dat", "saved temperature");
    Put(Before, L"Bleeding.dat", "old bleeding");
    Put(Before, L"Notes.dat", "old notes");
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectRestoredDiary();
    ExpectNothingBeside();
}

TEST_F(RestoreRecoveryTest, CutOffBeforeTheTidyingUpItStands) {
    PutUserFiles();
    Put(Before, L"Bleeding.dat", "older still");
    RecoverInterruptedRestore(TestUser);
    ExpectOldDiary();
    EXPECT_FALSE(FileExists(FolderOf(TestUser) + Before));
}

TEST_F(RestoreRecoveryTest, NothingIsThrownAwayWhileItCannotBeEnded) {
    Put(Aside, L"Bleeding.dat", "old bleeding");
    Put(Aside, L"Notes.dat", "old notes");
    Put(Staged, L"Bleeding.dat", "saved bleeding");
    {
        const LockedFile locked(FileBeside(Aside, L"Notes.dat"));
        EXPECT_EQ(RecoverInterruptedRestore(TestUser), 0);
        PutBackup(L"a");
        EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 0);
        script->Type(IDC_USER_NAME, TestUser).Press(IDOK).Press(IDCANCEL);
        EXPECT_EQ(Create(), 0);
        EXPECT_EQ(BoxTexts(), Texts{L"A restore was cut off, and its files are still in use!"});
        EXPECT_FALSE(FileExists(UserFile(L"Notes.dat")));
    }
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectOldDiary();
    ExpectNothingBeside();
}

TEST_F(RestoreRecoveryTest, TheOnlyCopyIsNotThrownAwayWhenItCannotGoBack) {
    Put(Before, L"Bleeding.dat", "old bleeding");
    Put(Before, L"Notes.dat", "old notes");
    Write(FolderOf(TestUser), "in the way");
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 0);
    EXPECT_EQ(Read(FileBeside(Before, L"Bleeding.dat")), "old bleeding");
    ::DeleteFileW(FolderOf(TestUser).c_str());
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectOldDiary();
}

TEST_F(RestoreRecoveryTest, WhatAnEarlierRestoreLeftIsNeverTakenForThisOnes) {
    PutUserFiles();
    PutBackup(L"a");
    Put(Before, L"Bleeding.dat", "older still");
    MakeFolder(FileBeside(Before, L"sub"));  // keeps it
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 0);
    ExpectOldDiary();
}

}  // namespace
}  // namespace lunara
