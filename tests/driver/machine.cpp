#include "tests/driver/machine.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/driver/failure.h"
#include "tests/driver/wait.h"

namespace lunara::test {
namespace {

namespace fs = std::filesystem;

constexpr WCHAR FullDiskFile[] = L"LUNARA_E2E_FULL_DISK";
constexpr WCHAR SettingsKey[] = L"SOFTWARE\\Apps\\Lunara";

/// The variable's value; empty when it is not set or has 1024 characters or more.
std::wstring Environment(const WCHAR* name) {
    std::array<WCHAR, 1024> value{};
    const DWORD length =
        ::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
    return {value.data(), length < value.size() ? length : 0};
}

/// The nearest folder at or above this program's own that holds Lunara.exe; the root of the path
/// when there is none.
fs::path BuildFolder() {
    std::array<WCHAR, MAX_PATH> own{};
    ::GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size()));
    fs::path folder = fs::path(own.data()).parent_path();
    while (!fs::exists(folder / L"Lunara.exe") && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    return folder;
}

/// Holds everything that one run leaves behind: "e2e", or "e2e-<name>" for a run with a name.
fs::path RunFolder() {
    const std::wstring run = Environment(L"LUNARA_E2E_RUN");
    return BuildFolder() / (run.empty() ? L"e2e" : L"e2e-" + run);
}

constexpr LONGLONG TicksPerDay = 864000000000LL;  // of 100 ns, as FILETIME counts

/// Days since 1 January 1601, the epoch of FILETIME.
LONGLONG ToDayNumber(Day day) {
    SYSTEMTIME date{};
    date.wYear = static_cast<WORD>(day.year);
    date.wMonth = static_cast<WORD>(day.month);
    date.wDay = static_cast<WORD>(day.day);
    FILETIME file{};
    ::SystemTimeToFileTime(&date, &file);
    ULARGE_INTEGER ticks{};
    ticks.LowPart = file.dwLowDateTime;
    ticks.HighPart = file.dwHighDateTime;
    return static_cast<LONGLONG>(ticks.QuadPart) / TicksPerDay;
}

Day FromDayNumber(LONGLONG number) {
    ULARGE_INTEGER ticks{};
    ticks.QuadPart = static_cast<ULONGLONG>(number * TicksPerDay);
    FILETIME file{};
    file.dwLowDateTime = ticks.LowPart;
    file.dwHighDateTime = ticks.HighPart;
    SYSTEMTIME date{};
    ::FileTimeToSystemTime(&file, &date);
    return ToDay(date);
}

/// Creates a file that a child process can inherit as its standard output. INVALID_HANDLE_VALUE
/// when that fails.
HANDLE CreateOutput(const fs::path& path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0,
                         nullptr);
}

}  // namespace

Day ToDay(const SYSTEMTIME& date) { return {date.wYear, date.wMonth, date.wDay}; }

Day AddDays(Day day, int count) { return FromDayNumber(ToDayNumber(day) + count); }

int DaysBetween(Day later, Day earlier) {
    return static_cast<int>(ToDayNumber(later) - ToDayNumber(earlier));
}

std::wstring IsoDate(Day day) {
    std::array<WCHAR, 16> text{};
    ::wsprintfW(text.data(), L"%04d-%02d-%02d", day.year, day.month, day.day);
    return text.data();
}

bool SetToday(Day day) {
    const std::wstring path = Environment(L"LUNARA_E2E_DATE_FILE");
    if (path.empty()) {
        return false;
    }
    // Replaced atomically: every query of the clock reads this file, and an empty one means the
    // real time.
    const std::wstring sibling = path + L".new";
    if (!WriteFile(sibling, ToUtf8(IsoDate(day)) + " 12:00:00\n") ||
        ::MoveFileExW(sibling.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING) == 0) {
        return false;
    }
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    return ToDay(now) == day;
}

void ForgetSettings() {
    ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, SettingsKey);
    ::RegDeleteKeyW(HKEY_CURRENT_USER, SettingsKey);
}

void MakeEmptySettings() {
    ForgetSettings();
    HKEY key = nullptr;
    ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, SettingsKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                      nullptr);
    ::RegCloseKey(key);
}

void WriteNumber(const WCHAR* name, DWORD value) {
    ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, SettingsKey, name, REG_DWORD, &value, sizeof value);
}

void WriteText(const WCHAR* name, const std::wstring& value) {
    ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, SettingsKey, name, REG_SZ, value.c_str(),
                      static_cast<DWORD>((value.size() + 1) * sizeof(WCHAR)));
}

std::optional<DWORD> ReadNumber(const WCHAR* name) {
    DWORD value = 0;
    DWORD size = sizeof value;
    if (::RegGetValueW(HKEY_LOCAL_MACHINE, SettingsKey, name, RRF_RT_REG_DWORD, nullptr, &value,
                       &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::wstring> ReadText(const WCHAR* name) {
    std::array<WCHAR, 256> value{};
    DWORD size = sizeof value;
    if (::RegGetValueW(HKEY_LOCAL_MACHINE, SettingsKey, name, RRF_RT_REG_SZ, nullptr, value.data(),
                       &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return value.data();
}

ShortDateFormat::ShortDateFormat(const std::wstring& format) {
    std::array<WCHAR, 80> present{};
    ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SSHORTDATE, present.data(),
                      static_cast<int>(present.size()));
    before = present.data();
    ::SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, format.c_str());
}

ShortDateFormat::~ShortDateFormat() {
    ::SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, before.c_str());
}

ProgramFolder::ProgramFolder(const std::wstring& testName) {
    const fs::path build = BuildFolder();
    const fs::path folder = RunFolder() / L"run" / testName;
    const fs::path shots = RunFolder() / L"pictures";
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    fs::create_directories(folder);
    fs::create_directories(shots);
    for (const WCHAR* program : {L"Lunara.exe", L"lunara-cli.exe"}) {
        fs::copy_file(build / program, folder / program);
    }
    path = folder.native() + L"\\";
    pictures = (shots / testName).native() + L"-";
}

ProgramFolder::Answer ProgramFolder::RunCompanion(const std::wstring& arguments,
                                                  const std::wstring& password) const {
    const fs::path folder(path);
    const fs::path secret = folder / L"password.txt";
    // One file per call: a process that inherited the handle of an earlier call may still hold it.
    const fs::path output = folder / (L"companion-" + std::to_wstring(++runs) + L".txt");
    WriteFile(secret.native(), ToUtf8(password) + "\n");
    std::wstring command = L"\"" + path + L"lunara-cli.exe\" " + arguments +
                           L" --password-file \"" + secret.native() + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = CreateOutput(output);
    startup.hStdError = startup.hStdOutput;
    PROCESS_INFORMATION process{};
    Answer answer{static_cast<DWORD>(-1), ""};
    if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, DETACHED_PROCESS, nullptr,
                         path.c_str(), &startup, &process) != 0) {
        ::WaitForSingleObject(process.hProcess, PatienceMs);
        ::GetExitCodeProcess(process.hProcess, &answer.exitCode);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
    ::CloseHandle(startup.hStdOutput);
    answer.output = ReadFile(output.native());
    std::error_code ignored;
    fs::remove(secret, ignored);
    return answer;
}

bool ProgramFolder::MakeSampleDiary(const std::wstring& dataFolder, const std::wstring& password,
                                    Day today) const {
    const Answer made =
        RunCompanion(L"sample \"" + dataFolder + L"\" --today " + IsoDate(today), password);
    return made.exitCode == 0 ||
           ReportFailure("the companion does not make a sample diary: " + made.output);
}

HeldFile::HeldFile(const std::wstring& path)
    : file(::CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {}

void HeldFile::Release() {
    if (IsHeld()) {
        ::CloseHandle(file);
        file = INVALID_HANDLE_VALUE;
    }
}

FullDisk::FullDisk(const std::wstring& partOfPath) {
    if (!WriteFile(Environment(FullDiskFile), ToUtf8(partOfPath))) {
        ReportFailure("no disk can be declared full");
    }
}

void FullDisk::MakeRoom() { ::DeleteFileW(Environment(FullDiskFile).c_str()); }

bool FileExists(const std::wstring& path) {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string ReadFile(const std::wstring& path) {
    std::ifstream file{fs::path(path), std::ios::binary};
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

bool WriteFile(const std::wstring& path, const std::string& content) {
    std::ofstream file{fs::path(path), std::ios::binary | std::ios::trunc};
    file << content;
    file.close();
    return !file.fail();
}

std::string ToUtf8(const std::wstring& text) {
    const int length = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                             nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(length), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(),
                          length, nullptr, nullptr);
    return result;
}

}  // namespace lunara::test
