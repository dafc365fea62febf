#include "views/agenda_ctrl.h"

#include <windowsx.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <vector>

#include "views/agenda_painter.h"
#include "window/double_buffer.h"

namespace lunara {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);

/// A row request and the item records behind it in one allocation, reused for each row of a paint.
class RowStorage {
  public:
    explicit RowStorage(std::int32_t lineCount)
        : words((sizeof(AgendaRowRequest) +
                 static_cast<std::size_t>(lineCount) * sizeof(AgendaItem)) /
                    sizeof(std::uint64_t) +
                1),
          request(new (words.data()) AgendaRowRequest{}),
          count(lineCount) {}

    /// Resets the request to its defaults: white items without pictures, no text, no height.
    AgendaRowRequest& Begin(const NMHDR& header, std::int32_t rowIndex) {
        *request = {};
        request->header = header;
        request->rowIndex = rowIndex;
        request->lineCount = count;
        std::uninitialized_fill_n(request->Items(), count, AgendaItem{White, nullptr, nullptr});
        return *request;
    }

  private:
    std::vector<std::uint64_t> words;
    AgendaRowRequest* request;
    std::int32_t count;
};

}  // namespace

void AgendaCtrl::Draw(HDC dc, const RECT& client) {
    if (lineCount <= 0 || cellWidth < 1) {
        DrawEmpty(dc, client);
        return;
    }
    AgendaPainter painter(dc, client, lineCount, cellWidth);
    painter.DrawBackground();
    RowStorage storage(lineCount);
    const NMHDR header = MakeHeader(AGN_GETROW);
    std::int32_t rowIndex = 0;
    for (LONG y = client.top; y < client.bottom;) {
        AgendaRowRequest& row = storage.Begin(header, rowIndex++);
        if (!NotifyAll(row.header)) {
            break;
        }
        // The parent's answer is trusted except where it could lead out of bounds.
        row.text[AgendaTextCapacity - 1] = 0;
        row.lineCount = lineCount;
        if (row.rowHeight < 1 || row.rowHeight > MaxAgendaMeasure) {
            break;
        }
        painter.DrawRow(row, row.Items(), y);
        y += row.rowHeight;
    }
}

void AgendaCtrl::DrawEmpty(HDC dc, const RECT& client) const {
    ::Rectangle(dc, client.left, client.top, client.right, client.bottom);
    std::array<WCHAR, AgendaTextCapacity> title{};
    const int length = ::GetWindowTextW(Handle(), title.data(), static_cast<int>(title.size()));
    RECT inside = client;
    ::DrawTextW(dc, title.data(), length, &inside,
                DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void AgendaCtrl::OnPaint() {
    const PaintScope paint(Handle());
    RECT client{};
    ::GetClientRect(Handle(), &client);
    const DoubleBuffer buffer(paint.Dc(), client);
    Draw(buffer.Dc(), client);
}

void AgendaCtrl::OnLButtonUp(POINT point) {
    AgendaTap tap{MakeHeader(AGN_TAP), point};
    NotifyAll(tap.header);
}

LRESULT AgendaCtrl::OnSetMeasures(WPARAM newLineCount, LPARAM newCellWidth) {
    if (newLineCount < 1 || newLineCount > MaxAgendaMeasure || newCellWidth < 1 ||
        newCellWidth > MaxAgendaMeasure) {
        return 0;
    }
    lineCount = static_cast<std::int32_t>(newLineCount);
    cellWidth = static_cast<std::int32_t>(newCellWidth);
    Invalidate(false);
    return 1;
}

LRESULT AgendaCtrl::OnHitTest(AgendaHitTest& request) const {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    if (cellWidth < 1) {
        // Without AGM_SETMEASURES there are no item cells to hit.
        return ::PtInRect(&client, request.pt) != FALSE ? AgendaRightOfItems : AgendaOutside;
    }
    return AgendaLayout(client, lineCount, cellWidth, 1).HitTest(request.pt, request.line);
}

int AgendaCtrl::PreCreateWindow(CREATESTRUCTW& parameters) {
    return UseWindowClass(parameters, AgendaClassName);
}

bool AgendaCtrl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT answer = 0;
    // clang-format off
    switch (message) {
        case WM_ERASEBKGND: answer = 1; break;  // WM_PAINT covers the whole client area
        case WM_PAINT: OnPaint(); break;
        case WM_LBUTTONUP: OnLButtonUp({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); break;
        case AGM_SETMEASURES: answer = OnSetMeasures(wParam, lParam); break;
        case AGM_HITTEST: answer = OnHitTest(*reinterpret_cast<AgendaHitTest*>(lParam)); break;
        default: return NotifyingControl::OnMessage(message, wParam, lParam, result);
    }
    // clang-format on
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
