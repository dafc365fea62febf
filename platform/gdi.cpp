#include "platform/gdi.h"

#include <array>
#include <numeric>

#include "platform/process.h"

namespace lunara {
namespace {

std::array<int, static_cast<std::size_t>(GdiKind::Count)> liveObjects{};

HFONT MakeShellFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    if (::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0) != FALSE) {
        if (HFONT font = ::CreateFontIndirectW(&metrics.lfMessageFont); font != nullptr) {
            return font;
        }
    }
    return static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
}

}  // namespace

int LiveGdiObjects(GdiKind kind) { return liveObjects[static_cast<std::size_t>(kind)]; }

int LiveGdiObjects() { return std::accumulate(liveObjects.begin(), liveObjects.end(), 0); }

void detail::CountGdiObject(GdiKind kind, int change) {
    liveObjects[static_cast<std::size_t>(kind)] += change;
}

PaintScope::PaintScope(HWND painted)
    : window(painted),
      dc(::BeginPaint(window, &paint)),
      previousFont(::SelectObject(dc, ShellFont())) {}

PaintScope::~PaintScope() {
    ::SelectObject(dc, previousFont);
    ::EndPaint(window, &paint);
}

WindowDcScope::WindowDcScope(HWND drawn)
    : window(drawn), dc(::GetDC(window)), previousFont(::SelectObject(dc, ShellFont())) {}

WindowDcScope::~WindowDcScope() {
    ::SelectObject(dc, previousFont);
    ::ReleaseDC(window, dc);
}

MeasuringDc::MeasuringDc() : dc(::CreateCompatibleDC(nullptr)), font(dc.Get(), ShellFont()) {}

HFONT ShellFont() {
    static const HFONT madeOnce = MakeShellFont();
    return madeOnce;
}

Bitmap MakePicture(LONG width, LONG height) {
    BITMAPINFO shape{};
    shape.bmiHeader.biSize = sizeof(shape.bmiHeader);
    shape.bmiHeader.biWidth = width;
    shape.bmiHeader.biHeight = -height;  // negative: top-down
    shape.bmiHeader.biPlanes = 1;
    shape.bmiHeader.biBitCount = 32;
    shape.bmiHeader.biCompression = BI_RGB;
    void* pixels = nullptr;
    return Bitmap(::CreateDIBSection(nullptr, &shape, DIB_RGB_COLORS, &pixels, nullptr, 0));
}

Bitmap LoadBitmapResource(UINT id) {
    return Bitmap(static_cast<HBITMAP>(::LoadImageW(AppInstance(), MAKEINTRESOURCEW(id),
                                                    IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
}

}  // namespace lunara
