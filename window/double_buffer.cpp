#include "window/double_buffer.h"

namespace lunara {

PaintBuffer::PaintBuffer(HDC targetDc, const RECT& targetArea)
    : target(targetDc),
      area(targetArea),
      memory(::CreateCompatibleDC(target)),
      bitmap(memory ? MakePicture(area.right - area.left, area.bottom - area.top) : Bitmap()),
      selectedBitmap(memory.Get(), bitmap.Get()),
      selectedFont(memory.Get(), ShellFont()) {
    ::SetViewportOrgEx(memory.Get(), -area.left, -area.top, nullptr);
}

PaintBuffer::~PaintBuffer() {
    if (bitmap) {
        ::BitBlt(target, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 memory.Get(), area.left, area.top, SRCCOPY);
    }
}

}  // namespace lunara
