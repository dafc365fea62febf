#pragma once

// A file that is written whole beside the one that it replaces, so that whatever stops the program
// or the machine, the old file or the new one is there under its name.

#include <cstddef>

#include "platform/text.h"

namespace lunara {

/// The system calls that change files. Tests put in others, to make each step fail.
class FileCalls {
  public:
    FileCalls() = default;
    FileCalls(const FileCalls&) = delete;
    FileCalls& operator=(const FileCalls&) = delete;
    virtual ~FileCalls() = default;

    // As the system's calls of the same name, with its last error.
    virtual HANDLE Create(const WCHAR* path);
    virtual BOOL Write(HANDLE file, const void* bytes, DWORD count, DWORD& written);
    virtual BOOL Flush(HANDLE file);
    virtual BOOL Close(HANDLE file);
    /// Renames over what is there, and has reached the disk when it returns.
    virtual BOOL Replace(const WCHAR* from, const WCHAR* to);
    /// The same without waiting for the disk, which takes up renames in their order.
    virtual BOOL Rename(const WCHAR* from, const WCHAR* to);
    /// A second name for a file; not every file system has that.
    virtual BOOL Link(const WCHAR* path, const WCHAR* name);
    virtual BOOL Remove(const WCHAR* path);
    /// Renames a folder to a name that nothing has, and has reached the disk when it returns.
    virtual BOOL MoveFolder(const WCHAR* from, const WCHAR* to);
};

/// The calls in use.
FileCalls& CurrentFileCalls();

/// From here on `calls` are used, or the system's own when null.
void UseFileCalls(FileCalls* calls);

/// 0, with the last error kept, or ERROR_WRITE_FAULT for a call that failed without a reason or
/// stopped half-way.
int FailWithReason();

/// The name under which the new content of `path` is written: ".new" in place of ".dat", or behind
/// any other name. It is no longer than the name of a data file, so that it fits where that does.
WideString SiblingPath(WideView path);

class ReplacementFile {
  public:
    explicit ReplacementFile(WideView target);
    /// The same with a name of its own for the sibling.
    ReplacementFile(WideView target, WideView siblingPath);
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;
    /// A file that was not put in place is removed; the last error stays.
    ~ReplacementFile();

    // Each is called only after the one before it returned 1. 0 on failure with the system's error,
    // never 0, in the last error.
    int Create();
    int Write(const void* bytes, std::size_t count);
    /// Flushes the new file to the disk and closes it, under its sibling's name.
    int Complete();
    /// Completes the file unless that was done, and gives it the old one's name, on the disk too.
    int PutInPlace();
    /// Gives the completed file the old one's name without waiting for the disk.
    int Rename();

    /// A file that is not put in place stays behind.
    void Keep() { toBeRemoved = false; }

  private:
    int Close();

    WideString path;
    WideString sibling;
    HANDLE file = INVALID_HANDLE_VALUE;
    bool toBeRemoved = false;
};

}  // namespace lunara
