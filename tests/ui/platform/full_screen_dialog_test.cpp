// Full-screen dialogs: CoverOwner, which every dialog of the program goes through, and
// SHInitDialog.

#include "platform/pocketpc/full_screen_dialog.h"

#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/common_controls.h"
#include "platform/pocketpc/dialog_layout.h"
#include "resources/ids.h"
#include "tests/ui/ui_test.h"
#include "tests/ui/ui_test_ids.h"
#include "tests/ui/window_boxes.h"
#include "window/dialog.h"

namespace lunara::test {
namespace {

class FullScreenDialog : public UiTest {
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

TEST_F(FullScreenDialog, CoversTheClientAreaOfItsOwner) {
    EXPECT_EQ(ScreenBox(dialog.Handle()), ClientScreenBox(owner.Handle()));
    EXPECT_EQ(ScreenBox(dialog.Handle()), ClientScreenBox(dialog.Handle())) << "it has no frame";
}

TEST_F(FullScreenDialog, LosesTheFrameOfItsTemplate) {
    Dialog framed(TEST_DIALOG, &owner);
    ASSERT_TRUE(Dialog::CreateModeless(framed, TEST_DIALOG, &owner));
    EXPECT_EQ(::GetWindowLongPtrW(framed.Handle(), GWL_STYLE) & WS_CAPTION, 0);
    EXPECT_EQ(ScreenBox(framed.Handle()), ClientScreenBox(owner.Handle()));
    EXPECT_EQ(ScreenBox(framed.Handle()), ClientScreenBox(framed.Handle()));
    ::DestroyWindow(framed.Handle());
}

/// Records where its window is when its fields are loaded.
class LoadedDialog : public Dialog {
  public:
    using Dialog::Dialog;
    void DoDataExchange(DataExchange&) override { place = ScreenBox(Handle()); }

    Box place{};
};

TEST_F(FullScreenDialog, CoversItsOwnerBeforeItsFieldsAreLoaded) {
    LoadedDialog loaded(IDD_LOGIN, &owner);
    ASSERT_TRUE(Dialog::CreateModeless(loaded, IDD_LOGIN, &owner));
    EXPECT_EQ(loaded.place, ClientScreenBox(owner.Handle()));
    ::DestroyWindow(loaded.Handle());
}

TEST_F(FullScreenDialog, FollowsItsOwnerWhenThatIsMovedOrResized) {
    ::SetWindowPos(owner.Handle(), nullptr, 100, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(ScreenBox(dialog.Handle()), ClientScreenBox(owner.Handle()));
    ::SetWindowPos(owner.Handle(), nullptr, 0, 0, 400, 420, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(ScreenBox(dialog.Handle()), ClientScreenBox(owner.Handle()));
}

TEST_F(FullScreenDialog, TakesItsOwnerAlongWhenItIsDragged) {
    const Box before = ScreenBox(owner.Handle());
    const Box place = ScreenBox(dialog.Handle());
    ::SetWindowPos(dialog.Handle(), nullptr, place.left + 30, place.top + 20, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER);
    const Box after = ScreenBox(owner.Handle());
    EXPECT_EQ(after.left, before.left + 30);
    EXPECT_EQ(after.top, before.top + 20);
    EXPECT_EQ(ScreenBox(dialog.Handle()), ClientScreenBox(owner.Handle()));
}

TEST_F(FullScreenDialog, CanBeDraggedByItsTitleStripOnly) {
    const Box place = ScreenBox(dialog.Handle());
    const auto hit = [&](int x, int y) {
        return ::SendMessageW(dialog.Handle(), WM_NCHITTEST, 0,
                              MAKELPARAM(place.left + x, place.top + y));
    };
    EXPECT_EQ(hit(50, 1), HTCAPTION);
    EXPECT_EQ(hit(50, TitleStripPx - 1), HTCAPTION);
    EXPECT_EQ(hit(50, TitleStripPx), HTCLIENT);
}

TEST_F(FullScreenDialog, ShowsItsTitleOnWhite) {
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
    EXPECT_NE(canvas.Pixel(300, TitleStripPx - 1), RGB(255, 255, 255))
        << "the rule under the title";
}

TEST_F(FullScreenDialog, LabelsStandOnWhiteAndKeepTheColourOfTheDialog) {
    MemoryCanvas canvas(10, 10);
    const auto brush = reinterpret_cast<HGDIOBJ>(
        ::SendMessageW(dialog.Handle(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(canvas.Dc()),
                       reinterpret_cast<LPARAM>(Field())));
    EXPECT_EQ(brush, ::GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(::GetBkColor(canvas.Dc()), RGB(255, 255, 255));
}

TEST_F(FullScreenDialog, ControlsAndTheirFontGrowAndShrinkWithTheWindow) {
    const Box large = ScreenBox(Field());
    LOGFONTW largeFont{};
    ::GetObjectW(reinterpret_cast<HGDIOBJ>(::SendMessageW(Field(), WM_GETFONT, 0, 0)),
                 sizeof(largeFont), &largeFont);
    ::SetWindowPos(owner.Handle(), nullptr, 0, 0, 280, 650, SWP_NOMOVE | SWP_NOZORDER);
    const Box small = ScreenBox(Field());
    LOGFONTW smallFont{};
    ::GetObjectW(reinterpret_cast<HGDIOBJ>(::SendMessageW(Field(), WM_GETFONT, 0, 0)),
                 sizeof(smallFont), &smallFont);
    EXPECT_LT(small.right - small.left, large.right - large.left);
    EXPECT_LT(std::abs(smallFont.lfHeight), std::abs(largeFont.lfHeight));
    const Box client = ClientScreenBox(owner.Handle());
    EXPECT_GE(small.left, client.left);
    EXPECT_LE(small.right, client.right);
    ::SetWindowPos(owner.Handle(), nullptr, 0, 0, 500, 650, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(ScreenBox(Field()), large) << "rounding must not accumulate";
}

TEST_F(FullScreenDialog, AListOpensAsHighAsDesignedAtEverySize) {
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
    const Box field = ScreenBox(::GetDlgItem(dialog.Handle(), IDC_BACKUP_LIST));
    EXPECT_GT(small, 4 * (field.bottom - field.top));
    EXPECT_GT(large, small);
}

TEST_F(FullScreenDialog, CanBeMadeAgainAfterItWasDestroyed) {
    ::DestroyWindow(dialog.Handle());
    EXPECT_EQ(dialog.Handle(), nullptr);
    ::SetWindowPos(owner.Handle(), nullptr, 100, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ASSERT_TRUE(Dialog::CreateModeless(dialog, IDD_LOGIN, &owner));
    EXPECT_EQ(ScreenBox(dialog.Handle()), ClientScreenBox(owner.Handle()));
}

TEST_F(FullScreenDialog, IsDestroyedWithItsOwner) {
    ::DestroyWindow(owner.Handle());
    EXPECT_EQ(dialog.Handle(), nullptr);
}

TEST_F(FullScreenDialog, SHInitDialogRefusesAnythingButADialogWithFlags) {
    SHINITDLGINFO info{SHIDIM_FLAGS, nullptr, SHIDIF_SIZEDLGFULLSCREEN};
    EXPECT_FALSE(SHInitDialog(&info));
    EXPECT_FALSE(SHInitDialog(nullptr));
    info = {0, dialog.Handle(), SHIDIF_SIZEDLGFULLSCREEN};
    EXPECT_FALSE(SHInitDialog(&info)) << "without SHIDIM_FLAGS in the mask, dwFlags is not valid";
}

}  // namespace
}  // namespace lunara::test
