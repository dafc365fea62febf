#include "tests/ui/ui_test.h"

#include <algorithm>
#include <array>

#include "platform/clock.h"
#include "records/dates.h"
#include "window/settings.h"

namespace lunara::test {
namespace {

constexpr ULONGLONG PatienceMs = 10000;
constexpr DWORD PollMs = 10;

BITMAPINFO TopDownInfo(int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

Bitmap MakeBitmap(int width, int height, DWORD*& bits) {
    const BITMAPINFO info = TopDownInfo(width, height);
    void* memory = nullptr;
    Bitmap bitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0));
    bits = static_cast<DWORD*>(memory);
    return bitmap;
}

}  // namespace

int RecordedMessages::Show(HWND owner, const WCHAR* text, const WCHAR* caption, UINT flags) {
    boxes.push_back(Box{owner, text, caption, flags});
    if (answers.empty()) {
        return IDOK;
    }
    const int answer = answers.front();
    answers.pop_front();
    return answer;
}

void RecordedHelp::Start(const WCHAR* program, const WCHAR* commandLine) {
    programs.emplace_back(program);
    anchors.emplace_back(commandLine);
}

void PumpMessages() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

bool PumpUntil(const std::function<bool()>& condition) {
    const ULONGLONG end = ::GetTickCount64() + PatienceMs;
    PumpMessages();
    while (!condition()) {
        if (::GetTickCount64() > end) {
            return false;
        }
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, PollMs, QS_ALLINPUT);
        PumpMessages();
    }
    return true;
}

MemoryCanvas::MemoryCanvas(int canvasWidth, int canvasHeight, COLORREF background)
    : width(canvasWidth),
      height(canvasHeight),
      bitmap(MakeBitmap(canvasWidth, canvasHeight, bits)),
      dc(::CreateCompatibleDC(nullptr)),
      bitmapScope(dc.Get(), bitmap.Get()),
      fontScope(dc.Get(), ShellFont()) {
    const Brush brush(::CreateSolidBrush(background));
    const RECT bounds = Bounds();
    ::FillRect(dc.Get(), &bounds, brush.Get());
}

COLORREF MemoryCanvas::Pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) {
        return CLR_INVALID;
    }
    ::GdiFlush();
    const DWORD pixel = bits[y * width + x];  // 0x00RRGGBB
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

void MemoryCanvas::CopyFrom(HWND window, int left, int top) {
    const WindowDcScope source(window);
    ::BitBlt(dc.Get(), 0, 0, width, height, source.Dc(), left, top, SRCCOPY);
}

int MemoryCanvas::CountOf(COLORREF color) const {
    int count = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            count += Pixel(x, y) == color ? 1 : 0;
        }
    }
    return count;
}

ScriptedWindow::~ScriptedWindow() {
    if (Handle() != nullptr) {
        handler = nullptr;
        ::DestroyWindow(Handle());
    }
}

bool ScriptedWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    log.push_back(message);
    LRESULT answer = 0;
    if (!handler || !handler(message, wParam, lParam, answer)) {
        return false;
    }
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

int ScriptedWindow::Make(HWND parent, int width, int height) {
    return Create(0, nullptr, TEXT("Scripted"), parent == nullptr ? WS_POPUP : WS_CHILD, 0, 0,
                  width, height, parent, nullptr);
}

int ScriptedWindow::CountOf(UINT message) const {
    return static_cast<int>(std::count(log.begin(), log.end(), message));
}

StandInMainWindow::StandInMainWindow() {
    EXPECT_EQ(Make(), 1);
    SetMainWindow(this);
}

StandInMainWindow::~StandInMainWindow() { SetMainWindow(nullptr); }

void UiTest::SetUp() {
    liveBefore = LiveGdiObjects();
    SetMessageRecorder(&messages);
    SetHelpRecorder(&help);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, TestSettingsPath);
    SetSettingsLocation(SettingsLocation{HKEY_CURRENT_USER, nullptr, TestSettingsPath});
}

void UiTest::TearDown() {
    PumpMessages();
    SetMessageRecorder(nullptr);
    SetHelpRecorder(nullptr);
    ReleaseClock();
    ::RegDeleteTreeW(HKEY_CURRENT_USER, TestSettingsPath);
    SetSettingsLocation(DefaultSettingsLocation());
    EXPECT_EQ(LiveGdiObjects(), liveBefore) << "drawing objects left over";
}

SYSTEMTIME Day(unsigned year, unsigned month, unsigned day) {
    SYSTEMTIME date{};
    EXPECT_EQ(FromDateKey(MakeDateKey(year, month, day), date), 1);
    return date;
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, TEXT('\0'));
    const int length = ::GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::wstring ClassOf(HWND window) {
    std::array<WCHAR, 256> name{};  // the longest class name has 255 units
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

}  // namespace lunara::test
