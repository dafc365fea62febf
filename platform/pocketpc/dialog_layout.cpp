#include "platform/pocketpc/dialog_layout.h"

#include <algorithm>
#include <cmath>

namespace lunara {
namespace {

LONG Scaled(LONG length, double scale) {
    return static_cast<LONG>(std::lround(static_cast<double>(length) * scale));
}

double Ratio(LONG available, LONG designed) {
    return designed <= 0 ? MostSheetScale
                         : static_cast<double>(available) / static_cast<double>(designed);
}

}  // namespace

SheetLayout LayOutSheet(SIZE designed, SIZE client) {
    const LONG width = client.cx - 2 * SheetMarginPx;
    const LONG height = client.cy - TitleStripPx - 2 * SheetMarginPx;
    const double fitting = std::min(Ratio(width, designed.cx), Ratio(height, designed.cy));
    SheetLayout layout{};
    layout.scale = std::clamp(fitting, LeastSheetScale, MostSheetScale);
    // A sheet that is too wide even at the least scale starts at the left edge, not outside it.
    layout.origin.x = std::max<LONG>(0, (client.cx - Scaled(designed.cx, layout.scale)) / 2);
    layout.origin.y = TitleStripPx + SheetMarginPx;
    return layout;
}

RECT PlaceOnSheet(const RECT& designed, const SheetLayout& layout) {
    // Round each edge, not the size, so that controls that touch in the template still touch.
    return RECT{layout.origin.x + Scaled(designed.left, layout.scale),
                layout.origin.y + Scaled(designed.top, layout.scale),
                layout.origin.x + Scaled(designed.right, layout.scale),
                layout.origin.y + Scaled(designed.bottom, layout.scale)};
}

}  // namespace lunara
