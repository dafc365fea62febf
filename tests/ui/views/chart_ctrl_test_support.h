#pragma once

// Fixture with a chart in a visible parent that answers the chart's requests and records them.

#include <algorithm>
#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "platform/text.h"
#include "tests/ui/ui_test.h"
#include "views/chart_ctrl.h"

namespace lunara::test {

/// Answers the question for the value range, which goes to sinks directly, and may refuse a tap.
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

class ChartCtrl : public UiTest {
  protected:
    static constexpr COLORREF White = RGB(255, 255, 255);
    static constexpr COLORREF Black = RGB(0, 0, 0);
    static constexpr COLORREF Red = RGB(255, 0, 0);
    static constexpr COLORREF Grey = RGB(128, 128, 128);
    static constexpr int ChartId = 3001;
    static constexpr int Margin = 34;
    static constexpr int Width = 234;
    static constexpr int Height = 400;
    static constexpr ChartScale TemperatureScales[] = {
        {100, 10, 10, 50, 1}, {200, 10, 50, 100, 1}, {300, 10, 50, 100, 1}, {400, 50, 0, 100, 1}};
    static constexpr ChartScale BleedingScales[] = {{4, 1, 0, 1, 0}};

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
    /// Shows these values as days 40 px apart, the first one 20 px left of the axis.
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
    /// Draws the chart into a bitmap.
    void Draw(MemoryCanvas& canvas) { chart.Draw(canvas.Dc(), canvas.Bounds()); }
    /// The pixels that the chart shows on the screen, row by row from the top.
    std::vector<COLORREF> Screen() {
        ::GdiFlush();
        MemoryCanvas copy(Width, Height);
        copy.CopyFrom(chart.Handle());
        std::vector<COLORREF> pixels;
        for (int y = 0; y < Height; ++y) {
            for (int x = 0; x < Width; ++x) {
                pixels.push_back(copy.Pixel(x, y));
            }
        }
        return pixels;
    }
    static COLORREF At(const std::vector<COLORREF>& pixels, int x, int y) {
        return pixels[static_cast<std::size_t>(y) * Width + static_cast<std::size_t>(x)];
    }

    using Notices = std::vector<std::pair<std::int32_t, std::int32_t>>;

    ScriptedWindow parent;
    lunara::ChartCtrl chart;
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

}  // namespace lunara::test
