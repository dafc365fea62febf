// Editing a note in the diary view: a tap on a day's notes cell opens the notes dialog.

#include "resources/ids.h"
#include "tests/ui/dialog_script.h"
#include "tests/ui/views/diary_view_test_support.h"

namespace lunara::test {
namespace {

class DiaryViewNotes : public DiaryView {
  protected:
    std::wstring NoteText(const SYSTEMTIME& date) {
        const std::unique_ptr<WCHAR[]> text(data->GetNoteText(&date));
        return text ? text.get() : L"";
    }
    const SYSTEMTIME third = Day(2026, 3, 7);  // row 2, counted from 0
    DialogScript script;
};

TEST_F(DiaryViewNotes, ATapOnANotesCellEditsThatDaysNote) {
    data->SetNoteFlags(NoteFlagPms, &third);
    data->SetNoteText(TEXT("before"), &third);
    Make();
    script.Then([](HWND window) {
        EXPECT_EQ(TextOf(::GetDlgItem(window, IDC_NOTE_DATE)), L"Sat Mar, 07");
        EXPECT_EQ(TextOf(::GetDlgItem(window, IDC_NOTE_TEXT)), L"before");
        EXPECT_EQ(::SendDlgItemMessageW(window, IDC_CRAMPS, BM_GETCHECK, 0, 0), 0);
        EXPECT_EQ(::SendDlgItemMessageW(window, IDC_PMS, BM_GETCHECK, 0, 0), 1);
    });
    script.Type(IDC_NOTE_TEXT, L"after").Press(IDC_CRAMPS).Press(IDOK);
    Tap(0, 2);
    ASSERT_TRUE(script.IsDone());
    EXPECT_EQ(data->GetNoteFlags(&third), NoteFlagCramps | NoteFlagPms);
    EXPECT_EQ(NoteText(third), L"after");
}

TEST_F(DiaryViewNotes, CancelLeavesTheNoteAndItsFlags) {
    data->SetNoteFlags(NoteFlagCramps, &third);
    data->SetNoteText(TEXT("before"), &third);
    Make();
    script.Type(IDC_NOTE_TEXT, L"after").Press(IDC_CRAMPS).Press(IDCANCEL);
    Tap(0, 2);
    ASSERT_TRUE(script.IsDone());
    EXPECT_EQ(data->GetNoteFlags(&third), NoteFlagCramps);
    EXPECT_EQ(NoteText(third), L"before");
}

TEST_F(DiaryViewNotes, ANoteThatIsEmptiedIsDeleted) {
    data->SetNoteText(TEXT("before"), &third);
    Make();
    script.Type(IDC_NOTE_TEXT, L"").Press(IDOK);
    Tap(0, 2);
    ASSERT_TRUE(script.IsDone());
    EXPECT_EQ(std::unique_ptr<WCHAR[]>(data->GetNoteText(&third)), nullptr);
    EXPECT_EQ(data->notePages.Count(), 0);
}

TEST_F(DiaryViewNotes, ALongNoteIsShownCutAndCancelKeepsItWhole) {
    const std::wstring longText(200, L'n');
    data->SetNoteText(longText.c_str(), &third);
    Make();
    script.Then([](HWND window) {
        EXPECT_EQ(TextOf(::GetDlgItem(window, IDC_NOTE_TEXT)), std::wstring(127, L'n'));
    });
    script.Press(IDCANCEL);
    Tap(0, 2);
    ASSERT_TRUE(script.IsDone());
    EXPECT_EQ(NoteText(third), longText);
}

// Cancel stores the text that the dialog was loaded with. That keeps the note, but moves its pages
// behind those of the other notes; the order is deliberate and is what a save writes.
TEST_F(DiaryViewNotes, CancelMovesTheNoteBehindTheOthers) {
    const SYSTEMTIME other = Day(2026, 3, 9);
    data->SetNoteText(TEXT("before"), &third);
    data->SetNoteText(TEXT("other"), &other);
    Make();
    script.Press(IDCANCEL);
    Tap(0, 2);
    ASSERT_TRUE(script.IsDone());
    ASSERT_EQ(data->notePages.Count(), 2);
    EXPECT_EQ(data->notePages.At(0).date, ToDateKey(other));
    EXPECT_EQ(data->notePages.At(1).date, ToDateKey(third));
}

TEST_F(DiaryViewNotes, ATapOnAnythingElseOpensNothing) {
    Make();
    Tap(1, 2);   // bleeding
    Tap(4, 2);   // pregnancy
    Tap(5, 2);   // exactly right of the items
    Tap(-1, 2);  // left of the agenda
    PumpMessages();
    view->SetShowNotes(false);
    Tap(0, 2);  // bleeding now
    PumpMessages();
    // The script has no steps: a dialog that opened would have failed the test.
}

TEST_F(DiaryViewNotes, ATapFindsTheDayInAVeryLowWindow) {
    Make(600, 60);  // rows of 3 px
    ASSERT_EQ(TopCell().bottom, 3);
    script.Then([](HWND window) {
        EXPECT_EQ(TextOf(::GetDlgItem(window, IDC_NOTE_DATE)), L"Sat Mar, 07");
    });
    script.Press(IDCANCEL);
    ::SendMessageW(Agenda(), WM_LBUTTONUP, 0, MAKELPARAM(1, 7));
    EXPECT_TRUE(script.IsDone());
}

}  // namespace
}  // namespace lunara::test
