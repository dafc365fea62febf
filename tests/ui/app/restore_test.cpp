// Restore: what becomes of the files, and the command of the main window with its dialog.

#include <array>

#include "dialogs/backup_dialog.h"
#include "records/dates.h"
#include "resources/ids.h"
#include "storage/backup_files.h"
#include "tests/ui/app/backup_test_base.h"

namespace lunara {
namespace {

// ---- Files ----

/// With the old diary in place and a backup "a".
class RestoreFilesTest : public BackupTestBase {
  protected:
    void SetUp() override {
        BackupTestBase::SetUp();
        PutUserFiles();
        PutBackup(L"a");
    }
    static int Restore() { return RestoreFiles(TestUser, TEXT("a")); }
    static int RestoreWhileInUse(const std::wstring& path) {
        const LockedFile locked(path);
        return Restore();
    }
};

TEST_F(RestoreFilesTest, ReplacesEveryFile) {
    EXPECT_EQ(Restore(), 1);
    ExpectRestoredDiary();
    EXPECT_TRUE(messages.boxes.empty());
    ExpectNothingBeside();
}

TEST_F(RestoreFilesTest, WithoutAUserFolderItIsMade) {
    RemoveTree(FolderOf(TestUser));
    EXPECT_EQ(Restore(), 1);
    ExpectRestoredDiary();
}

TEST_F(RestoreFilesTest, ASubFolderIsShownAndStays) {
    MakeFolder(UserFile(L"pictures"));
    Write(UserFile(L"pictures\\one"), "hers");
    EXPECT_EQ(Restore(), 1);
    EXPECT_EQ(BoxTexts(), Texts{L"Fail to delete file '" + UserFile(L"pictures") + L"'"});
    EXPECT_EQ(Read(UserFile(L"pictures\\one")), "hers");
    ExpectRestoredDiary();
    ExpectNothingBeside();
}

TEST_F(RestoreFilesTest, AReadOnlyFileLeavesNothingBehind) {
    ::SetFileAttributesW(UserFile(L"Notes.dat").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Restore(), 1);
    ExpectRestoredDiary();
    ExpectNothingBeside();
}

TEST_F(RestoreFilesTest, ABackupThatCannotBeReadWhollyLeavesTheDiary) {
    EXPECT_EQ(RestoreWhileInUse(BackupFile(L"a\\Temperature.dat")), 0);
    ExpectOldDiary();
    EXPECT_TRUE(messages.boxes.empty());
    ExpectNothingBeside();
}

TEST_F(RestoreFilesTest, AFileOfTheDiaryInUseLeavesTheDiary) {
    EXPECT_EQ(RestoreWhileInUse(UserFile(L"Bleeding.dat")), 0);
    ExpectOldDiary();
    ASSERT_FALSE(messages.boxes.empty());
    EXPECT_EQ(messages.boxes[0].text, L"Fail to delete file '" + UserFile(L"Bleeding.dat") + L"'");
}

TEST_F(RestoreFilesTest, AFileInUseThatTheBackupLacksDoesNotStopTheRestore) {
    EXPECT_EQ(RestoreWhileInUse(UserFile(L"Notes.dat")), 1);
    EXPECT_EQ(BoxTexts(), Texts{L"Fail to delete file '" + UserFile(L"Notes.dat") + L"'"});
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "saved bleeding");
    EXPECT_EQ(Read(UserFile(L"Notes.dat")), "old notes");
}

// ---- Command ----

class RestoreCommandTest : public BackupTestBase {
  protected:
    void SetUp() override {
        BackupTestBase::SetUp();
        ASSERT_EQ(SignIn(), 1);
        FillDiary(main->Data());
    }
    /// Chooses the backup offered, and lets the question whether to lose the current data be
    /// answered. What follows in the script happens in the sign-in.
    void ChooseAndAnswer(int answer) {
        messages.answers = {answer};
        script->Press(IDOK);
    }
    /// The program ends, and what is in memory is not saved over what was restored.
    void ExpectEndWithoutSaving() {
        EXPECT_TRUE(TakeQuitMessage());
        EXPECT_FALSE(main->Data().IsLoaded());
        ::DestroyWindow(main->Handle());
        ExpectRestoredDiary();
    }
};

TEST_F(RestoreCommandTest, WithoutBackupsItSaysSo) {
    Command(IDM_RESTORE);
    EXPECT_EQ(BoxTexts(), Texts{L"There are no backups!"});
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
}

TEST_F(RestoreCommandTest, WithoutABackupsFolderThereAreNoBackups) {
    RestoreDialog dialog(TEXT(""), main.get());
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(BoxTexts(), Texts{L"There are no backups!"});
}

TEST_F(RestoreCommandTest, OnlyFoldersWithoutADotAreOffered) {
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

TEST_F(RestoreCommandTest, TheFirstBackupFoundIsChosen) {
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

TEST_F(RestoreCommandTest, DeletingTheLastBackupClosesTheDialog) {
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

TEST_F(RestoreCommandTest, NoKeepsTheDiary) {
    PutBackup(L"a");
    ChooseAndAnswer(IDNO);
    Command(IDM_RESTORE);
    EXPECT_EQ(main->Data().Bleeding().Count(), 1);
    EXPECT_TRUE(main->Data().IsDirty());
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "(none)");
}

TEST_F(RestoreCommandTest, ARestoreThatFailsSaysNothingAndGoesOn) {
    PutBackup(L"a");
    const LockedFile locked(BackupFile(L"a\\Temperature.dat"));
    ChooseAndAnswer(IDYES);
    Command(IDM_RESTORE);
    EXPECT_EQ(BoxTexts(), Texts{L"Restore from backup and loose current data?"});
    EXPECT_TRUE(main->Data().IsLoaded());
    EXPECT_TRUE(main->Data().IsDirty());
}

TEST_F(RestoreCommandTest, ABackupUnderAnotherPasswordNeedsThatPassword) {
    {
        UserData older;
        older.SetBleeding(3);
        MakeFolder(BackupFile(L"older"));
        ASSERT_EQ(older.SaveFolder(BackupFile(L"older").c_str(), TEXT("older password")), 1);
    }
    ChooseAndAnswer(IDYES);
    script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);            // refused
    script->Type(IDC_PASSWORD, TEXT("older password")).Press(IDOK);  // opens it
    Command(IDM_RESTORE);
    EXPECT_EQ(BoxTexts(),
              (Texts{L"Restore from backup and loose current data?", L"User/Password invalid"}));
    EXPECT_EQ(main->Data().Bleeding().Count(), 1);
    EXPECT_FALSE(main->Data().IsDirty());
    ASSERT_TRUE(Close());
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TEXT("older password")), 1);
    EXPECT_EQ(data.GetBleeding(), 3);
}

// ---- What the views show afterwards ----

class RestoredViewsTest : public RestoreCommandTest {
  protected:
    static constexpr int DaysBack = 100;

    /// A diary that begins a hundred days ago and has heavy bleeding on the current date.
    static void PutLongDiary(const SYSTEMTIME& current) {
        SYSTEMTIME first{};
        AddDays(TestToday, -DaysBack, first);
        UserData data;
        data.SetCurrentDate(first);
        data.SetBleeding(2);
        data.SetCurrentDate(current);
        data.SetBleeding(3);
        MakeFolder(BackupFile(L"long"));
        ASSERT_EQ(data.SaveFolder(BackupFile(L"long").c_str(), TestPassword), 1);
    }
    static SCROLLINFO ScrollOf(HWND view, int bar) {
        SCROLLINFO info{};
        info.cbSize = sizeof(info);
        info.fMask = SIF_RANGE | SIF_POS;
        ::GetScrollInfo(::GetDlgItem(view, bar), SB_CTL, &info);
        return info;
    }
};

TEST_F(RestoredViewsTest, BothBeginAtTheRestoredDiaryAndItsCurrentDate) {
    const SYSTEMTIME current = Day(2024, 5, 10);  // of FillDiary, 95 days after the first record
    PutLongDiary(current);
    const HWND diary = main->Diary().Handle();
    const HWND graph = main->Graph().Handle();
    for (const UINT view : {IDM_VIEW_DIARY, IDM_VIEW_GRAPH}) {
        SCOPED_TRACE(view);
        Command(view);
        PumpMessages();  // the warning of a diary without statistics takes no answer of the next
                         // box
        ::SendMessageW(diary, WM_VSCROLL, SB_PAGEUP, 0);
        ::SendMessageW(graph, WM_HSCROLL, SB_PAGEUP, 0);
        FillDiary(main->Data());
        ChooseAndAnswer(IDYES);
        script->Type(IDC_PASSWORD, TestPassword).Press(IDOK);
        Command(IDM_RESTORE);
        EXPECT_EQ(ScrollOf(diary, DiaryView::ScrollBarId).nMax, DaysBack + 365);
        EXPECT_EQ(ScrollOf(diary, DiaryView::ScrollBarId).nPos, 95 - 10);
        EXPECT_EQ(ScrollOf(graph, GraphView::ScrollBarId).nMax, DaysBack + 365);
        EXPECT_EQ(ScrollOf(graph, GraphView::ScrollBarId).nPos, 95 - 7);
        EXPECT_EQ(TextOf(::GetDlgItem(graph, GraphView::ValueEditId)), L"Heavy");
        EXPECT_TRUE(main->Data().Prediction().predictionUpToDate);
    }
}

// ---- The sign-in after it ----

TEST_F(RestoreCommandTest, GivingUpTheSignInEndsWithoutSaving) {
    PutBackup(L"foreign");
    ChooseAndAnswer(IDYES);
    script->Press(IDCANCEL);
    Command(IDM_RESTORE);
    ExpectEndWithoutSaving();
}

TEST_F(RestoreCommandTest, TheEndOfTheSessionInTheSignInEndsWithoutSaving) {
    PutBackup(L"foreign");
    ChooseAndAnswer(IDYES);
    script->Then([this](HWND) { Send(WM_ENDSESSION, TRUE); });
    Command(IDM_RESTORE);
    ExpectEndWithoutSaving();
}

TEST_F(RestoreCommandTest, ACloseMessageInTheSignInEndsWithoutSaving) {
    PutBackup(L"foreign");
    ChooseAndAnswer(IDYES);
    script->Then([this](HWND) { Send(WM_CLOSE); });
    Command(IDM_RESTORE);
    ExpectEndWithoutSaving();
}

}  // namespace
}  // namespace lunara
