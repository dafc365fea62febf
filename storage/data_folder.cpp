#include "storage/data_folder.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/app_folder.h"

namespace lunara {
namespace {

constexpr WideView Separators = TEXT("\\/");
constexpr WideView Forbidden = TEXT("/\\:*?\"<>|");
constexpr WideView ProgramFile = TEXT("Lunara.exe");

constexpr WideView Devices[] = {TEXT("CON"), TEXT("PRN"),    TEXT("AUX"),
                                TEXT("NUL"), TEXT("CONIN$"), TEXT("CONOUT$")};
// Devices whose name ends in one digit, for which Windows also takes superscript 1, 2 and 3.
constexpr WideView NumberedDevices[] = {TEXT("COM"), TEXT("LPT")};
constexpr WideView DeviceDigits = TEXT("0123456789\u00B9\u00B2\u00B3");

WCHAR UpperAscii(WCHAR unit) {
    return unit >= 'a' && unit <= 'z' ? static_cast<WCHAR>(unit - 'a' + 'A') : unit;
}

bool IsSameName(WideView a, WideView b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](WCHAR x, WCHAR y) { return UpperAscii(x) == UpperAscii(y); });
}

/// Whether Windows takes the name for a device: "con", "con.txt" and "con .txt" are all the
/// console.
bool IsDeviceName(WideView name) {
    WideView base = name.substr(0, name.find(TEXT('.')));
    while (!base.empty() && base.back() == ' ') {
        base.remove_suffix(1);
    }
    const auto isBase = [base](WideView device) { return IsSameName(base, device); };
    if (std::any_of(std::begin(Devices), std::end(Devices), isBase)) {
        return true;
    }
    if (base.empty() || DeviceDigits.find(base.back()) == WideView::npos) {
        return false;
    }
    base.remove_suffix(1);
    return std::any_of(std::begin(NumberedDevices), std::end(NumberedDevices),
                       [base](WideView device) { return IsSameName(base, device); });
}

/// Whether the name is that of the program's file, now or as shipped. That file lies among the
/// users' folders, so no folder can have its name.
bool IsProgramFile(WideView name) {
    std::array<WCHAR, PathCapacity> path{};
    const DWORD length =
        ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    WideView module(path.data(), std::min<std::size_t>(length, path.size()));
    const std::size_t last = module.find_last_of(Separators);
    if (last != WideView::npos) {
        module.remove_prefix(last + 1);
    }
    return IsSameName(name, ProgramFile) || IsSameName(name, module);
}

bool IsHexDigit(WCHAR unit) {
    const WCHAR upper = UpperAscii(unit);
    return (upper >= '0' && upper <= '9') || (upper >= 'A' && upper <= 'F');
}

bool IsHighSurrogate(WCHAR unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(WCHAR unit) { return (unit & 0xFC00) == 0xDC00; }

bool IsLoneSurrogate(WideView name, std::size_t i) {
    if (IsHighSurrogate(name[i])) {
        return i + 1 == name.size() || !IsLowSurrogate(name[i + 1]);
    }
    return IsLowSurrogate(name[i]) && (i == 0 || !IsHighSurrogate(name[i - 1]));
}

bool MustBeEscaped(WideView name, std::size_t i) {
    const WCHAR unit = name[i];
    if (unit < 0x20 || Forbidden.find(unit) != WideView::npos || IsLoneSurrogate(name, i)) {
        return true;
    }
    if (unit == '%') {  // only before two hexadecimal digits: "100%" stays as it is
        return i + 2 < name.size() && IsHexDigit(name[i + 1]) && IsHexDigit(name[i + 2]);
    }
    // Windows drops dots and blanks from the end of a name. The last one is escaped, which also
    // disarms "." (the program's folder) and ".." (the folder above it).
    return (unit == '.' || unit == ' ') && i + 1 == name.size();
}

/// Appends each byte of the unit's UTF-8 (three bytes for a lone surrogate) as % and two
/// hexadecimal digits.
void AppendEscaped(WideString& folder, WCHAR unit) {
    constexpr WideView Digits = TEXT("0123456789ABCDEF");
    for (const char byte : ToUtf8(WideView(&unit, 1))) {
        const auto value = static_cast<unsigned char>(byte);
        folder.push_back('%');
        folder.push_back(Digits[value >> 4]);
        folder.push_back(Digits[value & 0xF]);
    }
}

}  // namespace

WideString FolderNameOfUser(WideView userName) {
    const bool isTaken = IsDeviceName(userName) || IsProgramFile(userName);
    WideString folder;
    for (std::size_t i = 0; i < userName.size(); ++i) {
        if ((i == 0 && isTaken) || MustBeEscaped(userName, i)) {
            AppendEscaped(folder, userName[i]);
        } else {
            folder.push_back(userName[i]);
        }
    }
    return folder;
}

WideString DataFolderOfUser(WideView userName) {
    std::array<WCHAR, PathCapacity> appFolder{};
    GetAppFolder(appFolder.data(), static_cast<int>(appFolder.size()));
    // Without the program's folder there are no diaries: a bare name would be looked up in the
    // current folder, whichever that is. No path can begin with "|", so every use of this one
    // fails.
    const WideString parent = appFolder[0] != 0 ? WideString(appFolder.data()) : TEXT("|\\");
    const WideString folder = parent + FolderNameOfUser(userName);
    return folder.substr(0, PathCapacity - 1);
}

bool IsFolder(const WCHAR* path) {
    const DWORD attributes = ::GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

int CreateDirectoryTree(const WCHAR* folder) {
    if (IsFolder(folder)) {
        return 1;
    }
    const WideString path(folder);
    // Creates the parents from the top down. Failures are ignored: a parent may exist or be a
    // drive, and if it is neither, creating what is below it fails too.
    for (std::size_t i = path.find_first_of(Separators, 1); i != WideString::npos;
         i = path.find_first_of(Separators, i + 1)) {
        ::CreateDirectoryW(path.substr(0, i).c_str(), nullptr);
    }
    if (::CreateDirectoryW(folder, nullptr) != FALSE) {
        return 1;
    }
    const DWORD error = ::GetLastError();
    if (IsFolder(folder)) {
        return 1;
    }
    ::SetLastError(error);
    return 0;
}

}  // namespace lunara
