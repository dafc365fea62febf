// What the main window does while it runs: views, commands, menu and buttons.

#include "app/main_window.h"

#include <algorithm>
#include <string>
#include <vector>

#include "app/commands.h"
#include "platform/clock.h"
#include "platform/pocketpc/common_controls.h"
#include "platform/pocketpc/menu_bar.h"
#include "records/dates.h"
#include "resources/ids.h"
#include "tests/ui/app/main_window_test_base.h"

namespace lunara {
namespace {

constexpr BYTE Hidden = TBSTATE_HIDDEN;
constexpr BYTE Checked = TBSTATE_CHECKED;
constexpr BYTE Enabled = TBSTATE_ENABLED;

class RunningTest : public MainWindowTest {
  protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        ASSERT_EQ(SignIn(), 1);
        PumpMessages();
        messages.boxes.clear();
    }
    HWND TopView() { return ::GetWindow(main->Handle(), GW_CHILD); }
    BYTE StyleOf(UINT command) {
        TBBUTTONINFOW info{};
        info.cbSize = sizeof(info);
        info.dwMask = TBIF_STYLE;
        ::SendMessageW(main->MenuBar(), TB_GETBUTTONINFOW, command,
                       reinterpret_cast<LPARAM>(&info));
        return info.fsStyle;
    }
};

// ---- Views ----

TEST_F(RunningTest, SwitchingViewsKeepsTheDate) {
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

TEST_F(RunningTest, ViewCommandsBringTheirViewToTheTop) {
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

TEST_F(RunningTest, ViewsFillTheWindowAboveTheBarAtEverySize) {
    for (const SIZE size : {SIZE{600, 700}, SIZE{400, 500}}) {
        ::SetWindowPos(main->Handle(), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        RECT client{};
        ::GetClientRect(main->Handle(), &client);
        RECT bar{};
        ::GetWindowRect(main->MenuBar(), &bar);
        ::MapWindowPoints(nullptr, main->Handle(), reinterpret_cast<POINT*>(&bar), 2);
        EXPECT_EQ(bar.left, 0);
        EXPECT_EQ(bar.right, client.right);
        EXPECT_EQ(bar.bottom, client.bottom);
        EXPECT_GT(bar.bottom - bar.top, 16);
        for (const HWND view : {main->Diary().Handle(), main->Graph().Handle()}) {
            RECT place{};
            ::GetWindowRect(view, &place);
            ::MapWindowPoints(nullptr, main->Handle(), reinterpret_cast<POINT*>(&place), 2);
            EXPECT_EQ(place.left, 0);
            EXPECT_EQ(place.top, 0);
            EXPECT_EQ(place.right, client.right);
            EXPECT_EQ(place.bottom, bar.top);
        }
    }
}

TEST_F(RunningTest, MinimisingLeavesTheViewsAsTheyAre) {
    RECT before{};
    ::GetClientRect(main->Diary().Handle(), &before);
    ::ShowWindow(main->Handle(), SW_MINIMIZE);
    RECT minimised{};
    ::GetClientRect(main->Diary().Handle(), &minimised);
    EXPECT_TRUE(::EqualRect(&before, &minimised));
    ::ShowWindow(main->Handle(), SW_RESTORE);
}

TEST_F(RunningTest, TheViewsHaveTheirTitles) {
    EXPECT_EQ(TextOf(main->Diary().Handle()), L"Diary view");
    EXPECT_EQ(TextOf(main->Graph().Handle()), L"Graph view");
}

// ---- Buttons and menu ----

TEST_F(RunningTest, TheDiaryOffersFiveOfTheSixButtons) {
    Command(IDM_VIEW_DIARY);
    constexpr BYTE Down = Enabled | Checked;
    EXPECT_EQ(ButtonStates(), (std::vector<BYTE>{Down, Down, Down, Down, Down, Hidden}));
    for (const UINT command : ButtonCommands) {
        EXPECT_EQ(StyleOf(command) & TBSTYLE_CHECKGROUP, TBSTYLE_CHECK);
    }
}

TEST_F(RunningTest, TheGraphOffersBleedingAndTemperature) {
    Command(IDM_VIEW_GRAPH);
    EXPECT_EQ(ButtonStates(),
              (std::vector<BYTE>{Hidden, Enabled | Checked, Hidden, Hidden, Hidden, Enabled}));
    for (const UINT command : ButtonCommands) {
        EXPECT_EQ(StyleOf(command) & TBSTYLE_CHECKGROUP, TBSTYLE_CHECKGROUP);
    }
}

TEST_F(RunningTest, ShowCommandsToggleTheDiarysFlagsAndButtons) {
    Command(IDM_VIEW_DIARY);
    const struct {
        const char* label;
        UINT command;
        std::uint32_t flag;
    } rows[] = {
        {"notes", IDM_SHOW_NOTES, 0x01},         {"bleeding", IDM_SHOW_BLEEDING, 0x02},
        {"period", IDM_SHOW_PERIOD, 0x04},       {"ovulation", IDM_SHOW_OVULATION, 0x08},
        {"pregnancy", IDM_SHOW_PREGNANCY, 0x10},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        Command(row.command);
        EXPECT_EQ(main->Diary().GetShowFlags(), 31U & ~row.flag);
        EXPECT_EQ(StateOf(row.command), Enabled);
        Command(row.command);
        EXPECT_EQ(main->Diary().GetShowFlags(), 31U);
        EXPECT_EQ(StateOf(row.command), Enabled | Checked);
    }
}

TEST_F(RunningTest, TheLastItemOfTheDiaryStaysShownAndItsButtonDown) {
    Command(IDM_VIEW_DIARY);
    for (const UINT command :
         {IDM_SHOW_BLEEDING, IDM_SHOW_PERIOD, IDM_SHOW_OVULATION, IDM_SHOW_PREGNANCY}) {
        Command(command);
    }
    ASSERT_EQ(main->Diary().GetShowFlags(), 1U);
    // A tap lets the toolbar raise the button before it sends the command.
    ::SendMessageW(main->MenuBar(), TB_CHECKBUTTON, IDM_SHOW_NOTES, FALSE);
    Command(IDM_SHOW_NOTES);
    EXPECT_EQ(main->Diary().GetShowFlags(), 1U);
    EXPECT_EQ(StateOf(IDM_SHOW_NOTES), Enabled | Checked);
}

TEST_F(RunningTest, TheGraphShowsExactlyOneOfBleedingAndTemperature) {
    Command(IDM_VIEW_GRAPH);
    Command(IDM_SHOW_TEMPERATURE);
    EXPECT_EQ(main->Graph().GetShowFlags(), 2U);
    EXPECT_EQ(StateOf(IDM_SHOW_BLEEDING), Enabled);
    EXPECT_EQ(StateOf(IDM_SHOW_TEMPERATURE), Enabled | Checked);
    Command(IDM_SHOW_TEMPERATURE);
    EXPECT_EQ(main->Graph().GetShowFlags(), 2U) << "no toggling off";
    EXPECT_EQ(StateOf(IDM_SHOW_TEMPERATURE), Enabled | Checked);
    Command(IDM_SHOW_BLEEDING);
    EXPECT_EQ(main->Graph().GetShowFlags(), 1U);
    EXPECT_EQ(StateOf(IDM_SHOW_BLEEDING), Enabled | Checked);
    EXPECT_EQ(StateOf(IDM_SHOW_TEMPERATURE), Enabled);
    EXPECT_EQ(main->Diary().GetShowFlags(), 31U) << "the diary has its own bleeding flag";
}

// The Options items stay enabled in both views, so a command can reach the view that is not shown.
TEST_F(RunningTest, AnOptionOfTheOtherViewChangesThatViewAndKeepsItsButtonHidden) {
    Command(IDM_VIEW_GRAPH);
    Command(IDM_SHOW_PERIOD);
    EXPECT_EQ(main->Diary().GetShowFlags(), 31U & ~4U);
    EXPECT_EQ(StateOf(IDM_SHOW_PERIOD) & Hidden, Hidden);
    Command(IDM_VIEW_DIARY);
    Command(IDM_SHOW_TEMPERATURE);
    EXPECT_EQ(main->Graph().GetShowFlags(), 2U);
    EXPECT_EQ(StateOf(IDM_SHOW_TEMPERATURE) & Hidden, Hidden);
}

TEST_F(RunningTest, OptionsItemsStayEnabledAndUncheckedWhateverIsShown) {
    for (const UINT command : {IDM_VIEW_DIARY, IDM_SHOW_NOTES, IDM_VIEW_GRAPH, IDM_SHOW_TEMPERATURE,
                               IDM_SHOW_BLEEDING}) {
        Command(command);
        for (const UINT option : ButtonCommands) {
            EXPECT_EQ(MenuStateOf(option) & (MF_CHECKED | MF_GRAYED | MF_DISABLED), 0U);
        }
    }
}

TEST_F(RunningTest, TheMenuHasItsItemsInOrder) {
    const std::pair<UINT, std::wstring> items[] = {
        {IDM_ABOUT, L"About"},
        {IDM_HELP, L"Help"},
        {0, L""},
        {IDM_BACKUP, L"Backup "},
        {IDM_RESTORE, L"Restore"},
        {0, L""},
        {IDM_VIEW_DIARY, L"View Diary"},
        {IDM_VIEW_GRAPH, L"View Graph"},
        {0, L""},
        {~0U, L"Options"},
        {IDM_HISTORY, L"History..."},
        {IDM_CHANGE_PASSWORD, L"Change Password..."},
        {0, L""},
        {IDM_EXIT, L"Exit"},
    };
    ASSERT_EQ(::GetMenuItemCount(Tools()), static_cast<int>(std::size(items)));
    for (UINT i = 0; i < std::size(items); ++i) {
        SCOPED_TRACE(i);
        WCHAR text[64] = {};
        ::GetMenuStringW(Tools(), i, text, 64, MF_BYPOSITION);
        EXPECT_EQ(::GetMenuItemID(Tools(), static_cast<int>(i)), items[i].first);
        EXPECT_EQ(text, items[i].second);
    }
    const HMENU options = ::GetSubMenu(Tools(), 9);
    ASSERT_EQ(::GetMenuItemCount(options), 6);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(::GetMenuItemID(options, i), ButtonCommands[i]);
    }
    EXPECT_EQ(::GetSubMenu(Tools(), 7), nullptr);
}

TEST_F(RunningTest, EveryMenuItemIsCarriedOut) {
    for (int i = 0; i < ::GetMenuItemCount(Tools()); ++i) {
        SCOPED_TRACE(i);
        const UINT id = ::GetMenuItemID(Tools(), i);
        if (id != 0 && ::GetSubMenu(Tools(), i) == nullptr) {  // separators have no id
            EXPECT_NE(CommandTable::Find(id), nullptr);
            EXPECT_EQ(MenuStateOf(id) & MF_GRAYED, 0U);
        }
    }
    for (const UINT command : ButtonCommands) {
        EXPECT_NE(CommandTable::Find(command), nullptr) << command;
    }
}

TEST_F(RunningTest, TheAcceleratorsAreAboutAndExit) {
    const HACCEL table = ::LoadAcceleratorsW(AppInstance(), MAKEINTRESOURCEW(IDR_ACCELERATORS));
    ACCEL keys[4] = {};
    ASSERT_EQ(::CopyAcceleratorTableW(table, keys, 4), 2);
    const struct {
        WORD key;
        WORD command;
    } rows[] = {{'A', IDM_ABOUT}, {'Q', IDOK}};
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(keys[i].key, rows[i].key);
        EXPECT_EQ(keys[i].cmd, rows[i].command);
        EXPECT_EQ(keys[i].fVirt & (FVIRTKEY | FCONTROL | FALT | FSHIFT), FVIRTKEY | FCONTROL);
    }
}

TEST_F(RunningTest, ButtonsHaveToolTips) {
    const std::pair<UINT, std::wstring> tips[] = {
        {IDM_TOOLS, L""},
        {IDM_SHOW_NOTES, L"Notes"},
        {IDM_SHOW_BLEEDING, L"Bleeding"},
        {IDM_SHOW_PERIOD, L"Period"},
        {IDM_SHOW_OVULATION, L"Ovulation"},
        {IDM_SHOW_PREGNANCY, L"Pregnancy"},
        {IDM_SHOW_TEMPERATURE, L"Temperature"},
    };
    for (const auto& [command, tip] : tips) {
        WCHAR text[64] = TEXT("?");
        NMTBGETINFOTIPW question{};
        question.hdr = {main->MenuBar(), 0, static_cast<UINT>(TBN_GETINFOTIPW)};
        question.pszText = text;
        question.cchTextMax = 64;
        question.iItem = static_cast<int>(command);
        Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&question));
        EXPECT_EQ(text, tip);
    }
}

// ---- Messages and commands ----

TEST_F(RunningTest, AboutHidesTheButtonsWhileItIsShown) {
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

TEST_F(RunningTest, HelpGoesToTheShownView) {
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

TEST_F(RunningTest, UnknownCommandsAndMessagesAreLeftToTheSystem) {
    EXPECT_FALSE(main->OnMessage(WM_COMMAND, 12345, 0, nullptr));
    EXPECT_FALSE(main->OnMessage(WM_USER + 77, 0, 0, nullptr));
    LRESULT result = 5;
    EXPECT_TRUE(main->OnMessage(WM_SETTINGCHANGE, 0, 0, &result));
    EXPECT_EQ(result, 0);
}

TEST_F(RunningTest, TheBackgroundIsWhite) {
    MemoryCanvas canvas(500, 700, RGB(10, 20, 30));
    Send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()));
    EXPECT_EQ(canvas.Pixel(5, 5), RGB(255, 255, 255));
    EXPECT_EQ(canvas.Pixel(479, 639), RGB(255, 255, 255));
}

TEST_F(RunningTest, PredictionWarningsArriveAsMessages) {
    Command(IDM_VIEW_DIARY);  // an empty diary
    PumpMessages();
    ASSERT_EQ(messages.boxes.size(), 1U);
    EXPECT_EQ(messages.boxes[0].owner, nullptr);
    EXPECT_EQ(messages.boxes[0].text, L"No statistical data. ");
    EXPECT_EQ(messages.boxes[0].caption, L"Warning");
    EXPECT_EQ(messages.boxes[0].flags, static_cast<UINT>(MB_ICONEXCLAMATION));
}

TEST_F(RunningTest, ShowingTheDiaryBringsThePredictionUpToDateAndTheGraphDoesNot) {
    FillDiary(main->Data());
    Command(IDM_VIEW_GRAPH);
    EXPECT_FALSE(main->Data().Prediction().predictionUpToDate);
    Command(IDM_VIEW_DIARY);
    EXPECT_TRUE(main->Data().Prediction().predictionUpToDate);
}

TEST_F(RunningTest, TheDayTimerPredictsAnewOnlyOnAnotherDay) {
    FillDiary(main->Data());
    Send(WM_TIMER, DayTimerId);
    EXPECT_FALSE(main->Data().Prediction().predictionUpToDate) << "the day has not changed";
    SYSTEMTIME tomorrow{};
    AddDays(TestToday, 1, tomorrow);
    SetLocalNow(tomorrow);
    Send(WM_TIMER, DayTimerId + 1);
    EXPECT_FALSE(main->Data().Prediction().predictionUpToDate) << "not the day timer";
    Send(WM_TIMER, DayTimerId);
    EXPECT_TRUE(main->Data().Prediction().predictionUpToDate);
    EXPECT_EQ(main->Data().Prediction().computedFor, ToDateKey(tomorrow));
    PumpMessages();
    EXPECT_TRUE(messages.boxes.empty()) << "silently";
}

TEST_F(RunningTest, TheDayTimerRepaintsTheViewsEveryMinuteAfterTheDayHasChanged) {
    SYSTEMTIME later{};
    AddDays(TestToday, 40, later);
    SetLocalNow(later);
    Command(IDM_VIEW_GRAPH);
    constexpr int ChartId = 3001;  // it covers most of the view
    const HWND chart = ::GetDlgItem(main->Graph().Handle(), ChartId);
    for (int minute = 0; minute < 2; ++minute) {
        ::UpdateWindow(chart);
        ASSERT_FALSE(::GetUpdateRect(chart, nullptr, FALSE));
        Send(WM_TIMER, DayTimerId);
        EXPECT_TRUE(::GetUpdateRect(chart, nullptr, FALSE));
    }
}

}  // namespace
}  // namespace lunara
