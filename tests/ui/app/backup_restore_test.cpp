// The command "Restore": its question, the sign-in after it, what the views show then, and a
// restore that is cut off. The replacing of files is tested in storage/backup_files_test.cpp.

#include "app/backup.h"
#include "records/dates.h"
#include "resources/ids.h"
#include "storage/backup_files.h"
#include "tests/ui/app/backup_test_base.h"

namespace lunara::test {
namespace {

class RestoreCommand : public BackupTest {
  protected:
    void SetUp() override {
        BackupTest::SetUp();
        ASSERT_EQ(SignIn(), 1);
        FillDiary(main->Data());
    }
    /// Queues the choice of the backup that the dialog offers, and the answer to the question
    /// whether to lose the current data. Later steps of the script belong to the sign-in.
    void ChooseAndAnswer(int answer) {
        messages.answers = {answer};
        script->Press(IDOK);
    }
    /// The program ends without saving what is in memory over the restored files.
    void ExpectEndWithoutSaving() {
        EXPECT_TRUE(TakeQuitMessage());
        EXPECT_FALSE(main->Data().IsLoaded());
        ::DestroyWindow(main->Handle());
        ExpectRestoredDiary();
    }
};

TEST_F(RestoreCommand, WithoutBackupsItSaysSo) {
    Command(IDM_RESTORE);
    EXPECT_EQ(BoxTexts(), Texts{L"There are no backups!"});
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
}

TEST_F(RestoreCommand, TheAnswerNoKeepsTheDiary) {
    PutBackup(L"a");
    ChooseAndAnswer(IDNO);
    Command(IDM_RESTORE);
    EXPECT_EQ(main->Data().bleeding.Count(), 1);
    EXPECT_TRUE(main->Data().IsDirty());
    EXPECT_EQ(Read(UserFile(L"Bleeding.dat")), "(none)");
}

TEST_F(RestoreCommand, ARestoreThatFailsLeavesTheDiaryOpenWithoutABox) {
    PutBackup(L"a");
    const LockedFile locked(BackupFile(L"a\\Temperature.dat"));
    ChooseAndAnswer(IDYES);
    Command(IDM_RESTORE);
    EXPECT_EQ(BoxTexts(), Texts{L"Restore from backup and loose current data?"});
    EXPECT_TRUE(main->Data().IsLoaded());
    EXPECT_TRUE(main->Data().IsDirty());
}

TEST_F(RestoreCommand, ABackupUnderAnotherPasswordNeedsThatPassword) {
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
    EXPECT_EQ(main->Data().bleeding.Count(), 1);
    EXPECT_FALSE(main->Data().IsDirty());
    ASSERT_TRUE(Close());
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TEXT("older password")), 1);
    EXPECT_EQ(data.GetBleeding(), 3);
}

// ---- The views afterwards ----

class RestoredViews : public RestoreCommand {
  protected:
    static constexpr int DaysBack = 100;

    /// Makes a backup of a diary that begins DaysBack ago and has heavy bleeding on `current`.
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

TEST_F(RestoredViews, BothBeginAtTheRestoredDiaryAndItsCurrentDate) {
    // FillDiary's date, 95 days after the first record.
    const SYSTEMTIME current = Day(2024, 5, 10);
    PutLongDiary(current);
    const HWND diary = main->Diary().Handle();
    const HWND graph = main->Graph().Handle();
    for (const UINT view : {UINT{IDM_VIEW_DIARY}, UINT{IDM_VIEW_GRAPH}}) {
        SCOPED_TRACE(view);
        Command(view);
        // Shows the statistics warning now, so that it does not take the answer queued below.
        PumpMessages();
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
        EXPECT_TRUE(main->Data().predictor.predictionUpToDate);
    }
}

// ---- The sign-in afterwards ----

TEST_F(RestoreCommand, GivingUpTheSignInEndsWithoutSaving) {
    PutBackup(L"foreign");
    ChooseAndAnswer(IDYES);
    script->Press(IDCANCEL);
    Command(IDM_RESTORE);
    ExpectEndWithoutSaving();
}

TEST_F(RestoreCommand, TheEndOfTheSessionInTheSignInEndsWithoutSaving) {
    PutBackup(L"foreign");
    ChooseAndAnswer(IDYES);
    script->Then([this](HWND) { Send(WM_ENDSESSION, TRUE); });
    Command(IDM_RESTORE);
    ExpectEndWithoutSaving();
}

TEST_F(RestoreCommand, ACloseMessageInTheSignInEndsWithoutSaving) {
    PutBackup(L"foreign");
    ChooseAndAnswer(IDYES);
    script->Then([this](HWND) { Send(WM_CLOSE); });
    Command(IDM_RESTORE);
    ExpectEndWithoutSaving();
}

// ---- A restore that is cut off ----

/// A restore that goes file by file, of which every move fails from the move given on. The diary is
/// on disk and in memory; the backup has another password.
class RestoreCutOff : public BackupTest, public testing::WithParamInterface<int> {
  protected:
    void SetUp() override {
        BackupTest::SetUp();
        {
            UserData current;
            FillDiary(current);
            ASSERT_EQ(current.Save(TestUser, TestPassword), 1);
            UserData older;
            older.SetBleeding(3);
            older.SetTemperature(9800);
            MakeFolder(BackupFile(L"older"));
            ASSERT_EQ(older.SaveFolder(BackupFile(L"older").c_str(), TEXT("older password")), 1);
        }
        MakeFolder(UserFile(L"pictures"));  // a sub-folder makes the restore go file by file
        ASSERT_EQ(SignIn(), 1);
        records = main->Data().bleeding.Count() + main->Data().temperature.Count();
    }

    void Restore() {
        const FailingMoves calls(GetParam(), FailingMoves::Way::FromThereOn);
        messages.answers = {IDYES};
        script->Press(IDOK);
        Command(IDM_RESTORE);
        EXPECT_TRUE(IsRestoreCutOff(TestUser));
    }

    std::int32_t records = 0;
};

// Moves 0 to 3 set the user's four files aside, move 4 marks them all as out, 5 and 6 put the two
// copies in.
INSTANTIATE_TEST_SUITE_P(FromMove, RestoreCutOff, testing::Values(3, 4, 5, 6),
                         testing::PrintToStringParamName());

TEST_P(RestoreCutOff, IsReportedAndTheDiaryInMemoryIsSavedWhole) {
    Restore();
    ASSERT_GE(messages.boxes.size(), 2U);
    EXPECT_EQ(BoxTexts().back(), L"A restore was cut off, and its files are still in use!");
    ASSERT_TRUE(main->Data().IsLoaded());
    ASSERT_TRUE(Close());
    ExpectNothingBeside();
    UserData data;
    EXPECT_EQ(data.Load(TestUser, TestPassword), 1);
    EXPECT_EQ(data.bleeding.Count() + data.temperature.Count(), records);
}

TEST_P(RestoreCutOff, NothingIsSavedUntilTheRecoverySucceeds) {
    Restore();
    main->Data().SetNoteText(TEXT("written since"));
    const std::string notes = Read(UserFile(L"NotePages.dat"));
    messages.boxes.clear();
    messages.answers = {IDRETRY, IDCANCEL};
    {
        const FailingMoves calls(0, FailingMoves::Way::FromThereOn);
        ASSERT_TRUE(Close());
    }
    ASSERT_EQ(messages.boxes.size(), 2U);
    EXPECT_NE(messages.boxes[0].text.find(L"Fail to save file '" + FolderOf(TestUser)),
              std::wstring::npos);
    EXPECT_EQ(Read(UserFile(L"NotePages.dat")), notes);
    EXPECT_TRUE(IsRestoreCutOff(TestUser));
}

}  // namespace
}  // namespace lunara::test
