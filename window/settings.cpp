#include "window/settings.h"

#include <algorithm>
#include <array>

#include "platform/text.h"

namespace lunara {
namespace {

constexpr WCHAR SettingsPath[] = TEXT("SOFTWARE\\Apps\\Lunara");

SettingsLocation& CurrentLocation() {
    static SettingsLocation location = DefaultSettingsLocation();
    return location;
}

/// Opens the key for reading and writing, and creates it when it does not exist. Null on failure.
HKEY OpenKey(HKEY root, const WCHAR* path) {
    if (root == nullptr) {
        return nullptr;
    }
    HKEY key = nullptr;
    const LSTATUS status = ::RegCreateKeyExW(root, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                             KEY_READ | KEY_WRITE, nullptr, &key, nullptr);
    return status == ERROR_SUCCESS ? key : nullptr;
}

}  // namespace

SettingsLocation DefaultSettingsLocation() {
    return SettingsLocation{HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER, SettingsPath};
}

void SetSettingsLocation(const SettingsLocation& location) { CurrentLocation() = location; }

Settings::Settings() {
    const SettingsLocation& location = CurrentLocation();
    key = OpenKey(location.root, location.path);
    if (key == nullptr) {
        key = OpenKey(location.fallbackRoot, location.path);
    }
}

Settings::~Settings() {
    if (key != nullptr) {
        ::RegCloseKey(key);
    }
}

bool Settings::ReadDword(const WCHAR* name, DWORD& value) const {
    if (key == nullptr) {
        return false;
    }
    DWORD stored = 0;
    DWORD type = REG_NONE;
    DWORD bytes = sizeof(stored);
    if (::RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&stored), &bytes) !=
            ERROR_SUCCESS ||
        type != REG_DWORD || bytes != sizeof(stored)) {
        return false;
    }
    value = stored;
    return true;
}

bool Settings::ReadString(const WCHAR* name, WCHAR* text, int size) const {
    if (key == nullptr || size < 1) {
        return false;
    }
    // A REG_SZ may be stored without its terminator. The extra unit is never read into and stays 0.
    std::array<WCHAR, SettingTextCapacity + 1> stored{};
    DWORD type = REG_NONE;
    DWORD bytes = SettingTextCapacity * sizeof(WCHAR);
    if (::RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(stored.data()),
                           &bytes) != ERROR_SUCCESS ||
        type != REG_SZ || bytes % sizeof(WCHAR) != 0) {
        return false;
    }
    const auto length =
        static_cast<std::size_t>(std::find(stored.begin(), stored.end(), WCHAR{}) - stored.begin());
    if (length >= static_cast<std::size_t>(size)) {
        return false;
    }
    CopyText(text, static_cast<std::size_t>(size), WideView(stored.data(), length));
    return true;
}

bool Settings::WriteDword(const WCHAR* name, DWORD value) {
    return key != nullptr &&
           ::RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value),
                            sizeof(value)) == ERROR_SUCCESS;
}

bool Settings::WriteString(const WCHAR* name, const WCHAR* text) {
    if (key == nullptr) {
        return false;
    }
    const std::size_t bytes = (WideView(text).size() + 1) * sizeof(WCHAR);
    return bytes <= SettingTextCapacity * sizeof(WCHAR) &&
           ::RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                            static_cast<DWORD>(bytes)) == ERROR_SUCCESS;
}

}  // namespace lunara
