#include "views/chart_ctrl.h"

#include <windowsx.h>

#include <algorithm>
#include <array>

#include "platform/text.h"
#include "window/double_buffer.h"

namespace lunara {
namespace {

constexpr COLORREF GridGrey = RGB(128, 128, 128);
constexpr COLORREF CurveRed = RGB(255, 0, 0);
constexpr int CurveWidthPx = 2;
constexpr int TitleCapacity = 64;

void DrawLine(HDC dc, LONG fromX, LONG fromY, LONG toX, LONG toY) {
    ::MoveToEx(dc, fromX, fromY, nullptr);
    ::LineTo(dc, toX, toY);
}

/// Clips drawing to a rectangle until the end of its scope.
class ClipScope {
  public:
    ClipScope(HDC target, const RECT& area) : dc(target), saved(::SaveDC(target)) {
        ::IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
    }
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;
    ~ClipScope() { ::RestoreDC(dc, saved); }

  private:
    HDC dc;
    int saved;
};

}  // namespace

ChartCtrl::~ChartCtrl() = default;

// ---- Data ----

bool ChartCtrl::FetchPoints() {
    if (points) {
        return true;
    }
    ChartPoints request{MakeHeader(CHN_GETPOINTS), 0, nullptr};
    NotifyAll(request.header);
    std::unique_ptr<ChartPoint[]> answer(request.points);
    if (!answer || request.count < 1) {
        return false;
    }
    points = std::move(answer);
    pointCount = static_cast<std::size_t>(request.count);
    FetchAxis();
    return true;
}

void ChartCtrl::FetchAxis() {
    ChartScales request{MakeHeader(CHN_GETSCALES), 0, nullptr};
    NotifyAll(request.header);
    const bool hasTable = request.scales != nullptr && request.count > 0;
    const std::span<const ChartScale> scales(
        request.scales, hasTable ? static_cast<std::size_t>(request.count) : 0);
    NMHDR question = MakeHeader(CHN_GETRANGE);
    int lowest = 0;
    int highest = 0;
    AskRange(question, lowest, highest);
    axis = ChooseAxis(Points(), lowest, highest, scales);
}

void ChartCtrl::ReleasePoints() {
    // A drag refers to its point by index.
    EndDrag();
    points.reset();
    pointCount = 0;
    ++resets;
}

// ---- Painting ----

void ChartCtrl::Draw(HDC dc, const RECT& client) {
    const bool hasPoints = FetchPoints();
    ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    const BackgroundModeScope transparent(dc, TRANSPARENT);
    if (!hasPoints) {
        DrawTitle(dc, client);
        return;
    }
    const ChartMapping mapping = Mapping(client);
    if (margin > 0) {
        DrawGrid(dc, client, mapping);
    }
    DrawCurve(dc, mapping);
}

void ChartCtrl::DrawTitle(HDC dc, const RECT& client) const {
    std::array<WCHAR, TitleCapacity> title{};
    const int length = ::GetWindowTextW(Handle(), title.data(), TitleCapacity);
    RECT place = client;
    ::DrawTextW(dc, title.data(), length, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

void ChartCtrl::DrawGrid(HDC dc, const RECT& client, const ChartMapping& mapping) {
    const LONG axisX = mapping.Area().left;
    DrawLine(dc, axisX, client.top, axisX, client.bottom);
    const Pen dashed(::CreatePen(PS_DASH, 1, GridGrey));
    for (const ChartTick& tick : ChartTicks(axis, mapping)) {
        DrawLine(dc, axisX - TickLength(tick.kind, margin), tick.y, axisX, tick.y);
        if (tick.kind == TickKind::Plain) {
            continue;
        }
        if (tick.kind == TickKind::Major) {
            DrawLine(dc, axisX, tick.y, client.right, tick.y);
        } else {
            const SelectScope selected(dc, dashed.Get());
            DrawLine(dc, axisX, tick.y, client.right, tick.y);
        }
        DrawLabel(dc, axisX, tick, client.bottom);
    }
}

void ChartCtrl::DrawLabel(HDC dc, LONG axisX, const ChartTick& tick, LONG clientBottom) {
    ChartLabel request{MakeHeader(CHN_GETLABEL), tick.value, {}};
    NotifyAll(request.header);
    request.text[ChartLabelCapacity - 1] = TEXT('\0');
    const auto length = static_cast<int>(WideView(request.text).size());
    if (length == 0) {
        return;
    }
    SIZE size{};
    ::GetTextExtentPoint32W(dc, request.text, length, &size);
    ::TextOutW(dc, axisX - size.cx, LabelTop(tick.y, size.cy, clientBottom), request.text, length);
}

void ChartCtrl::DrawCurve(HDC dc, const ChartMapping& mapping) const {
    const ClipScope clipped(dc, mapping.Area());
    const Pen red(::CreatePen(PS_SOLID, CurveWidthPx, CurveRed));
    const std::span<const ChartPoint> shown = Points();
    // The first point, the day before the first one shown, is drawn whatever its value: the curve
    // enters the chart from there. Without a value it lies below the axis and is clipped.
    POINT last = mapping.ToPixel(shown[0]);
    DrawMarker(dc, 0, last);
    for (std::size_t i = 1; i < shown.size(); ++i) {
        if (shown[i].value < 0) {
            continue;
        }
        const POINT pixel = mapping.ToPixel(shown[i]);
        DrawMarker(dc, i, pixel);
        {
            const SelectScope selected(dc, red.Get());
            DrawLine(dc, last.x, last.y, pixel.x, pixel.y);
        }
        if (pixel.x > mapping.Area().right) {
            break;
        }
        last = pixel;
    }
}

void ChartCtrl::DrawMarker(HDC dc, std::size_t index, POINT center) const {
    const bool isSelected = selection >= 0 && index == static_cast<std::size_t>(selection);
    const RECT box = MarkerBox(center, isSelected);
    if (isSelected) {
        ::Rectangle(dc, box.left, box.top, box.right, box.bottom);
    } else {
        ::Ellipse(dc, box.left, box.top, box.right, box.bottom);
    }
}

void ChartCtrl::OnPaint() {
    const PaintScope paint(Handle());
    RECT client{};
    ::GetClientRect(Handle(), &client);
    const DoubleBuffer buffer(paint.Dc(), client);
    Draw(buffer.Dc(), client);
    if (drag) {
        // The paint overwrites the rubber band on screen. Draw it into the new picture, or XORing
        // it away later would leave a trace.
        const BandDrawing drawing(buffer.Dc(), drag->mapping.Area());
        drawing.Draw(drag->band);
    }
}

// ---- Dragging ----

ChartCtrl::BandDrawing::BandDrawing(HDC target, const RECT& area)
    : dc(target),
      previousOperation(::SetROP2(target, R2_NOTXORPEN)),
      dashed(::CreatePen(PS_DASH, 1, RGB(0, 0, 0))),
      penScope(target, dashed.Get()),
      brushScope(target, ::GetStockObject(BLACK_BRUSH)) {
    ::IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
}

ChartCtrl::BandDrawing::~BandDrawing() {
    ::SelectClipRgn(dc, nullptr);
    ::SetROP2(dc, previousOperation);
}

void ChartCtrl::BandDrawing::Draw(const RubberBand& band) const {
    ::Polyline(dc, band.line.data(), static_cast<int>(band.line.size()));
    const RECT box = band.Box();
    ::Rectangle(dc, box.left, box.top, box.right, box.bottom);
}

void ChartCtrl::StartDrag(std::int32_t index, const ChartMapping& mapping) {
    ::SetCapture(Handle());
    drag.emplace(Handle(), index, mapping, MakeRubberBand(Points(), index, mapping));
    drag->drawing.Draw(drag->band);
}

void ChartCtrl::EndDrag() {
    if (!drag) {
        return;
    }
    drag->drawing.Draw(drag->band);
    drag.reset();
    // Sends WM_CAPTURECHANGED to this window, which calls EndDrag again; without a drag that does
    // nothing.
    if (::GetCapture() == Handle()) {
        ::ReleaseCapture();
    }
}

void ChartCtrl::OnLButtonDown(POINT point) {
    if (drag || !points) {
        return;
    }
    RECT client{};
    ::GetClientRect(Handle(), &client);
    const std::int32_t index = FindChartPoint(Points(), Mapping(client), point);
    if (index < 0) {
        return;
    }
    const std::uint32_t resetsBefore = resets;
    ChartValue notice{MakeHeader(CHN_SELECTPOINT), index,
                      points[static_cast<std::size_t>(index)].value};
    if (NotifyAll(notice.header)) {
        return;
    }
    // A sink may have scrolled the chart to select the point; then another day lies under the pen.
    if (resets != resetsBefore || Handle() == nullptr) {
        return;
    }
    StartDrag(index, Mapping(client));
}

void ChartCtrl::OnMouseMove(POINT point) {
    if (!drag) {
        return;
    }
    // Clamped to the chart: beyond the ends of the axis the user could not see the value.
    const LONG height = drag->mapping.ClampToArea(point.y);
    if (height == drag->band.line[1].y) {
        return;
    }
    drag->drawing.Draw(drag->band);
    drag->band.line[1].y = height;
    drag->drawing.Draw(drag->band);
}

void ChartCtrl::OnLButtonUp() {
    if (!drag) {
        return;
    }
    const POINT middle = drag->band.line[1];
    const std::int32_t index = drag->index;
    // One pixel stands for several values. A point that did not move keeps its exact value.
    const std::int32_t value = middle.y == drag->startHeight
                                   ? points[static_cast<std::size_t>(index)].value
                                   : drag->mapping.FromPixel(middle).value;
    ChartValue notice{MakeHeader(CHN_VALUECHANGED), index, value};
    NotifyAll(notice.header);
    EndDrag();  // does nothing if a sink reset the chart, which ended the drag
}

// ---- Messages ----

void ChartCtrl::OnResetData() {
    ReleasePoints();
    Invalidate(false);
}

void ChartCtrl::OnSetMargin(std::int32_t px) {
    EndDrag();
    margin = px;
    Invalidate(false);
}

LRESULT ChartCtrl::OnSetSelection(std::int32_t index) {
    selection = index;
    Invalidate(false);
    Update();
    return selection >= 0 && static_cast<std::size_t>(selection) < pointCount ? 1 : 0;
}

int ChartCtrl::PreCreateWindow(CREATESTRUCTW& parameters) {
    return UseWindowClass(parameters, ChartClassName);
}

bool ChartCtrl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT answer = 0;
    // clang-format off
    switch (message) {
        case WM_ERASEBKGND: answer = 1; break;  // WM_PAINT covers the whole client area
        case WM_PAINT: OnPaint(); break;
        // The second of two quick taps arrives as a double click; it is handled as a tap.
        case WM_LBUTTONDBLCLK:
        case WM_LBUTTONDOWN: OnLButtonDown({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); break;
        case WM_MOUSEMOVE: OnMouseMove({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); break;
        case WM_LBUTTONUP: OnLButtonUp(); break;
        case WM_CAPTURECHANGED: EndDrag(); break;
        case WM_CANCELMODE:
        case WM_SIZE: EndDrag(); return false;
        case WM_DESTROY: ReleasePoints(); break;
        case CHM_RESETDATA: OnResetData(); break;
        case CHM_SETMARGIN: OnSetMargin(static_cast<std::int32_t>(wParam)); break;
        case CHM_SETSELECTION: answer = OnSetSelection(static_cast<std::int32_t>(wParam)); break;
        default: return NotifyingControl::OnMessage(message, wParam, lParam, result);
    }
    // clang-format on
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
