#pragma once

// Fault injection for everything that changes files: a stand-in for the system's file calls that
// lists each call and fails the ones a test chooses. A fault names the kinds of call, the files and
// the index of the call that it strikes, so a test can run an operation once for each call that the
// operation makes, with that call failing, with all from that call on failing (a full disk, a
// program that has stopped), or with the process ended there.

#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "storage/replacement_file.h"

namespace lunara::test {

/// The kinds of file call, as bits of a mask.
enum FileCallKind : unsigned {
    CreateCall = 1U << 0,
    WriteCall = 1U << 1,
    FlushCall = 1U << 2,
    CloseCall = 1U << 3,
    ReplaceCall = 1U << 4,
    RenameCall = 1U << 5,
    LinkCall = 1U << 6,
    RemoveCall = 1U << 7,
    MoveFolderCall = 1U << 8,
    AnyFileCall = (1U << 9) - 1,
};

/// Value of FileFault::times: the fault stays until it is mended.
inline constexpr int FromThereOn = std::numeric_limits<int>::max();

/// What a write that is struck leaves in the file, and what it answers.
enum class StruckWrite {
    HalfThenFails,  ///< the first half of the bytes, rounded down
    HalfAsSuccess,  ///< the same half, reported as a success with the short count
    NothingAndFails,
};

/// Which calls fail, and how. A call counts towards a fault when its kind is in `kinds` and the
/// path of its file ends with `pathEnd`. Write, Flush and Close have the path that their file was
/// created under; Replace, Rename, Link and MoveFolder count under the path they start from.
struct FileFault {
    /// FileCallKind bits.
    unsigned kinds = AnyFileCall;
    /// Empty for every file.
    WideString pathEnd{};
    /// Index, from 0, of the first call to fail among those that count after the fault was set.
    int at = 0;
    /// How many calls in a row fail, >= 1, or FromThereOn.
    int times = 1;
    /// The last error of a failed call. ERROR_SUCCESS leaves the last error as it is, as a call
    /// does that fails without a reason.
    DWORD error = ERROR_DISK_FULL;
    StruckWrite write = StruckWrite::HalfThenFails;
    /// After the first failure calls of `kinds` count whatever their file is: a disk that is full
    /// is full for every file.
    bool spreadsToAllFiles = false;
    /// Runs when a call is struck: after a struck write has left its half, and after a struck Close
    /// has closed the file, before any other kind of call has done anything. A test of a process of
    /// its own ends the process here. The call fails as usual when the hook returns. The hook must
    /// neither add nor mend faults.
    std::function<void()> hook{};
};

/// One call as a test sees it.
struct FileCallMade {
    FileCallKind kind;
    WideString path;  ///< empty for a handle that was not created by these calls
};

/// Replaces the file calls from its construction to its destruction, and then puts back those that
/// were in use. Instances nest; the innermost alone sees the calls.
///
/// A call that is not struck does what the system does, with two differences. Nothing waits for the
/// disk, because a test sees the same files either way and waiting only takes time. And a call that
/// succeeds leaves ERROR_ACCESS_DENIED in the last error, as a system's call may, so that code
/// which reports the last error of a later call instead of the failed one's is found.
class FailingFileCalls : public FileCalls {
  public:
    FailingFileCalls();
    explicit FailingFileCalls(FileFault fault);
    FailingFileCalls(const FailingFileCalls&) = delete;
    FailingFileCalls& operator=(const FailingFileCalls&) = delete;
    ~FailingFileCalls() override;

    /// Adds a fault. Of several that strike the same call the one added first decides.
    void Fail(FileFault fault);
    /// Removes all faults.
    void Mend() { faults.clear(); }

    /// Every call since construction, struck ones included, in order.
    const std::vector<FileCallMade>& Calls() const { return calls; }
    /// Number of calls whose kind is in `kinds`.
    int Count(unsigned kinds = AnyFileCall) const;
    /// How many calls have been struck. A test that runs on until its fault is out of reach checks
    /// by this that the fault was in reach before.
    int Failures() const { return failures; }
    /// Each call in words: "create Bleeding.new", the kind and the name of the file without its
    /// folders, or the kind alone where the file is unknown.
    std::vector<std::string> Steps() const;
    /// How many files are open that were created here.
    int OpenFiles() const { return static_cast<int>(openFiles.size()); }

    HANDLE Create(const WCHAR* path) override;
    BOOL Write(HANDLE file, const void* bytes, DWORD count, DWORD& written) override;
    BOOL Flush(HANDLE file) override;
    BOOL Close(HANDLE file) override;
    BOOL Replace(const WCHAR* from, const WCHAR* to) override;
    BOOL Rename(const WCHAR* from, const WCHAR* to) override;
    BOOL Link(const WCHAR* path, const WCHAR* name) override;
    BOOL Remove(const WCHAR* path) override;
    BOOL MoveFolder(const WCHAR* from, const WCHAR* to) override;

  private:
    struct SetFault {
        FileFault fault;
        int seen = 0;  // calls that counted since it was set
    };

    /// Lists the call; the fault that strikes it, or null.
    const FileFault* Struck(FileCallKind kind, WideView path);
    WideString PathOf(HANDLE file) const;

    FileCalls& before;
    std::vector<SetFault> faults;
    std::vector<FileCallMade> calls;
    int failures = 0;
    std::map<HANDLE, WideString> openFiles;
};

/// Index of the step in `steps`; -1 when it is not among them.
int IndexOfStep(const std::vector<std::string>& steps, const std::string& step);

}  // namespace lunara::test
