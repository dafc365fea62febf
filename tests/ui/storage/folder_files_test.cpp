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
        EXPECT_EQ(DeleteFolderFiles(folder.c_str(), TEXT("*.*"), true, false), 0);
    }
    EXPECT_EQ(BoxTexts(), (Texts{L"Fail to delete file '" + UserFile(L"Bleeding.dat") + L"'",
                                 L"Fail to delete folder '" + folder + L"'"}));
    EXPECT_EQ(messages.boxes[0].caption, L"Error");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "(none)");
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "old bleeding");
}

TEST_F(FolderFiles, DeletingQuietlyReturnsTheFailureInsteadOfShowingIt) {
    PutUserFiles();
    const std::wstring folder = FolderOf(TestUser);
    {
        const LockedFile locked(UserFile(L"Bleeding.dat"));
        EXPECT_EQ(DeleteFolderFiles(folder.c_str(), TEXT("*.*"), true, true), 1);
    }
    MakeFolder(folder + L"\\.hidden");  // keeps the folder from being removed
    EXPECT_EQ(DeleteFolderFiles(folder.c_str(), TEXT("*.*"), true, true), 2);
    EXPECT_TRUE(messages.boxes.empty());
}

// ---- Copying ----

TEST_F(FolderFiles, CopyingStopsAtASubFolderAndSkipsNamesThatBeginWithADot) {
    PutUserFiles();
    Write(UserFile(L".hidden"), "not copied");
    const std::wstring source = FolderOf(TestUser);
    const std::wstring target = Documents() + L"\\copy";
    MakeFolder(target);
    const auto copy = [&source, &target](bool clearFirst, bool overwrite) {
        return CopyFolderFiles(source.c_str(), target.c_str(), TEXT("*.*"), clearFirst, overwrite,
                               false);
    };
    EXPECT_EQ(copy(false, true), 1);
    EXPECT_EQ(Read(target + L"\\Bleeding.dat"), "old bleeding");
    EXPECT_EQ(Read(target + L"\\.hidden"), "(none)");
    EXPECT_EQ(copy(false, false), 0);  // the copies exist already
    MakeFolder(UserFile(L"sub"));
    EXPECT_EQ(copy(true, true), 0);
}

// Some systems never report FILE_ATTRIBUTE_NORMAL for a file on disk, so the decision is tested on
// its own, too.
TEST_F(FolderFiles, FilesArePassedOverByNameAndAttribute) {
    const struct {
        const char* label;
        const WCHAR* name;
        DWORD attributes;
        NormalFiles normal;
        bool isPassedOver;
    } rows[] = {
        {"a user's file", L"Notes.dat", FILE_ATTRIBUTE_ARCHIVE, NormalFiles::PassOver, false},
        {"normal, on the device", L"Notes.dat", FILE_ATTRIBUTE_NORMAL, NormalFiles::PassOver, true},
        {"normal, on a desktop", L"Notes.dat", FILE_ATTRIBUTE_NORMAL, NormalFiles::Take, false},
        {"no attributes", L"Notes.dat", 0, NormalFiles::PassOver, false},
        {"read-only", L"Notes.dat", FILE_ATTRIBUTE_READONLY, NormalFiles::PassOver, false},
        {"the parent folder", L"..", FILE_ATTRIBUTE_DIRECTORY, NormalFiles::Take, true},
        {"a name with a dot first", L".Notes", FILE_ATTRIBUTE_ARCHIVE, NormalFiles::Take, true},
        {"a sub-folder", L"more", FILE_ATTRIBUTE_DIRECTORY, NormalFiles::Take, false},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        WIN32_FIND_DATAW entry{};
        entry.dwFileAttributes = row.attributes;
        ::lstrcpynW(entry.cFileName, row.name, MAX_PATH);
        EXPECT_EQ(IsPassedOver(entry, row.normal), row.isPassedOver);
    }
}

}  // namespace
}  // namespace lunara::test
