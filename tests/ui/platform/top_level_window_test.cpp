#include "platform/pocketpc/top_level_window.h"

#include "resources/ids.h"
#include "tests/ui/ui_test.h"
#include "tests/ui/window_boxes.h"

namespace lunara::test {
namespace {

class TopLevelWindow : public UiTest {
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
        EXPECT_EQ(lunara::TopLevelWindow(), nullptr);
        UiTest::TearDown();
    }
    ScriptedWindow window;
};

TEST_F(TopLevelWindow, AWindowOffTheScreenIsMovedOntoIt) {
    EXPECT_EQ(lunara::TopLevelWindow(), window.Handle());
    RECT work{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const Box place = ScreenBox(window.Handle());
    EXPECT_EQ(place.right, work.right);
    EXPECT_EQ(place.bottom, work.bottom);
}

TEST_F(TopLevelWindow, HasAMinimumSize) {
    MINMAXINFO limits{};
    ::SendMessageW(window.Handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_GT(limits.ptMinTrackSize.x, LeastClient.cx);
    EXPECT_GT(limits.ptMinTrackSize.y, LeastClient.cy);
}

}  // namespace
}  // namespace lunara::test
