// The command "Backup": its dialog, saving first, and what it says. The copying itself is tested in
// storage/backup_files_test.cpp.

#include "app/backup.h"

#include "platform/text.h"
#include "resources/ids.h"
#include "tests/ui/app/backup_test_base.h"

namespace lunara::test {
namespace {

class BackupCommand : public BackupTest {
  protected:
    void SetUp() override {
        BackupTest::SetUp();
        ASSERT_EQ(SignIn(), 1);
    }
    /// A backup folder in which this file's path has that length in UTF-16 units.
    static std::wstring BackupFolderFor(const std::wstring& file, std::size_t length) {
        const std::wstring backups = BackupFile(L"");
        return backups + std::wstring(length - backups.size() - file.size(), L'x');
    }
    /// Backs up without saving first, so that the files on disk are copied as they are.
    void CopyTo(const std::wstring& name) {
        script->Press(IDC_SAVE_FIRST).Type(IDC_BACKUP_NAME, name.c_str()).Press(IDOK);
        Command(IDM_BACKUP);
    }
};

TEST_F(BackupCommand, TheDialogOffersTheDateAndTimeAsNameAndSavesFirst) {
    FillDiary(main->Data());
    std::wstring name;
    LRESULT checked = 0;
    LRESULT limit = 0;
    script->Then([&](HWND dialog) {
        name = TextOf(::GetDlgItem(dialog, IDC_BACKUP_NAME));
        limit = ::SendDlgItemMessageW(dialog, IDC_BACKUP_NAME, EM_GETLIMITTEXT, 0, 0);
        checked = ::SendDlgItemMessageW(dialog, IDC_SAVE_FIRST, BM_GETCHECK, 0, 0);
        ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    Command(IDM_BACKUP);
    EXPECT_EQ(name, L"15-May-2024 09-00");
    EXPECT_EQ(limit, 259);
    EXPECT_EQ(checked, BST_CHECKED);
    EXPECT_EQ(BoxTexts(), Texts{L"Backup is done!"});
    EXPECT_EQ(messages.boxes[0].caption, L"Message");
    EXPECT_EQ(Read(BackupFile(name + L"\\Bleeding.dat")), Read(UserFile(L"Bleeding.dat")));
    EXPECT_NE(Read(UserFile(L"Bleeding.dat")), "(none)");
    EXPECT_FALSE(main->Password().IsHeld());
}

TEST_F(BackupCommand, AnEmptyDiaryKeepsItsPassword) {
    // With no file on disk, nothing could tell later whether a typed password is the same.
    script->Press(IDOK);
    Command(IDM_BACKUP);
    EXPECT_TRUE(main->Password().IsHeld());
    FillDiary(main->Data());
    ASSERT_TRUE(Close());
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TestPassword), 1);
}

TEST_F(BackupCommand, ASaveThatFailsBeforeTheBackupIsReportedAndLosesNothing) {
    FillDiary(main->Data());
    MakeFolder(UserFile(L"Bleeding.dat"));  // a folder where the file has to go
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

TEST_F(BackupCommand, AFileThatCannotBeCopiedStopsTheBackup) {
    PutUserFiles();
    {
        const LockedFile locked(UserFile(L"Notes.dat"));
        CopyTo(L"a");
    }
    EXPECT_EQ(BoxTexts(), Texts{L"Backup fails!"});
    // Copies made before the failure stay.
    EXPECT_EQ(Read(BackupFile(L"a\\Bleeding.dat")), "old bleeding");
    ExpectOldDiary();
}

TEST_F(BackupCommand, AFailedBackupIsReported) {
    script->Type(IDC_BACKUP_NAME, TEXT("a|b")).Press(IDOK);
    Command(IDM_BACKUP);
    EXPECT_EQ(BoxTexts(), (Texts{L"Cannot create backup directory!", L"Backup fails!"}));
    EXPECT_EQ(messages.boxes[1].caption, L"Warning");
}

TEST_F(BackupCommand, NoPathHasMoreThan259Units) {
    PutUserFiles();
    const struct {
        const char* label;
        const wchar_t* file;  // whose path gets that length; "" for the folder itself
        std::size_t length;
        Texts boxes;
    } rows[] = {
        {"the longest copy has 259", L"\\Bleeding.dat", 259, {L"Backup is done!"}},
        {"the longest copy has 260", L"\\Bleeding.dat", 260, {L"Backup fails!"}},
        {"the folder has 260", L"", 260, {L"Cannot create backup directory!", L"Backup fails!"}},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        messages.boxes.clear();
        const bool fits = row.length < PathCapacity;
        const std::wstring folder = BackupFolderFor(row.file, row.length);
        CopyTo(folder.substr(BackupFile(L"").size()));
        EXPECT_EQ(BoxTexts(), row.boxes);
        EXPECT_EQ(Read(folder + L"\\Bleeding.dat"), fits ? "old bleeding" : "(none)");
        EXPECT_EQ(Read(folder + L"\\Notes.dat"), fits ? "old notes" : "(none)");
        ExpectOldDiary();
    }
}

// Whether a folder can be made whose path leaves no room for a file depends on the system; either
// way the backup fails.
TEST_F(BackupCommand, AFolderOf259UnitsHoldsNoFile) {
    PutUserFiles();
    const std::wstring folder = BackupFolderFor(L"", 259);
    CopyTo(folder.substr(BackupFile(L"").size()));
    ASSERT_FALSE(messages.boxes.empty());
    EXPECT_EQ(messages.boxes.back().text, L"Backup fails!");
    EXPECT_EQ(Read(folder + L"\\Bleeding.dat"), "(none)");
    ExpectOldDiary();
}

TEST_F(BackupCommand, WithoutSavingFirstThePasswordStaysHeld) {
    script->Press(IDC_SAVE_FIRST).Press(IDOK);
    Command(IDM_BACKUP);
    EXPECT_TRUE(main->Password().IsHeld());
}

}  // namespace
}  // namespace lunara::test
