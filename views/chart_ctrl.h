#pragma once

// The chart: a child window that draws one value per day as a curve over a grid, and lets a point
// be tapped and dragged up and down. It knows neither days nor units: it asks its parent for
// points, range, scales and labels, and tells it what was selected and where a point was dragged
// to.

#include <memory>
#include <optional>

#include "platform/gdi.h"
#include "views/chart_layout.h"
#include "window/notification.h"

namespace lunara {

inline constexpr WCHAR ChartClassName[] = TEXT("ChartCtrl");

/// Releases the points; the next paint asks for them again. A drag ends without a value. Result 0.
inline constexpr UINT CHM_RESETDATA = WM_USER + 1;
/// wParam: the left margin in px, where ticks and labels stand (0 at first: no grid). Result 0.
inline constexpr UINT CHM_SETMARGIN = WM_USER + 2;
/// wParam: index of the selected point. It is kept even when there is no such point (yet), which
/// shows none as selected. Paints at once. Result 1 when there is such a point, else 0.
inline constexpr UINT CHM_SETSELECTION = WM_USER + 3;

/// ChartScales. The table must stay valid until the next question; count 0 means none.
inline constexpr UINT CHN_GETSCALES = 1;
/// ChartLabel, for every grid line while painting. An empty text draws nothing.
inline constexpr UINT CHN_GETLABEL = 2;
/// ChartPoints, after a reset. The chart keeps the array, which was allocated with new[], and frees
/// it.
inline constexpr UINT CHN_GETPOINTS = 3;
/// ChartValue: a point was tapped. Non-zero from any sink refuses the selection and the drag.
inline constexpr UINT CHN_SELECTPOINT = 4;
/// ChartValue: a point was dragged to that value. The answer is ignored.
inline constexpr UINT CHN_VALUECHANGED = 5;
/// No record is sent with it: it heads the direct question NotificationSink::GetRange, for the
/// range that the axis covers at least.
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

    /// Paints the chart as it would look in a client area `client`, with the device context's font,
    /// pen (axis, solid lines, markers) and brush (inside of the markers).
    void Draw(HDC dc, const RECT& client);

    int PreCreateWindow(CREATESTRUCTW& parameters) override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    /// What lasts from button down to button up.
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
    std::uint32_t resets =
        0;  // tells whether the points are still those that were looked at before
    ChartAxis axis{};
    std::int32_t margin = 0;
    std::int32_t selection = 0;

    /// Draws the rubber band with a pen that a second drawing takes away again.
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
