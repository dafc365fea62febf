#include "tests/ui/app/main_window_test_base.h"

#include <array>

#include "platform/clock.h"
#include "platform/pocketpc/common_controls.h"
#include "platform/pocketpc/menu_bar.h"
#include "storage/data_folder.h"

namespace lunara::test {
namespace {

constexpr const WCHAR* DataFiles[] = {TEXT("\\Bleeding.dat"), TEXT("\\Temperature.dat"),
                                      TEXT("\\Notes.dat"), TEXT("\\NotePages.dat")};

}  // namespace

void MainWindowTest::SetUp() {
    UiTest::SetUp();
    SetLocalNow(TestToday);
    RemoveUser(TestUser);
    main = std::make_unique<MainWindow>();
    script = std::make_unique<DialogScript>();
}

void MainWindowTest::TearDown() {
    if (main->Handle() != nullptr) {
        Close();
    }
    script.reset();
    main.reset();
    RemoveUser(TestUser);
    UiTest::TearDown();
}

int MainWindowTest::Create() { return main->CreateMain(); }

int MainWindowTest::SignIn(const WCHAR* userName, const WCHAR* password) {
    script->Type(IDC_USER_NAME, userName).Type(IDC_PASSWORD, password).Press(IDOK);
    return Create();
}

bool MainWindowTest::Close() {
    Send(WM_CLOSE);
    return TakeQuitMessage();
}

bool MainWindowTest::TakeQuitMessage() {
    MSG message{};
    return ::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE;
}

LRESULT MainWindowTest::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::SendMessageW(main->Handle(), message, wParam, lParam);
}

BYTE MainWindowTest::StateOf(UINT command) {
    return static_cast<BYTE>(::SendMessageW(main->MenuBar(), TB_GETSTATE, command, 0));
}

std::vector<BYTE> MainWindowTest::ButtonStates() {
    std::vector<BYTE> states;
    for (const UINT command : ButtonCommands) {
        states.push_back(StateOf(command));
    }
    return states;
}

HMENU MainWindowTest::Tools() {
    return reinterpret_cast<HMENU>(
        ::SendMessageW(main->MenuBar(), SHCMBM_GETSUBMENU, 0, IDM_TOOLS));
}

UINT MainWindowTest::MenuStateOf(UINT command) {
    return ::GetMenuState(Tools(), command, MF_BYCOMMAND);
}

void MainWindowTest::StoreDword(const WCHAR* name, DWORD value) {
    ASSERT_EQ(::RegSetKeyValueW(HKEY_CURRENT_USER, TestSettingsPath, name, REG_DWORD, &value,
                                sizeof(value)),
              ERROR_SUCCESS);
}

void MainWindowTest::StoreText(const WCHAR* name, const WCHAR* value) {
    const auto bytes = static_cast<DWORD>((std::wstring(value).size() + 1) * sizeof(WCHAR));
    ASSERT_EQ(::RegSetKeyValueW(HKEY_CURRENT_USER, TestSettingsPath, name, REG_SZ, value, bytes),
              ERROR_SUCCESS);
}

std::optional<DWORD> MainWindowTest::StoredDword(const WCHAR* name) {
    DWORD value = 0;
    DWORD bytes = sizeof(value);
    if (::RegGetValueW(HKEY_CURRENT_USER, TestSettingsPath, name, RRF_RT_REG_DWORD, nullptr, &value,
                       &bytes) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return value;
}

std::wstring MainWindowTest::StoredText(const WCHAR* name) {
    std::array<WCHAR, 300> text{};
    DWORD bytes = sizeof(text);
    ::RegGetValueW(HKEY_CURRENT_USER, TestSettingsPath, name, RRF_RT_REG_SZ, nullptr, text.data(),
                   &bytes);
    return text.data();
}

void MainWindowTest::FillDiary(UserData& data) {
    data.SetCurrentDate(Day(2024, 5, 10));
    data.SetBleeding(2);
    data.SetTemperature(9810);
    data.SetNoteFlags(1);
    data.SetNoteText(TEXT("a note"));
}

std::wstring MainWindowTest::FolderOf(const WCHAR* userName) { return DataFolderOfUser(userName); }

void MainWindowTest::RemoveUser(const WCHAR* userName) {
    const std::wstring folder = FolderOf(userName);
    for (const WCHAR* file : DataFiles) {
        ::DeleteFileW((folder + file).c_str());
    }
    ::RemoveDirectoryW(folder.c_str());
}

bool MainWindowTest::FileExists(const std::wstring& path) {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void MainWindowTest::Write(const std::wstring& path, const std::string& text) {
    const HANDLE file =
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    ::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    ::CloseHandle(file);
    ASSERT_EQ(written, text.size());
}

std::string MainWindowTest::Read(const std::wstring& path) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return "(none)";
    }
    std::array<char, 4096> bytes{};
    DWORD length = 0;
    ::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &length, nullptr);
    ::CloseHandle(file);
    return {bytes.data(), length};
}

}  // namespace lunara::test
