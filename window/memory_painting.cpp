#include "window/memory_painting.h"

#include "platform/gdi.h"
#include "platform/subclass.h"

namespace lunara {
namespace {

/// `call` with another message, into a device context.
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
    RECT client{};
    ::GetClientRect(call.window, &client);
    const MemoryDc memory(::CreateCompatibleDC(nullptr));
    const Bitmap picture = MakePicture(client.right, client.bottom);
    if (!memory || !picture) {
        return call.PassOn();
    }
    const SelectScope selected(memory.Get(), picture.Get());
    Ask(call, WM_ERASEBKGND, memory.Get());
    Ask(call, WM_PAINT, memory.Get());
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
             memory.Get(), area.left, area.top, SRCCOPY);
    ::EndPaint(call.window, &paint);
    return 0;
}

}  // namespace

void PaintThroughMemory(HWND control) { AddWindowHook(control, &HookPainting, nullptr); }

}  // namespace lunara
