#include "platform/subclass.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace lunara {
namespace {

struct Hook {
    WindowHook hook;
    void* reference;
};

struct HookedWindow {
    HWND window = nullptr;
    WNDPROC own = nullptr;
    std::vector<Hook> hooks;  // oldest first
};

/// Few windows ever have hooks: the main window, its bar, and a dialog over it. Each stays where it
/// is in memory while others come and go in the middle of a message.
std::vector<std::unique_ptr<HookedWindow>>& HookedWindows() {
    static std::vector<std::unique_ptr<HookedWindow>> windows;
    return windows;
}

HookedWindow* Find(HWND window) {
    for (const auto& hooked : HookedWindows()) {
        if (hooked->window == window) {
            return hooked.get();
        }
    }
    return nullptr;
}

void Forget(HWND window) {
    std::erase_if(HookedWindows(),
                  [window](const auto& hooked) { return hooked->window == window; });
}

LRESULT CALLBACK HookProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const HookedWindow* hooked = Find(window);
    if (hooked == nullptr) {
        return ::DefWindowProcW(window, message, wParam, lParam);  // after WM_NCDESTROY
    }
    const LRESULT result =
        HookedMessage{window, message, wParam, lParam, hooked->hooks.size()}.PassOn();
    if (message == WM_NCDESTROY) {
        Forget(window);
    }
    return result;
}

}  // namespace

LRESULT HookedMessage::PassOn() const {
    const HookedWindow* hooked = Find(window);
    if (hooked == nullptr) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    // Hooks may have been removed since this message set out.
    const std::size_t left = std::min(hooksLeft, hooked->hooks.size());
    if (left == 0) {
        return ::CallWindowProcW(hooked->own, window, message, wParam, lParam);
    }
    const Hook next = hooked->hooks[left - 1];
    return next.hook({window, message, wParam, lParam, left - 1}, next.reference);
}

void AddWindowHook(HWND window, WindowHook hook, void* reference) {
    HookedWindow* hooked = Find(window);
    if (hooked == nullptr) {
        // In the list before the procedure is in place: the next message may be on its way.
        hooked = HookedWindows().emplace_back(std::make_unique<HookedWindow>()).get();
        hooked->window = window;
        hooked->own = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HookProc)));
    }
    hooked->hooks.push_back({hook, reference});
}

void RemoveWindowHook(HWND window, WindowHook hook, void* reference) {
    HookedWindow* hooked = Find(window);
    if (hooked == nullptr) {
        return;
    }
    // The procedure stays in place: somebody may have put his own before it meanwhile.
    const auto found = std::find_if(
        hooked->hooks.begin(), hooked->hooks.end(),
        [&](const Hook& known) { return known.hook == hook && known.reference == reference; });
    if (found != hooked->hooks.end()) {
        hooked->hooks.erase(found);
    }
}

}  // namespace lunara
