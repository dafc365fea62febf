#pragma once

// The Win32 types and calls of the portable core, for systems that are not Windows.
//
// Paths are UTF-16 with '/' or '\' between folders and become UTF-8 when a file is opened. Every
// call leaves the thread's last error as the platform's does: untouched on success (unless said),
// one of the ERROR_ codes below on failure.

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
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x01;  // never given: renaming asks the folder
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

DWORD GetLastError();
void SetLastError(DWORD error);

/// A day of 1601 to 30827 whose fields form a real date and time; the day of week is not looked at.
/// Anything else, the all-zero structure included, fails and leaves `fileTime` as it was.
BOOL SystemTimeToFileTime(const SYSTEMTIME* systemTime, FILETIME* fileTime);
/// Fails when the top bit of the 64-bit count is set.
BOOL FileTimeToSystemTime(const FILETIME* fileTime, SYSTEMTIME* systemTime);

/// OPEN_EXISTING and CREATE_ALWAYS only; sharing and the template are not looked at. A folder does
/// not open (ERROR_ACCESS_DENIED).
HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, void* security, DWORD disposition,
                   DWORD flags, HANDLE templateFile);
BOOL ReadFile(HANDLE file, void* buffer, DWORD bytes, DWORD* read, void* overlapped);
BOOL WriteFile(HANDLE file, const void* buffer, DWORD bytes, DWORD* written, void* overlapped);
BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size);
BOOL FlushFileBuffers(HANDLE file);
BOOL CloseHandle(HANDLE file);
/// With MOVEFILE_WRITE_THROUGH the folder's entry has reached the disk when the call returns.
BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags);
/// `name` becomes a second name of the file `path`.
BOOL CreateHardLinkW(LPCWSTR name, LPCWSTR path, void* security);
BOOL DeleteFileW(LPCWSTR path);
/// Also copies a file's content over one that is there, unless `failIfExists`.
BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists);
BOOL CreateDirectoryW(LPCWSTR path, void* security);
/// Fails with ERROR_DIR_NOT_EMPTY while something is in the folder.
BOOL RemoveDirectoryW(LPCWSTR path);
/// Succeeds without changing anything when there is such a file.
BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes);
/// A search over folder\pattern; the pattern is "*.*" (everything, "." and ".." included) or '*'
/// and an ending. Names that are not UTF-8 are passed over. Files have the attribute "archive".
HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* entry);
BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* entry);
BOOL FindClose(HANDLE search);
DWORD GetFileAttributesW(LPCWSTR path);
/// `module` must be null: the running program's path. Returns its length, cut at `size`.
DWORD GetModuleFileNameW(HINSTANCE module, LPWSTR path, DWORD size);

/// Looks the id up in the program's one list of strings; `instance` is not looked at.
int LoadStringW(HINSTANCE instance, UINT id, LPWSTR buffer, int size);

/// FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY only; asked for a text of the
/// system's own, it has none (ERROR_MR_MID_NOT_FOUND). Returns the characters stored, 0 on failure
/// (an insert beyond 99, a bad conversion, a text that does not fit).
DWORD FormatMessageW(DWORD flags, const void* source, DWORD messageId, DWORD languageId,
                     LPWSTR buffer, DWORD size, va_list* arguments);

void* SecureZeroMemory(void* memory, std::size_t bytes);

// NOLINTEND(readability-identifier-naming)
