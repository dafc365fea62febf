// Operations on paths and on the files of one folder, run on real folders.

#include "storage/folder_files.h"

#include "tests/ui/app/backup_test_base.h"

namespace lunara::test {
namespace {

class FolderFiles : public BackupTest {};

// ---- Paths ----

TEST_F(FolderFiles, PathsAreJoinedWithOneBackslash) {
    const struct {
        const char* label;
        const WCHAR* path;
        const WCHAR* name;
        const WCHAR* joined;
    } rows[] = {
        {"neither brings one", L"C:\\a", L"b", L"C:\\a\\b"},
        {"the path does", L"C:\\a\\", L"b", L"C:\\a\\b"},
        {"the name does", L"C:\\a", L"\\b", L"C:\\a\\b"},
        {"both do", L"C:\\a\\", L"\\b", L"C:\\a\\b"},
        {"sub-folders", L"C:\\a", L"b\\c", L"C:\\a\\b\\c"},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        WideString path = row.path;
        EXPECT_EQ(AppendPath(path, row.name), 1);
        EXPECT_EQ(path, row.joined);
    }
}

TEST_F(FolderFiles, APathOf260UnitsIsRefusedAndLeavesTheArgument) {
    WideString path(200, 'x');
    EXPECT_EQ(AppendPath(path, WideString(59, 'y')), 0);
    EXPECT_EQ(path.size(), 200U);
    EXPECT_EQ(AppendPath(path, WideString(58, 'y')), 1);
    EXPECT_EQ(path.size(), 259U);
}

// ---- Deleting ----

TEST_F(FolderFiles, AFileThatCannotBeDeletedIsReportedAndTheOthersGo) {
    PutUserFiles();
    const std::wstring folder = FolderOf(TestUser);
    {
        const LockedFile locked(UserFile(L"Bleeding.dat"));
        const NotDeleted left = DeleteFolderFiles(folder.c_str(), TEXT("*.*"), FolderItself::Goes);
        EXPECT_EQ(left.files, Texts{UserFile(L"Bleeding.dat")});
        EXPECT_EQ(left.folder, folder);
    }
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "(none)");
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "old bleeding");
}

TEST_F(FolderFiles, AFolderGoesWithItsFilesUnlessItHoldsAHiddenOne) {
    PutUserFiles();
    const std::wstring folder = FolderOf(TestUser);
    MakeFolder(folder + L"\\.hidden");
    const NotDeleted left = DeleteFolderFiles(folder.c_str(), TEXT("*.*"), FolderItself::Goes);
    EXPECT_TRUE(left.files.empty());
    EXPECT_EQ(left.folder, folder);
    RemoveTree(folder + L"\\.hidden");
    EXPECT_TRUE(DeleteFolderFiles(folder.c_str(), TEXT("*.*"), FolderItself::Goes).IsNothing());
    EXPECT_FALSE(FileExists(folder));
}

// ---- Copying ----

TEST_F(FolderFiles, CopyingReplacesFilesStopsAtASubFolderAndSkipsNamesThatBeginWithADot) {
    PutUserFiles();
    Write(UserFile(L".hidden"), "not copied");
    const std::wstring source = FolderOf(TestUser);
    const std::wstring target = Documents() + L"\\copy";
    MakeFolder(target);
    Write(target + L"\\Bleeding.dat", "replaced");
    const auto copy = [&source, &target] {
        return CopyFolderFiles(source.c_str(), target.c_str(), TEXT("*.*"));
    };
    EXPECT_EQ(copy(), 1);
    EXPECT_EQ(Read(target + L"\\Bleeding.dat"), "old bleeding");
    EXPECT_EQ(Read(target + L"\\.hidden"), "(none)");
    MakeFolder(UserFile(L"sub"));
    EXPECT_EQ(copy(), 0);
}

}  // namespace
}  // namespace lunara::test
