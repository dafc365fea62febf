#pragma once

// What every test of windows needs: boxes are recorded instead of shown, settings live in a key of
// the test's own, and after the test no drawing object is left over.

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "app/help.h"
#include "platform/gdi.h"
#include "window/messages.h"
#include "window/window.h"

namespace lunara::test {

/// Lists message boxes. Each is answered with the next of `answers`, then with IDOK.
class RecordedMessages : public MessageRecorder {
  public:
    struct Box {
        HWND owner;
        std::wstring text;
        std::wstring caption;
        UINT flags;
    };

    int Show(HWND owner, const WCHAR* text, const WCHAR* caption, UINT flags) override;

    std::vector<Box> boxes;
    std::deque<int> answers;
};

/// Lists starts of the help viewer.
class RecordedHelp : public HelpRecorder {
  public:
    void Start(const WCHAR* program, const WCHAR* commandLine) override;

    std::vector<std::wstring> programs;
    std::vector<std::wstring> anchors;
};

/// Dispatches what is in the queue, and waits for more, until the condition holds. Whether it came
/// to hold within ten seconds.
bool PumpUntil(const std::function<bool()>& condition);
/// Dispatches what is in the queue now.
void PumpMessages();

/// A memory device context over a 32-bit bitmap, filled with a colour and with the shell font
/// selected, as a painted window's would be.
class MemoryCanvas {
  public:
    MemoryCanvas(int width, int height, COLORREF background = RGB(255, 255, 255));

    HDC Dc() const { return dc.Get(); }
    COLORREF Pixel(int x, int y) const;
    RECT Bounds() const { return RECT{0, 0, width, height}; }
    /// How many pixels have that colour.
    int CountOf(COLORREF color) const;

  private:
    int width;
    int height;
    DWORD* bits = nullptr;
    Bitmap bitmap;
    MemoryDc dc;
    SelectScope bitmapScope;
    SelectScope fontScope;
};

/// A window of the framework whose messages go to `handler` first, which says whether it handled
/// them. Every message is listed in `log`.
class ScriptedWindow : public Window {
  public:
    using Handler =
        std::function<bool(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)>;

    ScriptedWindow() = default;
    ScriptedWindow(const ScriptedWindow&) = delete;
    ScriptedWindow& operator=(const ScriptedWindow&) = delete;
    ~ScriptedWindow() override;

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    /// A hidden pop-up window, or a child when there is a parent. What `Create` returned.
    int Make(HWND parent = nullptr, int width = 100, int height = 80);
    /// How often the message came.
    int CountOf(UINT message) const;

    Handler handler;
    std::vector<UINT> log;
};

class UiTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    RecordedMessages messages;
    RecordedHelp help;

  private:
    int liveBefore = 0;
};

/// Midnight of a day that the calendar has.
SYSTEMTIME Day(unsigned year, unsigned month, unsigned day);

/// The text of a window.
std::wstring TextOf(HWND window);

/// Names a table's row in the failures that it causes.
#define LUNARA_ROW(row) SCOPED_TRACE((row).label)

}  // namespace lunara::test
