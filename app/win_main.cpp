// The program's entry point: a single instance, the main window, the message loop.

#include <memory>

#include "app/main_window.h"
#include "platform/pocketpc/aygshell.h"
#include "resources/ids.h"

namespace lunara {
namespace {

constexpr int TitleCapacity = 128;

/// Brings the window of a running instance to the foreground; false when there is none.
bool ShowRunningInstance() {
    WCHAR title[TitleCapacity] = {};
    ::LoadStringW(AppInstance(), IDS_APP_TITLE, title, TitleCapacity);
    const HWND running = ::FindWindowW(FrameworkClassName, title);
    if (running == nullptr) {
        return false;
    }
    // With the lowest bit set, SHSetForegroundWindow brings the window's dialogs forward, too.
    SHSetForegroundWindow(
        reinterpret_cast<HWND>(reinterpret_cast<ULONG_PTR>(running) | ULONG_PTR{1}));
    return true;
}

int RunMessageLoop() {
    const HACCEL accelerators =
        ::LoadAcceleratorsW(AppInstance(), MAKEINTRESOURCEW(IDR_ACCELERATORS));
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (::TranslateAcceleratorW(message.hwnd, accelerators, &message) == 0) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

}  // namespace
}  // namespace lunara

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int showCommand) {
    lunara::SetAppInstance(instance);
    if (lunara::ShowRunningInstance()) {
        return 0;
    }
    const auto main = std::make_unique<lunara::MainWindow>();
    if (main->CreateMain() == 0) {
        return 0;
    }
    ::ShowWindow(main->Handle(), showCommand);
    ::UpdateWindow(main->Handle());
    ::GdiFlush();  // shows the first painting now, not when the drawing queue is full
    return lunara::RunMessageLoop();
}
