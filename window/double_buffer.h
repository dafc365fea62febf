#pragma once

#include "platform/gdi.h"

namespace lunara {

/// A picture of an area in memory that goes to its target in one piece at the end of its scope, so
/// that nobody sees a half-painted control. The shell font is selected; brush and pen are the white
/// and black ones that every new device context has.
class PaintBuffer {
  public:
    PaintBuffer(HDC targetDc, const RECT& targetArea);
    PaintBuffer(const PaintBuffer&) = delete;
    PaintBuffer& operator=(const PaintBuffer&) = delete;
    ~PaintBuffer();

    /// The memory's device context, with the target's coordinates; the target's own when there is
    /// no memory for a picture.
    HDC Dc() const { return bitmap ? memory.Get() : target; }

  private:
    HDC target;
    RECT area;
    MemoryDc memory;
    Bitmap bitmap;
    SelectScope selectedBitmap;
    SelectScope selectedFont;
};

}  // namespace lunara
