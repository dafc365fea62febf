#include "views/toggle_button.h"

#include <array>

namespace lunara {
namespace {

constexpr COLORREF BevelLight = RGB(216, 208, 200);
constexpr COLORREF BevelDark = RGB(120, 96, 88);
constexpr COLORREF BevelGround = RGB(168, 152, 144);
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Black = RGB(0, 0, 0);
constexpr int BevelWidthPx = 4;  // half of the pen's width falls outside the button
constexpr UINT LabelFormat = DT_CENTER | DT_VCENTER | DT_SINGLELINE;

void DrawEdge(HDC dc, COLORREF color, const std::array<POINT, 3>& corners) {
    const Pen pen(::CreatePen(PS_SOLID, BevelWidthPx, color));
    const SelectScope selected(dc, pen.Get());
    ::Polyline(dc, corners.data(), static_cast<int>(corners.size()));
}

}  // namespace

LRESULT CommandSink::Notify(NMHDR& record) {
    return ::SendMessageW(::GetParent(record.hwndFrom), WM_COMMAND,
                          MAKEWPARAM(record.idFrom, record.code),
                          reinterpret_cast<LPARAM>(record.hwndFrom));
}

ToggleButton::ToggleButton(ToggleLook wantedLook) : look(wantedLook) {
    // Replaces the base's sink, which sends WM_NOTIFY: a button's owner expects WM_COMMAND.
    sinks.clear();
    AttachSink(commandSink);
}

void ToggleButton::Draw(HDC dc, const RECT& client) const {
    DrawGround(dc, client);
    DrawFace(dc, client);
}

void ToggleButton::DrawGround(HDC dc, const RECT& client) const {
    if (look == ToggleLook::Bevelled) {
        const Brush ground(::CreateSolidBrush(BevelGround));
        ::FillRect(dc, &client, ground.Get());
    } else {
        ::FillRect(dc, &client,
                   static_cast<HBRUSH>(::GetStockObject(IsChecked() ? BLACK_BRUSH : WHITE_BRUSH)));
    }
}

void ToggleButton::DrawFace(HDC dc, const RECT& client) const {
    const BackgroundModeScope transparent(dc, TRANSPARENT);
    if (look == ToggleLook::Bevelled) {
        DrawBevelled(dc, client);
    } else {
        DrawFlat(dc, client);
    }
}

void ToggleButton::DrawBevelled(HDC dc, const RECT& client) const {
    const POINT bottomLeft = {client.left, client.bottom};
    const POINT topLeft = {client.left, client.top};
    const POINT topRight = {client.right, client.top};
    const POINT bottomRight = {client.right, client.bottom};
    DrawEdge(dc, IsChecked() ? BevelDark : BevelLight, {bottomLeft, topLeft, topRight});
    DrawEdge(dc, IsChecked() ? BevelLight : BevelDark, {bottomLeft, bottomRight, topRight});
    RECT place = client;
    if (IsChecked()) {
        ::OffsetRect(&place, 1, 1);
    }
    DrawLabel(dc, place);
}

void ToggleButton::DrawFlat(HDC dc, const RECT& client) const {
    {
        const SelectScope hollow(dc, ::GetStockObject(NULL_BRUSH));
        ::Rectangle(dc, client.left, client.top, client.right, client.bottom);
    }
    const COLORREF textBefore = ::SetTextColor(dc, IsChecked() ? White : Black);
    const COLORREF groundBefore = ::SetBkColor(dc, IsChecked() ? Black : White);
    DrawLabel(dc, client);
    ::SetBkColor(dc, groundBefore);
    ::SetTextColor(dc, textBefore);
}

void ToggleButton::DrawLabel(HDC dc, RECT place) const {
    std::array<WCHAR, TextCapacity> text{};
    const int length = ::GetWindowTextW(Handle(), text.data(), TextCapacity);
    ::DrawTextW(dc, text.data(), length, &place, LabelFormat);
}

void ToggleButton::OnPaint() const {
    const PaintScope paint(Handle());
    RECT client{};
    ::GetClientRect(Handle(), &client);
    DrawFace(paint.Dc(), client);
}

void ToggleButton::OnEraseBackground(HDC dc) const {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    DrawGround(dc, client);
}

void ToggleButton::OnLButtonUp() {
    NMHDR click = MakeHeader(BN_CLICKED);
    NotifyAll(click);
}

void ToggleButton::OnSetCheck(WPARAM wanted) {
    state = wanted <= BST_CHECKED ? static_cast<int>(wanted) : BST_INDETERMINATE;
    Invalidate(true);
}

int ToggleButton::PreCreateWindow(CREATESTRUCTW& parameters) {
    return UseWindowClass(parameters, ToggleButtonClassName);
}

bool ToggleButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT answer = 0;
    // clang-format off
    switch (message) {
        case WM_PAINT: OnPaint(); break;
        case WM_ERASEBKGND: OnEraseBackground(reinterpret_cast<HDC>(wParam)); answer = 1; break;
        case WM_LBUTTONUP: OnLButtonUp(); break;
        case BM_SETCHECK: OnSetCheck(wParam); break;
        case BM_GETCHECK: answer = state; break;
        default: return NotifyingControl::OnMessage(message, wParam, lParam, result);
    }
    // clang-format on
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
