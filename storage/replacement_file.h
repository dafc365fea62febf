#pragma once

// Replaces a file as a whole. The new content is written to a sibling file, flushed and closed, and
// then renamed over the old one. Whenever the program or the machine stops, the old file or the new
// one has the name, never a partly written one. All calls that change files go through `FileCalls`,
// so that tests can make each of them fail.

#include <cstddef>

#include "platform/text.h"

namespace lunara {

/// The system's calls that change files. Results and last errors are those of the Win32 calls.
class FileCalls {
  public:
    FileCalls() = default;
    FileCalls(const FileCalls&) = delete;
    FileCalls& operator=(const FileCalls&) = delete;
    virtual ~FileCalls() = default;

    /// Creates the file, or empties it, for writing, with no sharing. INVALID_HANDLE_VALUE on
    /// failure.
    [[nodiscard]] virtual HANDLE Create(const WCHAR* path);
    [[nodiscard]] virtual BOOL Write(HANDLE file, const void* bytes, DWORD count, DWORD& written);
    [[nodiscard]] virtual BOOL Flush(HANDLE file);
    virtual BOOL Close(HANDLE file);
    /// Renames a file, replacing one of that name, and returns once that is on the disk.
    virtual BOOL Replace(const WCHAR* from, const WCHAR* to);
    /// Renames a file, replacing one of that name, without waiting for the disk. Renames reach the
    /// disk in the order of the calls.
    virtual BOOL Rename(const WCHAR* from, const WCHAR* to);
    /// Gives the file at `path` the second name `name`. Fails where the file system has no hard
    /// links.
    virtual BOOL Link(const WCHAR* path, const WCHAR* name);
    virtual BOOL Remove(const WCHAR* path);
    /// Renames a folder to a name that is not taken and returns once that is on the disk.
    virtual BOOL MoveFolder(const WCHAR* from, const WCHAR* to);
};

/// The calls that the program uses: the system's, unless `UseFileCalls` has replaced them.
FileCalls& CurrentFileCalls();

/// Replaces the system's calls by `calls`, which must outlive their use; null restores the
/// system's.
void UseFileCalls(FileCalls* calls);

/// Returns 0 and makes sure that the last error is not 0: sets ERROR_WRITE_FAULT when a call failed
/// without setting one, or wrote only a part.
int FailWithReason();

/// The name of the sibling file that takes the new content of `path`: ".new" in place of ".dat",
/// or behind any other name. A data file's sibling has a path of the same length, so it fits
/// wherever the data file fits.
WideString SiblingPath(WideView path);

/// Deletes the file and its sibling, because a sibling left by a crash may hold data that the user
/// has deleted since. Failures are ignored.
void RemoveWithSibling(const WideString& path);

/// One replacement. Call `Create`, `Write` as often as needed, `FlushAndClose`, then `PutInPlace`
/// or `Rename`, each only after the one before it returned 1. Each returns 0 on failure, with the
/// system's error, never 0, in the last error.
class ReplacementFile {
  public:
    /// Replaces `target`, which need not exist.
    explicit ReplacementFile(WideView target);
    /// Replaces `target` by way of the sibling file `siblingPath`, which must be on the same
    /// volume.
    ReplacementFile(WideView target, WideView siblingPath);
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;
    /// Deletes a sibling that was created and not put in place. Keeps the last error.
    ~ReplacementFile();

    /// Creates the sibling, or empties one that a crash left.
    [[nodiscard]] int Create();
    [[nodiscard]] int Write(const void* bytes, std::size_t count);
    /// Flushes the sibling to the disk and closes it.
    [[nodiscard]] int FlushAndClose();
    /// Renames the sibling over the target and returns once that is on the disk. Flushes and closes
    /// it first if that has not been done.
    [[nodiscard]] int PutInPlace();
    /// Renames the closed sibling over the target without waiting for the disk.
    [[nodiscard]] int Rename();

    /// Keeps the destructor from deleting the sibling; the next `MendDataFiles` needs it.
    void Keep() { toBeRemoved = false; }

  private:
    int Close();

    WideString path;
    WideString sibling;
    HANDLE file = INVALID_HANDLE_VALUE;
    bool toBeRemoved = false;
};

}  // namespace lunara
