#pragma once

// Layout of a full-screen dialog. Its template is designed for a small portrait screen. In a larger
// window the template's client area, the sheet, is scaled evenly and centred below a strip with the
// dialog's title. Pure functions; all lengths are in pixels.

#include "platform/win32.h"

namespace lunara {

inline constexpr int TitleStripPx = 34;   // height of the title strip with the line under it
inline constexpr int SheetMarginPx = 12;  // around the sheet, on every side
inline constexpr double MostSheetScale = 1.5;
inline constexpr double LeastSheetScale = 0.5;

/// Scale and position of a sheet in its dialog.
struct SheetLayout {
    double scale;  // [LeastSheetScale, MostSheetScale]
    POINT origin;  // top left corner of the sheet in the dialog's client area
};

/// Scales a sheet of size `designed` (the template's client area) to fit a dialog with a client
/// area of size `client`. At LeastSheetScale the sheet may still be too large; it is not made
/// smaller.
SheetLayout LayOutSheet(SIZE designed, SIZE client);

/// Converts a rectangle of the template to client coordinates of the laid-out dialog.
RECT PlaceOnSheet(const RECT& designed, const SheetLayout& layout);

}  // namespace lunara
