#include "window/double_buffer.h"

#include <vector>

#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Green = RGB(0, 255, 0);

class DoubleBufferedControl : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(control.Make(nullptr, 60, 40), 1);
        DoubleBufferControl(control.Handle());
    }
    void TearDown() override {
        control.handler = nullptr;
        ::DestroyWindow(control.Handle());
        UiTest::TearDown();
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

TEST_F(DoubleBufferedControl, BothBackgroundAndPaintingReachTheScreen) {
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
        << "the window must be validated, or it is painted for ever";
    EXPECT_EQ(control.CountOf(WM_PAINT), 1);
}

TEST_F(DoubleBufferedControl, AControlThatIgnoresTheGivenDcPaintsItsWindowFromThenOn) {
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
    EXPECT_GE(control.CountOf(WM_ERASEBKGND), 2) << "once in memory, then in the window";
}

TEST_F(DoubleBufferedControl, PaintingIntoACallersDcIsLeftToTheControl) {
    HDC painted = nullptr;
    control.handler = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        painted = message == WM_PAINT ? reinterpret_cast<HDC>(wParam) : painted;
        return message == WM_PAINT;
    };
    const MemoryCanvas canvas(60, 40);
    ::SendMessageW(control.Handle(), WM_PAINT, reinterpret_cast<WPARAM>(canvas.Dc()), 0);
    EXPECT_EQ(painted, canvas.Dc());
}

}  // namespace
}  // namespace lunara::test
