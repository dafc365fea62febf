#pragma once

// Painting without flicker: everything is drawn into a bitmap in memory, which is then copied to
// the window in one piece.

#include "platform/gdi.h"

namespace lunara {

/// A bitmap of one area of a window with a device context to draw into it, in the window's
/// coordinates. The shell font is selected; brush and pen are the white and the black one that
/// every new device context has.
class MemoryPicture {
  public:
    /// `area` in pixels, in client coordinates.
    explicit MemoryPicture(const RECT& pictured);

    /// Whether there was memory for the bitmap. Without it nothing may be drawn or copied.
    bool IsMade() const { return memory && bitmap; }
    HDC Dc() const { return memory.Get(); }
    /// Copies `part` of the area to the same place in `target`.
    void CopyTo(HDC target, const RECT& part) const;

  private:
    MemoryDc memory;
    Bitmap bitmap;
    SelectScope selectedBitmap;
    SelectScope selectedFont;
};

/// Double-buffers the painting of a custom control: draw into `Dc()`; the end of the scope copies
/// the picture to the target.
class DoubleBuffer {
  public:
    /// `targetArea`: what is drawn, in pixels of the target's device context.
    DoubleBuffer(HDC targetDc, const RECT& targetArea);
    DoubleBuffer(const DoubleBuffer&) = delete;
    DoubleBuffer& operator=(const DoubleBuffer&) = delete;
    ~DoubleBuffer();

    /// The bitmap's device context; the target's own when there is no memory for a bitmap.
    HDC Dc() const { return picture.IsMade() ? picture.Dc() : target; }

  private:
    HDC target;
    RECT area;
    MemoryPicture picture;
};

/// Double-buffers a system control (menu bar, scroll bar) until it is destroyed. Under Wine this
/// also saves time: a visual style makes a bitmap for each part it draws, and makes it for the
/// device context that it draws into.
///
/// For controls that paint into the device context that WM_PAINT may carry in wParam. A control
/// that ignores it is left to paint as it always did from its first WM_PAINT on.
void DoubleBufferControl(HWND control);

}  // namespace lunara
