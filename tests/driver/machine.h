#pragma once

// The surroundings of the program under test: the date that it sees, its settings, its folder, the
// state of its disk, and the companion, which reads and writes the same data files.

#include <windows.h>

#include <optional>
#include <string>

namespace lunara::test {

// ---- The date ----

/// A calendar day, month and day counted from 1. Not checked: the functions below expect a day that
/// exists in the Gregorian calendar, in 1601 or later.
struct Day {
    int year;
    int month;
    int day;

    friend bool operator==(const Day&, const Day&) = default;
};

/// The day that every run begins with, a Sunday.
inline constexpr Day Today{2006, 3, 5};

Day ToDay(const SYSTEMTIME& date);
Day AddDays(Day day, int count);
/// The number of days from `earlier` to `later`; negative when `later` comes first.
int DaysBetween(Day later, Day earlier);
/// "2006-03-05"
std::wstring IsoDate(Day day);

/// Sets the date of every program under test, running ones included, to `day` at 12:00:00, where
/// the clock stands still. The new date holds when the call returns. False when the date does not
/// change, as outside of scripts/e2e.sh.
bool SetToday(Day day);

// ---- Settings ----

/// Deletes the program's registry key, as on a machine that never ran the program.
void ForgetSettings();
/// Replaces the program's registry key with one that has no values.
void MakeEmptySettings();
void WriteNumber(const WCHAR* name, DWORD value);
void WriteText(const WCHAR* name, const std::wstring& value);
/// Nothing when the value is missing or is not a DWORD.
std::optional<DWORD> ReadNumber(const WCHAR* name);
/// Nothing when the value is missing, is not a string or is longer than 255 characters.
std::optional<std::wstring> ReadText(const WCHAR* name);

/// Changes the user's short date format ("dd.MM.yyyy") for programs started during its lifetime.
class ShortDateFormat {
  public:
    explicit ShortDateFormat(const std::wstring& format);
    ShortDateFormat(const ShortDateFormat&) = delete;
    ShortDateFormat& operator=(const ShortDateFormat&) = delete;
    ~ShortDateFormat();

  private:
    std::wstring before;
};

// ---- Folders and programs ----

/// A program folder for one test, holding fresh copies of the two programs and nothing else. The
/// constructor deletes what an earlier run left there. Folders of different runs (LUNARA_E2E_RUN)
/// are disjoint, so that runs with the same test can go on beside each other.
class ProgramFolder {
  public:
    explicit ProgramFolder(const std::wstring& testName);

    const std::wstring& Path() const { return path; }  // ends in a backslash
    std::wstring Program() const { return path + L"Lunara.exe"; }
    std::wstring UserFolder(const std::wstring& user) const { return path + user; }
    /// Prefix of the file names of this test's pictures: "<folder>\<test>-".
    const std::wstring& Pictures() const { return pictures; }

    struct Answer {
        DWORD exitCode;      // DWORD(-1) when the companion could not be started
        std::string output;  // stdout and stderr, interleaved
    };
    /// Runs lunara-cli with these arguments ("check \"DIR\"") and waits for its end. The password
    /// goes through a file that is deleted afterwards.
    Answer RunCompanion(const std::wstring& arguments, const std::wstring& password = L"") const;

    /// Has the companion write its example diary, with records up to `today`, to that data folder.
    /// False, and a reported failure, when the companion fails.
    bool MakeSampleDiary(const std::wstring& dataFolder, const std::wstring& password,
                         Day today) const;

  private:
    std::wstring path;
    std::wstring pictures;
    mutable int runs = 0;
};

/// Holds a file open without sharing: no other handle can open, move or replace it meanwhile.
class HeldFile {
  public:
    explicit HeldFile(const std::wstring& path);
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile() { Release(); }

    bool IsHeld() const { return file != INVALID_HANDLE_VALUE; }
    void Release();

  private:
    HANDLE file;
};

/// Fails every write of the programs under test to files whose path contains `partOfPath`
/// ("LunaraBackup/Anna", with the host's slashes) as on a full disk, until `MakeRoom` or the end of
/// its lifetime. There is one such disk per run: a second object replaces the first one's part.
class FullDisk {
  public:
    explicit FullDisk(const std::wstring& partOfPath);
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() { MakeRoom(); }

    void MakeRoom();
};

/// Whether there is a file or a folder of that name.
bool FileExists(const std::wstring& path);
/// The whole file, byte for byte; empty when it cannot be read.
std::string ReadFile(const std::wstring& path);
/// Creates or replaces the file; false when not everything could be written.
bool WriteFile(const std::wstring& path, const std::string& content);
std::string ToUtf8(const std::wstring& text);

}  // namespace lunara::test
