#pragma once

// The program's settings in the registry. Every failure is silent: the caller keeps its default.
// A missing key (`IsOpen`) and a missing value are different answers, because callers have
// different defaults for them.

#include "platform/win32.h"

namespace lunara {

/// The registry key of the settings: `path` under `root`, or under `fallbackRoot` when that key
/// cannot be opened for writing.
struct SettingsLocation {
    HKEY root;
    HKEY fallbackRoot;
    const WCHAR* path;
};

/// "SOFTWARE\Apps\Lunara" under HKEY_LOCAL_MACHINE, or under HKEY_CURRENT_USER as the fallback.
SettingsLocation DefaultSettingsLocation();

/// Makes every later `Settings` open `location` instead, for tests. `path` is not copied and must
/// stay valid. Two null roots stand for a key that cannot be opened.
void SetSettingsLocation(const SettingsLocation& location);

/// Longest text value in UTF-16 units, terminator included.
inline constexpr int SettingTextCapacity = 260;

/// The settings key, opened for its lifetime, and created when it does not exist.
class Settings {
  public:
    Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;
    ~Settings();

    /// Whether the key could be opened or created. If not, every read and write returns false.
    bool IsOpen() const { return key != nullptr; }

    /// Reads a REG_DWORD value. Returns false, with `value` left alone, when it is missing or has
    /// another type or size.
    bool ReadDword(const WCHAR* name, DWORD& value) const;
    /// Reads a REG_SZ value into `size` (1..SettingTextCapacity) units, terminator included; the
    /// stored text need not be terminated. Returns false, with `text` left alone, when the value is
    /// missing, has another type or an odd number of bytes, or does not fit.
    bool ReadString(const WCHAR* name, WCHAR* text, int size) const;

    /// Writes a REG_DWORD value. Returns whether it was stored.
    bool WriteDword(const WCHAR* name, DWORD value);
    /// Writes a REG_SZ value with its terminator. Returns whether it was stored; a text that is
    /// longer than SettingTextCapacity units, terminator included, is refused.
    bool WriteString(const WCHAR* name, const WCHAR* text);

  private:
    HKEY key = nullptr;
};

}  // namespace lunara
