#pragma once

// The base of every test with windows. It records message boxes and starts of the help viewer
// instead of showing them, redirects the settings to a key of its own, and fails a test that leaves
// a drawing object behind.
//
// Suites are named after the product file or class that they test, or after a behaviour that spans
// several. A fixture is the class of that name; where it hides the product's class of the same
// name, the product's is written lunara::Name. A shared base that is no suite ends in "Test".

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

/// Registry key of the settings during a test, under HKEY_CURRENT_USER. Deleted before and after.
inline constexpr WCHAR TestSettingsPath[] = TEXT("SOFTWARE\\LunaraTests");

/// Records message boxes instead of showing them. Each box takes the next of `answers`; when there
/// is none left, it is answered with IDOK.
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

/// Records starts of the help viewer instead of starting it.
class RecordedHelp : public HelpRecorder {
  public:
    void Start(const WCHAR* program, const WCHAR* commandLine) override;

    std::vector<std::wstring> programs;
    std::vector<std::wstring> anchors;
};

/// Dispatches messages until the condition holds. Returns whether it held within ten seconds.
bool PumpUntil(const std::function<bool()>& condition);
/// Dispatches the messages in the queue without waiting for more.
void PumpMessages();

/// A 32-bit bitmap to draw into, filled with a background colour. Its device context has the shell
/// font selected, as that of a painted window has.
class MemoryCanvas {
  public:
    MemoryCanvas(int width, int height, COLORREF background = RGB(255, 255, 255));

    HDC Dc() const { return dc.Get(); }
    /// CLR_INVALID outside the bitmap.
    COLORREF Pixel(int x, int y) const;
    RECT Bounds() const { return RECT{0, 0, width, height}; }
    /// The number of pixels of that colour.
    int CountOf(COLORREF color) const;
    /// Copies what a window shows on the screen, from (left, top) of its client area on.
    void CopyFrom(HWND window, int left = 0, int top = 0);

  private:
    int width;
    int height;
    DWORD* bits = nullptr;
    Bitmap bitmap;
    MemoryDc dc;
    SelectScope bitmapScope;
    SelectScope fontScope;
};

/// A window of the framework that logs every message and offers it to `handler`, which returns
/// whether it handled it. The window is destroyed with the object.
class ScriptedWindow : public Window {
  public:
    using Handler =
        std::function<bool(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)>;

    ScriptedWindow() = default;
    ScriptedWindow(const ScriptedWindow&) = delete;
    ScriptedWindow& operator=(const ScriptedWindow&) = delete;
    ~ScriptedWindow() override;

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    /// Creates a hidden window: a pop-up without a parent, else a child. Returns 1, or 0 on
    /// failure, like `Create`.
    int Make(HWND parent = nullptr, int width = 100, int height = 80);
    /// How many messages of that number are in the log.
    int CountOf(UINT message) const;

    Handler handler;
    std::vector<UINT> log;
};

/// A hidden window that is the program's main window while it lives: boxes and dialogs without an
/// owner of their own get it as owner.
class StandInMainWindow : public ScriptedWindow {
  public:
    StandInMainWindow();
    StandInMainWindow(const StandInMainWindow&) = delete;
    StandInMainWindow& operator=(const StandInMainWindow&) = delete;
    ~StandInMainWindow() override;
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

/// Midnight of a day, with its day of week. Fails the test for a day that does not exist.
SYSTEMTIME Day(unsigned year, unsigned month, unsigned day);

std::wstring TextOf(HWND window);
std::wstring ClassOf(HWND window);

/// Adds the label of a table's row to the failures in its scope.
#define LUNARA_ROW(row) SCOPED_TRACE((row).label)

}  // namespace lunara::test
