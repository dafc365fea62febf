#pragma once

// Double-buffering: a control is drawn into a bitmap in memory, which is then copied to the window
// in one piece, so that no half-painted state is ever visible.

#include "platform/gdi.h"

namespace lunara {

/// A bitmap of one area of a window, and a memory device context to draw into it in the window's
/// client coordinates. The shell font is selected; brush and pen are a new device context's
/// defaults, white and black.
class MemoryPicture {
  public:
    /// `pictured`: the area to hold, in pixels of the window's client area.
    explicit MemoryPicture(const RECT& pictured);

    /// Whether bitmap and device context could be created. If not, do not draw and do not copy.
    bool IsMade() const { return memory && bitmap; }
    HDC Dc() const { return memory.Get(); }
    /// Copies `part` (client coordinates) to the same coordinates of `target`.
    void CopyTo(HDC target, const RECT& part) const;

  private:
    MemoryDc memory;
    Bitmap bitmap;
    SelectScope selectedBitmap;
    SelectScope selectedFont;
};

/// Double-buffers the painting of a custom control. Draw into `Dc()`; the destructor copies the
/// bitmap to the target device context.
class DoubleBuffer {
  public:
    /// `targetArea`: the area that will be drawn, in pixels of `targetDc`.
    DoubleBuffer(HDC targetDc, const RECT& targetArea);
    DoubleBuffer(const DoubleBuffer&) = delete;
    DoubleBuffer& operator=(const DoubleBuffer&) = delete;
    ~DoubleBuffer();

    /// The device context to draw into: the bitmap's, or the target's own when there is no memory
    /// for a bitmap (drawing then goes straight to the window).
    HDC Dc() const { return picture.IsMade() ? picture.Dc() : target; }

  private:
    HDC target;
    RECT area;
    MemoryPicture picture;
};

/// Double-buffers a system control (menu bar, scroll bar) until it is destroyed. Under Wine this
/// also saves time: a visual style creates a bitmap for each part that it draws, compatible with
/// the device context it draws into, and a bitmap in memory is cheaper than one of the display.
///
/// Works only for controls that honour a device context in WM_PAINT's wParam. Any other control is
/// detected at its first WM_PAINT, and paints itself unbuffered from then on.
void DoubleBufferControl(HWND control);

}  // namespace lunara
