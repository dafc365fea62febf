// A tap on a day's notes cell of the diary view, and what its dialog does with the note.

#include "resources/ids.h"
#include "tests/ui/views/diary_view_test_support.h"

namespace lunara::test {
namespace {

class DiaryViewNotes : public DiaryView {
  protected:
    std::wstring NoteText(const SYSTEMTIME& date) {
        const std::unique_ptr<WCHAR[]> text(data->GetNoteText(&date));
        return text ? text.get() : L"";
    }
    const SYSTEMTIME third = Day(2026, 3, 7);  // row 2
};

TEST_F(DiaryViewNotes, TapOnANotesCellEditsThatDay) {
    data->SetNoteFlags(NoteFlagPms, &third);
    data->SetNoteText(TEXT("before"), &third);
    Make();
    DialogHand hand([](HWND window) {
        EXPECT_EQ(TextOf(::GetDlgItem(window, IDC_NOTE_DATE)), L"Sat Mar, 07");
        EXPECT_EQ(TextOf(::GetDlgItem(window, IDC_NOTE_TEXT)), L"before");
        EXPECT_EQ(::SendDlgItemMessageW(window, IDC_CRAMPS, BM_GETCHECK, 0, 0), 0);
        EXPECT_EQ(::SendDlgItemMessageW(window, IDC_PMS, BM_GETCHECK, 0, 0), 1);
        ::SetDlgItemTextW(window, IDC_NOTE_TEXT, L"after");
        ::SendDlgItemMessageW(window, IDC_CRAMPS, BM_SETCHECK, BST_CHECKED, 0);
        ::PostMessageW(window, WM_COMMAND, IDOK, 0);
    });
    Tap(0, 2);
    ASSERT_TRUE(hand.WasUsed());
    EXPECT_EQ(data->GetNoteFlags(&third), 3);  // both boxes ticked
    EXPECT_EQ(NoteText(third), L"after");
}

TEST_F(DiaryViewNotes, CancelLeavesFlagsAndText) {
    data->SetNoteFlags(NoteFlagCramps, &third);
    data->SetNoteText(TEXT("before"), &third);
    Make();
    DialogHand hand([](HWND window) {
        ::SetDlgItemTextW(window, IDC_NOTE_TEXT, L"after");
        ::SendDlgItemMessageW(window, IDC_CRAMPS, BM_SETCHECK, BST_UNCHECKED, 0);
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    });
    Tap(0, 2);
    ASSERT_TRUE(hand.WasUsed());
    EXPECT_EQ(data->GetNoteFlags(&third), NoteFlagCramps);
    EXPECT_EQ(NoteText(third), L"before");
}

TEST_F(DiaryViewNotes, EmptiedNoteIsDeleted) {
    data->SetNoteText(TEXT("before"), &third);
    Make();
    DialogHand hand([](HWND window) {
        ::SetDlgItemTextW(window, IDC_NOTE_TEXT, L"");
        ::PostMessageW(window, WM_COMMAND, IDOK, 0);
    });
    Tap(0, 2);
    ASSERT_TRUE(hand.WasUsed());
    EXPECT_EQ(std::unique_ptr<WCHAR[]>(data->GetNoteText(&third)), nullptr);
    EXPECT_EQ(data->notePages.Count(), 0);
}

TEST_F(DiaryViewNotes, LongNoteIsShownCutAndKeptWholeByCancel) {
    const std::wstring longText(200, L'n');
    data->SetNoteText(longText.c_str(), &third);
    Make();
    DialogHand hand([](HWND window) {
        EXPECT_EQ(TextOf(::GetDlgItem(window, IDC_NOTE_TEXT)), std::wstring(127, L'n'));
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    });
    Tap(0, 2);
    ASSERT_TRUE(hand.WasUsed());
    EXPECT_EQ(NoteText(third), longText);
}

// Cancel stores the text that was read: the note's pages move to the end, the note stays.
TEST_F(DiaryViewNotes, CancelSetsTheTextThatWasRead) {
    const SYSTEMTIME other = Day(2026, 3, 9);
    data->SetNoteText(TEXT("before"), &third);
    data->SetNoteText(TEXT("other"), &other);
    Make();
    DialogHand hand([](HWND window) { ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0); });
    Tap(0, 2);
    ASSERT_TRUE(hand.WasUsed());
    ASSERT_EQ(data->notePages.Count(), 2);
    EXPECT_EQ(data->notePages.At(0).date, ToDateKey(other));
    EXPECT_EQ(data->notePages.At(1).date, ToDateKey(third));
}

TEST_F(DiaryViewNotes, TapOnAnythingElseOpensNothing) {
    Make();
    bool opened = false;
    DialogHand hand([&](HWND window) {
        opened = true;
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    });
    Tap(1, 2);   // bleeding
    Tap(4, 2);   // pregnancy
    Tap(5, 2);   // exactly right of the items
    Tap(-1, 2);  // left of the agenda
    PumpMessages();
    view->SetShowNotes(false);
    Tap(0, 2);  // bleeding now
    PumpMessages();
    EXPECT_FALSE(opened);
}

TEST_F(DiaryViewNotes, TapFindsTheDayInAFlatWindow) {
    Make(600, 60);  // rows of 3 px
    ASSERT_EQ(TopCell().bottom, 3);
    DialogHand hand([](HWND window) {
        EXPECT_EQ(TextOf(::GetDlgItem(window, IDC_NOTE_DATE)), L"Sat Mar, 07");
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    });
    ::SendMessageW(Agenda(), WM_LBUTTONUP, 0, MAKELPARAM(1, 7));
    EXPECT_TRUE(hand.WasUsed());
}

}  // namespace
}  // namespace lunara::test
