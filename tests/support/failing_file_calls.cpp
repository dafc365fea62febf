#include "tests/support/failing_file_calls.h"

#include <algorithm>
#include <utility>

namespace lunara::test {
namespace {

/// Does to a struck call what its fault says; the call's answer.
BOOL Refuse(const FileFault& fault) {
    if (fault.hook) {
        fault.hook();
    }
    if (fault.error != ERROR_SUCCESS) {
        ::SetLastError(fault.error);
    }
    return FALSE;
}

/// The call's answer, with a last error that has nothing to do with it after a success.
BOOL Answer(BOOL done) {
    if (done != FALSE) {
        ::SetLastError(ERROR_ACCESS_DENIED);
    }
    return done;
}

const char* NameOf(FileCallKind kind) {
    switch (kind) {
        case CreateCall:
            return "create";
        case WriteCall:
            return "write";
        case FlushCall:
            return "flush";
        case CloseCall:
            return "close";
        case ReplaceCall:
            return "replace";
        case RenameCall:
            return "rename";
        case LinkCall:
            return "link";
        case RemoveCall:
            return "remove";
        case MoveFolderCall:
            return "move folder";
        default:
            return "?";
    }
}

}  // namespace

FailingFileCalls::FailingFileCalls() : before(CurrentFileCalls()) { UseFileCalls(this); }

FailingFileCalls::FailingFileCalls(FileFault fault) : FailingFileCalls() { Fail(std::move(fault)); }

FailingFileCalls::~FailingFileCalls() { UseFileCalls(&before); }

void FailingFileCalls::Fail(FileFault fault) { faults.push_back({std::move(fault)}); }

int FailingFileCalls::Count(unsigned kinds) const {
    return static_cast<int>(
        std::count_if(calls.begin(), calls.end(),
                      [kinds](const FileCallMade& call) { return (call.kind & kinds) != 0; }));
}

std::vector<std::string> FailingFileCalls::Steps() const {
    std::vector<std::string> steps;
    for (const FileCallMade& call : calls) {
        std::string step = NameOf(call.kind);
        if (!call.path.empty()) {
            const std::size_t separator = call.path.find_last_of(TEXT("\\/"));
            step.append(1, ' ').append(ToUtf8(WideView(call.path).substr(separator + 1)));
        }
        steps.push_back(std::move(step));
    }
    return steps;
}

HANDLE FailingFileCalls::Create(const WCHAR* path) {
    if (const FileFault* fault = Struck(CreateCall, path)) {
        Refuse(*fault);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE file = FileCalls::Create(path);
    if (file != INVALID_HANDLE_VALUE) {
        openFiles[file] = path;
        Answer(TRUE);
    }
    return file;
}

BOOL FailingFileCalls::Write(HANDLE file, const void* bytes, DWORD count, DWORD& written) {
    const FileFault* fault = Struck(WriteCall, PathOf(file));
    if (fault == nullptr) {
        return Answer(FileCalls::Write(file, bytes, count, written));
    }
    if (fault->write != StruckWrite::NothingAndFails) {
        static_cast<void>(FileCalls::Write(file, bytes, count / 2, written));
    }
    const BOOL refused = Refuse(*fault);
    return fault->write == StruckWrite::HalfAsSuccess ? TRUE : refused;
}

BOOL FailingFileCalls::Flush(HANDLE file) {
    const FileFault* fault = Struck(FlushCall, PathOf(file));
    return fault != nullptr ? Refuse(*fault) : Answer(TRUE);
}

BOOL FailingFileCalls::Close(HANDLE file) {
    const FileFault* fault = Struck(CloseCall, PathOf(file));
    openFiles.erase(file);
    // Closed even when it is struck: an open file would outlive the test.
    const BOOL closed = FileCalls::Close(file);
    return fault != nullptr ? Refuse(*fault) : Answer(closed);
}

BOOL FailingFileCalls::Replace(const WCHAR* from, const WCHAR* to) {
    const FileFault* fault = Struck(ReplaceCall, from);
    return fault != nullptr ? Refuse(*fault) : Answer(FileCalls::Rename(from, to));
}

BOOL FailingFileCalls::Rename(const WCHAR* from, const WCHAR* to) {
    const FileFault* fault = Struck(RenameCall, from);
    return fault != nullptr ? Refuse(*fault) : Answer(FileCalls::Rename(from, to));
}

BOOL FailingFileCalls::Link(const WCHAR* path, const WCHAR* name) {
    const FileFault* fault = Struck(LinkCall, path);
    return fault != nullptr ? Refuse(*fault) : Answer(FileCalls::Link(path, name));
}

BOOL FailingFileCalls::Remove(const WCHAR* path) {
    const FileFault* fault = Struck(RemoveCall, path);
    return fault != nullptr ? Refuse(*fault) : Answer(FileCalls::Remove(path));
}

BOOL FailingFileCalls::MoveFolder(const WCHAR* from, const WCHAR* to) {
    const FileFault* fault = Struck(MoveFolderCall, from);
    return fault != nullptr ? Refuse(*fault) : Answer(FileCalls::MoveFolder(from, to));
}

const FileFault* FailingFileCalls::Struck(FileCallKind kind, WideView path) {
    calls.push_back({kind, WideString(path)});
    const FileFault* struck = nullptr;
    for (SetFault& set : faults) {
        const FileFault& fault = set.fault;
        const bool hasSpread = fault.spreadsToAllFiles && set.seen > fault.at;
        if ((fault.kinds & kind) == 0 || !(hasSpread || path.ends_with(fault.pathEnd))) {
            continue;
        }
        const int since = set.seen - fault.at;
        ++set.seen;
        if (struck == nullptr && since >= 0 && since < fault.times) {
            struck = &fault;
        }
    }
    failures += struck != nullptr ? 1 : 0;
    return struck;
}

WideString FailingFileCalls::PathOf(HANDLE file) const {
    const auto found = openFiles.find(file);
    return found != openFiles.end() ? found->second : WideString();
}

int IndexOfStep(const std::vector<std::string>& steps, const std::string& step) {
    const auto found = std::find(steps.begin(), steps.end(), step);
    return found != steps.end() ? static_cast<int>(found - steps.begin()) : -1;
}

}  // namespace lunara::test
