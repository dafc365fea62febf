#pragma once

// The program's settings in the registry. Every failure is silent: the caller keeps its default.
// "No key" and "no value" are told apart, because callers have different defaults for them.

#include "platform/win32.h"

namespace lunara {

/// Where the settings live: `path` under `root` or, where the user may not write there, under
/// `fallbackRoot`.
struct SettingsLocation {
    HKEY root;
    HKEY fallbackRoot;
    const WCHAR* path;
};

/// "SOFTWARE\Apps\Lunara" of the machine or, failing that, of the user.
SettingsLocation DefaultSettingsLocation();

/// From here on settings are opened there (`path` must stay valid); for tests. Two null roots make
/// a key that cannot be opened.
void SetSettingsLocation(const SettingsLocation& location);

/// Longest text of a setting, terminator included.
inline constexpr int SettingTextCapacity = 260;

/// The open key, made when there was none.
class Settings {
  public:
    Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;
    ~Settings();

    /// Whether the key could be opened or made. Without it nothing is read or written.
    bool IsOpen() const { return key != nullptr; }

    /// Whether there is such a value. One of another type or size is as if it were missing;
    /// `value` is untouched then.
    bool ReadDword(const WCHAR* name, DWORD& value) const;
    /// The same for a text. `size` units (1..SettingTextCapacity) with the terminator, which the
    /// stored text need not have; a longer text is as if it were missing.
    bool ReadString(const WCHAR* name, WCHAR* text, int size) const;

    bool WriteDword(const WCHAR* name, DWORD value);
    /// `text` under SettingTextCapacity units; it is stored with its terminator.
    bool WriteString(const WCHAR* name, const WCHAR* text);

  private:
    HKEY key = nullptr;
};

}  // namespace lunara
