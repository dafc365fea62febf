// The chart: the data that it requests, and its drawing.

#include "views/chart_ctrl.h"

#include "tests/ui/views/chart_ctrl_test_support.h"

namespace lunara::test {
namespace {

// ---- Data ----

TEST_F(ChartCtrl, AsksOnceForPointsAndScales) {
    points = {{14, 9750}, {54, 9760}};
    Send(CHM_RESETDATA);
    range.codes.clear();
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), CHN_GETPOINTS), 1);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), CHN_GETSCALES), 1);
    EXPECT_EQ(range.codes, std::vector<UINT>{CHN_GETRANGE});
    Forget();
    Draw(canvas);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), CHN_GETPOINTS), 0);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), CHN_GETSCALES), 0);
}

TEST_F(ChartCtrl, AsksAgainAfterAReset) {
    Show({9750, 9760});
    EXPECT_EQ(Send(CHM_RESETDATA), 0);
    chart.Update();
    EXPECT_EQ(std::count(codes.begin(), codes.end(), CHN_GETPOINTS), 1);
}

TEST_F(ChartCtrl, WithoutPointsItShowsItsTitleOnWhite) {
    MemoryCanvas canvas(Width, Height, Grey);
    Draw(canvas);
    EXPECT_EQ(canvas.CountOf(Grey), 0);
    EXPECT_GT(canvas.CountOf(Black), 20);
    EXPECT_EQ(canvas.Pixel(Margin, 10), White);  // no axis
    int middle = 0;
    for (int y = Height / 2 - 10; y < Height / 2 + 10; ++y) {
        for (int x = 0; x < Width; ++x) {
            middle += canvas.Pixel(x, y) == Black ? 1 : 0;
        }
    }
    EXPECT_EQ(middle, canvas.CountOf(Black));
}

TEST_F(ChartCtrl, AsksAgainAtEveryPaintUntilThereArePoints) {
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    Draw(canvas);
    EXPECT_EQ(codes, (std::vector<UINT>{CHN_GETPOINTS, CHN_GETPOINTS}));
}

TEST_F(ChartCtrl, OnlyAPointCanBeSelected) {
    Show({9750, 9760, 9770});
    EXPECT_EQ(Send(CHM_SETSELECTION, 0), 1);
    EXPECT_EQ(Send(CHM_SETSELECTION, 2), 1);
    EXPECT_EQ(Send(CHM_SETSELECTION, 3), 0);
    EXPECT_EQ(Send(CHM_SETSELECTION, static_cast<WPARAM>(-1)), 0);
}

// The current day may be scrolled out of view. Then no point is marked; the one that was marked
// before must not stay.
TEST_F(ChartCtrl, AWrongSelectionMarksNoPoint) {
    Show({9750, 9750, 9750});
    Send(CHM_SETSELECTION, 1);
    EXPECT_EQ(At(Screen(), 54 - 5, 200 - 5), Black);
    Send(CHM_SETSELECTION, 77);
    EXPECT_EQ(At(Screen(), 54 - 5, 200 - 5), White);
    EXPECT_EQ(chart.Selection(), 77);
}

TEST_F(ChartCtrl, SelectionIsPaintedAtOnce) {
    Show({9750, 9760, 9770});
    Send(CHM_SETSELECTION, 1);
    EXPECT_EQ(::GetUpdateRect(chart.Handle(), nullptr, FALSE), FALSE);
    EXPECT_FALSE(codes.empty());
}

// ---- Painting ----

TEST_F(ChartCtrl, TemperatureGridHasLinesDashesAndTicks) {
    Show({-100, -100});
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    // The axis covers [9650, 9850] with 2 px for each value.
    EXPECT_EQ(labels, (std::vector<std::int32_t>{9650, 9700, 9750, 9800, 9850}));
    EXPECT_EQ(canvas.Pixel(Margin, 7), Black);
    EXPECT_EQ(canvas.Pixel(Margin, Height - 1), Black);
    for (const int y : {100, 300}) {  // the lines of 9800 and 9700
        for (int x = Margin; x < Width; ++x) {
            ASSERT_EQ(canvas.Pixel(x, y), Black) << x << ", " << y;
        }
        EXPECT_EQ(canvas.Pixel(Margin - 24, y), Black);
        EXPECT_EQ(canvas.Pixel(Margin - 25, y), White);
    }
    int dashes = 0;
    int gaps = 0;
    for (int x = Margin + 1; x < Width; ++x) {  // the dashed line of 9750
        dashes += canvas.Pixel(x, 200) == Grey ? 1 : 0;
        gaps += canvas.Pixel(x, 200) == White ? 1 : 0;
    }
    EXPECT_GT(dashes, 50);
    EXPECT_GT(gaps, 20);
    EXPECT_EQ(dashes + gaps, Width - Margin - 1);
    EXPECT_EQ(canvas.Pixel(Margin - 16, 200), Black);
    EXPECT_EQ(canvas.Pixel(Margin - 17, 200), White);
    EXPECT_EQ(canvas.Pixel(Margin - 8, 220), Black);  // the tick of 9740
    EXPECT_EQ(canvas.Pixel(Margin - 9, 220), White);
    EXPECT_EQ(canvas.Pixel(Margin + 1, 220), White);
}

TEST_F(ChartCtrl, BleedingGridHasALineAtEveryLevel) {
    scales = BleedingScales;
    range.lowest = 0;
    range.highest = 3;
    Show({-1, -1});
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    EXPECT_EQ(labels, (std::vector<std::int32_t>{0, 1, 2, 3, 4}));
    for (const int y : {0, 100, 200, 300}) {
        EXPECT_EQ(canvas.Pixel(Width - 1, y), Black) << y;
        EXPECT_EQ(canvas.Pixel(Margin - 24, y), Black) << y;
    }
}

TEST_F(ChartCtrl, AValueBeyondEveryScaleGetsThePaddedDefaultScale) {
    Show({9750, 9300, 9800});  // range 500, padded by 25 at both ends: [9275, 9825]
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    EXPECT_EQ(labels, (std::vector<std::int32_t>{9300, 9400, 9500, 9600, 9700, 9800}));
}

TEST_F(ChartCtrl, WithoutMarginThereIsNoGrid) {
    Send(CHM_SETMARGIN, 0);
    Show({-100, -100});
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    EXPECT_TRUE(labels.empty());
    EXPECT_EQ(canvas.CountOf(White), Width * Height);
}

TEST_F(ChartCtrl, LabelsEndAtTheAxisBelowTheirLine) {
    labelText = TEXT("HHHH");
    Show({-100, -100});
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    SIZE size{};
    ::GetTextExtentPoint32W(canvas.Dc(), TEXT("HHHH"), 4, &size);
    int left = Margin;
    for (int y = 101; y < 101 + size.cy; ++y) {  // below the line of 9800, above the next tick
        for (int x = 0; x < Margin - 8; ++x) {
            if (y != 120 && canvas.Pixel(x, y) == Black) {
                left = std::min(left, x);
            }
        }
    }
    EXPECT_GE(left, Margin - size.cx);
    EXPECT_LE(left, Margin - size.cx + 2);
    // The lowest label is moved up so that it is whole inside the control.
    int lowest = 0;
    for (int y = Height - size.cy; y < Height; ++y) {
        for (int x = 0; x < Margin - 16; ++x) {
            lowest += canvas.Pixel(x, y) == Black ? 1 : 0;
        }
    }
    EXPECT_GT(lowest, 5);
}

TEST_F(ChartCtrl, AnEmptyLabelDrawsNothing) {
    labelText = TEXT("");
    Show({-100, -100});
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    EXPECT_EQ(canvas.Pixel(Margin - 1, 105), White);
    for (int y = 101; y < 119; ++y) {
        for (int x = 0; x < Margin; ++x) {
            ASSERT_EQ(canvas.Pixel(x, y), White) << x << ", " << y;
        }
    }
}

TEST_F(ChartCtrl, CurveBridgesDaysWithoutValue) {
    Show({9750, 9725, -100, 9725, 9775, -100});
    Send(CHM_SETSELECTION, 77);
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    // 9725 is at y = 250. The line runs straight over the day without value at x = 94.
    EXPECT_EQ(canvas.Pixel(94, 250), Red);
    EXPECT_EQ(canvas.Pixel(70, 250), Red);
    EXPECT_EQ(canvas.Pixel(94, 247), White);
    // The curve ends at the last value, (174, 150).
    EXPECT_EQ(canvas.Pixel(185, 150), White);
    // The line from the first day, which lies in the left margin, is clipped at the axis.
    EXPECT_EQ(canvas.Pixel(36, 227), Red);
    EXPECT_NE(canvas.Pixel(30, 220), Red);
}

TEST_F(ChartCtrl, CurveEndsAtTheFirstPointBeyondTheRightEdge) {
    // Points at x = 14, 54, ..., 254, 294; the control ends at 234.
    Show({9750, 9750, 9750, 9750, 9750, 9750, 9750, 9850});
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    EXPECT_EQ(canvas.Pixel(Width - 1, 250), Red);  // 9750 on the axis [9675, 9875]
    EXPECT_EQ(canvas.Pixel(Width - 1, 247), White);
}

TEST_F(ChartCtrl, SelectedPointIsASquareTheOthersAreCircles) {
    Show({9750, 9740, 9740});
    Send(CHM_SETSELECTION, 1);
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    // The selected point is at (54, 220), the next one at (94, 220).
    EXPECT_EQ(canvas.Pixel(49, 215), Black);
    EXPECT_EQ(canvas.Pixel(59, 225), Black);
    EXPECT_EQ(canvas.Pixel(60, 226), White);
    EXPECT_EQ(canvas.Pixel(51, 217), White);  // filled
    EXPECT_EQ(canvas.Pixel(91, 217), White);  // a circle has no corner
    EXPECT_EQ(canvas.Pixel(94, 217), Black);
    EXPECT_EQ(canvas.Pixel(94, 223), Black);
}

// The first point is drawn even without a value, which puts it far below the axis. A value of -1,
// just below the axis' end, makes that line visible here.
TEST_F(ChartCtrl, FirstPointIsDrawnWhateverItsValue) {
    scales = BleedingScales;
    range.lowest = 0;
    range.highest = 3;
    points = {{100, -1}, {140, 3}};
    Send(CHM_RESETDATA);
    chart.Update();
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    // The line from (100, 500) to (140, 100) crosses the bottom edge at x = 110.
    int red = 0;
    for (int x = 106; x < 116; ++x) {
        red += canvas.Pixel(x, 398) == Red ? 1 : 0;
    }
    EXPECT_GT(red, 0);
    // Without being the first, the same point is left out.
    points = {{-500, 0}, {100, -1}, {140, 3}};
    Send(CHM_RESETDATA);
    MemoryCanvas second(Width, Height);
    Draw(second);
    EXPECT_NE(second.Pixel(110, 398), Red);
}

TEST_F(ChartCtrl, AWindowWithoutAreaDoesNoHarm) {
    Show({9750, 9760});
    ::SetWindowPos(chart.Handle(), nullptr, 0, 0, 0, 0, SWP_NOZORDER);
    Send(CHM_RESETDATA);
    chart.Update();
    MemoryCanvas canvas(4, 4);
    chart.Draw(canvas.Dc(), {0, 0, 0, 0});
    Down(1, 1);
    Up(1, 1);
    EXPECT_TRUE(changed.empty());
}

TEST_F(ChartCtrl, PaintingRestoresTheDeviceContext) {
    Show({9750, 9740});
    MemoryCanvas canvas(Width, Height);
    HGDIOBJ const pen = ::GetCurrentObject(canvas.Dc(), OBJ_PEN);
    HGDIOBJ const brush = ::GetCurrentObject(canvas.Dc(), OBJ_BRUSH);
    Draw(canvas);
    EXPECT_EQ(::GetCurrentObject(canvas.Dc(), OBJ_PEN), pen);
    EXPECT_EQ(::GetCurrentObject(canvas.Dc(), OBJ_BRUSH), brush);
    EXPECT_EQ(::GetBkMode(canvas.Dc()), OPAQUE);
    RECT clip{};
    ::GetClipBox(canvas.Dc(), &clip);
    EXPECT_EQ(clip.left, 0);
}

}  // namespace
}  // namespace lunara::test
