#include "window/messages.h"

#include <array>

#include "platform/process.h"
#include "window/window.h"

namespace lunara {
namespace {

constexpr UINT StringAppTitle = 1;
constexpr int TextCapacity = 256;
constexpr int CaptionCapacity = 128;
constexpr int FlagTextCapacity = 64;
constexpr int FlagBits = 32;
constexpr std::size_t FlagTextsCapacity = std::size_t{FlagBits} * FlagTextCapacity;

MessageRecorder* currentRecorder = nullptr;

/// Loads string resource `id`, cut to `capacity` - 1 units; false when there is no such string.
bool LoadText(UINT id, WCHAR* text, int capacity) {
    return ::LoadStringW(AppInstance(), id, text, capacity) > 0;
}

int ShowOverMainWindow(const WCHAR* text, UINT flags) {
    std::array<WCHAR, CaptionCapacity> caption{};
    if (!LoadText(StringAppTitle, caption.data(), CaptionCapacity)) {
        return 0;
    }
    return ShowText(MainWindowHandle(), text, caption.data(), flags);
}

}  // namespace

int ShowText(HWND owner, const WCHAR* text, const WCHAR* caption, UINT flags) {
    if (currentRecorder != nullptr) {
        return currentRecorder->Show(owner, text, caption, flags);
    }
    // MB_TASKMODAL disables the program's windows while a box without an owner is up. On the device
    // such a box covers the screen; on a desktop it could get lost behind a window that is still
    // usable, while the code that showed it waits for the answer.
    if (owner != nullptr) {
        return ::MessageBoxW(owner, text, caption, flags);
    }
    const HWND active = ::GetActiveWindow();
    const int answer = ::MessageBoxW(nullptr, text, caption, flags | MB_TASKMODAL);
    // The box was destroyed while the program's windows were still disabled, so the system may have
    // activated another program. Come back to the window that was active before.
    if (active != nullptr && ::IsWindow(active) != FALSE) {
        ::SetForegroundWindow(active);
    }
    return answer;
}

void SetMessageRecorder(MessageRecorder* recorder) { currentRecorder = recorder; }

int ShowMessage(HWND owner, UINT id, const WCHAR* caption, UINT flags) {
    std::array<WCHAR, TextCapacity> text{};
    if (!LoadText(id, text.data(), TextCapacity)) {
        return 0;
    }
    return ShowText(owner, text.data(), caption, flags);
}

int ShowAppMessage(UINT id, UINT flags) {
    std::array<WCHAR, TextCapacity> text{};
    if (!LoadText(id, text.data(), TextCapacity)) {
        return 0;
    }
    return ShowOverMainWindow(text.data(), flags);
}

int ShowFlagMessages(UINT firstId, DWORD bits, UINT flags) {
    // Up to 63 units for each text, then one for a line break, or for the terminator after the
    // last.
    std::array<WCHAR, FlagTextsCapacity> text{};
    std::size_t length = 0;
    for (UINT bit = 0; bit < FlagBits; ++bit) {
        if ((bits >> bit & 1U) == 0) {
            continue;
        }
        const std::size_t start = length == 0 ? 0 : length + 1;  // [0, 31 * 64]
        const int loaded =
            ::LoadStringW(AppInstance(), firstId + bit, &text[start], FlagTextCapacity);
        if (loaded > 0) {
            if (start > 0) {
                text[length] = TEXT('\n');
            }
            length = start + static_cast<std::size_t>(loaded);
        }
    }
    if (length == 0) {
        return 1;
    }
    return ShowOverMainWindow(text.data(), flags);
}

void ShowSystemError() {
    const DWORD code = ::GetLastError();
    WCHAR* text = nullptr;
    const DWORD length = ::FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM,
        nullptr, code, 0, reinterpret_cast<WCHAR*>(&text), 0, nullptr);
    if (length == 0) {
        return;
    }
    ShowText(MainWindowHandle(), text, CaptionError, MB_ICONINFORMATION);
    ::LocalFree(text);
}

}  // namespace lunara
