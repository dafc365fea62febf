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
    static int BackUp(const std::wstring& name) { return lunara::BackupFiles(TestUser, name); }
};

TEST_F(BackupFiles, ASecondBackupOfTheSameNameReplacesTheCopies) {
    ASSERT_EQ(BackUp(L"05-Mar-2006 14-07"), 1);
    EXPECT_EQ(Read(BackupFile(L"05-Mar-2006 14-07\\Bleeding.dat")), "old bleeding");
    Write(UserFile(L"Bleeding.dat"), "newer");
    ASSERT_EQ(BackUp(L"05-Mar-2006 14-07"), 1);
    EXPECT_EQ(Read(BackupFile(L"05-Mar-2006 14-07\\Bleeding.dat")), "newer");
}

TEST_F(BackupFiles, ADataFileThatTheDiaryNoLongerHasIsRemovedFromTheBackup) {
    ASSERT_EQ(BackUp(L"a"), 1);
    Write(BackupFile(L"a\\remark.txt"), "not of the diary");
    ASSERT_NE(::DeleteFileW(UserFile(L"Notes.dat").c_str()), FALSE);
    {
        const LockedFile locked(BackupFile(L"a\\Notes.dat"));
        EXPECT_EQ(BackUp(L"a"), 0);
    }
    EXPECT_EQ(BackUp(L"a"), 1);
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");
    EXPECT_EQ(Read(BackupFile(L"a\\Notes.dat")), "(none)");
    EXPECT_EQ(Read(BackupFile(L"a\\remark.txt")), "not of the diary");
}

TEST_F(BackupFiles, ADiaryWithoutFilesEmptiesNoBackup) {
    ASSERT_EQ(BackUp(L"a"), 1);
    RemoveTree(FolderOf(TestUser));
    EXPECT_EQ(BackUp(L"a"), 1);
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");
}

TEST_F(BackupFiles, ANameMayHoldSubFoldersAndALeadingBackslash) {
    EXPECT_EQ(BackUp(L"\\a\\b"), 1);
    EXPECT_EQ(Read(BackupFile(L"a\\b\\Notes.dat")), "old notes");
}

TEST_F(BackupFiles, FilesWithTheAttributeNormalAreBackedUpAndRestored) {
    ::SetFileAttributesW(UserFile(L"Notes.dat").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(BackUp(L"a"), 1);
    EXPECT_EQ(Read(BackupFile(L"a\\Notes.dat")), "old notes");
    ::SetFileAttributesW(BackupFile(L"a\\Notes.dat").c_str(), FILE_ATTRIBUTE_NORMAL);
    Write(UserFile(L"Notes.dat"), "newer notes");
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 1);
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
        messages.boxes.clear();
        EXPECT_EQ(BackUp(row.name), 0);
        EXPECT_EQ(BoxTexts(), Texts{L"Cannot create backup directory!"});
    }
    ExpectOldDiary();
}

TEST_F(BackupFiles, AFileInPlaceOfTheBackupsFolderIsReported) {
    MakeFolder(Documents() + L"\\LunaraBackup");
    Write(Documents() + L"\\LunaraBackup\\" + TestUser, "a file");
    EXPECT_EQ(BackUp(L"a"), 0);
    EXPECT_EQ(BoxTexts(), Texts{L"Cannot create backup directory!"});
}

/// The user has the old diary and one backup, "a".
class BackupFilesRestore : public BackupTest {
  protected:
    void SetUp() override {
        BackupTest::SetUp();
        PutUserFiles();
        PutBackup(L"a");
    }
    static int Restore() { return RestoreFiles(TestUser, TEXT("a")); }
    /// Restores while this file is held open.
    static int RestoreWhileInUse(const std::wstring& path) {
        const LockedFile locked(path);
        return Restore();
    }
};

TEST_F(BackupFilesRestore, ReplacesEveryFile) {
    EXPECT_EQ(Restore(), 1);
    ExpectRestoredDiary();
    EXPECT_TRUE(messages.boxes.empty());
    ExpectNothingBeside();
}

TEST_F(BackupFilesRestore, WithoutAUserFolderItIsMade) {
    RemoveTree(FolderOf(TestUser));
    EXPECT_EQ(Restore(), 1);
    ExpectRestoredDiary();
}

TEST_F(BackupFilesRestore, ASubFolderOfTheUsersIsReportedAndStays) {
    MakeFolder(UserFile(L"pictures"));
    Write(UserFile(L"pictures\\one"), "hers");
    EXPECT_EQ(Restore(), 1);
    EXPECT_EQ(BoxTexts(), Texts{L"Fail to delete file '" + UserFile(L"pictures") + L"'"});
    EXPECT_EQ(Read(UserFile(L"pictures\\one")), "hers");
    ExpectRestoredDiary();
    ExpectNothingBeside();
}

TEST_F(BackupFilesRestore, AReadOnlyFileIsReplacedToo) {
    ::SetFileAttributesW(UserFile(L"Notes.dat").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Restore(), 1);
    ExpectRestoredDiary();
    ExpectNothingBeside();
}

TEST_F(BackupFilesRestore, ABackupThatCannotBeReadInFullLeavesTheDiary) {
    EXPECT_EQ(RestoreWhileInUse(BackupFile(L"a\\Temperature.dat")), 0);
    ExpectOldDiary();
    EXPECT_TRUE(messages.boxes.empty());
    ExpectNothingBeside();
}

TEST_F(BackupFilesRestore, AFileOfTheDiaryInUseLeavesTheDiary) {
    EXPECT_EQ(RestoreWhileInUse(UserFile(L"Bleeding.dat")), 0);
    ExpectOldDiary();
    ASSERT_FALSE(messages.boxes.empty());
    EXPECT_EQ(messages.boxes[0].text, L"Fail to delete file '" + UserFile(L"Bleeding.dat") + L"'");
}

TEST_F(BackupFilesRestore, AFileInUseThatTheBackupLacksDoesNotStopTheRestore) {
    EXPECT_EQ(RestoreWhileInUse(UserFile(L"Notes.dat")), 1);
    EXPECT_EQ(BoxTexts(), Texts{L"Fail to delete file '" + UserFile(L"Notes.dat") + L"'"});
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "old notes");
}

}  // namespace
}  // namespace lunara::test
