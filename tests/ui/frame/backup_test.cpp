// Backup and restore: path and folder operations on real folders, the two dialogs, and the commands
// of the main window, with the documents folder and the user's folder of the test's own.

#include "frame/backup.h"

#include <fstream>
#include <iterator>

#include "frame/backup_dialogs.h"
#include "frame/backup_files.h"
#include "frame/folder_files.h"
#include "platform/clock.h"
#include "platform/pocketpc/documents_folder.h"
#include "records/data_folder.h"
#include "resources/ids.h"
#include "tests/ui/frame/main_window_test_base.h"

namespace lunara {
namespace {

std::wstring TempFolder() {
    wchar_t path[MAX_PATH] = {};
    ::GetTempPathW(MAX_PATH, path);
    return std::wstring(path) + L"lunara-backup-test";
}

void RemoveTree(const std::wstring& folder) {
    WIN32_FIND_DATAW entry{};
    const HANDLE search = ::FindFirstFileW((folder + L"\\*.*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        const std::wstring name = entry.cFileName;
        if (name == L"." || name == L"..") {
            continue;
        }
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            RemoveTree(folder + L"\\" + name);
        } else {
            ::SetFileAttributesW((folder + L"\\" + name).c_str(), FILE_ATTRIBUTE_ARCHIVE);
            ::DeleteFileW((folder + L"\\" + name).c_str());
        }
    } while (::FindNextFileW(search, &entry) != FALSE);
    ::FindClose(search);
    ::RemoveDirectoryW(folder.c_str());
}

void Write(const std::wstring& path, const std::string& text) {
    const HANDLE file =
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    ::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    ::CloseHandle(file);
}

std::string Read(const std::wstring& path) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return "(none)";
    }
    char bytes[4096] = {};
    DWORD length = 0;
    ::ReadFile(file, bytes, sizeof(bytes), &length, nullptr);
    ::CloseHandle(file);
    return {bytes, length};
}

/// Keeps a file open so that nobody can delete, move or replace it.
class LockedFile {
  public:
    explicit LockedFile(const std::wstring& path)
        : file(::CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(file, INVALID_HANDLE_VALUE);
    }
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile() { ::CloseHandle(file); }

  private:
    HANDLE file;
};

class BackupTest : public MainWindowTest {
  protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        RemoveTree(TempFolder());
        ::CreateDirectoryW(TempFolder().c_str(), nullptr);
        SetDocumentsFolder(TempFolder());
        RemoveTree(FolderOf(TestUser));
    }
    void TearDown() override {
        RemoveTree(TempFolder());
        RemoveTree(FolderOf(TestUser));
        RemoveTree(FolderOf(TestUser) + L"%7Erestore");
        RemoveTree(FolderOf(TestUser) + L"%7Easide");
        RemoveTree(FolderOf(TestUser) + L"%7Ebefore");
        SetDocumentsFolder(TEXT(""));
        MainWindowTest::TearDown();
    }

    std::wstring UserFile(const wchar_t* name) { return FolderOf(TestUser) + L"\\" + name; }
    std::wstring BackupFile(const std::wstring& name) {
        return TempFolder() + L"\\LunaraBackup\\" + TestUser + L"\\" + name;
    }
    void PutUserFiles() {
        ASSERT_EQ(CreateDirectoryTree(FolderOf(TestUser).c_str()), 1);
        Write(UserFile(L"Bleeding.dat"), "old bleeding");
        Write(UserFile(L"Notes.dat"), "old notes");
    }
    void PutBackup(const std::wstring& name) {
        ASSERT_EQ(CreateDirectoryTree(BackupFile(name).c_str()), 1);
        Write(BackupFile(name) + L"\\Bleeding.dat", "saved bleeding");
        Write(BackupFile(name) + L"\\Temperature.dat", "saved temperature");
    }
    void ExpectOldDiary() {
        EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "old bleeding");
        EXPECT_EQ(Read(UserFile(L"Notes.dat")), "old notes");
        EXPECT_EQ(Read(UserFile(L"Temperature.dat")), "(none)");
    }
    /// A file in the folder beside the user's that has this suffix; "" is her own.
    void Put(const std::wstring& suffix, const wchar_t* name, const std::string& text) {
        const std::wstring folder = FolderOf(TestUser) + suffix;
        ASSERT_EQ(CreateDirectoryTree(folder.c_str()), 1);
        Write(folder + L"\\" + name, text);
    }
    /// No folder of a restore is left.
    void ExpectNothingBeside() {
        for (const wchar_t* suffix : {L"%7Erestore", L"%7Easide", L"%7Ebefore"}) {
            EXPECT_FALSE(FileExists(FolderOf(TestUser) + suffix));
        }
    }
    std::vector<std::wstring> BoxTexts() const {
        std::vector<std::wstring> texts;
        for (const RecordedMessages::Box& box : messages.boxes) {
            texts.push_back(box.text);
        }
        return texts;
    }
};

using Texts = std::vector<std::wstring>;

// ---- Paths and folders ----

TEST_F(BackupTest, PathsAreJoinedWithOneBackslash) {
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

TEST_F(BackupTest, APathOf260UnitsIsRefusedAndLeftAlone) {
    WideString path(200, 'x');
    EXPECT_EQ(AppendPath(path, WideString(59, 'y')), 0);
    EXPECT_EQ(path.size(), 200U);
    EXPECT_EQ(AppendPath(path, WideString(58, 'y')), 1);
    EXPECT_EQ(path.size(), 259U);
}

TEST_F(BackupTest, WhatCannotBeDeletedIsShownAndTheRestGoes) {
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

TEST_F(BackupTest, DeletingQuietlyAnswersInsteadOfShowing) {
    PutUserFiles();
    const std::wstring folder = FolderOf(TestUser);
    {
        const LockedFile locked(UserFile(L"Bleeding.dat"));
        EXPECT_EQ(DeleteFolderFiles(folder.c_str(), TEXT("*.*"), true, true), 1);
    }
    ::CreateDirectoryW((folder + L"\\.hidden").c_str(), nullptr);
    EXPECT_EQ(DeleteFolderFiles(folder.c_str(), TEXT("*.*"), true, true), 2);  // .hidden is in it
    EXPECT_TRUE(messages.boxes.empty());
}

TEST_F(BackupTest, CopyingStopsAtASubFolderAndPassesOverDots) {
    PutUserFiles();
    Write(UserFile(L".hidden"), "not copied");
    const std::wstring target = TempFolder() + L"\\copy";
    ASSERT_EQ(CreateDirectoryTree(target.c_str()), 1);
    EXPECT_EQ(CopyFolderFiles(FolderOf(TestUser).c_str(), target.c_str(), TEXT("*.*"), false, true,
                              false),
              1);
    EXPECT_EQ(Read(target + L"\\Bleeding.dat"), "old bleeding");
    EXPECT_EQ(Read(target + L"\\.hidden"), "(none)");
    EXPECT_EQ(CopyFolderFiles(FolderOf(TestUser).c_str(), target.c_str(), TEXT("*.*"), false, false,
                              false),
              0);  // is there already
    ::CreateDirectoryW(UserFile(L"sub").c_str(), nullptr);
    EXPECT_EQ(
        CopyFolderFiles(FolderOf(TestUser).c_str(), target.c_str(), TEXT("*.*"), true, true, false),
        0);
}

// ---- Backup ----

TEST_F(BackupTest, TwiceUnderOneNameReplacesTheCopies) {
    PutUserFiles();
    ASSERT_EQ(BackupFiles(TestUser, TEXT("05-Mar-2006 14-07")), 1);
    EXPECT_EQ(Read(BackupFile(L"05-Mar-2006 14-07\\Bleeding.dat")), "old bleeding");
    Write(UserFile(L"Bleeding.dat"), "newer");
    ASSERT_EQ(BackupFiles(TestUser, TEXT("05-Mar-2006 14-07")), 1);
    EXPECT_EQ(Read(BackupFile(L"05-Mar-2006 14-07\\Bleeding.dat")), "newer");
}

TEST_F(BackupTest, ADataFileThatTheDiaryHasNoMoreLeavesTheBackupOfTheSameName) {
    PutUserFiles();
    ASSERT_EQ(BackupFiles(TestUser, TEXT("a")), 1);
    Write(BackupFile(L"a\\remark.txt"), "somebody else's");
    ASSERT_NE(::DeleteFileW(UserFile(L"Notes.dat").c_str()), FALSE);
    {
        const LockedFile locked(BackupFile(L"a\\Notes.dat"));
        EXPECT_EQ(BackupFiles(TestUser, TEXT("a")), 0);
    }
    EXPECT_EQ(BackupFiles(TestUser, TEXT("a")), 1);
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");
    EXPECT_EQ(Read(BackupFile(L"a\\Notes.dat")), "(none)");
    EXPECT_EQ(Read(BackupFile(L"a\\remark.txt")), "somebody else's");
}

TEST_F(BackupTest, ADiaryWithoutFilesEmptiesNoBackup) {
    PutUserFiles();
    ASSERT_EQ(BackupFiles(TestUser, TEXT("a")), 1);
    RemoveTree(FolderOf(TestUser));
    EXPECT_EQ(BackupFiles(TestUser, TEXT("a")), 1);
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");
}

TEST_F(BackupTest, SubFoldersAndALeadingBackslashAreTaken) {
    PutUserFiles();
    EXPECT_EQ(BackupFiles(TestUser, TEXT("\\a\\b")), 1);
    EXPECT_EQ(Read(BackupFile(L"a\\b\\Notes.dat")), "old notes");
}

TEST_F(BackupTest, FilesThatDesktopToolsMarkedNormalAreNotForgotten) {
    PutUserFiles();
    ::SetFileAttributesW(UserFile(L"Notes.dat").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(BackupFiles(TestUser, TEXT("a")), 1);
    EXPECT_EQ(Read(BackupFile(L"a\\Notes.dat")), "old notes");
    ::SetFileAttributesW(BackupFile(L"a\\Notes.dat").c_str(), FILE_ATTRIBUTE_NORMAL);
    Write(UserFile(L"Notes.dat"), "newer notes");
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 1);
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "old notes");
}

// Not every system lets a file be seen with that attribute, so the choice has a table, too.
TEST_F(BackupTest, FilesArePassedOverByNameAndAttribute) {
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
        {"the folder above", L"..", FILE_ATTRIBUTE_DIRECTORY, NormalFiles::Take, true},
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

TEST_F(BackupTest, ANameThatIsNoFolderIsRefused) {
    PutUserFiles();
    const struct {
        const char* label;
        std::wstring name;
    } rows[] = {
        {"empty", L""},
        {"only a backslash", L"\\"},
        {"the folder above", L".."},
        {"out of the backups", L"a\\..\\..\\b"},
        {"a dot and blanks", L" . "},
        {"forbidden characters", L"a<b>|c?"},
        {"too long", std::wstring(240, L'x')},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        messages.boxes.clear();
        EXPECT_EQ(BackupFiles(TestUser, row.name), 0);
        EXPECT_EQ(BoxTexts(), Texts{L"Cannot create backup directory!"});
    }
    ExpectOldDiary();
}

TEST_F(BackupTest, AFileInTheWayOfTheFolderIsReported) {
    PutUserFiles();
    ASSERT_EQ(CreateDirectoryTree((TempFolder() + L"\\LunaraBackup").c_str()), 1);
    Write(TempFolder() + L"\\LunaraBackup\\" + TestUser, "a file");
    EXPECT_EQ(BackupFiles(TestUser, TEXT("a")), 0);
    EXPECT_EQ(BoxTexts(), Texts{L"Cannot create backup directory!"});
}

// ---- Restore ----

TEST_F(BackupTest, RestoreReplacesEveryFile) {
    PutUserFiles();
    PutBackup(L"a");
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 1);
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
    EXPECT_EQ(Read(UserFile(L"Temperature.dat")), "saved temperature");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "(none)");
    EXPECT_TRUE(messages.boxes.empty());
    ExpectNothingBeside();
}

TEST_F(BackupTest, RestoreWithoutAUserFolderMakesIt) {
    PutBackup(L"a");
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 1);
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
}

TEST_F(BackupTest, ASubFolderIsShownAndStays) {
    PutUserFiles();
    PutBackup(L"a");
    ::CreateDirectoryW(UserFile(L"pictures").c_str(), nullptr);
    Write(UserFile(L"pictures\\one"), "hers");
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 1);
    EXPECT_EQ(BoxTexts(), Texts{L"Fail to delete file '" + UserFile(L"pictures") + L"'"});
    EXPECT_EQ(Read(UserFile(L"pictures\\one")), "hers");
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "(none)");
    ExpectNothingBeside();
}

TEST_F(BackupTest, AReadOnlyFileLeavesNothingBehind) {
    PutUserFiles();
    PutBackup(L"a");
    ::SetFileAttributesW(UserFile(L"Notes.dat").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 1);
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "(none)");
    ExpectNothingBeside();
}

TEST_F(BackupTest, ABackupThatCannotBeReadWhollyLeavesTheDiary) {
    PutUserFiles();
    PutBackup(L"a");
    const LockedFile locked(BackupFile(L"a\\Temperature.dat"));
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 0);
    ExpectOldDiary();
    EXPECT_TRUE(messages.boxes.empty());
    ExpectNothingBeside();
}

TEST_F(BackupTest, AFileOfTheDiaryInUseLeavesTheDiary) {
    PutUserFiles();
    PutBackup(L"a");
    {
        const LockedFile locked(UserFile(L"Bleeding.dat"));
        EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 0);
    }
    ExpectOldDiary();
    ASSERT_FALSE(messages.boxes.empty());
    EXPECT_EQ(messages.boxes[0].text, L"Fail to delete file '" + UserFile(L"Bleeding.dat") + L"'");
}

TEST_F(BackupTest, AFileInUseThatTheBackupLacksDoesNotStopTheRestore) {
    PutUserFiles();
    PutBackup(L"a");
    {
        const LockedFile locked(UserFile(L"Notes.dat"));
        EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 1);
    }
    EXPECT_EQ(BoxTexts(), Texts{L"Fail to delete file '" + UserFile(L"Notes.dat") + L"'"});
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "old notes");
}

TEST_F(BackupTest, ARestoreCutOffBetweenTheRenamesIsUndone) {
    PutUserFiles();
    PutBackup(L"a");
    const std::wstring folder = FolderOf(TestUser);
    ASSERT_NE(::MoveFileW(folder.c_str(), (folder + L"%7Ebefore").c_str()), FALSE);
    ::CreateDirectoryW((folder + L"%7Erestore").c_str(), nullptr);
    RecoverInterruptedRestore(TestUser);
    ExpectOldDiary();
    EXPECT_FALSE(FileExists(folder + L"%7Erestore"));
}

TEST_F(BackupTest, ARestoreCutOffWhileFilesAreSetAsideIsUndone) {
    PutUserFiles();
    Put(L"%7Easide", L"Bleeding.dat", "old bleeding");
    ::DeleteFileW(UserFile(L"Bleeding.dat").c_str());
    Put(L"%7Erestore", L"Bleeding.dat", "saved bleeding");
    Put(L"%7Erestore", L"Temperature.dat", "saved temperature");
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectOldDiary();
    ExpectNothingBeside();
}

TEST_F(BackupTest, ARestoreCutOffWhileCopiesGoInIsFinished) {
    Put(L"", L"Bleeding.dat", "saved bleeding");
    Put(L"%7Erestore", L"Temperature.dat", "saved temperature");
    Put(L"%7Ebefore", L"Bleeding.dat", "old bleeding");
    Put(L"%7Ebefore", L"Notes.dat", "old notes");
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
    EXPECT_EQ(Read(UserFile(L"Temperature.dat")), "saved temperature");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "(none)");
    ExpectNothingBeside();
}

TEST_F(BackupTest, NothingIsThrownAwayWhileARestoreCannotBeEnded) {
    Put(L"%7Easide", L"Bleeding.dat", "old bleeding");
    Put(L"%7Easide", L"Notes.dat", "old notes");
    Put(L"%7Erestore", L"Bleeding.dat", "saved bleeding");
    {
        const LockedFile locked(FolderOf(TestUser) + L"%7Easide\\Notes.dat");
        EXPECT_EQ(RecoverInterruptedRestore(TestUser), 0);
        PutBackup(L"a");
        EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 0);
        script->Type(IDC_USER_NAME, TestUser).Press(IDOK).Press(IDCANCEL);
        EXPECT_EQ(Create(), 0);
        EXPECT_EQ(BoxTexts(), Texts{L"A restore was cut off, and its files are still in use!"});
        EXPECT_FALSE(FileExists(FolderOf(TestUser) + L"\\Notes.dat"));
    }
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectOldDiary();
    ExpectNothingBeside();
}

TEST_F(BackupTest, TheOnlyCopyIsNotThrownAwayWhenItCannotGoBack) {
    Put(L"%7Ebefore", L"Bleeding.dat", "old bleeding");
    Put(L"%7Ebefore", L"Notes.dat", "old notes");
    Write(FolderOf(TestUser), "in the way");
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 0);
    EXPECT_EQ(Read(FolderOf(TestUser) + L"%7Ebefore\\Bleeding.dat"), "old bleeding");
    ::DeleteFileW(FolderOf(TestUser).c_str());
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    ExpectOldDiary();
}

TEST_F(BackupTest, WhatAnEarlierRestoreLeftIsNeverTakenForThisOnes) {
    PutUserFiles();
    PutBackup(L"a");
    Put(L"%7Ebefore", L"Bleeding.dat", "older still");
    ::CreateDirectoryW((FolderOf(TestUser) + L"%7Ebefore\\sub").c_str(), nullptr);  // keeps it
    EXPECT_EQ(RecoverInterruptedRestore(TestUser), 1);
    EXPECT_EQ(RestoreFiles(TestUser, TEXT("a")), 0);
    ExpectOldDiary();
}

TEST_F(BackupTest, ARestoreCutOffBeforeTheTidyingUpStands) {
    PutUserFiles();
    const std::wstring folder = FolderOf(TestUser);
    ::CreateDirectoryW((folder + L"%7Ebefore").c_str(), nullptr);
    Write(folder + L"%7Ebefore\\Bleeding.dat", "older still");
    RecoverInterruptedRestore(TestUser);
    ExpectOldDiary();
    EXPECT_FALSE(FileExists(folder + L"%7Ebefore"));
}

// ---- Commands ----

TEST_F(BackupTest, TheBackupDialogOffersTheMomentsStampAndSaves) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    std::wstring name;
    LRESULT checked = 0;
    script->Then([&](HWND dialog) {
        name = TextOf(::GetDlgItem(dialog, IDC_BACKUP_NAME));
        checked = ::SendDlgItemMessageW(dialog, IDC_SAVE_FIRST, BM_GETCHECK, 0, 0);
        ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    Command(IDM_BACKUP);
    EXPECT_EQ(name, L"15-May-2024 09-00");
    EXPECT_EQ(checked, BST_CHECKED);
    EXPECT_EQ(BoxTexts(), Texts{L"Backup is done!"});
    EXPECT_EQ(messages.boxes[0].caption, L"Message");
    EXPECT_EQ(Read(BackupFile(name + L"\\Bleeding.dat")), Read(UserFile(L"Bleeding.dat")));
    EXPECT_NE(Read(UserFile(L"Bleeding.dat")), "(none)");
    EXPECT_FALSE(main->Password().IsHeld());
}

TEST_F(BackupTest, AnEmptyDiaryKeepsItsPassword) {
    // There is no file that could tell whether what is typed later is the same.
    ASSERT_EQ(SignIn(), 1);
    script->Press(IDOK);
    Command(IDM_BACKUP);
    EXPECT_TRUE(main->Password().IsHeld());
    FillDiary(main->Data());
    ASSERT_TRUE(Close());
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TestPassword), 1);
}

TEST_F(BackupTest, ASaveThatFailsFirstIsSaidAndLosesNothing) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    ASSERT_EQ(CreateDirectoryTree(UserFile(L"Bleeding.dat").c_str()), 1);  // in the file's way
    messages.answers = {IDCANCEL};
    script->Press(IDOK);
    Command(IDM_BACKUP);
    ASSERT_FALSE(messages.boxes.empty());
    EXPECT_NE(messages.boxes[0].text.find(UserFile(L"Bleeding.dat")), std::wstring::npos);
    EXPECT_EQ(messages.boxes[0].flags & MB_TYPEMASK, UINT{MB_RETRYCANCEL});
    EXPECT_TRUE(main->Password().IsHeld());
    EXPECT_TRUE(main->Data().IsDirty());
    ::RemoveDirectoryW(UserFile(L"Bleeding.dat").c_str());
    ASSERT_TRUE(Close());
    UserData data;
    ASSERT_EQ(data.Load(TestUser, TestPassword), 1);
    EXPECT_EQ(data.bleeding.Count(), 1);
}

TEST_F(BackupTest, AFileThatCannotBeCopiedStopsTheBackup) {
    ASSERT_EQ(SignIn(), 1);
    PutUserFiles();
    {
        const LockedFile locked(UserFile(L"Notes.dat"));
        script->Press(IDC_SAVE_FIRST).Type(IDC_BACKUP_NAME, TEXT("a")).Press(IDOK);
        Command(IDM_BACKUP);
    }
    EXPECT_EQ(BoxTexts(), Texts{L"Backup fails!"});
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");  // what was copied stays
    ExpectOldDiary();
}

TEST_F(BackupTest, TheSecondBackupAsksForThePassword) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    script->Type(IDC_BACKUP_NAME, TEXT("first")).Press(IDOK);
    Command(IDM_BACKUP);
    main->Data().SetTemperature(9777);
    messages.boxes.clear();
    script->Type(IDC_BACKUP_NAME, TEXT("second")).Press(IDOK).Press(IDCANCEL);
    Command(IDM_BACKUP);
    EXPECT_TRUE(messages.boxes.empty());
    EXPECT_FALSE(FileExists(BackupFile(L"second")));
    script->Type(IDC_BACKUP_NAME, TEXT("second")).Press(IDOK);
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    Command(IDM_BACKUP);
    EXPECT_EQ(BoxTexts(), Texts{L"Backup is done!"});
    UserData data;
    ASSERT_EQ(data.LoadFolder(BackupFile(L"second").c_str(), TestPassword), 1);
    EXPECT_EQ(data.temperature.Count(), 1);
}

TEST_F(BackupTest, AFailedBackupIsSaid) {
    ASSERT_EQ(SignIn(), 1);
    script->Type(IDC_BACKUP_NAME, TEXT("a|b")).Press(IDOK);
    Command(IDM_BACKUP);
    EXPECT_EQ(BoxTexts(), (Texts{L"Cannot create backup directory!", L"Backup fails!"}));
    EXPECT_EQ(messages.boxes[1].caption, L"Warning");
}

TEST_F(BackupTest, WithoutSavingFirstThePasswordStaysHeld) {
    ASSERT_EQ(SignIn(), 1);
    script->Press(IDC_SAVE_FIRST).Press(IDOK);
    Command(IDM_BACKUP);
    EXPECT_TRUE(main->Password().IsHeld());
}

TEST_F(BackupTest, EntriesAfterABackupAskForThePasswordAtTheEnd) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    script->Press(IDOK);
    Command(IDM_BACKUP);
    main->Data().SetTemperature(9777);
    bool readOnly = false;
    std::wstring name;
    script->Then([&](HWND dialog) {
        const HWND edit = ::GetDlgItem(dialog, IDC_USER_NAME);
        name = TextOf(edit);
        readOnly = (::GetWindowLongPtrW(edit, GWL_STYLE) & ES_READONLY) != 0 &&
                   ::IsWindowEnabled(edit) == FALSE;
        ::SetDlgItemTextW(dialog, IDC_PASSWORD, TEXT("wrong"));
        ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    messages.boxes.clear();
    ASSERT_TRUE(Close());
    EXPECT_EQ(name, TestUser);
    EXPECT_TRUE(readOnly);
    EXPECT_EQ(BoxTexts(), Texts{L"User/Password invalid"});
    UserData data;
    ASSERT_EQ(data.Load(TestUser, TestPassword), 1);
    EXPECT_EQ(data.temperature.Count(), 1);
}

TEST_F(BackupTest, WithNothingToSaveTheEndDoesNotAsk) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    script->Press(IDOK);
    Command(IDM_BACKUP);
    EXPECT_TRUE(Close());
}

TEST_F(BackupTest, GivingUpAtTheEndAsksOnceWhetherToLeave) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    script->Press(IDOK);
    Command(IDM_BACKUP);
    main->Data().SetTemperature(9777);
    messages.boxes.clear();
    messages.answers = {IDNO};
    script->Press(IDCANCEL);
    Send(WM_CLOSE);
    EXPECT_EQ(messages.boxes.size(), 1U);
    EXPECT_NE(main->Handle(), nullptr);
    EXPECT_TRUE(main->Data().IsDirty());
    messages.answers = {IDYES};
    script->Press(IDCANCEL);
    ASSERT_TRUE(Close());
    EXPECT_EQ(messages.boxes.size(), 2U);
    UserData data;
    ASSERT_EQ(data.Load(TestUser, TestPassword), 1);
    EXPECT_EQ(data.bleeding.Count(), 1);  // what the backup saved is untouched
}

TEST_F(BackupTest, ChangingThePasswordAfterABackupAsksForThePresentOneFirst) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    script->Press(IDOK);
    Command(IDM_BACKUP);
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    script->Type(IDC_OLD_PASSWORD, TestPassword)
        .Type(IDC_NEW_PASSWORD, TEXT("newer"))
        .Type(IDC_CONFIRM_PASSWORD, TEXT("newer"))
        .Press(IDOK);
    Command(IDM_CHANGE_PASSWORD);
    ASSERT_TRUE(Close());
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TEXT("newer")), 1);
}

TEST_F(BackupTest, AFailedSaveAtTheEndSaysWhichFileAndTriesAgain) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    // A folder stands where the file has to go.
    ASSERT_EQ(CreateDirectoryTree(UserFile(L"Bleeding.dat").c_str()), 1);
    messages.answers = {IDRETRY, IDCANCEL};
    ASSERT_TRUE(Close());
    ASSERT_EQ(messages.boxes.size(), 2U);
    EXPECT_NE(messages.boxes[0].text.find(UserFile(L"Bleeding.dat")), std::wstring::npos);
    EXPECT_EQ(messages.boxes[0].flags & MB_TYPEMASK, UINT{MB_RETRYCANCEL});
    ::RemoveDirectoryW(UserFile(L"Bleeding.dat").c_str());
}

TEST_F(BackupTest, RestoreWithoutBackupsSaysSo) {
    ASSERT_EQ(SignIn(), 1);
    Command(IDM_RESTORE);
    EXPECT_EQ(BoxTexts(), Texts{L"There are no backups!"});
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
}

TEST_F(BackupTest, DeletingTheLastBackupClosesTheDialog) {
    ASSERT_EQ(SignIn(), 1);
    PutBackup(L"one");
    PutBackup(L"two");
    LRESULT count = 0;
    script->Press(IDC_DELETE_BACKUP);
    script->Then([&](HWND dialog) {
        count = ::SendDlgItemMessageW(dialog, IDC_BACKUP_LIST, CB_GETCOUNT, 0, 0);
        ::SendMessageW(dialog, WM_COMMAND, IDC_DELETE_BACKUP, 0);
    });
    Command(IDM_RESTORE);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(BoxTexts(), Texts{L"There are no backups!"});
    EXPECT_FALSE(FileExists(BackupFile(L"one")));
    EXPECT_FALSE(FileExists(BackupFile(L"two")));
}

TEST_F(BackupTest, ABackupUnderAnotherPasswordNeedsThatPassword) {
    {
        UserData older;
        older.SetBleeding(3);
        ASSERT_EQ(CreateDirectoryTree(BackupFile(L"older").c_str()), 1);
        ASSERT_EQ(older.SaveFolder(BackupFile(L"older").c_str(), TEXT("older password")), 1);
    }
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    messages.answers = {IDYES};
    script->Press(IDOK);                                             // restore
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);            // refused
    script->Type(IDC_PASSWORD, TEXT("older password")).Press(IDOK);  // opens it
    Command(IDM_RESTORE);
    EXPECT_EQ(BoxTexts(),
              (Texts{L"Restore from backup and loose current data?", L"User/Password invalid"}));
    EXPECT_EQ(main->Data().bleeding.Count(), 1);
    EXPECT_FALSE(main->Data().IsDirty());
    ASSERT_TRUE(Close());
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TEXT("older password")), 1);
    EXPECT_EQ(data.GetBleeding(), 3);
}

TEST_F(BackupTest, TheEndOfTheSessionAsksWhileSomebodyIsThere) {
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    script->Press(IDOK);
    Command(IDM_BACKUP);
    main->Data().SetTemperature(9777);
    messages.boxes.clear();
    messages.answers = {IDNO};
    script->Press(IDCANCEL);
    EXPECT_EQ(Send(WM_QUERYENDSESSION), FALSE);
    EXPECT_EQ(BoxTexts(), Texts{L"Leave without saving your last entries?"});
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
    EXPECT_EQ(Send(WM_QUERYENDSESSION), TRUE);
    EXPECT_TRUE(main->Data().IsDirty());
    Send(WM_ENDSESSION, TRUE);
    MSG message{};
    EXPECT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    UserData data;
    ASSERT_EQ(data.Load(TestUser, TestPassword), 1);
    EXPECT_EQ(data.temperature.Count(), 1);
}

TEST_F(BackupTest, WithoutABackupsFolderThereAreNoBackups) {
    ASSERT_EQ(SignIn(), 1);
    RestoreDialog dialog(TEXT(""), main.get());
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(BoxTexts(), Texts{L"There are no backups!"});
}

TEST_F(BackupTest, ARestoreThatFailsSaysNothingAndGoesOn) {
    PutBackup(L"a");
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    const LockedFile locked(BackupFile(L"a\\Temperature.dat"));
    messages.answers = {IDYES};
    script->Press(IDOK);
    Command(IDM_RESTORE);
    EXPECT_EQ(BoxTexts(), Texts{L"Restore from backup and loose current data?"});
    EXPECT_TRUE(main->Data().IsLoaded());
    EXPECT_TRUE(main->Data().IsDirty());
}

TEST_F(BackupTest, AnyEndInTheSignInAfterARestoreKeepsTheRestoredFiles) {
    for (const UINT message : {UINT{WM_ENDSESSION}, UINT{WM_CLOSE}}) {
        SCOPED_TRACE(message);
        RemoveTree(FolderOf(TestUser));
        PutBackup(L"foreign");
        ASSERT_EQ(SignIn(), 1);
        FillDiary(main->Data());
        messages.answers = {IDYES};
        script->Press(IDOK).Then([&](HWND) { Send(message, TRUE); });
        Command(IDM_RESTORE);
        MSG quit{};
        EXPECT_TRUE(::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
        ::DestroyWindow(main->Handle());
        EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
        EXPECT_EQ(Read(UserFile(L"Notes.dat")), "(none)");
    }
}

TEST_F(BackupTest, GivingUpTheSignInAfterARestoreEndsWithoutSaving) {
    PutBackup(L"foreign");
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    messages.answers = {IDYES};
    script->Press(IDOK).Press(IDCANCEL);
    Command(IDM_RESTORE);
    MSG message{};
    EXPECT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_FALSE(main->Data().IsLoaded());
    ::DestroyWindow(main->Handle());
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
}

TEST_F(BackupTest, NoKeepsTheDiary) {
    PutBackup(L"a");
    ASSERT_EQ(SignIn(), 1);
    FillDiary(main->Data());
    messages.answers = {IDNO};
    script->Press(IDOK);
    Command(IDM_RESTORE);
    EXPECT_EQ(main->Data().bleeding.Count(), 1);
    EXPECT_TRUE(main->Data().IsDirty());
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "(none)");
}

}  // namespace
}  // namespace lunara
