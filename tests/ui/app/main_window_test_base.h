#pragma once

// Base of the tests that drive a whole main window: it lives in the test's process, today is
// 15 May 2024, and settings and user are the test's own.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/main_window.h"
#include "resources/ids.h"
#include "tests/ui/dialog_script.h"
#include "tests/ui/ui_test.h"

namespace lunara::test {

inline constexpr WCHAR TestUser[] = TEXT("zz window tests");
inline constexpr WCHAR TestPassword[] = TEXT("abcd");
inline constexpr SYSTEMTIME TestToday{2024, 5, 3, 15, 9, 0, 0, 0};  // Wednesday, 9:00

/// The six show commands in the order of their buttons.
inline constexpr UINT ButtonCommands[] = {IDM_SHOW_NOTES,     IDM_SHOW_BLEEDING,
                                          IDM_SHOW_PERIOD,    IDM_SHOW_OVULATION,
                                          IDM_SHOW_PREGNANCY, IDM_SHOW_TEMPERATURE};

class MainWindowTest : public UiTest {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Creates the window, which runs the sign-in: `script` has to answer that. Returns what
    /// `CreateMain` returned, 1 or 0.
    int Create();
    /// Queues the answer to the sign-in, then creates the window.
    int SignIn(const WCHAR* userName = TestUser, const WCHAR* password = TestPassword);
    /// Closes the window as its close box does and removes the quit message from the queue. False
    /// when there was none: the window refused.
    bool Close();
    /// Removes the quit message from the queue; false when there was none.
    static bool TakeQuitMessage();

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void Command(UINT id) { Send(WM_COMMAND, id); }
    /// The TBSTATE bits of a button.
    BYTE StateOf(UINT command);
    /// The states of `ButtonCommands`, in that order.
    std::vector<BYTE> ButtonStates();
    /// The menu of the bar's first button.
    HMENU Tools();
    UINT MenuStateOf(UINT command);

    static void StoreDword(const WCHAR* name, DWORD value);
    static void StoreText(const WCHAR* name, const WCHAR* value);
    static std::optional<DWORD> StoredDword(const WCHAR* name);
    static std::wstring StoredText(const WCHAR* name);

    /// Makes 10 May 2024 the current date and gives it one record for each of the four data files.
    static void FillDiary(UserData& data);
    static std::wstring FolderOf(const WCHAR* userName);
    static void RemoveUser(const WCHAR* userName);
    static bool FileExists(const std::wstring& path);
    /// Writes a file, replacing one that exists.
    static void Write(const std::wstring& path, const std::string& text);
    /// The contents of a file, at most 4096 bytes; "(none)" when it cannot be opened.
    static std::string Read(const std::wstring& path);

    std::unique_ptr<MainWindow> main;
    std::unique_ptr<DialogScript> script;
};

}  // namespace lunara::test
