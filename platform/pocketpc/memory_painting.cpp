#include "platform/pocketpc/memory_painting.h"

#include "platform/pocketpc/window_hook.h"

namespace lunara {
namespace {

/// A picture in memory as large as a control.
class ControlPicture {
  public:
    explicit ControlPicture(HWND control) {
        RECT client{};
        ::GetClientRect(control, &client);
        dc = ::CreateCompatibleDC(nullptr);
        bitmap = CreateMemoryPicture(client.right, client.bottom);
        if (bitmap != nullptr) {
            previous = ::SelectObject(dc, bitmap);
        }
    }
    ControlPicture(const ControlPicture&) = delete;
    ControlPicture& operator=(const ControlPicture&) = delete;
    ~ControlPicture() {
        if (bitmap != nullptr) {
            ::SelectObject(dc, previous);
            ::DeleteObject(bitmap);
        }
        ::DeleteDC(dc);
    }

    /// Null when the control is empty or there is no memory for it.
    HDC Dc() const { return bitmap == nullptr ? nullptr : dc; }

  private:
    HDC dc = nullptr;
    HBITMAP bitmap = nullptr;
    HGDIOBJ previous = nullptr;
};

/// `call` with another message.
LRESULT Ask(const HookedMessage& call, UINT message, HDC dc) {
    HookedMessage question = call;
    question.message = message;
    question.wParam = reinterpret_cast<WPARAM>(dc);
    return question.PassOn();
}

LRESULT HookPainting(const HookedMessage& call, void* /*reference*/) {
    if (call.message == WM_ERASEBKGND) {
        return 1;  // painted with the rest
    }
    if (call.message != WM_PAINT || call.wParam != 0) {
        return call.PassOn();
    }
    const ControlPicture picture(call.window);
    if (picture.Dc() == nullptr) {
        return call.PassOn();
    }
    Ask(call, WM_ERASEBKGND, picture.Dc());
    Ask(call, WM_PAINT, picture.Dc());
    if (::GetUpdateRect(call.window, nullptr, FALSE) == FALSE) {
        // It has painted its window, which the picture leaves unpainted.
        RemoveWindowHook(call.window, &HookPainting, nullptr);
        ::InvalidateRect(call.window, nullptr, TRUE);  // with what was not erased
        return 0;
    }
    PAINTSTRUCT paint{};
    const HDC window = ::BeginPaint(call.window, &paint);
    const RECT& area = paint.rcPaint;
    ::BitBlt(window, area.left, area.top, area.right - area.left, area.bottom - area.top,
             picture.Dc(), area.left, area.top, SRCCOPY);
    ::EndPaint(call.window, &paint);
    return 0;
}

}  // namespace

HBITMAP CreateMemoryPicture(LONG width, LONG height) {
    BITMAPINFO shape{};
    shape.bmiHeader.biSize = sizeof(shape.bmiHeader);
    shape.bmiHeader.biWidth = width;
    shape.bmiHeader.biHeight = -height;  // from the top down
    shape.bmiHeader.biPlanes = 1;
    shape.bmiHeader.biBitCount = 32;
    shape.bmiHeader.biCompression = BI_RGB;
    void* pixels = nullptr;
    return ::CreateDIBSection(nullptr, &shape, DIB_RGB_COLORS, &pixels, nullptr, 0);
}

void PaintThroughMemory(HWND control) { AddWindowHook(control, &HookPainting, nullptr); }

}  // namespace lunara
