// The running main window: its views, messages and commands, the minute timer.

#include "app/main_window.h"

#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/pocketpc/common_controls.h"
#include "records/dates.h"
#include "resources/ids.h"
#include "tests/ui/app/main_window_test_base.h"
#include "tests/ui/window_boxes.h"

namespace lunara::test {
namespace {

constexpr BYTE Hidden = TBSTATE_HIDDEN;
constexpr BYTE Checked = TBSTATE_CHECKED;
constexpr BYTE Enabled = TBSTATE_ENABLED;

class MainWindow : public MainWindowTest {
  protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        ASSERT_EQ(SignIn(), 1);
        PumpMessages();
        messages.boxes.clear();
    }
    HWND TopView() { return ::GetWindow(main->Handle(), GW_CHILD); }
};

// ---- Views ----

TEST_F(MainWindow, SwitchingViewsKeepsTheDate) {
    const SYSTEMTIME first = Day(2024, 4, 3);
    const SYSTEMTIME second = Day(2024, 2, 29);
    Command(IDM_VIEW_DIARY);
    main->Diary().SetCurrentDate(first);
    Command(IDM_VIEW_GRAPH);
    EXPECT_TRUE(IsSameDay(main->Graph().GetCurrentDate(), first));
    main->Graph().SetCurrentDate(second);
    Command(IDM_VIEW_DIARY);
    EXPECT_TRUE(IsSameDay(main->Diary().GetCurrentDate(), second));
}

TEST_F(MainWindow, AViewCommandBringsItsViewToTheTop) {
    Command(IDM_VIEW_DIARY);
    EXPECT_EQ(TopView(), main->Diary().Handle());
    EXPECT_EQ(main->CurrentView(), ViewDiary);
    EXPECT_NE(MenuStateOf(IDM_VIEW_DIARY) & MF_CHECKED, 0U);
    EXPECT_EQ(MenuStateOf(IDM_VIEW_GRAPH) & MF_CHECKED, 0U);
    Command(IDM_VIEW_GRAPH);
    EXPECT_EQ(TopView(), main->Graph().Handle());
    EXPECT_EQ(main->CurrentView(), ViewGraph);
    EXPECT_EQ(MenuStateOf(IDM_VIEW_DIARY) & MF_CHECKED, 0U);
    EXPECT_NE(MenuStateOf(IDM_VIEW_GRAPH) & MF_CHECKED, 0U);
}

TEST_F(MainWindow, TheViewsFillTheWindowAboveTheBarAtEverySize) {
    for (const SIZE size : {SIZE{600, 700}, SIZE{400, 500}}) {
        ::SetWindowPos(main->Handle(), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        const Box client = ClientBox(main->Handle());
        const Box bar = BoxOf(main->MenuBar());
        EXPECT_EQ(bar, (Box{0, bar.top, client.right, client.bottom}));
        EXPECT_GT(bar.bottom - bar.top, 16);
        EXPECT_EQ(BoxOf(main->Diary().Handle()), (Box{0, 0, client.right, bar.top}));
        EXPECT_EQ(BoxOf(main->Graph().Handle()), (Box{0, 0, client.right, bar.top}));
    }
}

TEST_F(MainWindow, MinimisingLeavesTheViewsAsTheyAre) {
    const Box before = ClientBox(main->Diary().Handle());
    ::ShowWindow(main->Handle(), SW_MINIMIZE);
    EXPECT_EQ(ClientBox(main->Diary().Handle()), before);
    ::ShowWindow(main->Handle(), SW_RESTORE);
}

TEST_F(MainWindow, TheViewsHaveTheirTitles) {
    EXPECT_EQ(TextOf(main->Diary().Handle()), L"Diary view");
    EXPECT_EQ(TextOf(main->Graph().Handle()), L"Graph view");
}

// ---- Messages and commands ----

TEST_F(MainWindow, AboutHidesTheButtonsWhileItIsShown) {
    Command(IDM_VIEW_DIARY);
    std::wstring title;
    BYTE state = 0;
    script->Then([&](HWND dialog) {
        title = TextOf(dialog);
        state = StateOf(IDM_SHOW_PERIOD);
    });
    script->Press(IDOK);
    Command(IDM_ABOUT);
    EXPECT_EQ(title, L"About Lunara");
    EXPECT_EQ(state, Enabled | Checked | Hidden);
    EXPECT_EQ(StateOf(IDM_SHOW_PERIOD), Enabled | Checked);
    EXPECT_EQ(StateOf(IDM_SHOW_TEMPERATURE), Hidden) << "the diary never had it";
}

TEST_F(MainWindow, HelpOpensTheAnchorOfTheShownView) {
    Command(IDM_VIEW_DIARY);
    Send(WM_HELP);
    Command(IDM_VIEW_GRAPH);
    Send(WM_HELP);
    Command(IDM_HELP);
    EXPECT_EQ(help.anchors, (std::vector<std::wstring>{L"Lunara.htm#_Calendar_diary",
                                                       L"Lunara.htm#_Calendar_graph",
                                                       L"Lunara.htm#Lunara_help"}));
    EXPECT_EQ(help.programs[2], L"PegHelp.exe");
}

TEST_F(MainWindow, UnknownCommandsAndMessagesAreLeftToTheSystem) {
    EXPECT_FALSE(main->OnMessage(WM_COMMAND, 12345, 0, nullptr));
    EXPECT_FALSE(main->OnMessage(WM_USER + 77, 0, 0, nullptr));
    LRESULT result = 5;
    EXPECT_TRUE(main->OnMessage(WM_SETTINGCHANGE, 0, 0, &result));
    EXPECT_EQ(result, 0);
}

TEST_F(MainWindow, TheBackgroundIsWhite) {
    MemoryCanvas canvas(500, 700, RGB(10, 20, 30));
    Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()));
    EXPECT_EQ(canvas.Pixel(5, 5), RGB(255, 255, 255));
    EXPECT_EQ(canvas.Pixel(479, 639), RGB(255, 255, 255));
}

TEST_F(MainWindow, APredictionWarningIsShownInABoxWithoutOwner) {
    Command(IDM_VIEW_DIARY);  // an empty diary has no statistics
    PumpMessages();
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].owner, nullptr);
    EXPECT_EQ(messages.boxes[0].text, L"No statistical data. ");
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONEXCLAMATION));
}

TEST_F(MainWindow, ShowingTheDiaryBringsThePredictionUpToDateAndTheGraphDoesNot) {
    FillDiary(main->Data());
    Command(IDM_VIEW_GRAPH);
    EXPECT_FALSE(main->Data().predictor.predictionUpToDate);
    Command(IDM_VIEW_DIARY);
    EXPECT_TRUE(main->Data().predictor.predictionUpToDate);
}

TEST_F(MainWindow, TheDayTimerPredictsAgainOnlyOnAnotherDay) {
    FillDiary(main->Data());
    Send(WM_TIMER, DayTimerId);
    EXPECT_FALSE(main->Data().predictor.predictionUpToDate) << "the day has not changed";
    SYSTEMTIME tomorrow{};
    AddDays(TestToday, 1, tomorrow);
    SetLocalNow(tomorrow);
    Send(WM_TIMER, DayTimerId + 1);
    EXPECT_FALSE(main->Data().predictor.predictionUpToDate) << "not the day timer";
    Send(WM_TIMER, DayTimerId);
    EXPECT_TRUE(main->Data().predictor.predictionUpToDate);
    EXPECT_EQ(main->Data().predictor.computedFor, ToDateKey(tomorrow));
    PumpMessages();
    EXPECT_TRUE(messages.boxes.empty()) << "the timer's prediction warns of nothing";
}

TEST_F(MainWindow, TheDayTimerRepaintsTheViewsEveryMinuteAfterTheDayHasChanged) {
    SYSTEMTIME later{};
    AddDays(TestToday, 40, later);
    SetLocalNow(later);
    Command(IDM_VIEW_GRAPH);
    const HWND chart = ::GetDlgItem(main->Graph().Handle(), GraphView::ChartId);
    for (int minute = 0; minute < 2; ++minute) {
        ::UpdateWindow(chart);
        ASSERT_FALSE(::GetUpdateRect(chart, nullptr, FALSE));
        Send(WM_TIMER, DayTimerId);
        EXPECT_TRUE(::GetUpdateRect(chart, nullptr, FALSE));
    }
}

}  // namespace
}  // namespace lunara::test
