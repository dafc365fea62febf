#include "window/double_buffer.h"

#include "platform/subclass.h"

namespace lunara {
namespace {

LRESULT CALLBACK BufferedControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Makes the control's own procedure handle `message`, WM_ERASEBKGND or WM_PAINT, with `dc` as the
/// target.
void DrawControl(HWND control, UINT message, HDC dc) {
    CallPrevious(&BufferedControlProc, control, message, reinterpret_cast<WPARAM>(dc), 0);
}

LRESULT OnPaint(HWND control) {
    RECT client{};
    ::GetClientRect(control, &client);
    const MemoryPicture picture(client);
    if (!picture.IsMade()) {
        return CallPrevious(&BufferedControlProc, control, WM_PAINT, 0, 0);
    }
    DrawControl(control, WM_ERASEBKGND, picture.Dc());
    DrawControl(control, WM_PAINT, picture.Dc());
    if (::GetUpdateRect(control, nullptr, FALSE) == FALSE) {
        // The update region is gone, so the control ignored `dc` and painted straight to its
        // window. Its background is not erased, because BufferedControlProc swallows
        // WM_ERASEBKGND. Remove the subclass and repaint the control unbuffered.
        RemoveSubclass(control, &BufferedControlProc);
        ::InvalidateRect(control, nullptr, TRUE);
        return 0;
    }
    PAINTSTRUCT paint{};
    const HDC dc = ::BeginPaint(control, &paint);
    picture.CopyTo(dc, paint.rcPaint);
    ::EndPaint(control, &paint);
    return 0;
}

LRESULT CALLBACK BufferedControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) {
        return 1;  // erased by OnPaint, in the bitmap
    }
    if (message == WM_PAINT && wParam == 0) {
        return OnPaint(window);
    }
    return CallPrevious(&BufferedControlProc, window, message, wParam, lParam);
}

}  // namespace

MemoryPicture::MemoryPicture(const RECT& pictured)
    : memory(::CreateCompatibleDC(nullptr)),
      bitmap(memory ? MakePicture(pictured.right - pictured.left, pictured.bottom - pictured.top)
                    : Bitmap()),
      selectedBitmap(memory.Get(), bitmap.Get()),
      selectedFont(memory.Get(), ShellFont()) {
    ::SetViewportOrgEx(memory.Get(), -pictured.left, -pictured.top, nullptr);
}

void MemoryPicture::CopyTo(HDC target, const RECT& part) const {
    ::BitBlt(target, part.left, part.top, part.right - part.left, part.bottom - part.top,
             memory.Get(), part.left, part.top, SRCCOPY);
}

DoubleBuffer::DoubleBuffer(HDC targetDc, const RECT& targetArea)
    : target(targetDc), area(targetArea), picture(targetArea) {}

DoubleBuffer::~DoubleBuffer() {
    if (picture.IsMade()) {
        picture.CopyTo(target, area);
    }
}

void DoubleBufferControl(HWND control) { AddSubclass(control, &BufferedControlProc); }

}  // namespace lunara
