// The chart: tapping a point, and dragging one to another value.

#include "tests/ui/views/chart_ctrl_test_support.h"

namespace lunara::test {
namespace {

TEST_F(ChartCtrl, ADragReportsTheNewValueAtItsEnd) {
    Show({9750, 9740, 9760, 9750});
    Down(94, 180);  // 9760
    EXPECT_EQ(selected, (Notices{{2, 9760}}));
    EXPECT_TRUE(chart.IsDragging());
    EXPECT_EQ(::GetCapture(), chart.Handle());
    Move(94, 150);
    Move(120, 100);
    EXPECT_TRUE(changed.empty());
    Up(120, 100);
    EXPECT_EQ(changed, (Notices{{2, 9800}}));
    EXPECT_FALSE(chart.IsDragging());
    EXPECT_NE(::GetCapture(), chart.Handle());
}

TEST_F(ChartCtrl, ATapOnAPointReportsItsUnchangedValue) {
    // In a low chart one pixel stands for several values.
    ::SetWindowPos(chart.Handle(), nullptr, 0, 0, Width, 90, SWP_NOZORDER);
    Show({9750, 9744, 9760});
    const ChartMapping mapping({0, 0, Width, 90}, Margin, {9650, 9850, TemperatureScales[1]});
    const POINT pixel = mapping.ToPixel(points[1]);
    ASSERT_NE(mapping.FromPixel(pixel).value, 9744);
    Down(pixel.x, pixel.y);
    Up(pixel.x, pixel.y);
    EXPECT_EQ(changed, (Notices{{1, 9744}}));
}

TEST_F(ChartCtrl, ADraggedPointStaysInsideTheChart) {
    Show({9750, 9740, 9760});
    Down(94, 180);
    Move(94, -50);
    Up(94, -50);
    Down(94, 180);
    Move(94, 5000);
    Up(94, 5000);
    EXPECT_EQ(changed, (Notices{{2, 9850}, {2, 9650}}));
}

TEST_F(ChartCtrl, TapsBesideEveryPointAreIgnored) {
    Show({9750, 9740, -100});
    const struct {
        const char* label;
        int x;
        int y;
    } rows[] = {{"left", 49, 220},
                {"right", 59, 220},
                {"above", 54, 215},
                {"below", 54, 225},
                {"day without value", 94, 399}};
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        Down(row.x, row.y);
        EXPECT_FALSE(chart.IsDragging());
        Up(row.x, row.y);
    }
    EXPECT_TRUE(selected.empty());
    EXPECT_TRUE(changed.empty());
    Down(58, 216);
    EXPECT_EQ(selected, (Notices{{1, 9740}}));
    Up(58, 216);
}

TEST_F(ChartCtrl, TapWithoutPointsIsIgnored) {
    Down(54, 200);
    Up(54, 200);
    EXPECT_TRUE(selected.empty());
    Show({9750, 9740});
    Send(CHM_RESETDATA);  // the points are asked for at the next paint only
    Down(54, 220);
    EXPECT_TRUE(selected.empty());
}

TEST_F(ChartCtrl, ARefusalFromAnySinkEndsTheTap) {
    Show({9750, 9740});
    refuses = true;
    Down(54, 220);
    EXPECT_FALSE(chart.IsDragging());
    EXPECT_NE(::GetCapture(), chart.Handle());
    Move(54, 100);
    Up(54, 100);
    refuses = false;
    range.refuses = true;
    Down(54, 220);
    EXPECT_FALSE(chart.IsDragging());
    Up(54, 220);
    EXPECT_EQ(selected.size(), 2U);
    EXPECT_TRUE(changed.empty());
}

TEST_F(ChartCtrl, ASecondButtonDownWhileDraggingIsIgnored) {
    Show({9750, 9740, 9760});
    Down(54, 220);
    Down(94, 180);
    EXPECT_EQ(selected.size(), 1U);
    Up(94, 180);
    EXPECT_EQ(changed, (Notices{{1, 9740}}));
}

TEST_F(ChartCtrl, TheSecondOfTwoQuickTapsDragsToo) {
    Show({9750, 9740});
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(54, 220));
    EXPECT_TRUE(chart.IsDragging());
    Up(54, 220);
}

TEST_F(ChartCtrl, ButtonUpAndMovesWithoutADragDoNothing) {
    Show({9750, 9740});
    Move(54, 100);
    Up(54, 100);
    EXPECT_TRUE(changed.empty());
}

struct Interruption {
    const char* label;
    std::function<void(HWND)> interrupt;
};

TEST_F(ChartCtrl, AnInterruptedDragEndsWithoutAValue) {
    const Interruption rows[] = {
        {"capture lost", [](HWND) { ::ReleaseCapture(); }},
        {"capture taken", [this](HWND) { ::SetCapture(parent.Handle()); }},
        {"cancelled", [](HWND window) { ::SendMessageW(window, WM_CANCELMODE, 0, 0); }},
        {"reset", [](HWND window) { ::SendMessageW(window, CHM_RESETDATA, 0, 0); }},
        {"margin", [](HWND window) { ::SendMessageW(window, CHM_SETMARGIN, Margin, 0); }},
        {"resized",
         [](HWND window) { ::SetWindowPos(window, nullptr, 0, 0, Width, 300, SWP_NOZORDER); }},
    };
    for (const Interruption& row : rows) {
        LUNARA_ROW(row);
        ::SetWindowPos(chart.Handle(), nullptr, 0, 0, Width, Height, SWP_NOZORDER);
        Show({9750, 9740, 9760});
        const int before = LiveGdiObjects();
        Down(54, 220);
        Move(54, 180);
        ASSERT_TRUE(chart.IsDragging());
        row.interrupt(chart.Handle());
        EXPECT_FALSE(chart.IsDragging());
        Up(54, 180);
        EXPECT_TRUE(changed.empty());
        EXPECT_EQ(LiveGdiObjects(), before);
        ::ReleaseCapture();
    }
}

TEST_F(ChartCtrl, DestroyingTheWindowEndsADrag) {
    Show({9750, 9740, 9760});
    Down(54, 220);
    ::DestroyWindow(chart.Handle());
    EXPECT_FALSE(chart.IsDragging());
}

// When selecting makes the parent scroll, another day is under the pen: the tap must not drag it.
TEST_F(ChartCtrl, NewPointsSetWhileSelectingEndTheTap) {
    Show({9750, 9740, 9760});
    onSelect = [this] {
        Send(CHM_RESETDATA);
        Send(CHM_SETSELECTION, 2);
    };
    Down(54, 220);
    EXPECT_FALSE(chart.IsDragging());
    Up(54, 220);
    EXPECT_TRUE(changed.empty());
}

TEST_F(ChartCtrl, TheParentMayResetTheDataFromTheNotificationOfTheValue) {
    Show({9750, 9740, 9760});
    onChanged = [this] { Send(CHM_RESETDATA); };
    Down(54, 220);
    Move(54, 200);
    Up(54, 200);
    EXPECT_EQ(changed, (Notices{{1, 9750}}));
    EXPECT_FALSE(chart.IsDragging());
}

// The rubber band is drawn with XOR, so drawing it a second time must erase it.
TEST_F(ChartCtrl, DraggingLeavesNoTrace) {
    Show({9750, 9740, 9760, 9720});
    Send(CHM_SETSELECTION, 1);
    const std::vector<COLORREF> before = Screen();
    Down(94, 180);
    const std::vector<COLORREF> start = Screen();
    EXPECT_NE(start, before);
    Move(94, 120);
    EXPECT_NE(Screen(), start);
    Move(94, 180);
    EXPECT_EQ(Screen(), start);
    Move(94, 333);
    Up(94, 333);
    EXPECT_EQ(Screen(), before);
}

TEST_F(ChartCtrl, TheBandHasABoxAroundTheDraggedPoint) {
    Show({9750, 9740, 9760, 9720});
    const std::vector<COLORREF> before = Screen();
    Down(94, 180);
    Move(94, 120);
    const std::vector<COLORREF> dragged = Screen();
    for (int x = 92; x <= 96; ++x) {
        EXPECT_EQ(At(dragged, x, 118), Black) << x;
    }
    EXPECT_EQ(At(dragged, 90, 118), White);
    EXPECT_EQ(At(dragged, 98, 118), White);
    EXPECT_EQ(At(dragged, 94, 116), White);
    // The band does not reach into the labels.
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Margin; ++x) {
            ASSERT_EQ(At(dragged, x, y), At(before, x, y)) << x << ", " << y;
        }
    }
    Up(94, 120);
}

// Painting during a drag must include the band: the next move draws it once more to erase it.
TEST_F(ChartCtrl, PaintingWhileDraggingKeepsTheBand) {
    Show({9750, 9740, 9760, 9720});
    const std::vector<COLORREF> before = Screen();
    Down(94, 180);
    Move(94, 120);
    const std::vector<COLORREF> dragged = Screen();
    chart.Invalidate(false);
    chart.Update();
    EXPECT_EQ(Screen(), dragged);
    Up(94, 120);
    EXPECT_EQ(Screen(), before);
}

}  // namespace
}  // namespace lunara::test
