// A restore that was cut off, at each step of it, and what the next start or restore makes of that.

#include <algorithm>

#include "resources/ids.h"
#include "storage/backup_files.h"
#include "tests/support/failing_file_calls.h"
#include "tests/ui/app/backup_test_base.h"

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

// ---- A move that fails ----

/// `times` moves of files and folders fail, from the move with index `at` on.
test::FileFault FailingMoves(int at, int times) {
    return {.kinds = test::ReplaceCall | test::MoveFolderCall,
            .at = at,
            .times = times,
            .error = ERROR_ACCESS_DENIED};
}

/// A folder that changes places as a whole, or one whose files go one by one.
struct FailingMoveCase {
    const char* label;
    bool hasSubFolder;
    int failures;
};

constexpr FailingMoveCase FailingMoveCases[] = {
    {"folder, one move", false, 1},
    {"folder, two moves", false, 2},
    {"folder, all moves from there on", false, test::FromThereOn},
    {"files, one move", true, 1},
    {"files, two moves", true, 2},
    {"files, all moves from there on", true, test::FromThereOn},
};

TEST_F(RestoreRecoveryTest, WhicheverMoveFailsOneWholeDiaryIsThere) {
    for (const FailingMoveCase& row : FailingMoveCases) {
        LUNARA_ROW(row);
        int moves = 0;
        for (int failAt = 0; failAt <= moves; ++failAt) {
            SCOPED_TRACE(failAt);
            RemoveTree(FolderOf(TestUser));
            messages.boxes.clear();
            PutUserFiles();
            PutBackup(L"a");
            if (row.hasSubFolder) {
                MakeFolder(UserFile(L"pictures"));
            }
            int restored = 0;
            {
                const test::FailingFileCalls calls(FailingMoves(failAt, row.failures));
                restored = RestoreFiles(TestUser, TEXT("a"));
                moves = calls.Count(test::ReplaceCall | test::MoveFolderCall);
                EXPECT_EQ(calls.Failures() > 0, failAt < moves);
            }
            if (IsRestoreCutOff(TestUser)) {
                EXPECT_EQ(restored, 0);
                EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
                // Copies go in only after all her files have been set aside, and then stay.
                restored = Read(UserFile(L"Temperature.dat")) == "(none)" ? 0 : 1;
            }
            const Texts shown = BoxTexts();
            const std::wstring notes = UserFile(L"Notes.dat");
            if (restored == 1) {
                if (std::count(shown.begin(), shown.end(),
                               L"Fail to delete file '" + notes + L"'") > 0) {
                    EXPECT_EQ(Read(notes), "old notes");  // stays beside the copies
                    ::DeleteFileW(notes.c_str());
                }
                ExpectRestoredDiary();
            } else {
                ExpectOldDiary();
                EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
            }
            ExpectNothingBeside();
        }
        EXPECT_GE(moves, 2);
    }
}

TEST_F(RestoreRecoveryTest, NothingIsBackedUpWhileHerFilesAreNotAllInTheirFolder) {
    Put(Aside, L"Bleeding.dat", "old bleeding");
    Put(L"", L"Notes.dat", "old notes");
    {
        const LockedFile locked(FileBeside(Aside, L"Bleeding.dat"));
        EXPECT_EQ(BackupFiles(TestUser, TEXT("a")), 0);
        EXPECT_FALSE(FileExists(BackupFile(L"a\\Notes.dat")));
    }
    EXPECT_EQ(BackupFiles(TestUser, TEXT("a")), 1);
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");
    EXPECT_EQ(Read(BackupFile(L"a\\Notes.dat")), "old notes");
}

/// A restore of files one by one with all moves failing from one on. The diary is on disk and in
/// memory; the backup is under another password.
class RestoreCutOffTest : public BackupTestBase, public ::testing::WithParamInterface<int> {
  protected:
    void SetUp() override {
        BackupTestBase::SetUp();
        {
            UserData hers;
            FillDiary(hers);
            ASSERT_EQ(hers.Save(TestUser, TestPassword), 1);
            UserData older;
            older.SetBleeding(3);
            older.SetTemperature(9800);
            MakeFolder(BackupFile(L"older"));
            ASSERT_EQ(older.SaveFolder(BackupFile(L"older").c_str(), TEXT("older password")), 1);
        }
        MakeFolder(UserFile(L"pictures"));  // so that the files go one by one
        ASSERT_EQ(SignIn(), 1);
        records = main->Data().bleeding.Count() + main->Data().temperature.Count();
    }

    void Restore() {
        const test::FailingFileCalls calls(FailingMoves(GetParam(), test::FromThereOn));
        messages.answers = {IDYES};
        script->Press(IDOK);
        Command(IDM_RESTORE);
        EXPECT_TRUE(IsRestoreCutOff(TestUser));
    }

    std::int32_t records = 0;
};

// Her four files are set aside, then all of them are; two copies go in.
INSTANTIATE_TEST_SUITE_P(FromMove, RestoreCutOffTest, ::testing::Values(3, 4, 5, 6),
                         ::testing::PrintToStringParamName());

TEST_P(RestoreCutOffTest, IsSaidAndWhatIsInMemoryIsSavedWhole) {
    Restore();
    ASSERT_GE(messages.boxes.size(), 2U);
    EXPECT_EQ(BoxTexts().back(), L"A restore was cut off, and its files are still in use!");
    ASSERT_TRUE(main->Data().IsLoaded());
    ASSERT_TRUE(Close());
    ExpectNothingBeside();
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TestPassword), 1);
    EXPECT_EQ(data.bleeding.Count() + data.temperature.Count(), records);
}

TEST_P(RestoreCutOffTest, NothingIsSavedUntilItIsEnded) {
    Restore();
    main->Data().SetNoteText(TEXT("written since"));
    const std::string notes = Read(UserFile(L"NotePages.dat"));
    messages.boxes.clear();
    messages.answers = {IDRETRY, IDCANCEL};
    {
        const test::FailingFileCalls calls(FailingMoves(0, test::FromThereOn));
        ASSERT_TRUE(Close());
    }
    ASSERT_EQ(messages.boxes.size(), 2U);
    EXPECT_NE(messages.boxes[0].text.find(L"Fail to save file '" + FolderOf(TestUser)),
              std::wstring::npos);
    EXPECT_EQ(Read(UserFile(L"NotePages.dat")), notes);
    EXPECT_TRUE(IsRestoreCutOff(TestUser));
}

}  // namespace
}  // namespace lunara
