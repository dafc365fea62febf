// Restores that were interrupted, at each of their steps: what the next start or restore makes of
// the files that they left.

#include "storage/backup_files.h"

#include <algorithm>

#include "resources/ids.h"
#include "tests/ui/app/backup_test_base.h"

namespace lunara::test {
namespace {

class BackupFilesRecovery : public BackupTest {};

TEST_F(BackupFilesRecovery, ARestoreCutOffBetweenTheTwoRenamesIsUndone) {
    PutUserFiles();
    PutBackup(L"a");
    const std::wstring folder = FolderOf(TestUser);
    ASSERT_NE(::MoveFileW(folder.c_str(), (folder + Before).c_str()), FALSE);
    MakeFolder(folder + Staged);
    RecoverInterruptedRestore(TestUser);
    ExpectOldDiary();
    EXPECT_FALSE(FileExists(folder + Staged));
}

TEST_F(BackupFilesRecovery, ARestoreCutOffWhileFilesAreSetAsideIsUndone) {
    PutUserFiles();
    Put(Aside, L"Bleeding.dat", "old bleeding");
    ::DeleteFileW(UserFile(L"Bleeding.dat").c_str());
    Put(Staged, L"Bleeding.dat", "saved bleeding");
    Put(Staged, L"Temperature.dat", "saved temperature");
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectOldDiary();
    ExpectNothingBeside();
}

TEST_F(BackupFilesRecovery, ARestoreCutOffWhileCopiesGoInIsFinished) {
    Put(L"", L"Bleeding.dat", "saved bleeding");
    Put(Staged, L"Temperature.dat", "saved temperature");
    Put(Before, L"Bleeding.dat", "old bleeding");
    Put(Before, L"Notes.dat", "old notes");
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectRestoredDiary();
    ExpectNothingBeside();
}

TEST_F(BackupFilesRecovery, ARestoreCutOffBeforeItsCleanUpStands) {
    PutUserFiles();
    Put(Before, L"Bleeding.dat", "older still");
    RecoverInterruptedRestore(TestUser);
    ExpectOldDiary();
    EXPECT_FALSE(FileExists(FolderOf(TestUser) + Before));
}

TEST_F(BackupFilesRecovery, NothingIsDeletedWhileARecoveryCannotFinish) {
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

TEST_F(BackupFilesRecovery, TheOnlyCopyIsKeptWhenItCannotGoBack) {
    Put(Before, L"Bleeding.dat", "old bleeding");
    Put(Before, L"Notes.dat", "old notes");
    Write(FolderOf(TestUser), "in the way");
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 0);
    EXPECT_EQ(Read(FileBeside(Before, L"Bleeding.dat")), "old bleeding");
    ::DeleteFileW(FolderOf(TestUser).c_str());
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectOldDiary();
}

TEST_F(BackupFilesRecovery, RemainsOfAnEarlierRestoreAreNotTakenForThisOnes) {
    PutUserFiles();
    PutBackup(L"a");
    Put(Before, L"Bleeding.dat", "older still");
    MakeFolder(FileBeside(Before, L"sub"));  // keeps the folder from being removed
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 0);
    ExpectOldDiary();
}

// ---- A move that fails ----

/// A user's folder is replaced as a whole, or, when a sub-folder forbids that, file by file.
struct FailingMoveCase {
    const char* label;
    bool hasSubFolder;
    FailingMoves::Way way;
};

constexpr FailingMoveCase FailingMoveCases[] = {
    {"folder, one move", false, FailingMoves::Way::OneMove},
    {"folder, two moves", false, FailingMoves::Way::TwoMoves},
    {"folder, all moves from there on", false, FailingMoves::Way::FromThereOn},
    {"files, one move", true, FailingMoves::Way::OneMove},
    {"files, two moves", true, FailingMoves::Way::TwoMoves},
    {"files, all moves from there on", true, FailingMoves::Way::FromThereOn},
};

TEST_F(BackupFilesRecovery, WhicheverMoveFailsOneWholeDiaryRemains) {
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
                const FailingMoves calls(failAt, row.way);
                restored = RestoreFiles(TestUser, TEXT("a"));
                moves = calls.Count();
            }
            if (IsRestoreCutOff(TestUser)) {
                EXPECT_EQ(restored, 0);
                EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
                // Copies go in only once all of the user's files are set aside. From then on the
                // restore is finished, not undone.
                restored = Read(UserFile(L"Temperature.dat")) == "(none)" ? 0 : 1;
            }
            const Texts shown = BoxTexts();
            const std::wstring notes = UserFile(L"Notes.dat");
            if (restored == 1) {
                if (std::count(shown.begin(), shown.end(),
                               L"Fail to delete file '" + notes + L"'") > 0) {
                    EXPECT_EQ(Read(notes), "old notes");  // reported, so it stays
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

TEST_F(BackupFilesRecovery, NothingIsBackedUpWhileTheUsersFilesAreNotAllInTheirFolder) {
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

}  // namespace
}  // namespace lunara::test
