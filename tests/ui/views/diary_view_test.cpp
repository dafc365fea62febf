#include "views/diary_view.h"

#include <bit>
#include <memory>

#include "cycle/day_status.h"
#include "cycle/predictor.h"
#include "frame/settings.h"
#include "platform/text.h"
#include "records/user_data.h"
#include "resources/ids.h"
#include "tests/ui/views/view_test_support.h"
#include "views/month_colors.h"

namespace lunara {
namespace {

constexpr int WidthPx = 480;
constexpr int HeightPx = 640;
constexpr LONG RowPx = 32;
constexpr WCHAR ShowFlagsSetting[] = TEXT("DiaryView_ShowFlags");

/// Lists what the view tells, "Notes 0" and the like.
class RecordingListener : public DiaryListener {
  public:
    void NotesShownChanged(bool isShown) override { Add("Notes ", isShown); }
    void BleedingShownChanged(bool isShown) override { Add("Bleeding ", isShown); }
    void PeriodShownChanged(bool isShown) override { Add("Period ", isShown); }
    void OvulationShownChanged(bool isShown) override { Add("Ovulation ", isShown); }
    void PregnancyShownChanged(bool isShown) override { Add("Pregnancy ", isShown); }

    std::vector<std::string> calls;

  private:
    void Add(std::string name, bool isShown) {
        calls.push_back(std::move(name) + (isShown ? "1" : "0"));
    }
};

class DiaryViewTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        SetLocalNow(Day(2026, 3, 15));
        data = std::make_unique<UserData>();
        view = std::make_unique<DiaryView>(*data);
        ASSERT_EQ(parent.Make(nullptr, 800, 700), 1);
        ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
    }
    void TearDown() override {
        ::DestroyWindow(parent.Handle());
        view.reset();
        UiTest::TearDown();
    }

    void Make(int width = WidthPx, int height = HeightPx) {
        ASSERT_EQ(view->Create(0, nullptr, TEXT("Diary view"), WS_CHILD | WS_VISIBLE, 0, 0, width,
                               height, parent.Handle(), nullptr),
                  1);
        PumpMessages();
    }
    HWND Child(int id) const { return ::GetDlgItem(view->Handle(), id); }
    HWND Agenda() const { return Child(DiaryView::AgendaId); }
    HWND Calendar() const { return Child(DiaryView::CalendarId); }

    DateKey Start() const {
        CalendarHitTest top{};
        ::SendMessageW(Calendar(), CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&top));
        return ToDateKey(top.date);
    }
    Box TopCell() const {
        CalendarHitTest top{};
        ::SendMessageW(Calendar(), CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&top));
        return BoxOf(top.cell);
    }
    SCROLLINFO Scroll() const {
        SCROLLINFO info{};
        info.cbSize = sizeof(info);
        info.fMask = SIF_RANGE | SIF_POS;
        ::GetScrollInfo(Child(DiaryView::ScrollBarId), SB_CTL, &info);
        return info;
    }
    void ExpectScroll(int maximum, int position) const {
        const SCROLLINFO info = Scroll();
        EXPECT_EQ(info.nMin, 0);
        EXPECT_EQ(info.nMax, maximum);
        EXPECT_EQ(info.nPos, position);
    }
    void ScrollBy(int request) {
        ::SendMessageW(view->Handle(), WM_VSCROLL, static_cast<WPARAM>(request),
                       reinterpret_cast<LPARAM>(Child(DiaryView::ScrollBarId)));
    }
    std::int32_t LineCount() const {
        return static_cast<AgendaCtrl*>(Window::FromHandle(Agenda()))->LineCount();
    }

    struct Row {
        AgendaRowRequest request;
        AgendaItem items[MaxDiaryItems];
    };
    /// The view's answer to the agenda.
    Row AskRow(std::int32_t index, LRESULT expected = 1) {
        Row row{};
        row.request.header = {Agenda(), DiaryView::AgendaId, AGN_GETROW};
        row.request.rowIndex = index;
        row.request.lineCount = LineCount();
        EXPECT_EQ(::SendMessageW(view->Handle(), WM_NOTIFY, DiaryView::AgendaId,
                                 reinterpret_cast<LPARAM>(&row)),
                  expected);
        return row;
    }
    /// A tap on the middle of a cell of the agenda.
    void Tap(int column, int row) {
        const LONG cell = RowPx;
        ::SendMessageW(Agenda(), WM_LBUTTONUP, 0,
                       MAKELPARAM(column * cell + cell / 2, row * cell + cell / 2));
    }
    void StoreShowFlags(DWORD flags) {
        Settings settings;
        ASSERT_TRUE(settings.WriteDword(ShowFlagsSetting, flags));
    }

    ScriptedWindow parent;
    std::unique_ptr<UserData> data;
    std::unique_ptr<DiaryView> view;
};

// ---- Creation ----

TEST_F(DiaryViewTest, HasScrollBarCalendarAndAgendaSideBySide) {
    Make();
    EXPECT_EQ(ClassOf(view->Handle()), FrameworkClassName);
    EXPECT_EQ(TextOf(view->Handle()), L"Diary view");
    const Box bar = PlaceOf(Child(3003));
    const Box calendar = PlaceOf(Child(3002));
    const Box agenda = PlaceOf(Child(3001));
    EXPECT_EQ(bar, (Box{0, 0, ::GetSystemMetrics(SM_CXVSCROLL), HeightPx}));
    EXPECT_EQ(calendar.left, bar.right - 1);
    EXPECT_EQ(calendar.bottom, HeightPx);
    EXPECT_EQ(agenda.left, calendar.right - 1);
    EXPECT_EQ(agenda, (Box{agenda.left, 0, WidthPx, HeightPx}));
    EXPECT_EQ(ClassOf(Child(3002)), L"CalendarCtrl");
    EXPECT_EQ(ClassOf(Child(3001)), L"AgendaCtrl");
    EXPECT_EQ(::lstrcmpiW(ClassOf(Child(3003)).c_str(), L"scrollbar"), 0);
    EXPECT_NE(::GetWindowLongW(Child(3002), GWL_STYLE) & 1, 0);
}

TEST_F(DiaryViewTest, CalendarIsThreeLinesWideWhereCellsAreNoHigherThanALine) {
    Make(240, 200);  // cells of 10 px
    TEXTMETRICW metrics{};
    {
        const WindowDcScope dc(view->Handle());
        ::GetTextMetricsW(dc.Dc(), &metrics);
    }
    const Box calendar = PlaceOf(Calendar());
    EXPECT_EQ(calendar.right - calendar.left, 3 * metrics.tmHeight);
}

TEST_F(DiaryViewTest, ShowsTwentyDaysFromTenBeforeTheCurrentDate) {
    Make();
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 5)));
    EXPECT_EQ(TopCell().bottom, RowPx);
    EXPECT_EQ(AskRow(0).request.rowHeight, RowPx);
}

TEST_F(DiaryViewTest, WithoutRecordsTheScrollRangeBeginsAtTheFirstRowShown) {
    Make();
    // Range 0..365 at position 0 for today; the ten days before it enlarge the range at the top.
    ExpectScroll(375, 0);
}

TEST_F(DiaryViewTest, ScrollRangeReachesFromTheFirstRecordToAYearAhead) {
    data->bleeding.Set(ToDateKey(Day(2025, 12, 5)), 2);  // 100 days before
    Make();
    ExpectScroll(465, 90);
}

TEST_F(DiaryViewTest, RecordsOfTheFutureDoNoHarmToTheScrollRange) {
    data->bleeding.Set(ToDateKey(Day(2028, 12, 5)), 2);
    Make();
    ExpectScroll(375, 0);
}

TEST_F(DiaryViewTest, StartsAtTheDataSetsCurrentDate) {
    const SYSTEMTIME date = Day(2026, 5, 20);
    data->SetCurrentDate(date);
    Make();
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 5, 10)));
    ExpectScroll(365, 56);
    EXPECT_EQ(ToDateKey(view->GetCurrentDate()), ToDateKey(date));
}

// ---- Scrolling ----

struct ScrollCase {
    const char* label;
    int request;
    SYSTEMTIME start;
};

TEST_F(DiaryViewTest, ScrollsByADayAndByTenDays) {
    data->bleeding.Set(ToDateKey(Day(2025, 12, 5)), 2);
    Make();
    const ScrollCase cases[] = {
        {"line up", SB_LINEUP, Day(2026, 3, 4)},
        {"line down", SB_LINEDOWN, Day(2026, 3, 5)},
        {"page down", SB_PAGEDOWN, Day(2026, 3, 15)},
        {"page up", SB_PAGEUP, Day(2026, 3, 5)},
        {"dragging", SB_THUMBTRACK, Day(2026, 3, 5)},
        {"to the top", SB_TOP, Day(2026, 3, 5)},
        {"to the bottom", SB_BOTTOM, Day(2026, 3, 5)},
        {"end of scrolling", SB_ENDSCROLL, Day(2026, 3, 5)},
    };
    for (const ScrollCase& c : cases) {
        LUNARA_ROW(c);
        ScrollBy(c.request);
        EXPECT_EQ(Start(), ToDateKey(c.start));
    }
    ExpectScroll(465, 90);
}

TEST_F(DiaryViewTest, ScrollingRepaintsBothControls) {
    Make();
    ASSERT_FALSE(WaitsForPaint(Agenda()));
    ASSERT_FALSE(WaitsForPaint(Calendar()));
    ScrollBy(SB_LINEDOWN);
    EXPECT_TRUE(WaitsForPaint(Agenda()));
    EXPECT_TRUE(WaitsForPaint(Calendar()));
}

TEST_F(DiaryViewTest, PagingUpFromTheFirstDayEnlargesTheRangeAtTheTop) {
    Make();
    ExpectScroll(375, 0);
    ScrollBy(SB_PAGEUP);
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 2, 23)));
    ExpectScroll(385, 0);
}

TEST_F(DiaryViewTest, ScrollingPastTheEndEnlargesTheRangeAtTheBottom) {
    data->SetCurrentDate(Day(2027, 3, 20));
    Make();
    EXPECT_EQ(Start(), ToDateKey(Day(2027, 3, 10)));
    ExpectScroll(365, 360);
    ScrollBy(SB_PAGEDOWN);
    ExpectScroll(370, 370);
}

TEST_F(DiaryViewTest, ThumbMovesTheStartWhenItIsLetGo) {
    data->bleeding.Set(ToDateKey(Day(2025, 12, 5)), 2);
    Make();
    const HWND bar = Child(DiaryView::ScrollBarId);
    SCROLLBARINFO info{};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(::SendMessageW(bar, SBM_GETSCROLLBARINFO, 0, reinterpret_cast<LPARAM>(&info)));
    const LONG x = 5;
    const LONG thumb = (info.xyThumbTop + info.xyThumbBottom) / 2;
    const DateKey before = Start();
    // The bar's own loop takes these from the queue.
    ::PostMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, thumb + 60));
    ::PostMessageW(bar, WM_LBUTTONUP, 0, MAKELPARAM(x, thumb + 60));
    ::SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, thumb));
    PumpMessages();
    EXPECT_GT(Start(), before);
    const SCROLLINFO scroll = Scroll();
    EXPECT_GT(scroll.nPos, 90);
    // One step is one day.
    SYSTEMTIME expected{};
    AddDays(Day(2026, 3, 5), scroll.nPos - 90, expected);
    EXPECT_EQ(Start(), ToDateKey(expected));
}

TEST_F(DiaryViewTest, CannotScrollBeforeTheCalendarBegins) {
    Make();
    view->SetCurrentDate(Day(1601, 1, 3));
    EXPECT_EQ(Start(), ToDateKey(Day(1601, 1, 1)));
    ScrollBy(SB_LINEUP);
    for (int i = 0; i < 4; ++i) {
        ScrollBy(SB_LINEDOWN);
    }
    ScrollBy(SB_PAGEUP);
    EXPECT_EQ(Start(), ToDateKey(Day(1601, 1, 5)));
}

// ---- Bringing dates into view ----

TEST_F(DiaryViewTest, ADateThatIsShownMovesNothing) {
    Make();
    view->SetCurrentDate(Day(2026, 3, 24));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 5)));
    // The day after the last row counts as shown.
    view->SetCurrentDate(Day(2026, 3, 25));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 5)));
    EXPECT_EQ(ToDateKey(view->GetCurrentDate()), ToDateKey(Day(2026, 3, 25)));
}

TEST_F(DiaryViewTest, ALaterDateComesIntoTheSecondRowFromTheBottom) {
    Make();
    data->SetCurrentDate(Day(2026, 3, 26));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 8)));  // 20 rows: 18 above it, one below
}

TEST_F(DiaryViewTest, AnEarlierDateComesIntoTheThirdRow) {
    Make();
    data->SetCurrentDate(Day(2026, 3, 4));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 2)));
}

TEST_F(DiaryViewTest, SettingTheSameDateBringsItBackIntoView) {
    Make();
    for (int i = 0; i < 5; ++i) {
        ScrollBy(SB_PAGEDOWN);
    }
    view->SetCurrentDate(Day(2026, 3, 15));
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 13)));
}

// ---- Show flags ----

TEST_F(DiaryViewTest, ShowsEverythingWithoutASetting) {
    EXPECT_EQ(view->GetShowFlags(), 31U);
    Make();
    EXPECT_EQ(view->GetShowFlags(), 31U);
    EXPECT_EQ(LineCount(), 5);
}

TEST_F(DiaryViewTest, ReadsItsSettingAtCreationAndWritesItAtDestruction) {
    StoreShowFlags(18);
    EXPECT_EQ(view->GetShowFlags(), 31U);
    Make();
    EXPECT_EQ(view->GetShowFlags(), 18U);
    EXPECT_EQ(LineCount(), 2);
    view->SetShowNotes(true);
    const auto stored = [] {
        DWORD value = 0;
        const Settings settings;
        EXPECT_TRUE(settings.ReadDword(ShowFlagsSetting, value));
        return value;
    };
    EXPECT_EQ(stored(), 18U);
    ::DestroyWindow(view->Handle());
    EXPECT_EQ(stored(), 19U);
}

TEST_F(DiaryViewTest, ASettingWithoutAnyItemIsAsIfItWereMissing) {
    StoreShowFlags(0);
    Make();
    EXPECT_EQ(view->GetShowFlags(), 31U);
    ::DestroyWindow(view->Handle());
    StoreShowFlags(0xFFFFFF00 | 2);
    Make();
    EXPECT_EQ(view->GetShowFlags(), 2U);
}

TEST_F(DiaryViewTest, ASettingOfAnotherTypeIsAsIfItWereMissing) {
    {
        Settings settings;
        ASSERT_TRUE(settings.WriteString(ShowFlagsSetting, TEXT("2")));
    }
    Make();
    EXPECT_EQ(view->GetShowFlags(), 31U);
}

TEST_F(DiaryViewTest, WithoutASettingsKeyItWorksWithTheDefault) {
    SetSettingsLocation({nullptr, nullptr, TEXT("")});
    Make();
    EXPECT_EQ(view->GetShowFlags(), 31U);
    ::DestroyWindow(view->Handle());
    EXPECT_TRUE(messages.boxes.empty());
}

struct SetterCase {
    const char* label;
    std::uint32_t (DiaryView::*setter)(bool);
    std::uint32_t bit;
    const char* call;
};

TEST_F(DiaryViewTest, SettersToggleTheirItemAndTellTheListeners) {
    Make();
    RecordingListener listener;
    view->AttachListener(listener);
    const SetterCase cases[] = {
        {"notes", &DiaryView::SetShowNotes, 1, "Notes "},
        {"bleeding", &DiaryView::SetShowBleeding, 2, "Bleeding "},
        {"period", &DiaryView::SetShowPeriod, 4, "Period "},
        {"ovulation", &DiaryView::SetShowOvulation, 8, "Ovulation "},
        {"pregnancy", &DiaryView::SetShowPregnancy, 16, "Pregnancy "},
    };
    for (const SetterCase& c : cases) {
        LUNARA_ROW(c);
        listener.calls.clear();
        DiaryView& diary = *view;
        EXPECT_EQ((diary.*c.setter)(true), 31U);  // as it is: nobody is told
        EXPECT_TRUE(listener.calls.empty());
        EXPECT_EQ((diary.*c.setter)(false), 31U & ~c.bit);
        EXPECT_EQ(view->GetShowFlags(), 31U & ~c.bit);
        EXPECT_EQ(LineCount(), 4);
        EXPECT_EQ((diary.*c.setter)(true), 31U);
        EXPECT_EQ(LineCount(), 5);
        const std::vector<std::string> expected = {std::string(c.call) + "0",
                                                   std::string(c.call) + "1"};
        EXPECT_EQ(listener.calls, expected);
    }
    view->DetachListener(listener);
    listener.calls.clear();
    view->SetShowNotes(false);
    EXPECT_TRUE(listener.calls.empty());
}

TEST_F(DiaryViewTest, TheLastItemCannotBeHidden) {
    StoreShowFlags(DiaryShowPeriod);
    Make();
    RecordingListener listener;
    view->AttachListener(listener);
    EXPECT_EQ(view->SetShowPeriod(false), 0U);
    EXPECT_EQ(view->GetShowFlags(), 4U);
    EXPECT_EQ(LineCount(), 1);
    EXPECT_TRUE(listener.calls.empty());
    view->DetachListener(listener);
}

TEST_F(DiaryViewTest, SettersWorkBeforeTheWindowExists) {
    EXPECT_EQ(view->SetShowNotes(false), 30U);
    view->Refresh();
    view->Reload();
    view->SetCurrentDate(Day(2020, 1, 1));
}

// ---- Rows ----

TEST_F(DiaryViewTest, RowsCarryTextColorsAndPictures) {
    const SYSTEMTIME fifth = Day(2026, 3, 5);
    SetDayFlags(data->predictor, DAY_CYCLE_START, 0, ToDateKey(fifth));
    data->predictor.bleedingLevels.Set(ToDateKey(fifth), std::bit_cast<std::int32_t>(3.0F));
    data->SetNoteText(TEXT("x"), &fifth);
    Make();
    const Row row = AskRow(0);
    EXPECT_STREQ(row.request.text, L"Mar, 05\nCycle start. ");
    EXPECT_NE(row.items[0].overlay, nullptr);
    EXPECT_EQ(row.items[1].color, RGB(0, 0, 255));
    EXPECT_NE(row.items[1].bitmap, nullptr);
    EXPECT_EQ(row.items[1].overlay, nullptr);
    EXPECT_EQ(row.items[2].color, RGB(255, 255, 255));
    // A day without a status has no date either.
    EXPECT_EQ(AskRow(1).request.text[0], 0);
}

TEST_F(DiaryViewTest, RowsFollowTheItemsShown) {
    StoreShowFlags(DiaryShowNotes | DiaryShowPregnancy);
    const SYSTEMTIME fifth = Day(2026, 3, 5);
    data->predictor.pregnancyProbabilities.Set(ToDateKey(fifth), std::bit_cast<std::int32_t>(1.0F));
    Make();
    const Row row = AskRow(0);
    EXPECT_EQ(row.items[1].color, RGB(0, 255, 0));
    EXPECT_NE(row.items[1].overlay, nullptr);  // after the last valid period start: there is none
}

TEST_F(DiaryViewTest, MonthColorsComeFromTheTable) {
    Make();
    CalendarMonthColor request{
        {Calendar(), DiaryView::CalendarId, CCN_GETMONTHCOLOR}, Day(2026, 8, 31), 0};
    EXPECT_EQ(::SendMessageW(view->Handle(), WM_NOTIFY, DiaryView::CalendarId,
                             reinterpret_cast<LPARAM>(&request)),
              1);
    EXPECT_EQ(request.color, MonthColor(8));
}

TEST_F(DiaryViewTest, OtherNotificationsAreNotAnswered) {
    Make();
    CalendarClick click{{Calendar(), DiaryView::CalendarId, CCN_CLICK}, {1, 1}};
    EXPECT_EQ(::SendMessageW(view->Handle(), WM_NOTIFY, DiaryView::CalendarId,
                             reinterpret_cast<LPARAM>(&click)),
              0);
    NMHDR stray{Agenda(), DiaryView::AgendaId, 77};
    EXPECT_EQ(::SendMessageW(view->Handle(), WM_NOTIFY, DiaryView::AgendaId,
                             reinterpret_cast<LPARAM>(&stray)),
              0);
}

TEST_F(DiaryViewTest, ChangesOfRecordsRepaintTheAgenda) {
    Make();
    const auto expectRepaint = [this](const char* label, const std::function<void()>& change) {
        PumpMessages();
        ASSERT_FALSE(WaitsForPaint(Agenda())) << label;
        change();
        EXPECT_TRUE(WaitsForPaint(Agenda())) << label;
    };
    expectRepaint("bleeding", [this] { data->SetBleeding(2); });
    expectRepaint("note flags", [this] { data->SetNoteFlags(1); });
    expectRepaint("note text", [this] { data->SetNoteText(TEXT("x")); });
    expectRepaint("recomputation", [this] { view->Refresh(); });
}

TEST_F(DiaryViewTest, AReplacedDataSetIsShownFromItsOwnDate) {
    Make();
    ScrollBy(SB_PAGEDOWN);
    data->Unload();
    data->bleeding.Set(ToDateKey(Day(2025, 12, 5)), 2);
    PumpMessages();
    view->Reload();
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 5)));
    ExpectScroll(465, 90);
    EXPECT_TRUE(WaitsForPaint(Agenda()));
    EXPECT_TRUE(WaitsForPaint(Calendar()));
}

// ---- Notes ----

class DiaryNotesTest : public DiaryViewTest {
  protected:
    std::wstring NoteText(const SYSTEMTIME& date) {
        const std::unique_ptr<WCHAR[]> text(data->GetNoteText(&date));
        return text ? text.get() : L"";
    }
    const SYSTEMTIME third = Day(2026, 3, 7);  // row 2
};

TEST_F(DiaryNotesTest, TapOnANotesCellEditsThatDay) {
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

TEST_F(DiaryNotesTest, CancelLeavesFlagsAndText) {
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

TEST_F(DiaryNotesTest, EmptiedNoteIsDeleted) {
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

TEST_F(DiaryNotesTest, LongNoteIsShownCutAndKeptWholeByCancel) {
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
TEST_F(DiaryNotesTest, CancelSetsTheTextThatWasRead) {
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

TEST_F(DiaryNotesTest, TapOnAnythingElseOpensNothing) {
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

TEST_F(DiaryNotesTest, TapFindsTheDayInAFlatWindow) {
    Make(600, 60);  // rows of 3 px
    ASSERT_EQ(TopCell().bottom, 3);
    DialogHand hand([](HWND window) {
        EXPECT_EQ(TextOf(::GetDlgItem(window, IDC_NOTE_DATE)), L"Sat Mar, 07");
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    });
    ::SendMessageW(Agenda(), WM_LBUTTONUP, 0, MAKELPARAM(1, 7));
    EXPECT_TRUE(hand.WasUsed());
}

// ---- Window ----

TEST_F(DiaryViewTest, HelpOpensItsOwnAnchor) {
    Make();
    HELPINFO info{};
    info.cbSize = sizeof(info);
    ::SendMessageW(view->Handle(), WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    ASSERT_EQ(help.anchors.size(), 1U);
    EXPECT_EQ(help.programs[0], L"PegHelp.exe");
    EXPECT_EQ(help.anchors[0], L"Lunara.htm#_Calendar_diary");
}

TEST_F(DiaryViewTest, LaysItselfOutAgainWhenItIsResized) {
    Make();
    const DateKey start = Start();
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 700, 410, SWP_NOZORDER);
    EXPECT_EQ(Start(), start);
    EXPECT_EQ(TopCell().bottom, 20);
    EXPECT_EQ(AskRow(0).request.rowHeight, 20);
    EXPECT_EQ(PlaceOf(Agenda()).right, 700);
    EXPECT_EQ(PlaceOf(Agenda()).bottom, 410);
    EXPECT_EQ(PlaceOf(Child(DiaryView::ScrollBarId)).bottom, 410);
    EXPECT_EQ(static_cast<AgendaCtrl*>(Window::FromHandle(Agenda()))->CellWidth(), 20);
    // Rows and cells line up in whatever size.
    for (const int height : {640, 613, 300, 41, 19, 1}) {
        ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, height, SWP_NOZORDER);
        PumpMessages();
        EXPECT_EQ(AskRow(0).request.rowHeight, TopCell().bottom) << height;
    }
}

TEST_F(DiaryViewTest, DateStaysInViewWhenTheWindowIsResized) {
    Make(480, 319);  // 15 px a row: 21 of them fit
    SYSTEMTIME last{};
    ASSERT_EQ(FromDateKey(Start(), last), 1);
    AddDays(last, 20, last);
    data->SetCurrentDate(last);
    const DateKey start = Start();
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, 318, SWP_NOZORDER);
    EXPECT_EQ(Start(), start);
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, 640, SWP_NOZORDER);  // 20 fit
    SYSTEMTIME expected{};
    AddDays(last, -18, expected);
    EXPECT_EQ(Start(), ToDateKey(expected));
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, 700, SWP_NOZORDER);
    EXPECT_EQ(Start(), ToDateKey(expected));
    // A diary that was scrolled away from the date is left where it is.
    ScrollBy(SB_PAGEDOWN);
    ScrollBy(SB_PAGEDOWN);
    const DateKey away = Start();
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, 319, SWP_NOZORDER);
    EXPECT_EQ(Start(), away);
}

TEST_F(DiaryViewTest, AWindowWithoutASizeDoesNoHarm) {
    Make(0, 0);
    data->SetCurrentDate(Day(2027, 1, 1));
    data->SetCurrentDate(Day(2025, 1, 1));
    ScrollBy(SB_LINEDOWN);
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, 640, SWP_NOZORDER);
    PumpMessages();
    EXPECT_EQ(AskRow(0).request.rowHeight, RowPx);
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 0, 0, SWP_NOZORDER);
    PumpMessages();
}

TEST_F(DiaryViewTest, IsGoneFromTheDataSetWithItsWindow) {
    Make();
    EXPECT_EQ(data->AttachObserver(*view), 0);  // it is there already
    ::DestroyWindow(view->Handle());
    EXPECT_EQ(data->DetachObserver(*view), 0);
    data->SetBleeding(2);
    data->SetCurrentDate(Day(2020, 1, 1));
}

TEST_F(DiaryViewTest, CanBeMadeAgain) {
    Make();
    view->SetShowNotes(false);
    ::DestroyWindow(view->Handle());
    data->SetCurrentDate(Day(2026, 6, 20));
    Make();
    EXPECT_EQ(view->GetShowFlags(), 30U);
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 6, 10)));
}

TEST_F(DiaryViewTest, DrawsItsTitleOnWhite) {
    Make();
    for (const int id : {3001, 3002, 3003}) {
        ::ShowWindow(Child(id), SW_HIDE);
    }
    ::RedrawWindow(view->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    const MemoryCanvas canvas(WidthPx, HeightPx, RGB(9, 9, 9));
    {
        const WindowDcScope dc(view->Handle());
        ::BitBlt(canvas.Dc(), 0, 0, WidthPx, HeightPx, dc.Dc(), 0, 0, SRCCOPY);
    }
    EXPECT_EQ(canvas.Pixel(5, 5), RGB(255, 255, 255));
    EXPECT_GT(canvas.CountOf(RGB(0, 0, 0)), 0);
}

// A painted diary, read back from the screen.
TEST_F(DiaryViewTest, PaintsTheDaysOfTheDataSet) {
    const SYSTEMTIME fifth = Day(2026, 3, 5);
    data->predictor.periodProbabilities.Set(ToDateKey(fifth), std::bit_cast<std::int32_t>(1.0F));
    Make();
    ::RedrawWindow(view->Handle(), nullptr, nullptr,
                   RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    const MemoryCanvas canvas(WidthPx, HeightPx);
    {
        const WindowDcScope dc(Agenda());
        ::BitBlt(canvas.Dc(), 0, 0, WidthPx, HeightPx, dc.Dc(), 0, 0, SRCCOPY);
    }
    EXPECT_EQ(canvas.Pixel(2 * RowPx + 4, 4), RGB(0, 0, 255));              // period of the 5th
    EXPECT_EQ(canvas.Pixel(2 * RowPx + 4, RowPx + 4), RGB(255, 255, 255));  // of the 6th
}

}  // namespace
}  // namespace lunara
