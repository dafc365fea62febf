#pragma once

// The Win32 types, constants and functions that the portable core uses, for POSIX systems. Each
// function behaves as on Windows for the arguments that the core passes; comments name the limits.
//
// Paths are UTF-16 with '/' or '\' between folders, and are converted to UTF-8 when a file is
// opened. Every function leaves the thread's last error alone on success, unless its comment says
// otherwise, and sets it to one of the ERROR_ codes below on failure.

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstring>

// NOLINTBEGIN(readability-identifier-naming): these are the platform's own spellings.

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using INT = int;
using LONG = std::int32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using DWORD_PTR = std::uintptr_t;
using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using HANDLE = void*;
using HINSTANCE = void*;
using COLORREF = std::uint32_t;

#define TEXT(text) u##text

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;
inline constexpr int MAX_PATH = 260;

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

struct POINT {
    LONG x;
    LONG y;
};

struct SIZE {
    LONG cx;
    LONG cy;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return red | green << 8 | blue << 16;
}

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

struct WIN32_FIND_DATAW {
    DWORD dwFileAttributes;
    WCHAR cFileName[MAX_PATH];
};

union LARGE_INTEGER {
    struct {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
};

inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
inline constexpr DWORD ERROR_ACCESS_DENIED = 5;
inline constexpr DWORD ERROR_INVALID_HANDLE = 6;
inline constexpr DWORD ERROR_WRITE_FAULT = 29;
inline constexpr DWORD ERROR_NO_MORE_FILES = 18;
inline constexpr DWORD ERROR_READ_FAULT = 30;
inline constexpr DWORD ERROR_SHARING_VIOLATION = 32;
inline constexpr DWORD ERROR_FILE_EXISTS = 80;
inline constexpr DWORD ERROR_INVALID_PARAMETER = 87;
inline constexpr DWORD ERROR_DISK_FULL = 112;
inline constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr DWORD ERROR_DIR_NOT_EMPTY = 145;
inline constexpr DWORD ERROR_ALREADY_EXISTS = 183;
inline constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr DWORD ERROR_MR_MID_NOT_FOUND = 317;
inline constexpr DWORD ERROR_RESOURCE_NAME_NOT_FOUND = 1814;

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD DELETE = 0x00010000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD FILE_SHARE_DELETE = 4;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
// Never reported: on POSIX the permissions of the folder decide whether a file can be replaced.
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x01;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD FILE_FLAG_SEQUENTIAL_SCAN = 0x08000000;
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
inline constexpr DWORD MOVEFILE_REPLACE_EXISTING = 1;
inline constexpr DWORD MOVEFILE_WRITE_THROUGH = 8;
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(~std::uintptr_t{0});

inline constexpr DWORD FORMAT_MESSAGE_IGNORE_INSERTS = 0x200;
inline constexpr DWORD FORMAT_MESSAGE_FROM_STRING = 0x400;
inline constexpr DWORD FORMAT_MESSAGE_FROM_SYSTEM = 0x1000;
inline constexpr DWORD FORMAT_MESSAGE_ARGUMENT_ARRAY = 0x2000;

/// The last error is kept per thread.
DWORD GetLastError();
void SetLastError(DWORD error);

/// Converts a date and time to units of 100 ns since 1 January 1601. The fields must form a real
/// date (years 1601 to 30827) and time; the day of week is ignored. FALSE for anything else, such
/// as the all-zero structure, with `fileTime` left alone.
BOOL SystemTimeToFileTime(const SYSTEMTIME* systemTime, FILETIME* fileTime);
/// Converts units of 100 ns since 1 January 1601 to a date and time with its day of week. FALSE
/// when the top bit of the 64-bit number is set.
BOOL FileTimeToSystemTime(const FILETIME* fileTime, SYSTEMTIME* systemTime);

/// Opens a file. `disposition`: OPEN_EXISTING or CREATE_ALWAYS; share mode, security, flags and
/// template are ignored. A new file can be read and written by its owner only. INVALID_HANDLE_VALUE
/// on failure; a folder fails with ERROR_ACCESS_DENIED.
HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, void* security, DWORD disposition,
                   DWORD flags, HANDLE templateFile);
/// Reads `bytes` bytes, or fewer at the end of the file. `read` receives the number of bytes read,
/// on failure those before it.
BOOL ReadFile(HANDLE file, void* buffer, DWORD bytes, DWORD* read, void* overlapped);
/// Writes all `bytes` bytes. `written` receives the number of bytes written, on failure those
/// before it.
BOOL WriteFile(HANDLE file, const void* buffer, DWORD bytes, DWORD* written, void* overlapped);
BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size);
/// Returns when the file's content has reached the disk.
BOOL FlushFileBuffers(HANDLE file);
BOOL CloseHandle(HANDLE file);
/// Renames a file or folder. Without MOVEFILE_REPLACE_EXISTING it fails with ERROR_ALREADY_EXISTS
/// when `to` exists; with MOVEFILE_WRITE_THROUGH it returns when the folder's entry has reached the
/// disk.
BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags);
/// Gives the file `path` a second name, `name`.
BOOL CreateHardLinkW(LPCWSTR name, LPCWSTR path, void* security);
BOOL DeleteFileW(LPCWSTR path);
/// Copies a file's content. An existing `to` is overwritten, or fails with ERROR_FILE_EXISTS if
/// `failIfExists`.
BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists);
/// Creates a folder that only the user can enter. ERROR_PATH_NOT_FOUND when its parent is missing,
/// ERROR_ALREADY_EXISTS when the name is taken.
BOOL CreateDirectoryW(LPCWSTR path, void* security);
/// Removes a folder; ERROR_DIR_NOT_EMPTY when anything is in it.
BOOL RemoveDirectoryW(LPCWSTR path);
/// Changes nothing. Succeeds when the file exists.
BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes);
/// Starts a search for folder\pattern. The pattern is "*.*" (every entry, "." and ".." included) or
/// '*' followed by the end of the name, case-sensitive. Names that are not UTF-8 are skipped.
/// Files have FILE_ATTRIBUTE_ARCHIVE. INVALID_HANDLE_VALUE with ERROR_FILE_NOT_FOUND when nothing
/// matches.
HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* entry);
/// Moves on to the next match, in the file system's order; FALSE with ERROR_NO_MORE_FILES after the
/// last.
BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* entry);
BOOL FindClose(HANDLE search);
/// FILE_ATTRIBUTE_DIRECTORY for a folder, FILE_ATTRIBUTE_NORMAL for a file, INVALID_FILE_ATTRIBUTES
/// on failure.
DWORD GetFileAttributesW(LPCWSTR path);
/// Stores the path of the running program, cut to `size` UTF-16 units, terminator included;
/// `module` is ignored. Returns the length, or `size` when the path was cut.
DWORD GetModuleFileNameW(HINSTANCE module, LPWSTR path, DWORD size);

/// Stores string `id` of the program's string table, cut to `size` UTF-16 units, terminator
/// included; `instance` is ignored. Returns the length stored; 0 with ERROR_RESOURCE_NAME_NOT_FOUND
/// and an empty text when there is no such string.
int LoadStringW(HINSTANCE instance, UINT id, LPWSTR buffer, int size);

/// Formats the string `source` with inserts %1 to %99. `flags` must be FORMAT_MESSAGE_FROM_STRING |
/// FORMAT_MESSAGE_ARGUMENT_ARRAY, and `arguments` an array with an element for every insert.
/// FORMAT_MESSAGE_FROM_SYSTEM fails with ERROR_MR_MID_NOT_FOUND: there are no system messages.
/// Returns the UTF-16 units stored, without the terminator; 0 on failure (no arguments, a bad
/// conversion, an insert over 511 units, a result that does not fit).
DWORD FormatMessageW(DWORD flags, const void* source, DWORD messageId, DWORD languageId,
                     LPWSTR buffer, DWORD size, va_list* arguments);

/// Zeroes memory that holds secrets, in a way that the compiler does not optimise away. Returns
/// `memory`.
void* SecureZeroMemory(void* memory, std::size_t bytes);

// NOLINTEND(readability-identifier-naming)
