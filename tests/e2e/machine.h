#pragma once

// What surrounds the program under test: the date it is told, its settings, folders, and the
// companion that reads and writes the same files.

#include <windows.h>

#include <optional>
#include <string>

namespace lunara::e2e {

// ---- The date ----

struct Day {
    int year;
    int month;
    int day;

    friend bool operator==(const Day&, const Day&) = default;
};

Day ToDay(const SYSTEMTIME& date);
Day AddDays(Day day, int count);
/// How many days `later` comes after `earlier`; negative when it comes before.
int DaysBetween(Day later, Day earlier);
/// 2006-03-05
std::wstring IsoDate(Day day);

/// Every program under test sees this date, and the clock stands still at 12:00:00, from the moment
/// this returns. Needs the surroundings that scripts/e2e.sh makes; false when the date does not
/// follow.
bool SetToday(Day day);

// ---- Settings ----

/// The program's key in the registry as it never was.
void ForgetSettings();
/// The key without values.
void MakeEmptySettings();
void WriteNumber(const WCHAR* name, DWORD value);
void WriteText(const WCHAR* name, const std::wstring& value);
std::optional<DWORD> ReadNumber(const WCHAR* name);
std::optional<std::wstring> ReadText(const WCHAR* name);

/// For its life, whoever starts a program writes short dates like this ("dd.MM.yyyy").
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

/// A program folder of its own for one test, with fresh copies of the programs and nothing else.
class ProgramFolder {
  public:
    explicit ProgramFolder(const std::wstring& testName);

    const std::wstring& Path() const { return path; }  // ends in a backslash
    std::wstring Program() const { return path + L"Lunara.exe"; }
    std::wstring UserFolder(const std::wstring& user) const { return path + user; }
    /// Where the pictures of this test go; ends in a backslash.
    const std::wstring& Pictures() const { return pictures; }

    struct Answer {
        DWORD exitCode;
        std::string output;  // what it wrote, errors included
    };
    /// Runs lunara-cli with these arguments ("check \"DIR\""), and with the password in a file.
    Answer RunCompanion(const std::wstring& arguments, const std::wstring& password = L"") const;

  private:
    std::wstring path;
    std::wstring pictures;
    mutable int runs = 0;
};

/// Keeps a file open so that nobody else can open, move or replace it.
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

/// For its life, nothing more can be written to the files of every program under test whose path
/// contains this part of one ("LunaraBackup/Anna"): their disk is full.
class FullDisk {
  public:
    explicit FullDisk(const std::wstring& partOfPath);
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() { MakeRoom(); }

    void MakeRoom();
};

bool FileExists(const std::wstring& path);
std::string ReadFile(const std::wstring& path);
bool WriteFile(const std::wstring& path, const std::string& content);
std::string ToUtf8(const std::wstring& text);

}  // namespace lunara::e2e
