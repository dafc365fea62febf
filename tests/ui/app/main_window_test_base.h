#pragma once

// A main window of the test's own: on 15 May 2024, with settings and a user that no one else has.

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
inline constexpr WCHAR TestSettingsPath[] = TEXT("SOFTWARE\\LunaraTests");
inline constexpr SYSTEMTIME TestToday{2024, 5, 3, 15, 9, 0, 0, 0};  // a Wednesday

inline constexpr UINT ButtonCommands[] = {IDM_SHOW_NOTES,     IDM_SHOW_BLEEDING,
                                          IDM_SHOW_PERIOD,    IDM_SHOW_OVULATION,
                                          IDM_SHOW_PREGNANCY, IDM_SHOW_TEMPERATURE};

class MainWindowTest : public UiTest {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Creates the window with the script as it is.
    int Create();
    /// Creates the window and signs the user in.
    int SignIn(const WCHAR* userName = TestUser, const WCHAR* password = TestPassword);
    /// Ends the window as its close box does, and takes the quit message. False when there was
    /// none.
    bool Close();
    /// Whether there was a quit message.
    static bool TakeQuitMessage();

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    void Command(UINT id) { Send(WM_COMMAND, id); }
    /// TBSTATE bits of a button.
    BYTE StateOf(UINT command);
    /// Of the six show commands, in the order of the bar.
    std::vector<BYTE> ButtonStates();
    HMENU Tools();
    UINT MenuStateOf(UINT command);

    static void StoreDword(const WCHAR* name, DWORD value);
    static void StoreText(const WCHAR* name, const WCHAR* value);
    static std::optional<DWORD> StoredDword(const WCHAR* name);
    static std::wstring StoredText(const WCHAR* name);

    /// One record in each of the user's four files.
    static void FillDiary(UserData& data);
    static std::wstring FolderOf(const WCHAR* userName);
    static void RemoveUser(const WCHAR* userName);
    static bool FileExists(const std::wstring& path);

    std::unique_ptr<MainWindow> main;
    std::unique_ptr<DialogScript> script;
};

}  // namespace lunara::test
