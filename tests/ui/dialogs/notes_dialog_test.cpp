#include "dialogs/notes_dialog.h"

#include "platform/clock.h"
#include "platform/text.h"
#include "records/dates.h"
#include "resources/ids.h"
#include "tests/ui/dialog_script.h"
#include "tests/ui/ui_test.h"
#include "tests/ui/window_boxes.h"

namespace lunara::test {
namespace {

class NotesDialog : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        SetLocalNow(Day(2026, 3, 15));
    }
};

LRESULT CheckOf(HWND dialog, int box) {
    return ::SendDlgItemMessageW(dialog, box, BM_GETCHECK, 0, 0);
}

TEST_F(NotesDialog, StartsEmptyAtToday) {
    const lunara::NotesDialog dialog;
    EXPECT_EQ(ToDateKey(dialog.date), ToDateKey(Day(2026, 3, 15)));
    EXPECT_EQ(dialog.cramps, 0);
    EXPECT_EQ(dialog.pms, 0);
    EXPECT_EQ(dialog.text[0], 0);
}

/// The dialog's window, without a message loop and never shown: showing and hiding windows is slow
/// on a display without a window manager.
class HiddenWindow {
  public:
    explicit HiddenWindow(lunara::NotesDialog& shown) : dialog(shown) {
        EXPECT_TRUE(Dialog::CreateModeless(dialog, IDD_NOTES));
    }
    HiddenWindow(const HiddenWindow&) = delete;
    HiddenWindow& operator=(const HiddenWindow&) = delete;
    ~HiddenWindow() { ::DestroyWindow(dialog.Handle()); }

    HWND Handle() const { return dialog.Handle(); }
    HWND Control(int id) const { return ::GetDlgItem(dialog.Handle(), id); }

  private:
    lunara::NotesDialog& dialog;
};

TEST_F(NotesDialog, ShowsItsFieldsAndTheDate) {
    lunara::NotesDialog dialog;
    dialog.date = Day(2007, 1, 1);
    dialog.pms = 1;
    CopyText(dialog.text.data(), dialog.text.size(), TEXT("slept badly"));
    const HiddenWindow window(dialog);
    EXPECT_EQ(TextOf(window.Handle()), L"Notes");
    EXPECT_EQ(TextOf(window.Control(IDC_NOTE_DATE)), L"Mon Jan, 01");
    EXPECT_EQ(TextOf(window.Control(IDC_CRAMPS)), L"Cramps");
    EXPECT_EQ(TextOf(window.Control(IDC_PMS)), L"PMS");
    EXPECT_EQ(TextOf(window.Control(IDC_NOTE_TEXT)), L"slept badly");
    EXPECT_EQ(CheckOf(window.Handle(), IDC_CRAMPS), BST_UNCHECKED);
    EXPECT_EQ(CheckOf(window.Handle(), IDC_PMS), BST_CHECKED);
}

struct HeaderCase {
    const char* label;
    SYSTEMTIME date;
    const wchar_t* header;
};

TEST_F(NotesDialog, HeaderNamesWeekdayMonthAndDay) {
    const HeaderCase cases[] = {
        {"Sunday", Day(2026, 11, 1), L"Sun Nov, 01"},
        {"Saturday", Day(2026, 12, 26), L"Sat Dec, 26"},
        {"leap day", Day(2028, 2, 29), L"Tue Feb, 29"},
    };
    for (const HeaderCase& c : cases) {
        LUNARA_ROW(c);
        lunara::NotesDialog dialog;
        dialog.date = c.date;
        const HiddenWindow window(dialog);
        EXPECT_EQ(TextOf(window.Control(IDC_NOTE_DATE)), c.header);
    }
}

TEST_F(NotesDialog, OkReadsTheControlsAndEndsWithOne) {
    lunara::NotesDialog dialog;
    DialogScript script;
    script.Type(IDC_NOTE_TEXT, L"headache").Press(IDC_CRAMPS).Press(IDC_PMS).Press(IDOK);
    EXPECT_EQ(dialog.DoModal(), 1);
    EXPECT_STREQ(dialog.text.data(), L"headache");
    EXPECT_EQ(dialog.cramps, 1);
    EXPECT_EQ(dialog.pms, 1);
}

TEST_F(NotesDialog, CancelEndsWithTwoAndReadsNothing) {
    lunara::NotesDialog dialog;
    CopyText(dialog.text.data(), dialog.text.size(), TEXT("before"));
    DialogScript script;
    script.Type(IDC_NOTE_TEXT, L"after").Press(IDC_CRAMPS).Press(IDCANCEL);
    EXPECT_EQ(dialog.DoModal(), 2);
    EXPECT_STREQ(dialog.text.data(), L"before");
    EXPECT_EQ(dialog.cramps, 0);
}

TEST_F(NotesDialog, TakesNoMoreCharactersThanANoteHolds) {
    lunara::NotesDialog dialog;
    const HiddenWindow window(dialog);
    const HWND edit = window.Control(IDC_NOTE_TEXT);
    for (int i = 0; i < 200; ++i) {
        ::SendMessageW(edit, WM_CHAR, L'x', 1);
    }
    EXPECT_EQ(::GetWindowTextLengthW(edit), 127);
    dialog.UpdateData(true);
    EXPECT_EQ(WideView(dialog.text.data()).size(), 127U);
}

/// The text colour that the dialog gives a control.
COLORREF ColorOfStatic(HWND dialog, int id) {
    const WindowDcScope dc(::GetDlgItem(dialog, id));
    ::SetTextColor(dc.Dc(), RGB(1, 2, 3));
    const LRESULT brush =
        ::SendMessageW(dialog, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc.Dc()),
                       reinterpret_cast<LPARAM>(::GetDlgItem(dialog, id)));
    EXPECT_NE(brush, 0);
    return ::GetTextColor(dc.Dc());
}

/// The number of pixels of that colour in what a control shows on the screen.
int CountOnScreen(HWND control, COLORREF color) {
    const Box box = ClientBox(control);
    MemoryCanvas canvas(box.right, box.bottom);
    canvas.CopyFrom(control);
    return canvas.CountOf(color);
}

TEST_F(NotesDialog, TheCheckBoxesHaveTheirColors) {
    lunara::NotesDialog dialog;
    DialogScript script;
    script.Then([](HWND window) {
        EXPECT_EQ(ColorOfStatic(window, IDC_CRAMPS), RGB(255, 64, 64));
        EXPECT_EQ(ColorOfStatic(window, IDC_PMS), RGB(190, 0, 0));
        const COLORREF other = ColorOfStatic(window, IDC_NOTE_DATE);
        EXPECT_NE(other, RGB(255, 64, 64));
        EXPECT_NE(other, RGB(190, 0, 0));
        ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        EXPECT_GT(CountOnScreen(::GetDlgItem(window, IDC_CRAMPS), RGB(255, 64, 64)), 0);
        EXPECT_GT(CountOnScreen(::GetDlgItem(window, IDC_PMS), RGB(190, 0, 0)), 0);
    });
    script.Press(IDCANCEL);
    dialog.DoModal();
}

TEST_F(NotesDialog, ASettingChangeIsAnsweredWithZero) {
    lunara::NotesDialog dialog;
    const HiddenWindow window(dialog);
    EXPECT_EQ(::SendMessageW(window.Handle(), WM_SETTINGCHANGE, 224, 0), 0);
}

}  // namespace
}  // namespace lunara::test
