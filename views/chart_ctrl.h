#pragma once

// The chart: a child window that draws one value per day as a curve over a grid. The user taps a
// point to select it and drags it up or down to change its value. The chart knows neither days nor
// units: it asks its sinks for points, range, scales and labels, and notifies them of a tapped
// point and of the value it was dragged to.

#include <memory>
#include <optional>

#include "platform/gdi.h"
#include "views/chart_layout.h"
#include "window/notification.h"

namespace lunara {

inline constexpr WCHAR ChartClassName[] = TEXT("ChartCtrl");

/// Releases the points, cancels a drag and repaints; the paint asks for the points again. Result 0.
inline constexpr UINT CHM_RESETDATA = WM_USER + 1;
/// Sets the left margin, which holds the ticks and labels, and cancels a drag. wParam: px; at 0,
/// the initial value, there is no grid. Result 0.
inline constexpr UINT CHM_SETMARGIN = WM_USER + 2;
/// Selects a point and repaints at once. wParam: its index, which is kept even when there is no
/// such point (yet); then none is shown as selected. Result 1 when the point exists, else 0.
inline constexpr UINT CHM_SETSELECTION = WM_USER + 3;

/// ChartScales: the ways to divide the axis. The table must stay valid until the next
/// CHN_GETSCALES; count 0 means none.
inline constexpr UINT CHN_GETSCALES = 1;
/// ChartLabel: the text beside a grid line, asked for each line while painting. An empty text draws
/// nothing.
inline constexpr UINT CHN_GETLABEL = 2;
/// ChartPoints, asked for by the first paint after a reset. The array must come from new[]; the
/// chart takes ownership. Without points the chart shows its window title.
inline constexpr UINT CHN_GETPOINTS = 3;
/// ChartValue: the button went down on a point. Non-zero from any sink refuses the selection and
/// the drag.
inline constexpr UINT CHN_SELECTPOINT = 4;
/// ChartValue: a drag ended at that value; after a mere tap it is the point's own. The answer is
/// ignored.
inline constexpr UINT CHN_VALUECHANGED = 5;
/// Never sent as a notification: the code in the header passed to NotificationSink::GetRange, the
/// direct call for the range that the axis covers at least.
inline constexpr UINT CHN_GETRANGE = 6;

struct ChartScales {
    NMHDR header;
    std::int32_t count;
    const ChartScale* scales;
};

inline constexpr std::size_t ChartLabelCapacity = 32;

struct ChartLabel {
    NMHDR header;
    std::int32_t value;
    WCHAR text[ChartLabelCapacity];
};

struct ChartPoints {
    NMHDR header;
    std::int32_t count;
    ChartPoint* points;
};

struct ChartValue {
    NMHDR header;
    std::int32_t index;
    std::int32_t value;
};

class ChartCtrl : public NotifyingControl {
  public:
    ChartCtrl() = default;
    ChartCtrl(const ChartCtrl&) = delete;
    ChartCtrl& operator=(const ChartCtrl&) = delete;
    ~ChartCtrl() override;

    std::int32_t Selection() const { return selection; }
    bool IsDragging() const { return drag.has_value(); }

    /// Paints the chart, laid out for a client area `client`, with the device context's font, pen
    /// (axis, solid lines, markers) and brush (inside of the markers). Fetches missing points
    /// first.
    void Draw(HDC dc, const RECT& client);

    int PreCreateWindow(CREATESTRUCTW& parameters) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    /// State of a drag, from button down to button up.
    struct Drag;

    std::span<const ChartPoint> Points() const { return {points.get(), pointCount}; }
    bool FetchPoints();
    void FetchAxis();
    void ReleasePoints();
    ChartMapping Mapping(const RECT& client) const { return {client, margin, axis}; }

    void DrawTitle(HDC dc, const RECT& client) const;
    void DrawGrid(HDC dc, const RECT& client, const ChartMapping& mapping);
    void DrawLabel(HDC dc, LONG axisX, const ChartTick& tick, LONG clientBottom);
    void DrawCurve(HDC dc, const ChartMapping& mapping) const;
    void DrawMarker(HDC dc, std::size_t index, POINT center) const;

    void StartDrag(std::int32_t index, const ChartMapping& mapping);
    void EndDrag();

    void OnPaint();
    void OnLButtonDown(POINT point);
    void OnMouseMove(POINT point);
    void OnLButtonUp();
    void OnResetData();
    void OnSetMargin(std::int32_t px);
    LRESULT OnSetSelection(std::int32_t index);

    std::unique_ptr<ChartPoint[]> points;
    std::size_t pointCount = 0;
    // Counts the releases of `points`, so that a handler notices when a notification replaced them.
    std::uint32_t resets = 0;
    ChartAxis axis{};
    std::int32_t margin = 0;
    std::int32_t selection = 0;

    /// Draws the rubber band with R2_NOTXORPEN, so that drawing it a second time erases it. Clips
    /// to `area` until its scope ends.
    class BandDrawing {
      public:
        BandDrawing(HDC target, const RECT& area);
        BandDrawing(const BandDrawing&) = delete;
        BandDrawing& operator=(const BandDrawing&) = delete;
        ~BandDrawing();

        void Draw(const RubberBand& band) const;

      private:
        HDC dc;
        int previousOperation;
        Pen dashed;
        SelectScope penScope;
        SelectScope brushScope;
    };

    struct Drag {
        Drag(HWND window, std::int32_t draggedIndex, const ChartMapping& dragMapping,
             const RubberBand& dragBand)
            : index(draggedIndex),
              mapping(dragMapping),
              band(dragBand),
              startHeight(dragBand.line[1].y),
              dc(window),
              drawing(dc.Dc(), dragMapping.Area()) {}

        std::int32_t index;
        ChartMapping mapping;
        RubberBand band;
        LONG startHeight;
        WindowDcScope dc;
        BandDrawing drawing;
    };
    std::optional<Drag> drag;
};

}  // namespace lunara
