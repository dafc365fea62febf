// Backups on disk: copying a user's files into a backup folder and putting them back. Restores that
// fail half-way are tested in backup_files_recovery_test.cpp.

#include "storage/backup_files.h"

#include "tests/ui/app/backup_test_base.h"

namespace lunara::test {
namespace {

class BackupFiles : public BackupTest {
  protected:
    void SetUp() override {
        BackupTest::SetUp();
        PutUserFiles();
    }
    static BackupResult BackUp(const std::wstring& name) {
        return lunara::BackupFiles(TestUser, name);
    }
};

TEST_F(BackupFiles, ASecondBackupOfTheSameNameReplacesTheCopies) {
    ASSERT_EQ(BackUp(L"05-Mar-2006 14-07"), BackupResult::Done);
    EXPECT_EQ(Read(BackupFile(L"05-Mar-2006 14-07\\Bleeding.dat")), "old bleeding");
    Write(UserFile(L"Bleeding.dat"), "newer");
    ASSERT_EQ(BackUp(L"05-Mar-2006 14-07"), BackupResult::Done);
    EXPECT_EQ(Read(BackupFile(L"05-Mar-2006 14-07\\Bleeding.dat")), "newer");
}

TEST_F(BackupFiles, ADataFileThatTheDiaryNoLongerHasIsRemovedFromTheBackup) {
    ASSERT_EQ(BackUp(L"a"), BackupResult::Done);
    Write(BackupFile(L"a\\remark.txt"), "not of the diary");
    ASSERT_NE(::DeleteFileW(UserFile(L"Notes.dat").c_str()), FALSE);
    {
        const LockedFile locked(BackupFile(L"a\\Notes.dat"));
        EXPECT_EQ(BackUp(L"a"), BackupResult::Failed);
    }
    EXPECT_EQ(BackUp(L"a"), BackupResult::Done);
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");
    EXPECT_EQ(Read(BackupFile(L"a\\Notes.dat")), "(none)");
    EXPECT_EQ(Read(BackupFile(L"a\\remark.txt")), "not of the diary");
}

TEST_F(BackupFiles, ADiaryWithoutFilesEmptiesNoBackup) {
    ASSERT_EQ(BackUp(L"a"), BackupResult::Done);
    RemoveTree(FolderOf(TestUser));
    EXPECT_EQ(BackUp(L"a"), BackupResult::Done);
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");
}

TEST_F(BackupFiles, ANameMayHoldSubFoldersAndALeadingBackslash) {
    EXPECT_EQ(BackUp(L"\\a\\b"), BackupResult::Done);
    EXPECT_EQ(Read(BackupFile(L"a\\b\\Notes.dat")), "old notes");
}

TEST_F(BackupFiles, FilesWithTheAttributeNormalAreBackedUpAndRestored) {
    ::SetFileAttributesW(UserFile(L"Notes.dat").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(BackUp(L"a"), BackupResult::Done);
    EXPECT_EQ(Read(BackupFile(L"a\\Notes.dat")), "old notes");
    ::SetFileAttributesW(BackupFile(L"a\\Notes.dat").c_str(), FILE_ATTRIBUTE_NORMAL);
    Write(UserFile(L"Notes.dat"), "newer notes");
    EXPECT_TRUE(RestoreFiles(TestUser, TEXT("a")).isRestored);
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "old notes");
}

TEST_F(BackupFiles, ANameThatIsNoFolderIsRefused) {
    const struct {
        const char* label;
        std::wstring name;
    } rows[] = {
        {"empty", L""},
        {"only a backslash", L"\\"},
        {"the parent folder", L".."},
        {"a folder outside the backups", L"a\\..\\..\\b"},
        {"a dot and blanks", L" . "},
        {"forbidden characters", L"a<b>|c?"},
        {"too long", std::wstring(240, L'x')},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        EXPECT_EQ(BackUp(row.name), BackupResult::NoFolder);
    }
    ExpectOldDiary();
}

TEST_F(BackupFiles, AFileInPlaceOfTheBackupsFolderIsReported) {
    MakeFolder(Documents() + L"\\LunaraBackup");
    Write(Documents() + L"\\LunaraBackup\\" + TestUser, "a file");
    EXPECT_EQ(BackUp(L"a"), BackupResult::NoFolder);
}

/// The user has the old diary and one backup, "a".
class BackupFilesRestore : public BackupTest {
  protected:
    void SetUp() override {
        BackupTest::SetUp();
        PutUserFiles();
        PutBackup(L"a");
    }
    bool Restore() {
        const RestoreResult result = RestoreFiles(TestUser, TEXT("a"));
        left = result.filesLeft;
        return result.isRestored;
    }
    /// Restores while this file is held open.
    bool RestoreWhileInUse(const std::wstring& path) {
        const LockedFile locked(path);
        return Restore();
    }

    Texts left;  // the files that the last restore could not remove
};

TEST_F(BackupFilesRestore, ReplacesEveryFile) {
    EXPECT_TRUE(Restore());
    ExpectRestoredDiary();
    EXPECT_TRUE(left.empty());
    ExpectNothingBeside();
}

TEST_F(BackupFilesRestore, WithoutAUserFolderItIsMade) {
    RemoveTree(FolderOf(TestUser));
    EXPECT_TRUE(Restore());
    ExpectRestoredDiary();
}

TEST_F(BackupFilesRestore, ASubFolderOfTheUsersIsReportedAndStays) {
    MakeFolder(UserFile(L"pictures"));
    Write(UserFile(L"pictures\\one"), "a picture");
    EXPECT_TRUE(Restore());
    EXPECT_EQ(left, Texts{UserFile(L"pictures")});
    EXPECT_EQ(Read(UserFile(L"pictures\\one")), "a picture");
    ExpectRestoredDiary();
    ExpectNothingBeside();
}

TEST_F(BackupFilesRestore, AReadOnlyFileIsReplacedToo) {
    ::SetFileAttributesW(UserFile(L"Notes.dat").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(Restore());
    ExpectRestoredDiary();
    ExpectNothingBeside();
}

TEST_F(BackupFilesRestore, ABackupThatCannotBeReadInFullLeavesTheDiary) {
    EXPECT_FALSE(RestoreWhileInUse(BackupFile(L"a\\Temperature.dat")));
    ExpectOldDiary();
    EXPECT_TRUE(left.empty());
    ExpectNothingBeside();
}

TEST_F(BackupFilesRestore, AFileOfTheDiaryInUseLeavesTheDiary) {
    EXPECT_FALSE(RestoreWhileInUse(UserFile(L"Bleeding.dat")));
    ExpectOldDiary();
    ASSERT_FALSE(left.empty());
    EXPECT_EQ(left[0], UserFile(L"Bleeding.dat"));
}

TEST_F(BackupFilesRestore, AFileInUseThatTheBackupLacksDoesNotStopTheRestore) {
    EXPECT_TRUE(RestoreWhileInUse(UserFile(L"Notes.dat")));
    EXPECT_EQ(left, Texts{UserFile(L"Notes.dat")});
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "old notes");
}

}  // namespace
}  // namespace lunara::test
