// The Pocket PC shell on the desktop.

#include <cstdint>
#include <string>
#include <vector>

#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/common_controls.h"
#include "platform/pocketpc/dialog_layout.h"
#include "platform/pocketpc/menu_bar.h"
#include "platform/pocketpc/placement.h"
#include "platform/pocketpc/top_level_window.h"
#include "resources/ids.h"
#include "tests/ui/ui_test.h"
#include "tests/ui/ui_test_ids.h"
#include "window/dialog.h"
#include "window/memory_painting.h"

namespace lunara {
namespace {

RECT ScreenRect(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

RECT ClientOnScreen(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    return client;
}

::testing::AssertionResult SameRect(const RECT& a, const RECT& b) {
    if (::EqualRect(&a, &b) != FALSE) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << a.left << "," << a.top << "-" << a.right << "," << a.bottom << " is not " << b.left
           << "," << b.top << "-" << b.right << "," << b.bottom;
}

// ---- Input panel ----

class PanelTest : public UiTest {
  protected:
    static SIPINFO Info() {
        SIPINFO info{};
        info.cbSize = sizeof(info);
        EXPECT_TRUE(SHSipInfo(SPI_GETSIPINFO, 0, &info, 0));
        return info;
    }
};

TEST_F(PanelTest, KeepsItsFlags) {
    SIPINFO info = Info();
    const DWORD before = info.fdwFlags;
    info.fdwFlags = before | SIPF_DISABLECOMPLETION;
    EXPECT_TRUE(SHSipInfo(SPI_SETSIPINFO, 0, &info, 0));
    EXPECT_EQ(Info().fdwFlags, before | SIPF_DISABLECOMPLETION);
    info.fdwFlags = before;
    EXPECT_TRUE(SHSipInfo(SPI_SETSIPINFO, 0, &info, 0));
}

TEST_F(PanelTest, IsRaisedAndLowered) {
    ScriptedWindow window;
    ASSERT_EQ(window.Make(), 1);
    const struct {
        const char* label;
        SIPSTATE state;
        bool up;
    } rows[] = {{"up", SIP_UP, true},       {"unchanged", SIP_UNCHANGED, true},
                {"down", SIP_DOWN, false},  {"unchanged", SIP_UNCHANGED, false},
                {"up again", SIP_UP, true}, {"forced down", SIP_FORCEDOWN, false}};
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        EXPECT_TRUE(SHSipPreference(window.Handle(), row.state));
        EXPECT_EQ((Info().fdwFlags & SIPF_ON) != 0, row.up);
    }
    EXPECT_FALSE(SHSipPreference(nullptr, SIP_UP));
}

TEST_F(PanelTest, RefusesWhatItDoesNotKnow) {
    SIPINFO info{};
    EXPECT_FALSE(SHSipInfo(SPI_GETSIPINFO, 0, &info, 0)) << "size not set";
    EXPECT_FALSE(SHSipInfo(SPI_GETSIPINFO, 0, nullptr, 0));
    info.cbSize = sizeof(info);
    EXPECT_FALSE(SHSipInfo(999, 0, &info, 0));
}

// ---- Sheet geometry ----

TEST(SheetLayoutTest, GrowsEvenlyUpToTheLimitAndStandsInTheMiddle) {
    const struct {
        const char* label;
        SIZE designed;
        SIZE client;
        double scale;
        LONG left;
    } rows[] = {
        {"room for more than the most", {200, 200}, {480, 640}, 1.5, 90},
        {"as wide as fits", {380, 200}, {480, 640}, 1.2, 12},
        {"as high as fits", {200, 582}, {480, 640}, 1.0, 140},
        {"shrinks in a small window", {456, 200}, {252, 640}, 0.5, 12},
        {"never below the least", {1000, 200}, {252, 640}, 0.5, 0},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        const SheetLayout layout = LayOutSheet(row.designed, row.client);
        EXPECT_DOUBLE_EQ(layout.scale, row.scale);
        EXPECT_EQ(layout.origin.x, row.left);
        EXPECT_EQ(layout.origin.y, TitleStripPx + SheetMarginPx);
    }
}

TEST(SheetLayoutTest, WhatTouchesInTheTemplateTouchesOnTheSheet) {
    const SheetLayout layout{1.5, {7, 46}};
    for (LONG edge = 0; edge < 50; ++edge) {
        const RECT left = PlaceOnSheet({0, 0, edge, 10}, layout);
        const RECT right = PlaceOnSheet({edge, 0, 60, 10}, layout);
        EXPECT_EQ(left.right, right.left);
    }
}

// ---- Placing children ----

class PlacementTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(parent.Make(nullptr, 300, 200), 1);
        ::SetWindowPos(parent.Handle(), nullptr, 30, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        ASSERT_EQ(child.Make(parent.Handle()), 1);
        child.log.clear();
    }

    ScriptedWindow parent;
    ScriptedWindow child;
};

TEST_F(PlacementTest, AChildIsPutThereHiddenOrShown) {
    const RECT place{10, 20, 110, 70};
    PutAt(child.Handle(), place);
    EXPECT_TRUE(SameRect(PlaceOf(child.Handle()), place));
    EXPECT_EQ(child.CountOf(WM_SIZE), 1);
    ::ShowWindow(child.Handle(), SW_SHOWNA);
    ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
    const RECT other{12, 20, 112, 90};
    PutAt(child.Handle(), other);
    EXPECT_TRUE(SameRect(PlaceOf(child.Handle()), other));
}

TEST_F(PlacementTest, AChildThatIsThereIsLeftAlone) {
    PutAt(child.Handle(), PlaceOf(child.Handle()));
    EXPECT_EQ(child.CountOf(WM_WINDOWPOSCHANGING), 0);
    RECT place = PlaceOf(child.Handle());
    ++place.bottom;
    PutAt(child.Handle(), place);
    EXPECT_EQ(child.CountOf(WM_WINDOWPOSCHANGING), 1);
}

TEST_F(PlacementTest, IsPaintedWholeWhenShownAndWhenItIsSeenToChange) {
    RECT painted{};
    child.handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message != WM_PAINT) {
            return false;
        }
        const PaintScope scope(child.Handle());
        painted = scope.Paint().rcPaint;
        return true;
    };
    ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
    PutAt(child.Handle(), RECT{10, 20, 110, 70});
    ::ShowWindow(child.Handle(), SW_SHOWNA);
    child.Update();
    EXPECT_TRUE(SameRect(painted, RECT{0, 0, 100, 50}));
    PutAt(child.Handle(), RECT{10, 20, 130, 80});
    child.Update();
    EXPECT_TRUE(SameRect(painted, RECT{0, 0, 120, 60}));
}

// ---- Painting through memory ----

constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Green = RGB(0, 255, 0);

class MemoryPaintingTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(control.Make(nullptr, 60, 40), 1);
        PaintThroughMemory(control.Handle());
    }
    void Show() {
        ::ShowWindow(control.Handle(), SW_SHOWNOACTIVATE);
        control.Update();
    }
    COLORREF Pixel(int x, int y) {
        const WindowDcScope dc(control.Handle());
        return ::GetPixel(dc.Dc(), x, y);
    }
    static void Fill(HDC dc, LONG left, LONG right, COLORREF color) {
        const Brush brush(::CreateSolidBrush(color));
        const RECT area{left, 0, right, 40};
        ::FillRect(dc, &area, brush.Get());
    }

    ScriptedWindow control;
};

TEST_F(MemoryPaintingTest, WhatIsErasedAndPaintedGetsToTheScreen) {
    control.handler = [](UINT message, WPARAM wParam, LPARAM, LRESULT& result) {
        if (message == WM_ERASEBKGND) {
            Fill(reinterpret_cast<HDC>(wParam), 0, 60, Green);
            result = 1;
            return true;
        }
        if (message == WM_PAINT && wParam != 0) {
            Fill(reinterpret_cast<HDC>(wParam), 0, 30, Red);
            return true;
        }
        return false;
    };
    Show();
    EXPECT_EQ(Pixel(10, 10), Red);
    EXPECT_EQ(Pixel(50, 10), Green);
    EXPECT_EQ(::GetUpdateRect(control.Handle(), nullptr, FALSE), FALSE)
        << "painted again and again";
    EXPECT_EQ(control.CountOf(WM_PAINT), 1);
}

TEST_F(MemoryPaintingTest, AControlThatPaintsToItsWindowOnlyDoesSoFromThenOn) {
    std::vector<WPARAM> asked;
    control.handler = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        if (message != WM_PAINT) {
            return false;
        }
        asked.push_back(wParam);
        const PaintScope scope(control.Handle());
        Fill(scope.Dc(), 0, 60, Red);
        return true;
    };
    Show();
    control.Update();
    EXPECT_EQ(Pixel(10, 10), Red);
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_NE(asked[0], WPARAM{0});
    EXPECT_EQ(asked[1], WPARAM{0});
    EXPECT_GE(control.CountOf(WM_ERASEBKGND), 2) << "in memory, then in the window";
}

TEST_F(MemoryPaintingTest, AnotherPictureIsLeftToTheControl) {
    HDC painted = nullptr;
    control.handler = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        painted = message == WM_PAINT ? reinterpret_cast<HDC>(wParam) : painted;
        return message == WM_PAINT;
    };
    const MemoryCanvas canvas(60, 40);
    ::SendMessageW(control.Handle(), WM_PAINT, reinterpret_cast<WPARAM>(canvas.Dc()), 0);
    EXPECT_EQ(painted, canvas.Dc());
}

// ---- Full-screen dialogs ----

class FullScreenTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(owner.Create(0, nullptr, TEXT("Owner"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 50,
                               500, 650, nullptr, nullptr),
                  1);
        ASSERT_TRUE(Dialog::CreateModeless(dialog, IDD_LOGIN, &owner));
        ::ShowWindow(dialog.Handle(), SW_SHOW);
    }
    void TearDown() override {
        ::DestroyWindow(dialog.Handle());
        ::DestroyWindow(owner.Handle());
        UiTest::TearDown();
    }
    HWND Field() { return ::GetDlgItem(dialog.Handle(), IDC_PASSWORD); }

    ScriptedWindow owner;
    Dialog dialog{IDD_LOGIN, &owner};
};

TEST_F(FullScreenTest, CoversTheClientAreaOfItsOwner) {
    EXPECT_TRUE(SameRect(ScreenRect(dialog.Handle()), ClientOnScreen(owner.Handle())));
    EXPECT_TRUE(SameRect(ScreenRect(dialog.Handle()), ClientOnScreen(dialog.Handle())))
        << "it has no frame";
}

TEST_F(FullScreenTest, LosesTheFrameOfItsTemplate) {
    Dialog framed(TEST_DIALOG, &owner);
    ASSERT_TRUE(Dialog::CreateModeless(framed, TEST_DIALOG, &owner));
    EXPECT_EQ(::GetWindowLongPtrW(framed.Handle(), GWL_STYLE) & WS_CAPTION, 0);
    EXPECT_TRUE(SameRect(ScreenRect(framed.Handle()), ClientOnScreen(owner.Handle())));
    EXPECT_TRUE(SameRect(ScreenRect(framed.Handle()), ClientOnScreen(framed.Handle())));
    ::DestroyWindow(framed.Handle());
}

/// Remembers where it was when its fields were loaded.
class LoadedDialog : public Dialog {
  public:
    using Dialog::Dialog;
    void DoDataExchange(DataExchange&) override { place = ScreenRect(Handle()); }

    RECT place{};
};

TEST_F(FullScreenTest, IsLaidOutBeforeItsFieldsAreLoaded) {
    LoadedDialog loaded(IDD_LOGIN, &owner);
    ASSERT_TRUE(Dialog::CreateModeless(loaded, IDD_LOGIN, &owner));
    EXPECT_TRUE(SameRect(loaded.place, ClientOnScreen(owner.Handle())));
    ::DestroyWindow(loaded.Handle());
}

TEST_F(FullScreenTest, GoesWhereItsOwnerGoes) {
    ::SetWindowPos(owner.Handle(), nullptr, 100, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_TRUE(SameRect(ScreenRect(dialog.Handle()), ClientOnScreen(owner.Handle())));
    ::SetWindowPos(owner.Handle(), nullptr, 0, 0, 400, 420, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(SameRect(ScreenRect(dialog.Handle()), ClientOnScreen(owner.Handle())));
}

TEST_F(FullScreenTest, TakesItsOwnerAlongWhenItIsDragged) {
    const RECT before = ScreenRect(owner.Handle());
    const RECT place = ScreenRect(dialog.Handle());
    ::SetWindowPos(dialog.Handle(), nullptr, place.left + 30, place.top + 20, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER);
    const RECT after = ScreenRect(owner.Handle());
    EXPECT_EQ(after.left, before.left + 30);
    EXPECT_EQ(after.top, before.top + 20);
    EXPECT_TRUE(SameRect(ScreenRect(dialog.Handle()), ClientOnScreen(owner.Handle())));
}

TEST_F(FullScreenTest, CanBeDraggedByItsTitleStripOnly) {
    const RECT place = ScreenRect(dialog.Handle());
    const auto hit = [&](int x, int y) {
        return ::SendMessageW(dialog.Handle(), WM_NCHITTEST, 0,
                              MAKELPARAM(place.left + x, place.top + y));
    };
    EXPECT_EQ(hit(50, 1), HTCAPTION);
    EXPECT_EQ(hit(50, TitleStripPx - 1), HTCAPTION);
    EXPECT_EQ(hit(50, TitleStripPx), HTCLIENT);
}

TEST_F(FullScreenTest, ShowsItsTitleOnWhite) {
    MemoryCanvas canvas(480, 600, RGB(1, 2, 3));
    ::SendMessageW(dialog.Handle(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.Dc()), 0);
    EXPECT_EQ(canvas.Pixel(2, 2), RGB(255, 255, 255));
    EXPECT_EQ(canvas.Pixel(300, 300), RGB(255, 255, 255));
    int titlePixels = 0;
    for (int y = 0; y < TitleStripPx - 1; ++y) {
        for (int x = 0; x < 200; ++x) {
            titlePixels += canvas.Pixel(x, y) != RGB(255, 255, 255) ? 1 : 0;
        }
    }
    EXPECT_GT(titlePixels, 50);
    EXPECT_NE(canvas.Pixel(300, TitleStripPx - 1), RGB(255, 255, 255)) << "the rule under it";
}

TEST_F(FullScreenTest, LabelsStandOnWhiteAndKeepTheColourOfTheDialog) {
    MemoryCanvas canvas(10, 10);
    const auto brush = reinterpret_cast<HGDIOBJ>(
        ::SendMessageW(dialog.Handle(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(canvas.Dc()),
                       reinterpret_cast<LPARAM>(Field())));
    EXPECT_EQ(brush, ::GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(::GetBkColor(canvas.Dc()), RGB(255, 255, 255));
}

TEST_F(FullScreenTest, ControlsAndTheirFontGrowAndShrinkWithTheWindow) {
    const RECT large = ScreenRect(Field());
    LOGFONTW largeFont{};
    ::GetObjectW(reinterpret_cast<HGDIOBJ>(::SendMessageW(Field(), WM_GETFONT, 0, 0)),
                 sizeof(largeFont), &largeFont);
    ::SetWindowPos(owner.Handle(), nullptr, 0, 0, 280, 650, SWP_NOMOVE | SWP_NOZORDER);
    const RECT small = ScreenRect(Field());
    LOGFONTW smallFont{};
    ::GetObjectW(reinterpret_cast<HGDIOBJ>(::SendMessageW(Field(), WM_GETFONT, 0, 0)),
                 sizeof(smallFont), &smallFont);
    EXPECT_LT(small.right - small.left, large.right - large.left);
    EXPECT_LT(std::abs(smallFont.lfHeight), std::abs(largeFont.lfHeight));
    const RECT client = ClientOnScreen(owner.Handle());
    EXPECT_GE(small.left, client.left);
    EXPECT_LE(small.right, client.right);
    ::SetWindowPos(owner.Handle(), nullptr, 0, 0, 500, 650, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(SameRect(ScreenRect(Field()), large)) << "no rounding adds up";
}

TEST_F(FullScreenTest, AListOpensAsHighAsDesignedAtEverySize) {
    ::DestroyWindow(dialog.Handle());
    ASSERT_TRUE(Dialog::CreateModeless(dialog, IDD_RESTORE, &owner));
    const auto heightOpened = [&] {
        RECT opened{};
        ::SendDlgItemMessageW(dialog.Handle(), IDC_BACKUP_LIST, CB_GETDROPPEDCONTROLRECT, 0,
                              reinterpret_cast<LPARAM>(&opened));
        return opened.bottom - opened.top;
    };
    const LONG large = heightOpened();
    ::SetWindowPos(owner.Handle(), nullptr, 0, 0, 280, 650, SWP_NOMOVE | SWP_NOZORDER);
    const LONG small = heightOpened();
    const RECT field = ScreenRect(::GetDlgItem(dialog.Handle(), IDC_BACKUP_LIST));
    EXPECT_GT(small, 4 * (field.bottom - field.top));
    EXPECT_GT(large, small);
}

TEST_F(FullScreenTest, ADestroyedDialogLeavesItsOwnerAlone) {
    ::DestroyWindow(dialog.Handle());
    EXPECT_EQ(dialog.Handle(), nullptr);
    ::SetWindowPos(owner.Handle(), nullptr, 100, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ASSERT_TRUE(Dialog::CreateModeless(dialog, IDD_LOGIN, &owner));
    EXPECT_TRUE(SameRect(ScreenRect(dialog.Handle()), ClientOnScreen(owner.Handle())));
}

TEST_F(FullScreenTest, AnOwnerThatGoesTakesTheDialogWithIt) {
    ::DestroyWindow(owner.Handle());
    EXPECT_EQ(dialog.Handle(), nullptr);
}

TEST_F(FullScreenTest, InitDialogRefusesWhatIsNoDialog) {
    SHINITDLGINFO info{SHIDIM_FLAGS, nullptr, SHIDIF_SIZEDLGFULLSCREEN};
    EXPECT_FALSE(SHInitDialog(&info));
    EXPECT_FALSE(SHInitDialog(nullptr));
    info = {0, dialog.Handle(), SHIDIF_SIZEDLGFULLSCREEN};
    EXPECT_FALSE(SHInitDialog(&info)) << "the mask says that there are no flags";
}

TEST_F(FullScreenTest, ForegroundCallWithTheLowestBitRestoresAndFindsTheDialog) {
    ::EnableWindow(owner.Handle(), FALSE);
    ::ShowWindow(owner.Handle(), SW_MINIMIZE);
    const auto marked =
        reinterpret_cast<HWND>(reinterpret_cast<std::uintptr_t>(owner.Handle()) | 1U);
    SHSetForegroundWindow(marked);
    EXPECT_FALSE(::IsIconic(owner.Handle()));
    EXPECT_EQ(::GetForegroundWindow(), dialog.Handle());
    ::EnableWindow(owner.Handle(), TRUE);
}

TEST_F(FullScreenTest, SettingChangesNeedTheWindowsRecord) {
    SHACTIVATEINFO info{};
    EXPECT_FALSE(SHHandleWMSettingChange(owner.Handle(), 0, 0, &info));
    info.cbSize = sizeof(info);
    EXPECT_TRUE(SHHandleWMSettingChange(owner.Handle(), 0, 0, &info));
    EXPECT_FALSE(SHHandleWMSettingChange(owner.Handle(), 0, 0, nullptr));
}

// ---- Top-level window ----

class TopLevelTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        CREATESTRUCTW wanted{};
        PrepareTopLevelWindow(wanted);
        ASSERT_EQ(window.Create(0, nullptr, TEXT("Top"), static_cast<DWORD>(wanted.style), 4000,
                                3000, wanted.cx, wanted.cy, nullptr, nullptr),
                  1);
        EquipTopLevelWindow(window.Handle(), AppInstance(), IDI_LUNARA);
    }
    void TearDown() override {
        ::DestroyWindow(window.Handle());
        EXPECT_EQ(TopLevelWindow(), nullptr);
        UiTest::TearDown();
    }
    ScriptedWindow window;
};

TEST_F(TopLevelTest, IsMovedOntoTheScreen) {
    EXPECT_EQ(TopLevelWindow(), window.Handle());
    RECT work{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const RECT place = ScreenRect(window.Handle());
    EXPECT_EQ(place.right, work.right);
    EXPECT_EQ(place.bottom, work.bottom);
}

TEST_F(TopLevelTest, HasALeastSize) {
    MINMAXINFO limits{};
    ::SendMessageW(window.Handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_GT(limits.ptMinTrackSize.x, LeastClient.cx);
    EXPECT_GT(limits.ptMinTrackSize.y, LeastClient.cy);
}

// ---- Menu bar ----

TEST(MenuBarDescriptionTest, ReadsMenuAndButtons) {
    const std::uint16_t words[] = {102, 2,     0xFFFF,         104, MENU_BAR_DROP_DOWN, 104,
                                   0,   50032, MENU_BAR_CHECK, 0};
    const auto description = ReadMenuBarDescription(words);
    ASSERT_TRUE(description.has_value());
    EXPECT_EQ(description->menu, 102);
    ASSERT_EQ(description->buttons.size(), 2U);
    EXPECT_EQ(description->buttons[1].command, 50032);
    EXPECT_EQ(description->buttons[0].text, 104);
}

TEST(MenuBarDescriptionTest, RefusesWhatIsCutOrUnknown) {
    const struct {
        const char* label;
        std::vector<std::uint16_t> words;
    } rows[] = {
        {"nothing", {}},
        {"one word", {102}},
        {"a button too few", {102, 2, 0, 1, 2, 0}},
        {"a button cut", {102, 1, 0, 1, 2}},
        {"a kind of its own", {102, 1, 0, 1, 3, 0}},
        {"a count beyond all bounds", {102, 0xFFFF, 0, 1, 2, 0}},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        EXPECT_FALSE(ReadMenuBarDescription(row.words).has_value());
    }
}

class MenuBarTest : public UiTest {
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

TEST_F(MenuBarTest, StandsAtTheBottomOfItsParent) {
    for (const int width : {500, 320}) {
        ::SetWindowPos(parent.Handle(), nullptr, 0, 0, width, 600, SWP_NOMOVE | SWP_NOZORDER);
        const RECT client = ClientOnScreen(parent.Handle());
        const RECT bar = ScreenRect(info.hwndMB);
        EXPECT_EQ(bar.left, client.left);
        EXPECT_EQ(bar.right, client.right);
        EXPECT_EQ(bar.bottom, client.bottom);
    }
}

TEST_F(MenuBarTest, HasSevenButtonsInOrder) {
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

TEST_F(MenuBarTest, AllSixPicturesAreThereThoughTheCallerCountsFive) {
    const auto images =
        reinterpret_cast<HIMAGELIST>(::SendMessageW(info.hwndMB, TB_GETIMAGELIST, 0, 0));
    ASSERT_NE(images, nullptr);
    EXPECT_EQ(::ImageList_GetImageCount(images), 6);
    MemoryCanvas canvas(16, 16);
    ::ImageList_Draw(images, 5, canvas.Dc(), 0, 0, ILD_NORMAL);
    EXPECT_GT(16 * 16 - canvas.CountOf(RGB(255, 255, 255)), 30) << "the last one is not blank";
    EXPECT_EQ(canvas.CountOf(RGB(192, 192, 192)), 0) << "its ground is transparent";
}

TEST_F(MenuBarTest, HandsOutTheMenuOfItsDropDownOnly) {
    EXPECT_NE(::SendMessageW(info.hwndMB, SHCMBM_GETSUBMENU, 0, IDM_TOOLS), 0);
    EXPECT_EQ(::SendMessageW(info.hwndMB, SHCMBM_GETSUBMENU, 0, IDM_SHOW_NOTES), 0);
    EXPECT_EQ(::SendMessageW(info.hwndMB, SHCMBM_GETSUBMENU, 0, 4711), 0);
}

TEST_F(MenuBarTest, KeepsItsOwnCopyOfTheToolTips) {
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

// The menu runs a loop of its own, which tells the window each time it has nothing to do.
class DropUpTest : public MenuBarTest {
  protected:
    void SetUp() override {
        MenuBarTest::SetUp();
        parent.handler = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) {
            if (message == WM_ENTERIDLE && wParam == MSGF_MENU) {
                menu = ScreenRect(reinterpret_cast<HWND>(lParam));
                ::EndMenu();
            }
            return false;
        };
    }
    RECT menu{};
};

TEST_F(DropUpTest, TheButtonOpensTheMenuUpwards) {
    NMTOOLBARW drop{};
    drop.hdr = {info.hwndMB, 0, static_cast<UINT>(TBN_DROPDOWN)};
    drop.iItem = IDM_TOOLS;
    EXPECT_EQ(::SendMessageW(parent.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&drop)),
              TBDDRET_DEFAULT);
    const RECT bar = ScreenRect(info.hwndMB);
    EXPECT_GT(menu.bottom, menu.top);
    EXPECT_LE(menu.bottom, bar.bottom - 10);
    EXPECT_GE(menu.bottom, bar.top - 4);
    EXPECT_LT(menu.top, bar.top - 100);
    EXPECT_LE(menu.left, bar.left + 8);
}

TEST_F(DropUpTest, TheMenuKeyOpensIt) {
    ::SendMessageW(parent.Handle(), WM_SYSCOMMAND, SC_KEYMENU, 0);
    EXPECT_GT(menu.bottom, menu.top);
}

TEST_F(MenuBarTest, RefusesABarWithoutDescriptionMenuOrPictures) {
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
}  // namespace lunara
