#include "platform/pocketpc/menu_bar.h"

#include <cstdint>
#include <string>
#include <vector>

#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/common_controls.h"
#include "resources/ids.h"
#include "tests/ui/ui_test.h"
#include "tests/ui/window_boxes.h"

namespace lunara::test {
namespace {

TEST(MenuBarDescription, ADescriptionGivesTheMenuAndTheButtons) {
    const std::uint16_t words[] = {102, 2,     0xFFFF,         104, MENU_BAR_DROP_DOWN, 104,
                                   0,   50032, MENU_BAR_CHECK, 0};
    const auto description = ReadMenuBarDescription(words);
    ASSERT_TRUE(description.has_value());
    EXPECT_EQ(description->menu, 102);
    ASSERT_EQ(description->buttons.size(), 2U);
    EXPECT_EQ(description->buttons[1].command, 50032);
    EXPECT_EQ(description->buttons[0].text, 104);
}

TEST(MenuBarDescription, ADescriptionThatIsCutOrHasAnUnknownKindIsRefused) {
    const struct {
        const char* label;
        std::vector<std::uint16_t> words;
    } rows[] = {
        {"nothing", {}},
        {"one word", {102}},
        {"a button too few", {102, 2, 0, 1, 2, 0}},
        {"a button cut", {102, 1, 0, 1, 2}},
        {"an unknown kind", {102, 1, 0, 1, 3, 0}},
        {"far more buttons than words", {102, 0xFFFF, 0, 1, 2, 0}},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        EXPECT_FALSE(ReadMenuBarDescription(row.words).has_value());
    }
}

class MenuBar : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(parent.Create(0, nullptr, TEXT("Parent"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40,
                                50, 500, 650, nullptr, nullptr),
                  1);
        info.cbSize = sizeof(info);
        info.hwndParent = parent.Handle();
        info.nToolBarId = IDR_MENU_BAR;
        info.hInstRes = AppInstance();
        info.nBmpId = IDB_MENU_BAR;
        info.cBmpImages = 5;
        ASSERT_TRUE(SHCreateMenuBar(&info));
    }
    void TearDown() override {
        ::DestroyWindow(parent.Handle());
        UiTest::TearDown();
    }
    ScriptedWindow parent;
    SHMENUBARINFO info{};
};

TEST_F(MenuBar, StaysAtTheBottomOfItsParentAtEverySize) {
    for (const int width : {500, 320}) {
        ::SetWindowPos(parent.Handle(), nullptr, 0, 0, width, 600, SWP_NOMOVE | SWP_NOZORDER);
        const Box client = ClientScreenBox(parent.Handle());
        const Box bar = ScreenBox(info.hwndMB);
        EXPECT_EQ(bar.left, client.left);
        EXPECT_EQ(bar.right, client.right);
        EXPECT_EQ(bar.bottom, client.bottom);
    }
}

TEST_F(MenuBar, HasSevenButtonsInOrder) {
    const int commands[] = {IDM_TOOLS,           IDM_SHOW_NOTES,     IDM_SHOW_BLEEDING,
                            IDM_SHOW_PERIOD,     IDM_SHOW_OVULATION, IDM_SHOW_PREGNANCY,
                            IDM_SHOW_TEMPERATURE};
    ASSERT_EQ(::SendMessageW(info.hwndMB, TB_BUTTONCOUNT, 0, 0), 7);
    for (int i = 0; i < 7; ++i) {
        SCOPED_TRACE(i);
        TBBUTTON button{};
        ASSERT_TRUE(::SendMessageW(info.hwndMB, TB_GETBUTTON, static_cast<WPARAM>(i),
                                   reinterpret_cast<LPARAM>(&button)));
        EXPECT_EQ(button.idCommand, commands[i]);
        EXPECT_EQ(button.iBitmap, i == 0 ? I_IMAGENONE : i - 1);
        EXPECT_NE(button.fsState & TBSTATE_ENABLED, 0);
    }
    WCHAR label[16] = {};
    ::SendMessageW(info.hwndMB, TB_GETBUTTONTEXTW, IDM_TOOLS, reinterpret_cast<LPARAM>(label));
    EXPECT_STREQ(label, TEXT("Tools"));
}

TEST_F(MenuBar, AllSixPicturesAreThereThoughTheCallerCountsFive) {
    const auto images =
        reinterpret_cast<HIMAGELIST>(::SendMessageW(info.hwndMB, TB_GETIMAGELIST, 0, 0));
    ASSERT_NE(images, nullptr);
    EXPECT_EQ(::ImageList_GetImageCount(images), 6);
    MemoryCanvas canvas(16, 16);
    ::ImageList_Draw(images, 5, canvas.Dc(), 0, 0, ILD_NORMAL);
    EXPECT_GT(16 * 16 - canvas.CountOf(RGB(255, 255, 255)), 30) << "the last picture is not blank";
    EXPECT_EQ(canvas.CountOf(RGB(192, 192, 192)), 0)
        << "the bitmap's background colour is transparent";
}

TEST_F(MenuBar, HandsOutTheMenuOfItsDropDownOnly) {
    EXPECT_NE(::SendMessageW(info.hwndMB, SHCMBM_GETSUBMENU, 0, IDM_TOOLS), 0);
    EXPECT_EQ(::SendMessageW(info.hwndMB, SHCMBM_GETSUBMENU, 0, IDM_SHOW_NOTES), 0);
    EXPECT_EQ(::SendMessageW(info.hwndMB, SHCMBM_GETSUBMENU, 0, 4711), 0);
}

TEST_F(MenuBar, KeepsItsOwnCopyOfTheToolTips) {
    std::wstring notes = L"Notes";
    const WCHAR* texts[] = {TEXT(""), notes.c_str()};
    EXPECT_EQ(
        ::SendMessageW(info.hwndMB, TB_SETTOOLTIPS_DEVICE, 2, reinterpret_cast<LPARAM>(texts)), 0);
    notes = L"?????";
    const struct {
        const char* label;
        int command;
        int size;
        const WCHAR* text;
    } rows[] = {
        {"named", IDM_SHOW_NOTES, 20, TEXT("Notes")},
        {"cut", IDM_SHOW_NOTES, 3, TEXT("No")},
        {"without a text", IDM_SHOW_PERIOD, 20, TEXT("")},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        WCHAR text[20] = TEXT("?");
        NMTBGETINFOTIPW question{};
        question.hdr = {info.hwndMB, 0, static_cast<UINT>(TBN_GETINFOTIPW)};
        question.pszText = text;
        question.cchTextMax = row.size;
        question.iItem = row.command;
        ::SendMessageW(parent.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&question));
        EXPECT_STREQ(text, row.text);
    }
}

/// Records where the menu opens, and closes it. The menu runs a modal loop of its own, which sends
/// its owner WM_ENTERIDLE whenever its queue is empty.
class MenuBarMenu : public MenuBar {
  protected:
    void SetUp() override {
        MenuBar::SetUp();
        parent.handler = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) {
            if (message == WM_ENTERIDLE && wParam == MSGF_MENU) {
                menu = ScreenBox(reinterpret_cast<HWND>(lParam));
                ::EndMenu();
            }
            return false;
        };
    }
    Box menu{};
};

TEST_F(MenuBarMenu, TheButtonOpensTheMenuUpwards) {
    NMTOOLBARW drop{};
    drop.hdr = {info.hwndMB, 0, static_cast<UINT>(TBN_DROPDOWN)};
    drop.iItem = IDM_TOOLS;
    EXPECT_EQ(::SendMessageW(parent.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&drop)),
              TBDDRET_DEFAULT);
    const Box bar = ScreenBox(info.hwndMB);
    EXPECT_GT(menu.bottom, menu.top);
    EXPECT_LE(menu.bottom, bar.bottom - 10);
    EXPECT_GE(menu.bottom, bar.top - 4);
    EXPECT_LT(menu.top, bar.top - 100);
    EXPECT_LE(menu.left, bar.left + 8);
}

TEST_F(MenuBarMenu, TheMenuKeyOpensTheMenu) {
    ::SendMessageW(parent.Handle(), WM_SYSCOMMAND, SC_KEYMENU, 0);
    EXPECT_GT(menu.bottom, menu.top);
}

TEST_F(MenuBar, RefusesABarWithoutDescriptionMenuOrPictures) {
    const struct {
        const char* label;
        UINT bar;
        int bitmap;
        DWORD size;
    } rows[] = {
        {"no description", 4711, IDB_MENU_BAR, sizeof(SHMENUBARINFO)},
        {"no bitmap", IDR_MENU_BAR, 4711, sizeof(SHMENUBARINFO)},
        {"size not set", IDR_MENU_BAR, IDB_MENU_BAR, 0},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        SHMENUBARINFO wanted = info;
        wanted.cbSize = row.size;
        wanted.nToolBarId = row.bar;
        wanted.nBmpId = row.bitmap;
        EXPECT_FALSE(SHCreateMenuBar(&wanted));
    }
}

}  // namespace
}  // namespace lunara::test
