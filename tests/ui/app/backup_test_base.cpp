#include "tests/ui/app/backup_test_base.h"

#include <array>

#include "platform/pocketpc/documents_folder.h"
#include "storage/data_folder.h"

namespace lunara::test {

LockedFile::LockedFile(const std::wstring& path)
    : file(::CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
}

LockedFile::~LockedFile() { ::CloseHandle(file); }

FailingMoves::FailingMoves(int failingMove, Way failingWay) : failAt(failingMove), way(failingWay) {
    UseFileCalls(this);
}

FailingMoves::~FailingMoves() { UseFileCalls(nullptr); }

BOOL FailingMoves::Replace(const WCHAR* from, const WCHAR* to) {
    return Fails() ? FALSE : FileCalls::Replace(from, to);
}

BOOL FailingMoves::MoveFolder(const WCHAR* from, const WCHAR* to) {
    return Fails() ? FALSE : FileCalls::MoveFolder(from, to);
}

bool FailingMoves::Fails() {
    const int since = count++ - failAt;
    const bool fails = failAt >= 0 && since >= 0 &&
                       (way == Way::FromThereOn || since < (way == Way::TwoMoves ? 2 : 1));
    if (fails) {
        ::SetLastError(ERROR_ACCESS_DENIED);
    }
    return fails;
}

void BackupTest::SetUp() {
    MainWindowTest::SetUp();
    RemoveTree(Documents());
    MakeFolder(Documents());
    SetDocumentsFolder(Documents());
    RemoveTree(FolderOf(TestUser));
}

void BackupTest::TearDown() {
    RemoveTree(Documents());
    for (const wchar_t* suffix : {L"", Staged, Aside, Before}) {
        RemoveTree(FolderOf(TestUser) + suffix);
    }
    SetDocumentsFolder(TEXT(""));
    MainWindowTest::TearDown();
}

// ---- Paths ----

std::wstring BackupTest::Documents() {
    std::array<wchar_t, MAX_PATH> path{};
    ::GetTempPathW(MAX_PATH, path.data());
    return std::wstring(path.data()) + L"lunara-backup-test";
}

std::wstring BackupTest::UserFile(const std::wstring& name) { return FileBeside(L"", name); }

std::wstring BackupTest::BackupFile(const std::wstring& name) {
    return Documents() + L"\\LunaraBackup\\" + TestUser + L"\\" + name;
}

std::wstring BackupTest::FileBeside(const wchar_t* suffix, const std::wstring& name) {
    return FolderOf(TestUser) + suffix + L"\\" + name;
}

// ---- Files ----

void BackupTest::RemoveTree(const std::wstring& folder) {
    WIN32_FIND_DATAW entry{};
    const HANDLE search = ::FindFirstFileW((folder + L"\\*.*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        ::RemoveDirectoryW(folder.c_str());  // empty, or too long a path to search
        return;
    }
    do {
        const std::wstring name = entry.cFileName;
        if (name == L"." || name == L"..") {
            continue;
        }
        const std::wstring path = folder + L"\\" + name;
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            RemoveTree(path);
        } else {
            ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_ARCHIVE);
            ::DeleteFileW(path.c_str());
        }
    } while (::FindNextFileW(search, &entry) != FALSE);
    ::FindClose(search);
    ::RemoveDirectoryW(folder.c_str());
}

void BackupTest::MakeFolder(const std::wstring& folder) {
    ASSERT_EQ(CreateDirectoryTree(folder.c_str()), 1);
}

void BackupTest::Put(const wchar_t* suffix, const wchar_t* name, const std::string& text) {
    MakeFolder(FolderOf(TestUser) + suffix);
    Write(FileBeside(suffix, name), text);
}

void BackupTest::PutUserFiles() {
    Put(L"", L"Bleeding.dat", "old bleeding");
    Put(L"", L"Notes.dat", "old notes");
}

void BackupTest::PutBackup(const std::wstring& name) {
    MakeFolder(BackupFile(name));
    Write(BackupFile(name + L"\\Bleeding.dat"), "saved bleeding");
    Write(BackupFile(name + L"\\Temperature.dat"), "saved temperature");
}

// ---- Expectations ----

void BackupTest::ExpectOldDiary() {
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "old bleeding");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "old notes");
    EXPECT_EQ(Read(UserFile(L"Temperature.dat")), "(none)");
}

void BackupTest::ExpectRestoredDiary() {
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
    EXPECT_EQ(Read(UserFile(L"Temperature.dat")), "saved temperature");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "(none)");
}

void BackupTest::ExpectNothingBeside() {
    for (const wchar_t* suffix : {Staged, Aside, Before}) {
        EXPECT_FALSE(FileExists(FolderOf(TestUser) + suffix));
    }
}

Texts BackupTest::BoxTexts() const {
    Texts texts;
    for (const RecordedMessages::Box& box : messages.boxes) {
        texts.push_back(box.text);
    }
    return texts;
}

}  // namespace lunara::test
