#pragma once

// Where the controls of a full-screen dialog go. Templates are laid out for a small portrait
// screen; a desktop window is larger, so the whole sheet grows evenly and stands in the middle,
// below a strip with the dialog's title. Pure geometry, in pixels.

#include "platform/win32.h"

namespace lunara {

inline constexpr int TitleStripPx = 34;   // with the line under it
inline constexpr int SheetMarginPx = 12;  // around the sheet, on every side
inline constexpr double MostSheetScale = 1.5;
inline constexpr double LeastSheetScale = 0.5;

struct SheetLayout {
    double scale;  // [LeastSheetScale, MostSheetScale]
    POINT origin;  // of the sheet in the dialog's client area
};

/// `designed`: the template's client size. `client`: the size to fill.
SheetLayout LayOutSheet(SIZE designed, SIZE client);

/// A rectangle of the template on the laid-out sheet.
RECT PlaceOnSheet(const RECT& designed, const SheetLayout& layout);

}  // namespace lunara
