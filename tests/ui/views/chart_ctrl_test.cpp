#include "views/chart_ctrl.h"

#include <algorithm>
#include <map>

#include "platform/text.h"
#include "tests/ui/ui_test.h"

namespace lunara {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Black = RGB(0, 0, 0);
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Grey = RGB(128, 128, 128);
constexpr int ChartId = 3001;
constexpr int Margin = 34;
constexpr int Width = 234;
constexpr int Height = 400;
constexpr ChartScale TemperatureScales[] = {
    {100, 10, 10, 50, 1}, {200, 10, 50, 100, 1}, {300, 10, 50, 100, 1}, {400, 50, 0, 100, 1}};
constexpr ChartScale BleedingScales[] = {{4, 1, 0, 1, 0}};

/// Answers the direct question.
class RangeSink : public NotificationSink {
  public:
    LRESULT Notify(NMHDR&) override { return refuses ? 1 : 0; }
    bool GetRange(NMHDR& record, int& minimum, int& maximum) override {
        codes.push_back(record.code);
        minimum = lowest;
        maximum = highest;
        return true;
    }

    int lowest = 9700;
    int highest = 9800;
    bool refuses = false;
    std::vector<UINT> codes;
};

class ChartCtrlTest : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(parent.Make(nullptr, Width, Height), 1);
        ::ShowWindow(parent.Handle(), SW_SHOWNOACTIVATE);
        parent.handler = [this](UINT message, WPARAM, LPARAM lParam, LRESULT& result) {
            if (message != WM_NOTIFY) {
                return false;
            }
            result = Answer(*reinterpret_cast<NMHDR*>(lParam));
            return true;
        };
        ASSERT_EQ(chart.Create(0, nullptr, TEXT("Nothing yet"), WS_CHILD | WS_VISIBLE, 0, 0, Width,
                               Height, parent.Handle(), reinterpret_cast<HMENU>(ChartId)),
                  1);
        chart.AttachSink(range);
        Send(CHM_SETMARGIN, Margin);
        chart.Update();
        Forget();
    }
    void TearDown() override {
        ::DestroyWindow(parent.Handle());
        UiTest::TearDown();
    }

    LRESULT Answer(NMHDR& record) {
        codes.push_back(record.code);
        switch (record.code) {
            case CHN_GETPOINTS: {
                auto& request = reinterpret_cast<ChartPoints&>(record);
                request.count = static_cast<std::int32_t>(points.size());
                if (!points.empty()) {
                    request.points = new ChartPoint[points.size()];
                    std::copy(points.begin(), points.end(), request.points);
                }
                return 1;
            }
            case CHN_GETSCALES: {
                auto& request = reinterpret_cast<ChartScales&>(record);
                request.count = static_cast<std::int32_t>(scales.size());
                request.scales = scales.data();
                return 1;
            }
            case CHN_GETLABEL: {
                auto& request = reinterpret_cast<ChartLabel&>(record);
                labels.push_back(request.value);
                CopyText(request.text, ChartLabelCapacity, labelText);
                return 1;
            }
            case CHN_SELECTPOINT: {
                const auto& point = reinterpret_cast<const ChartValue&>(record);
                selected.emplace_back(point.index, point.value);
                if (onSelect) {
                    onSelect();
                }
                return refuses ? 1 : 0;
            }
            case CHN_VALUECHANGED: {
                const auto& point = reinterpret_cast<const ChartValue&>(record);
                changed.emplace_back(point.index, point.value);
                if (onChanged) {
                    onChanged();
                }
                return 0;
            }
            default:
                return 0;
        }
    }
    /// Days 40 px apart, the first one 20 px left of the axis.
    void Show(std::initializer_list<std::int32_t> values) {
        points.clear();
        for (const std::int32_t value : values) {
            points.push_back({Margin - 20 + 40 * static_cast<std::int32_t>(points.size()), value});
        }
        Send(CHM_RESETDATA);
        chart.Update();
        Forget();
    }
    void Forget() {
        codes.clear();
        labels.clear();
        selected.clear();
        changed.clear();
    }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageW(chart.Handle(), message, wParam, lParam);
    }
    void Down(int x, int y) { Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y)); }
    void Move(int x, int y) { Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, y)); }
    void Up(int x, int y) { Send(WM_LBUTTONUP, 0, MAKELPARAM(x, y)); }
    /// Drawn into a bitmap of the chart's size.
    void Draw(MemoryCanvas& canvas) { chart.Draw(canvas.Dc(), canvas.Bounds()); }
    /// What is on the screen.
    std::vector<COLORREF> Screen() {
        ::GdiFlush();
        MemoryCanvas copy(Width, Height);
        {
            const WindowDcScope dc(chart.Handle());
            ::BitBlt(copy.Dc(), 0, 0, Width, Height, dc.Dc(), 0, 0, SRCCOPY);
        }
        std::vector<COLORREF> pixels;
        for (int y = 0; y < Height; ++y) {
            for (int x = 0; x < Width; ++x) {
                pixels.push_back(copy.Pixel(x, y));
            }
        }
        return pixels;
    }
    static COLORREF At(const std::vector<COLORREF>& pixels, int x, int y) {
        return pixels[static_cast<std::size_t>(y * Width + x)];
    }

    using Notices = std::vector<std::pair<std::int32_t, std::int32_t>>;

    ScriptedWindow parent;
    ChartCtrl chart;
    RangeSink range;
    std::vector<ChartPoint> points;
    std::span<const ChartScale> scales = TemperatureScales;
    WideView labelText = TEXT("8");
    bool refuses = false;
    std::function<void()> onSelect;
    std::function<void()> onChanged;
    std::vector<UINT> codes;
    std::vector<std::int32_t> labels;
    Notices selected;
    Notices changed;
};

// ---- Data ----

TEST_F(ChartCtrlTest, AsksOnceForPointsAndScales) {
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

TEST_F(ChartCtrlTest, AsksAnewAfterAReset) {
    Show({9750, 9760});
    EXPECT_EQ(Send(CHM_RESETDATA), 0);
    chart.Update();
    EXPECT_EQ(std::count(codes.begin(), codes.end(), CHN_GETPOINTS), 1);
}

TEST_F(ChartCtrlTest, WithoutPointsTheTitleStandsOnWhite) {
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

TEST_F(ChartCtrlTest, AsksAgainAtEveryPaintUntilThereArePoints) {
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    Draw(canvas);
    EXPECT_EQ(codes, (std::vector<UINT>{CHN_GETPOINTS, CHN_GETPOINTS}));
}

TEST_F(ChartCtrlTest, SelectionIsOneOfThePoints) {
    Show({9750, 9760, 9770});
    EXPECT_EQ(Send(CHM_SETSELECTION, 0), 1);
    EXPECT_EQ(Send(CHM_SETSELECTION, 2), 1);
    EXPECT_EQ(Send(CHM_SETSELECTION, 3), 0);
    EXPECT_EQ(Send(CHM_SETSELECTION, static_cast<WPARAM>(-1)), 0);
}

// The current day may be scrolled away: then no point is marked, not the one that was before.
TEST_F(ChartCtrlTest, AWrongSelectionMarksNoPoint) {
    Show({9750, 9750, 9750});
    Send(CHM_SETSELECTION, 1);
    EXPECT_EQ(At(Screen(), 54 - 5, 200 - 5), Black);
    Send(CHM_SETSELECTION, 77);
    EXPECT_EQ(At(Screen(), 54 - 5, 200 - 5), White);
    EXPECT_EQ(chart.Selection(), 77);
}

TEST_F(ChartCtrlTest, SelectionIsPaintedAtOnce) {
    Show({9750, 9760, 9770});
    Send(CHM_SETSELECTION, 1);
    EXPECT_EQ(::GetUpdateRect(chart.Handle(), nullptr, FALSE), FALSE);
    EXPECT_FALSE(codes.empty());
}

// ---- Painting ----

TEST_F(ChartCtrlTest, DefaultTemperatureGrid) {
    Show({-100, -100});
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    // 9650..9850, 2 px each
    EXPECT_EQ(labels, (std::vector<std::int32_t>{9650, 9700, 9750, 9800, 9850}));
    EXPECT_EQ(canvas.Pixel(Margin, 7), Black);
    EXPECT_EQ(canvas.Pixel(Margin, Height - 1), Black);
    for (const int y : {100, 300}) {  // 9800 and 9700
        for (int x = Margin; x < Width; ++x) {
            ASSERT_EQ(canvas.Pixel(x, y), Black) << x << ", " << y;
        }
        EXPECT_EQ(canvas.Pixel(Margin - 24, y), Black);
        EXPECT_EQ(canvas.Pixel(Margin - 25, y), White);
    }
    int dashes = 0;
    int gaps = 0;
    for (int x = Margin + 1; x < Width; ++x) {  // 9750
        dashes += canvas.Pixel(x, 200) == Grey ? 1 : 0;
        gaps += canvas.Pixel(x, 200) == White ? 1 : 0;
    }
    EXPECT_GT(dashes, 50);
    EXPECT_GT(gaps, 20);
    EXPECT_EQ(dashes + gaps, Width - Margin - 1);
    EXPECT_EQ(canvas.Pixel(Margin - 16, 200), Black);
    EXPECT_EQ(canvas.Pixel(Margin - 17, 200), White);
    EXPECT_EQ(canvas.Pixel(Margin - 8, 220), Black);  // 9740
    EXPECT_EQ(canvas.Pixel(Margin - 9, 220), White);
    EXPECT_EQ(canvas.Pixel(Margin + 1, 220), White);
}

TEST_F(ChartCtrlTest, BleedingGridHasALineAtEveryLevel) {
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

TEST_F(ChartCtrlTest, AValueBeyondEveryScaleGetsThePaddedDefaultScale) {
    Show({9750, 9300, 9800});  // 500 + 2 x 25: 9275..9825
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    EXPECT_EQ(labels, (std::vector<std::int32_t>{9300, 9400, 9500, 9600, 9700, 9800}));
}

TEST_F(ChartCtrlTest, WithoutMarginThereIsNoGrid) {
    Send(CHM_SETMARGIN, 0);
    Show({-100, -100});
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    EXPECT_TRUE(labels.empty());
    EXPECT_EQ(canvas.CountOf(White), Width * Height);
}

TEST_F(ChartCtrlTest, LabelsEndAtTheAxisBelowTheirLine) {
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
    // The lowest stands whole above the bottom.
    int lowest = 0;
    for (int y = Height - size.cy; y < Height; ++y) {
        for (int x = 0; x < Margin - 16; ++x) {
            lowest += canvas.Pixel(x, y) == Black ? 1 : 0;
        }
    }
    EXPECT_GT(lowest, 5);
}

TEST_F(ChartCtrlTest, AnEmptyLabelDrawsNothing) {
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

TEST_F(ChartCtrlTest, CurveBridgesDaysWithoutValue) {
    Show({9750, 9725, -100, 9725, 9775, -100});
    Send(CHM_SETSELECTION, 77);
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    // 9725 is at 250: straight on over the gap at x = 94
    EXPECT_EQ(canvas.Pixel(94, 250), Red);
    EXPECT_EQ(canvas.Pixel(70, 250), Red);
    EXPECT_EQ(canvas.Pixel(94, 247), White);
    // Nothing to the right of the last value at (174, 150)
    EXPECT_EQ(canvas.Pixel(185, 150), White);
    // From the day before, up in the left margin: clipped there, drawn right of the axis.
    EXPECT_EQ(canvas.Pixel(36, 227), Red);
    EXPECT_NE(canvas.Pixel(30, 220), Red);
}

TEST_F(ChartCtrlTest, CurveEndsAtTheFirstPointBeyondTheRightEdge) {
    // x = 14, 54, ..., 254 (past 234), 294
    Show({9750, 9750, 9750, 9750, 9750, 9750, 9750, 9850});
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    EXPECT_EQ(canvas.Pixel(Width - 1, 250), Red);  // 9675..9875
    EXPECT_EQ(canvas.Pixel(Width - 1, 247), White);
}

TEST_F(ChartCtrlTest, SelectedPointIsASquareTheOthersAreCircles) {
    Show({9750, 9740, 9740});
    Send(CHM_SETSELECTION, 1);
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    // (54, 220) and (94, 220)
    EXPECT_EQ(canvas.Pixel(49, 215), Black);
    EXPECT_EQ(canvas.Pixel(59, 225), Black);
    EXPECT_EQ(canvas.Pixel(60, 226), White);
    EXPECT_EQ(canvas.Pixel(51, 217), White);  // filled
    EXPECT_EQ(canvas.Pixel(91, 217), White);  // a circle has no corner
    EXPECT_EQ(canvas.Pixel(94, 217), Black);
    EXPECT_EQ(canvas.Pixel(94, 223), Black);
}

// A day without a value is drawn when it is the first point, below the axis. Here it is seen
// because its value is only just below the axis' end.
TEST_F(ChartCtrlTest, FirstPointIsDrawnWhateverItsValue) {
    scales = BleedingScales;
    range.lowest = 0;
    range.highest = 3;
    points = {{100, -1}, {140, 3}};
    Send(CHM_RESETDATA);
    chart.Update();
    MemoryCanvas canvas(Width, Height);
    Draw(canvas);
    // From (100, 500) to (140, 100): crosses the bottom at x = 110.
    int red = 0;
    for (int x = 106; x < 116; ++x) {
        red += canvas.Pixel(x, 398) == Red ? 1 : 0;
    }
    EXPECT_GT(red, 0);
    // Any other point without a value is not.
    points = {{-500, 0}, {100, -1}, {140, 3}};
    Send(CHM_RESETDATA);
    MemoryCanvas second(Width, Height);
    Draw(second);
    EXPECT_NE(second.Pixel(110, 398), Red);
}

TEST_F(ChartCtrlTest, ToAWindowWithoutAreaNothingHappens) {
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

TEST_F(ChartCtrlTest, PaintingGivesBackWhatItSelected) {
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

// ---- Tap and drag ----

TEST_F(ChartCtrlTest, DragTellsTheNewValue) {
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

TEST_F(ChartCtrlTest, TapOnAPointKeepsItsValue) {
    // A low chart, where a pixel stands for several values.
    ::SetWindowPos(chart.Handle(), nullptr, 0, 0, Width, 90, SWP_NOZORDER);
    Show({9750, 9744, 9760});
    const ChartMapping mapping({0, 0, Width, 90}, Margin, {9650, 9850, TemperatureScales[1]});
    const POINT pixel = mapping.ToPixel(points[1]);
    ASSERT_NE(mapping.FromPixel(pixel).value, 9744);
    Down(pixel.x, pixel.y);
    Up(pixel.x, pixel.y);
    EXPECT_EQ(changed, (Notices{{1, 9744}}));
}

TEST_F(ChartCtrlTest, MiddlePointStaysInsideTheChart) {
    Show({9750, 9740, 9760});
    Down(94, 180);
    Move(94, -50);
    Up(94, -50);
    Down(94, 180);
    Move(94, 5000);
    Up(94, 5000);
    EXPECT_EQ(changed, (Notices{{2, 9850}, {2, 9650}}));
}

TEST_F(ChartCtrlTest, TapsBesideEveryPointAreIgnored) {
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

TEST_F(ChartCtrlTest, TapWithoutPointsIsIgnored) {
    Down(54, 200);
    Up(54, 200);
    EXPECT_TRUE(selected.empty());
    Show({9750, 9740});
    Send(CHM_RESETDATA);  // and not painted since
    Down(54, 220);
    EXPECT_TRUE(selected.empty());
}

TEST_F(ChartCtrlTest, ARefusalFromAnySinkEndsTheTap) {
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

TEST_F(ChartCtrlTest, ASecondButtonDownWhileDraggingIsIgnored) {
    Show({9750, 9740, 9760});
    Down(54, 220);
    Down(94, 180);
    EXPECT_EQ(selected.size(), 1U);
    Up(94, 180);
    EXPECT_EQ(changed, (Notices{{1, 9740}}));
}

TEST_F(ChartCtrlTest, TheSecondOfTwoQuickTapsDragsToo) {
    Show({9750, 9740});
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(54, 220));
    EXPECT_TRUE(chart.IsDragging());
    Up(54, 220);
}

TEST_F(ChartCtrlTest, ButtonUpAndMovesWithoutADragDoNothing) {
    Show({9750, 9740});
    Move(54, 100);
    Up(54, 100);
    EXPECT_TRUE(changed.empty());
}

struct Interruption {
    const char* label;
    std::function<void(HWND)> interrupt;
};

TEST_F(ChartCtrlTest, AnInterruptedDragEndsWithoutAValue) {
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

TEST_F(ChartCtrlTest, WindowDestroyedWhileDraggingLeavesNothing) {
    Show({9750, 9740, 9760});
    Down(54, 220);
    ::DestroyWindow(chart.Handle());
    EXPECT_FALSE(chart.IsDragging());
}

// The parent scrolled: another day stands under the pen now.
TEST_F(ChartCtrlTest, PointsReplacedBySelectingEndTheTap) {
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

TEST_F(ChartCtrlTest, TheParentMayResetWhenItIsToldTheValue) {
    Show({9750, 9740, 9760});
    onChanged = [this] { Send(CHM_RESETDATA); };
    Down(54, 220);
    Move(54, 200);
    Up(54, 200);
    EXPECT_EQ(changed, (Notices{{1, 9750}}));
    EXPECT_FALSE(chart.IsDragging());
}

// The band is drawn so that a second drawing takes it away.
TEST_F(ChartCtrlTest, DraggingLeavesNoTrace) {
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

TEST_F(ChartCtrlTest, BandHasABoxAroundTheDraggedPoint) {
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
    // The labels stay readable.
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Margin; ++x) {
            ASSERT_EQ(At(dragged, x, y), At(before, x, y)) << x << ", " << y;
        }
    }
    Up(94, 120);
}

// The band is part of what is painted, or the next move would draw it instead of erasing it.
TEST_F(ChartCtrlTest, PaintingWhileDraggingKeepsTheBand) {
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
}  // namespace lunara
