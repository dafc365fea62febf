// The main window's menu and menu bar, and the views' show flags behind the buttons.

#include "app/main_window.h"

#include <string>
#include <utility>
#include <vector>

#include "app/commands.h"
#include "platform/pocketpc/common_controls.h"
#include "platform/pocketpc/menu_bar.h"
#include "resources/ids.h"
#include "tests/ui/app/main_window_test_base.h"

namespace lunara::test {
namespace {

constexpr BYTE Hidden = TBSTATE_HIDDEN;
constexpr BYTE Checked = TBSTATE_CHECKED;
constexpr BYTE Enabled = TBSTATE_ENABLED;

class MainWindowButtons : public MainWindowTest {
  protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        ASSERT_EQ(SignIn(), 1);
        PumpMessages();
        messages.boxes.clear();
    }
    BYTE StyleOf(UINT command) {
        TBBUTTONINFOW info{};
        info.cbSize = sizeof(info);
        info.dwMask = TBIF_STYLE;
        ::SendMessageW(main->MenuBar(), TB_GETBUTTONINFOW, command,
                       reinterpret_cast<LPARAM>(&info));
        return info.fsStyle;
    }
};

TEST_F(MainWindowButtons, TheDiaryOffersFiveOfTheSixButtons) {
    Command(IDM_VIEW_DIARY);
    constexpr BYTE Down = Enabled | Checked;
    EXPECT_EQ(ButtonStates(), (std::vector<BYTE>{Down, Down, Down, Down, Down, Hidden}));
    for (const UINT command : ButtonCommands) {
        EXPECT_EQ(StyleOf(command) & TBSTYLE_CHECKGROUP, TBSTYLE_CHECK);
    }
}

TEST_F(MainWindowButtons, TheGraphOffersBleedingAndTemperature) {
    Command(IDM_VIEW_GRAPH);
    EXPECT_EQ(ButtonStates(),
              (std::vector<BYTE>{Hidden, Enabled | Checked, Hidden, Hidden, Hidden, Enabled}));
    for (const UINT command : ButtonCommands) {
        EXPECT_EQ(StyleOf(command) & TBSTYLE_CHECKGROUP, TBSTYLE_CHECKGROUP);
    }
}

TEST_F(MainWindowButtons, ShowCommandsToggleTheDiarysFlagsAndButtons) {
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

TEST_F(MainWindowButtons, TheLastItemOfTheDiaryStaysShownAndItsButtonDown) {
    Command(IDM_VIEW_DIARY);
    for (const UINT command : {UINT{IDM_SHOW_BLEEDING}, UINT{IDM_SHOW_PERIOD},
                               UINT{IDM_SHOW_OVULATION}, UINT{IDM_SHOW_PREGNANCY}}) {
        Command(command);
    }
    ASSERT_EQ(main->Diary().GetShowFlags(), 1U);
    // On a tap the toolbar raises the button first and sends the command then.
    ::SendMessageW(main->MenuBar(), TB_CHECKBUTTON, IDM_SHOW_NOTES, FALSE);
    Command(IDM_SHOW_NOTES);
    EXPECT_EQ(main->Diary().GetShowFlags(), 1U);
    EXPECT_EQ(StateOf(IDM_SHOW_NOTES), Enabled | Checked);
}

TEST_F(MainWindowButtons, TheGraphShowsExactlyOneOfBleedingAndTemperature) {
    Command(IDM_VIEW_GRAPH);
    Command(IDM_SHOW_TEMPERATURE);
    EXPECT_EQ(main->Graph().GetShowFlags(), 2U);
    EXPECT_EQ(StateOf(IDM_SHOW_BLEEDING), Enabled);
    EXPECT_EQ(StateOf(IDM_SHOW_TEMPERATURE), Enabled | Checked);
    Command(IDM_SHOW_TEMPERATURE);
    EXPECT_EQ(main->Graph().GetShowFlags(), 2U) << "a graph cannot be switched off";
    EXPECT_EQ(StateOf(IDM_SHOW_TEMPERATURE), Enabled | Checked);
    Command(IDM_SHOW_BLEEDING);
    EXPECT_EQ(main->Graph().GetShowFlags(), 1U);
    EXPECT_EQ(StateOf(IDM_SHOW_BLEEDING), Enabled | Checked);
    EXPECT_EQ(StateOf(IDM_SHOW_TEMPERATURE), Enabled);
    EXPECT_EQ(main->Diary().GetShowFlags(), 31U) << "the diary has its own bleeding flag";
}

// The menu's Options items stay enabled in both views, so their commands can reach the hidden view.
TEST_F(MainWindowButtons, AnOptionOfTheOtherViewChangesThatViewAndKeepsItsButtonHidden) {
    Command(IDM_VIEW_GRAPH);
    Command(IDM_SHOW_PERIOD);
    EXPECT_EQ(main->Diary().GetShowFlags(), 31U & ~4U);
    EXPECT_EQ(StateOf(IDM_SHOW_PERIOD) & Hidden, Hidden);
    Command(IDM_VIEW_DIARY);
    Command(IDM_SHOW_TEMPERATURE);
    EXPECT_EQ(main->Graph().GetShowFlags(), 2U);
    EXPECT_EQ(StateOf(IDM_SHOW_TEMPERATURE) & Hidden, Hidden);
}

TEST_F(MainWindowButtons, OptionsItemsStayEnabledAndUncheckedWhateverIsShown) {
    for (const UINT command : {UINT{IDM_VIEW_DIARY}, UINT{IDM_SHOW_NOTES}, UINT{IDM_VIEW_GRAPH},
                               UINT{IDM_SHOW_TEMPERATURE}, UINT{IDM_SHOW_BLEEDING}}) {
        Command(command);
        for (const UINT option : ButtonCommands) {
            EXPECT_EQ(MenuStateOf(option) & (MF_CHECKED | MF_GRAYED | MF_DISABLED), 0U);
        }
    }
}

TEST_F(MainWindowButtons, TheMenuHasItsItemsInOrder) {
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

TEST_F(MainWindowButtons, EveryMenuItemHasACommand) {
    for (int i = 0; i < ::GetMenuItemCount(Tools()); ++i) {
        SCOPED_TRACE(i);
        const UINT id = ::GetMenuItemID(Tools(), i);
        if (id != 0 && ::GetSubMenu(Tools(), i) == nullptr) {  // the id of a separator is 0
            EXPECT_NE(CommandTable::Find(id), nullptr);
            EXPECT_EQ(MenuStateOf(id) & MF_GRAYED, 0U);
        }
    }
    for (const UINT command : ButtonCommands) {
        EXPECT_NE(CommandTable::Find(command), nullptr) << command;
    }
}

TEST_F(MainWindowButtons, TheAcceleratorsAreAboutAndExit) {
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

TEST_F(MainWindowButtons, ButtonsHaveToolTips) {
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

}  // namespace
}  // namespace lunara::test
