// The diary view: its child windows, its show flags and settings, and the contents of its rows.

#include "views/diary_view.h"

#include <bit>

#include "cycle/day_status.h"
#include "cycle/predictor.h"
#include "tests/support/user_data_access.h"
#include "tests/ui/views/diary_view_test_support.h"
#include "views/month_colors.h"
#include "window/settings.h"

namespace lunara::test {
namespace {

constexpr WCHAR ShowFlagsSetting[] = TEXT("DiaryView_ShowFlags");

void StoreShowFlags(DWORD flags) {
    Settings settings;
    ASSERT_TRUE(settings.WriteDword(ShowFlagsSetting, flags));
}

/// Records the notifications of the view as texts such as "Notes 0".
class RecordingListener : public DiaryListener {
  public:
    void NotesShownChanged(bool isShown) override { Add("Notes ", isShown); }
    void BleedingShownChanged(bool isShown) override { Add("Bleeding ", isShown); }
    void PeriodShownChanged(bool isShown) override { Add("Period ", isShown); }
    void OvulationShownChanged(bool isShown) override { Add("Ovulation ", isShown); }
    void PregnancyShownChanged(bool isShown) override { Add("Pregnancy ", isShown); }

    void HelpRequested(const WCHAR* anchor) override { calls.push_back("help " + ToUtf8(anchor)); }

    std::vector<std::string> calls;

  private:
    void Add(std::string name, bool isShown) {
        calls.push_back(std::move(name) + (isShown ? "1" : "0"));
    }
};

// ---- Creation ----

TEST_F(DiaryView, HasScrollBarCalendarAndAgendaSideBySide) {
    Make();
    EXPECT_EQ(ClassOf(view->Handle()), FrameworkClassName);
    EXPECT_EQ(TextOf(view->Handle()), L"Diary view");
    const Box bar = BoxOf(Child(View::ScrollBarId));
    const Box calendar = BoxOf(Child(View::CalendarId));
    const Box agenda = BoxOf(Child(View::AgendaId));
    EXPECT_EQ(bar, (Box{0, 0, ::GetSystemMetrics(SM_CXVSCROLL), HeightPx}));
    EXPECT_EQ(calendar.left, bar.right - 1);
    EXPECT_EQ(calendar.bottom, HeightPx);
    EXPECT_EQ(agenda.left, calendar.right - 1);
    EXPECT_EQ(agenda, (Box{agenda.left, 0, WidthPx, HeightPx}));
    EXPECT_EQ(ClassOf(Child(View::CalendarId)), L"CalendarCtrl");
    EXPECT_EQ(ClassOf(Child(View::AgendaId)), L"AgendaCtrl");
    EXPECT_EQ(::lstrcmpiW(ClassOf(Child(View::ScrollBarId)).c_str(), L"scrollbar"), 0);
    EXPECT_NE(
        static_cast<DWORD>(::GetWindowLongW(Child(View::CalendarId), GWL_STYLE)) & CCS_VERTICAL,
        0U);
}

TEST_F(DiaryView, TheCalendarIsThreeTextLinesWideWhereItsCellsAreLowerThanALine) {
    Make(240, 200);  // cells of 10 px
    TEXTMETRICW metrics{};
    {
        const WindowDcScope dc(view->Handle());
        ::GetTextMetricsW(dc.Dc(), &metrics);
    }
    const Box calendar = BoxOf(Calendar());
    EXPECT_EQ(calendar.right - calendar.left, 3 * metrics.tmHeight);
}

TEST_F(DiaryView, ShowsTwentyDaysFromTenBeforeTheCurrentDate) {
    Make();
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 5)));
    EXPECT_EQ(TopCell().bottom, RowPx);
    EXPECT_EQ(AskRow(0).request.rowHeight, RowPx);
}

// ---- Show flags ----

TEST_F(DiaryView, ShowsEverythingWithoutASetting) {
    EXPECT_EQ(view->GetShowFlags(), 31U);
    Make();
    EXPECT_EQ(view->GetShowFlags(), 31U);
    EXPECT_EQ(LineCount(), 5);
}

TEST_F(DiaryView, ReadsItsSettingAtCreationAndWritesItAtDestruction) {
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

TEST_F(DiaryView, ASettingWithoutAnyItemIsAsIfItWereMissing) {
    StoreShowFlags(0);
    Make();
    EXPECT_EQ(view->GetShowFlags(), 31U);
    ::DestroyWindow(view->Handle());
    StoreShowFlags(0xFFFFFF00 | 2);
    Make();
    EXPECT_EQ(view->GetShowFlags(), 2U);
}

TEST_F(DiaryView, ASettingOfAnotherTypeIsAsIfItWereMissing) {
    {
        Settings settings;
        ASSERT_TRUE(settings.WriteString(ShowFlagsSetting, TEXT("2")));
    }
    Make();
    EXPECT_EQ(view->GetShowFlags(), 31U);
}

TEST_F(DiaryView, WithoutASettingsKeyItWorksWithTheDefault) {
    SetSettingsLocation({nullptr, nullptr, TEXT("")});
    Make();
    EXPECT_EQ(view->GetShowFlags(), 31U);
    ::DestroyWindow(view->Handle());
    EXPECT_TRUE(messages.boxes.empty());
}

struct SetterCase {
    const char* label;
    std::uint32_t (lunara::DiaryView::*setter)(bool);
    std::uint32_t bit;
    const char* call;
};

TEST_F(DiaryView, SettersToggleTheirItemAndTellTheListeners) {
    Make();
    RecordingListener listener;
    view->AttachListener(listener);
    const SetterCase cases[] = {
        {"notes", &lunara::DiaryView::SetShowNotes, 1, "Notes "},
        {"bleeding", &lunara::DiaryView::SetShowBleeding, 2, "Bleeding "},
        {"period", &lunara::DiaryView::SetShowPeriod, 4, "Period "},
        {"ovulation", &lunara::DiaryView::SetShowOvulation, 8, "Ovulation "},
        {"pregnancy", &lunara::DiaryView::SetShowPregnancy, 16, "Pregnancy "},
    };
    for (const SetterCase& c : cases) {
        LUNARA_ROW(c);
        listener.calls.clear();
        View& diary = *view;
        EXPECT_EQ((diary.*c.setter)(true), 31U);  // no change, so no notification
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

TEST_F(DiaryView, TheLastItemCannotBeHidden) {
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

TEST_F(DiaryView, SettersWorkBeforeItsWindowExists) {
    EXPECT_EQ(view->SetShowNotes(false), 30U);
    view->Refresh();
    view->Reload();
    view->SetCurrentDate(Day(2020, 1, 1));
}

// ---- Rows ----

TEST_F(DiaryView, RowsCarryTextColorsAndPictures) {
    const SYSTEMTIME fifth = Day(2026, 3, 5);
    SetDayFlags(UserDataTestAccess::Prediction(*data), DAY_CYCLE_START, 0, ToDateKey(fifth));
    UserDataTestAccess::Prediction(*data).bleedingLevels.Set(ToDateKey(fifth),
                                                             std::bit_cast<std::int32_t>(3.0F));
    data->SetNoteText(TEXT("x"), &fifth);
    Make();
    const Row row = AskRow(0);
    EXPECT_STREQ(row.request.text, L"Mar, 05\nCycle start. ");
    EXPECT_NE(row.items[0].overlay, nullptr);
    EXPECT_EQ(row.items[1].color, RGB(0, 0, 255));
    EXPECT_NE(row.items[1].bitmap, nullptr);
    EXPECT_EQ(row.items[1].overlay, nullptr);
    EXPECT_EQ(row.items[2].color, RGB(255, 255, 255));
    // A day without a status has no text at all, not even its date.
    EXPECT_EQ(AskRow(1).request.text[0], 0);
}

TEST_F(DiaryView, RowsFollowTheItemsShown) {
    StoreShowFlags(DiaryShowNotes | DiaryShowPregnancy);
    const SYSTEMTIME fifth = Day(2026, 3, 5);
    UserDataTestAccess::Prediction(*data).pregnancyProbabilities.Set(
        ToDateKey(fifth), std::bit_cast<std::int32_t>(1.0F));
    Make();
    const Row row = AskRow(0);
    EXPECT_EQ(row.items[1].color, RGB(0, 255, 0));
    // The overlay marks days after the last valid period start; with no period start, all days.
    EXPECT_NE(row.items[1].overlay, nullptr);
}

TEST_F(DiaryView, MonthColorsComeFromTheTable) {
    Make();
    CalendarMonthColor request{
        {Calendar(), View::CalendarId, CCN_GETMONTHCOLOR}, Day(2026, 8, 31), 0};
    EXPECT_EQ(::SendMessageW(view->Handle(), WM_NOTIFY, View::CalendarId,
                             reinterpret_cast<LPARAM>(&request)),
              1);
    EXPECT_EQ(request.color, MonthColor(8));
}

TEST_F(DiaryView, OtherNotificationsAreNotAnswered) {
    Make();
    CalendarClick click{{Calendar(), View::CalendarId, CCN_CLICK}, {1, 1}};
    EXPECT_EQ(::SendMessageW(view->Handle(), WM_NOTIFY, View::CalendarId,
                             reinterpret_cast<LPARAM>(&click)),
              0);
    NMHDR stray{Agenda(), View::AgendaId, 77};
    EXPECT_EQ(
        ::SendMessageW(view->Handle(), WM_NOTIFY, View::AgendaId, reinterpret_cast<LPARAM>(&stray)),
        0);
}

TEST_F(DiaryView, ChangesOfRecordsRepaintTheAgenda) {
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

TEST_F(DiaryView, AReloadedDataSetIsShownFromItsOwnDate) {
    Make();
    ScrollBy(SB_PAGEDOWN);
    data->Unload();
    test::RecordBleeding(*data, ToDateKey(Day(2025, 12, 5)), 2);
    PumpMessages();
    view->Reload();
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 3, 5)));
    ExpectScroll(465, 90);
    EXPECT_TRUE(WaitsForPaint(Agenda()));
    EXPECT_TRUE(WaitsForPaint(Calendar()));
}

// ---- Window ----

TEST_F(DiaryView, HelpAsksItsListenersForItsOwnAnchor) {
    Make();
    RecordingListener listener;
    view->AttachListener(listener);
    HELPINFO info{};
    info.cbSize = sizeof(info);
    ::SendMessageW(view->Handle(), WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(listener.calls, std::vector<std::string>{"help Lunara.htm#_Calendar_diary"});
    view->DetachListener(listener);
}

TEST_F(DiaryView, LaysItselfOutAgainWhenItIsResized) {
    Make();
    const DateKey start = Start();
    ::SetWindowPos(view->Handle(), nullptr, 0, 0, 700, 410, SWP_NOZORDER);
    EXPECT_EQ(Start(), start);
    EXPECT_EQ(TopCell().bottom, 20);
    EXPECT_EQ(AskRow(0).request.rowHeight, 20);
    EXPECT_EQ(BoxOf(Agenda()).right, 700);
    EXPECT_EQ(BoxOf(Agenda()).bottom, 410);
    EXPECT_EQ(BoxOf(Child(View::ScrollBarId)).bottom, 410);
    EXPECT_EQ(static_cast<AgendaCtrl*>(Window::FromHandle(Agenda()))->CellWidth(), 20);
    // Rows of the agenda and cells of the calendar have the same height at every size.
    for (const int height : {640, 613, 300, 41, 19, 1}) {
        ::SetWindowPos(view->Handle(), nullptr, 0, 0, 480, height, SWP_NOZORDER);
        PumpMessages();
        EXPECT_EQ(AskRow(0).request.rowHeight, TopCell().bottom) << height;
    }
}

TEST_F(DiaryView, AWindowWithoutASizeDoesNoHarm) {
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

TEST_F(DiaryView, StopsObservingTheDataSetWhenItsWindowIsDestroyed) {
    Make();
    EXPECT_EQ(data->AttachObserver(*view), 0);  // 0: it is attached already
    ::DestroyWindow(view->Handle());
    EXPECT_EQ(data->DetachObserver(*view), 0);
    data->SetBleeding(2);
    data->SetCurrentDate(Day(2020, 1, 1));
}

TEST_F(DiaryView, CanBeCreatedAgain) {
    Make();
    view->SetShowNotes(false);
    ::DestroyWindow(view->Handle());
    data->SetCurrentDate(Day(2026, 6, 20));
    Make();
    EXPECT_EQ(view->GetShowFlags(), 30U);
    EXPECT_EQ(Start(), ToDateKey(Day(2026, 6, 10)));
}

TEST_F(DiaryView, DrawsItsTitleOnWhite) {
    Make();
    for (const int id : {View::AgendaId, View::CalendarId, View::ScrollBarId}) {
        ::ShowWindow(Child(id), SW_HIDE);
    }
    ::RedrawWindow(view->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    MemoryCanvas canvas(WidthPx, HeightPx, RGB(9, 9, 9));
    canvas.CopyFrom(view->Handle());
    EXPECT_EQ(canvas.Pixel(5, 5), RGB(255, 255, 255));
    EXPECT_GT(canvas.CountOf(RGB(0, 0, 0)), 0);
}

TEST_F(DiaryView, PaintsTheDaysOfTheDataSet) {
    const SYSTEMTIME fifth = Day(2026, 3, 5);
    UserDataTestAccess::Prediction(*data).periodProbabilities.Set(
        ToDateKey(fifth), std::bit_cast<std::int32_t>(1.0F));
    Make();
    ::RedrawWindow(view->Handle(), nullptr, nullptr,
                   RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    MemoryCanvas canvas(WidthPx, HeightPx);
    canvas.CopyFrom(Agenda());
    EXPECT_EQ(canvas.Pixel(2 * RowPx + 4, 4), RGB(0, 0, 255));              // the 5th has a period
    EXPECT_EQ(canvas.Pixel(2 * RowPx + 4, RowPx + 4), RGB(255, 255, 255));  // the 6th has none
}

}  // namespace
}  // namespace lunara::test
