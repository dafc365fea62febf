#include "platform/pocketpc/placement.h"

#include "tests/ui/ui_test.h"
#include "tests/ui/window_boxes.h"

namespace lunara::test {
namespace {

class Placement : public UiTest {
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

TEST_F(Placement, AChildIsMovedAndResizedHiddenOrShown) {
    PutAt(child.Handle(), RECT{10, 20, 110, 70});
    EXPECT_EQ(BoxOf(PlaceOf(child.Handle())), (Box{10, 20, 110, 70}));
    EXPECT_EQ(child.CountOf(WM_SIZE), 1);
    ::ShowWindow(child.Handle(), SW_SHOWNA);
    ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
    PutAt(child.Handle(), RECT{12, 20, 112, 90});
    EXPECT_EQ(BoxOf(PlaceOf(child.Handle())), (Box{12, 20, 112, 90}));
}

TEST_F(Placement, AChildAlreadyInPlaceIsLeftAlone) {
    PutAt(child.Handle(), PlaceOf(child.Handle()));
    EXPECT_EQ(child.CountOf(WM_WINDOWPOSCHANGING), 0);
    RECT place = PlaceOf(child.Handle());
    ++place.bottom;
    PutAt(child.Handle(), place);
    EXPECT_EQ(child.CountOf(WM_WINDOWPOSCHANGING), 1);
}

TEST_F(Placement, AChildIsPaintedWholeWhenShownAndWhenResizedInView) {
    Box painted{};
    child.handler = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message != WM_PAINT) {
            return false;
        }
        const PaintScope scope(child.Handle());
        painted = BoxOf(scope.Paint().rcPaint);
        return true;
    };
    ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
    PutAt(child.Handle(), RECT{10, 20, 110, 70});
    ::ShowWindow(child.Handle(), SW_SHOWNA);
    child.Update();
    EXPECT_EQ(painted, (Box{0, 0, 100, 50}));
    PutAt(child.Handle(), RECT{10, 20, 130, 80});
    child.Update();
    EXPECT_EQ(painted, (Box{0, 0, 120, 60}));
}

}  // namespace
}  // namespace lunara::test
