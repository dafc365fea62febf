// The restore dialog: the backups that it lists, and deleting them. What it restores is tested in
// app/backup_restore_test.cpp, the backup dialog in app/backup_test.cpp.

#include "dialogs/restore_dialog.h"

#include <array>

#include "resources/ids.h"
#include "tests/ui/app/backup_test_base.h"

namespace lunara::test {
namespace {

class RestoreDialog : public BackupTest {
  protected:
    void SetUp() override {
        BackupTest::SetUp();
        ASSERT_EQ(SignIn(), 1);
    }
};

TEST_F(RestoreDialog, WithoutABackupsFolderItSaysThatThereAreNoBackups) {
    lunara::RestoreDialog dialog(TEXT(""), main.get());
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(BoxTexts(), Texts{L"There are no backups!"});
}

TEST_F(RestoreDialog, OnlyFoldersWithoutADotAreOffered) {
    PutBackup(L"two");
    PutBackup(L"one");
    MakeFolder(BackupFile(L".hidden"));
    Write(BackupFile(L"a file"), "no backup");
    std::vector<std::wstring> offered;
    script->Then([&](HWND dialog) {
        const HWND list = ::GetDlgItem(dialog, IDC_BACKUP_LIST);
        for (LRESULT i = 0; i < ::SendMessageW(list, CB_GETCOUNT, 0, 0); ++i) {
            std::array<wchar_t, MAX_PATH> name{};
            ::SendMessageW(list, CB_GETLBTEXT, static_cast<WPARAM>(i),
                           reinterpret_cast<LPARAM>(name.data()));
            offered.emplace_back(name.data());
        }
        ::SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    Command(IDM_RESTORE);
    EXPECT_EQ(offered, (std::vector<std::wstring>{L"one", L"two"}));
}

TEST_F(RestoreDialog, TheFirstBackupFoundIsChosen) {
    for (const wchar_t* name : {L"m", L"z", L"a"}) {
        PutBackup(name);
    }
    WIN32_FIND_DATAW entry{};
    const HANDLE search = ::FindFirstFileW(BackupFile(L"*.*").c_str(), &entry);
    while (entry.cFileName[0] == L'.' && ::FindNextFileW(search, &entry) != FALSE) {
    }
    ::FindClose(search);
    std::wstring chosen;
    script->Then([&](HWND dialog) {
        chosen = TextOf(::GetDlgItem(dialog, IDC_BACKUP_LIST));
        ::SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    Command(IDM_RESTORE);
    EXPECT_EQ(chosen, entry.cFileName);
}

TEST_F(RestoreDialog, DeletingTheLastBackupClosesIt) {
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

}  // namespace
}  // namespace lunara::test
