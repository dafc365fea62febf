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
    EXPECT_EQ(MendCutOffRestore(TestUser), 1);
    ExpectOldDiary();
    EXPECT_FALSE(FileExists(folder + Staged));
}

TEST_F(BackupFilesRecovery, ARestoreCutOffWhileFilesAreSetAsideIsUndone) {
    PutUserFiles();
    Put(Aside, L"Bleeding.dat", "old bleeding");
    ::DeleteFileW(UserFile(L"Bleeding.dat").c_str());
    Put(Staged, L"Bleeding.dat", "saved bleeding");
    Put(Staged, L"Temperature.dat", "saved temperature");
    EXPECT_EQ(MendCutOffRestore(TestUser), 1);
    ExpectOldDiary();
    ExpectNothingBeside();
}

TEST_F(BackupFilesRecovery, ARestoreCutOffWhileCopiesGoInIsFinished) {
    Put(L"", L"Bleeding.dat", "saved bleeding");
    Put(Staged, L"Temperature.dat", "saved temperature");
    Put(Before, L"Bleeding.dat", "old bleeding");
    Put(Before, L"Notes.dat", "old notes");
    EXPECT_EQ(MendCutOffRestore(TestUser), 1);
    ExpectRestoredDiary();
    ExpectNothingBeside();
}

TEST_F(BackupFilesRecovery, ARestoreCutOffBeforeItsCleanUpStands) {
    PutUserFiles();
    Put(Before, L"Bleeding.dat", "older still");
    EXPECT_EQ(MendCutOffRestore(TestUser), 1);
    ExpectOldDiary();
    EXPECT_FALSE(FileExists(FolderOf(TestUser) + Before));
}

TEST_F(BackupFilesRecovery, NothingIsDeletedWhileARecoveryCannotFinish) {
    Put(Aside, L"Bleeding.dat", "old bleeding");
    Put(Aside, L"Notes.dat", "old notes");
    Put(Staged, L"Bleeding.dat", "saved bleeding");
    {
        const LockedFile locked(FileBeside(Aside, L"Notes.dat"));
        EXPECT_EQ(MendCutOffRestore(TestUser), 0);
        PutBackup(L"a");
        EXPECT_FALSE(RestoreFiles(TestUser, TEXT("a")).isRestored);
        script->Type(IDC_USER_NAME, TestUser).Press(IDOK).Press(IDCANCEL);
        EXPECT_EQ(Create(), 0);
        EXPECT_EQ(BoxTexts(), Texts{L"A restore was cut off, and its files are still in use!"});
        EXPECT_FALSE(FileExists(UserFile(L"Notes.dat")));
    }
    EXPECT_EQ(MendCutOffRestore(TestUser), 1);
    ExpectOldDiary();
    ExpectNothingBeside();
}

TEST_F(BackupFilesRecovery, TheOnlyCopyIsKeptWhenItCannotGoBack) {
    Put(Before, L"Bleeding.dat", "old bleeding");
    Put(Before, L"Notes.dat", "old notes");
    Write(FolderOf(TestUser), "in the way");
    EXPECT_EQ(MendCutOffRestore(TestUser), 0);
    EXPECT_EQ(Read(FileBeside(Before, L"Bleeding.dat")), "old bleeding");
    ::DeleteFileW(FolderOf(TestUser).c_str());
    EXPECT_EQ(MendCutOffRestore(TestUser), 1);
    ExpectOldDiary();
}

TEST_F(BackupFilesRecovery, RemainsOfAnEarlierRestoreAreNotTakenForThisOnes) {
    PutUserFiles();
    PutBackup(L"a");
    Put(Before, L"Bleeding.dat", "older still");
    MakeFolder(FileBeside(Before, L"sub"));  // keeps the folder from being removed
    EXPECT_EQ(MendCutOffRestore(TestUser), 1);
    EXPECT_FALSE(RestoreFiles(TestUser, TEXT("a")).isRestored);
    ExpectOldDiary();
}

// ---- A move that fails ----

/// A user's folder is replaced as a whole, or, when a sub-folder forbids that, file by file.
struct FailingMoveCase {
    const char* label;
    bool hasSubFolder;
    int failures;
};

constexpr FailingMoveCase FailingMoveCases[] = {
    {"folder, one move", false, 1},
    {"folder, two moves", false, 2},
    {"folder, all moves from there on", false, FromThereOn},
    {"files, one move", true, 1},
    {"files, two moves", true, 2},
    {"files, all moves from there on", true, FromThereOn},
};

TEST_F(BackupFilesRecovery, WhicheverMoveFailsOneWholeDiaryRemains) {
    for (const FailingMoveCase& row : FailingMoveCases) {
        LUNARA_ROW(row);
        int moves = 0;
        for (int failAt = 0; failAt <= moves; ++failAt) {
            SCOPED_TRACE(failAt);
            RemoveTree(FolderOf(TestUser));
            PutUserFiles();
            PutBackup(L"a");
            if (row.hasSubFolder) {
                MakeFolder(UserFile(L"pictures"));
            }
            int restored = 0;
            Texts left;
            {
                const FailingFileCalls calls(FailingMoves(failAt, row.failures));
                RestoreResult result = RestoreFiles(TestUser, TEXT("a"));
                restored = result.isRestored ? 1 : 0;
                left = std::move(result.filesLeft);
                moves = calls.Count(test::ReplaceCall | test::MoveFolderCall);
            }
            if (IsRestoreCutOff(TestUser)) {
                EXPECT_EQ(restored, 0);
                EXPECT_EQ(MendCutOffRestore(TestUser), 1);
                // Copies go in only once all of the user's files are set aside. From then on the
                // restore is finished, not undone.
                restored = Read(UserFile(L"Temperature.dat")) == "(none)" ? 0 : 1;
            }
            const std::wstring notes = UserFile(L"Notes.dat");
            if (restored == 1) {
                if (std::count(left.begin(), left.end(), notes) > 0) {
                    EXPECT_EQ(Read(notes), "old notes");  // reported, so it stays
                    ::DeleteFileW(notes.c_str());
                }
                ExpectRestoredDiary();
            } else {
                ExpectOldDiary();
                EXPECT_EQ(MendCutOffRestore(TestUser), 1);
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
        EXPECT_NE(BackupFiles(TestUser, TEXT("a")), BackupResult::Done);
        EXPECT_FALSE(FileExists(BackupFile(L"a\\Notes.dat")));
    }
    EXPECT_EQ(BackupFiles(TestUser, TEXT("a")), BackupResult::Done);
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");
    EXPECT_EQ(Read(BackupFile(L"a\\Notes.dat")), "old notes");
}

}  // namespace
}  // namespace lunara::test
