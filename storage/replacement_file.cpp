#include "storage/replacement_file.h"

#include <algorithm>

namespace lunara {
namespace {

// Bytes of one call at most: WriteFile counts in 32 bits.
constexpr std::size_t WriteBytes = std::size_t{1} << 30;

FileCalls systemCalls;
FileCalls* currentCalls = &systemCalls;

}  // namespace

HANDLE FileCalls::Create(const WCHAR* path) {
    return ::CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                         nullptr);
}

BOOL FileCalls::Write(HANDLE file, const void* bytes, DWORD count, DWORD& written) {
    return ::WriteFile(file, bytes, count, &written, nullptr);
}

BOOL FileCalls::Flush(HANDLE file) { return ::FlushFileBuffers(file); }

BOOL FileCalls::Close(HANDLE file) { return ::CloseHandle(file); }

BOOL FileCalls::Replace(const WCHAR* from, const WCHAR* to) {
    return ::MoveFileExW(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

BOOL FileCalls::Rename(const WCHAR* from, const WCHAR* to) {
    return ::MoveFileExW(from, to, MOVEFILE_REPLACE_EXISTING);
}

BOOL FileCalls::Link(const WCHAR* path, const WCHAR* name) {
    return ::CreateHardLinkW(name, path, nullptr);
}

BOOL FileCalls::Remove(const WCHAR* path) { return ::DeleteFileW(path); }

BOOL FileCalls::MoveFolder(const WCHAR* from, const WCHAR* to) {
    return ::MoveFileExW(from, to, MOVEFILE_WRITE_THROUGH);
}

FileCalls& CurrentFileCalls() { return *currentCalls; }

void UseFileCalls(FileCalls* calls) { currentCalls = calls != nullptr ? calls : &systemCalls; }

int FailWithReason() {
    if (::GetLastError() == ERROR_SUCCESS) {
        ::SetLastError(ERROR_WRITE_FAULT);
    }
    return 0;
}

WideString SiblingPath(WideView path) {
    constexpr WideView Extension = TEXT(".dat");
    constexpr WideView SiblingExtension = TEXT(".new");
    const bool isDataFile =
        path.size() > Extension.size() && path.substr(path.size() - Extension.size()) == Extension;
    if (isDataFile) {
        path.remove_suffix(Extension.size());
    }
    return WideString(path).append(SiblingExtension);
}

void RemoveWithSibling(const WideString& path) {
    CurrentFileCalls().Remove(path.c_str());
    CurrentFileCalls().Remove(SiblingPath(path).c_str());
}

ReplacementFile::ReplacementFile(WideView target) : ReplacementFile(target, SiblingPath(target)) {}

ReplacementFile::ReplacementFile(WideView target, WideView siblingPath)
    : path(target), sibling(siblingPath) {}

ReplacementFile::~ReplacementFile() {
    const DWORD error = ::GetLastError();
    Close();
    if (toBeRemoved) {
        CurrentFileCalls().Remove(sibling.c_str());
    }
    ::SetLastError(error);
}

int ReplacementFile::Create() {
    ::SetLastError(ERROR_SUCCESS);
    file = CurrentFileCalls().Create(sibling.c_str());
    if (file == INVALID_HANDLE_VALUE) {
        return FailWithReason();
    }
    toBeRemoved = true;
    return 1;
}

int ReplacementFile::Write(const void* bytes, std::size_t count) {
    ::SetLastError(ERROR_SUCCESS);
    const auto* next = static_cast<const char*>(bytes);
    while (count > 0) {
        const auto piece = static_cast<DWORD>(std::min(count, WriteBytes));
        DWORD written = 0;
        if (CurrentFileCalls().Write(file, next, piece, written) == FALSE || written != piece) {
            return FailWithReason();
        }
        next += piece;
        count -= piece;
    }
    return 1;
}

int ReplacementFile::FlushAndClose() {
    ::SetLastError(ERROR_SUCCESS);
    if (CurrentFileCalls().Flush(file) == FALSE || Close() == 0) {
        return FailWithReason();
    }
    return 1;
}

int ReplacementFile::PutInPlace() {
    if (file != INVALID_HANDLE_VALUE && FlushAndClose() == 0) {
        return 0;
    }
    ::SetLastError(ERROR_SUCCESS);
    if (CurrentFileCalls().Replace(sibling.c_str(), path.c_str()) == FALSE) {
        return FailWithReason();
    }
    toBeRemoved = false;
    return 1;
}

int ReplacementFile::Rename() {
    ::SetLastError(ERROR_SUCCESS);
    if (CurrentFileCalls().Rename(sibling.c_str(), path.c_str()) == FALSE) {
        return FailWithReason();
    }
    toBeRemoved = false;
    return 1;
}

int ReplacementFile::Close() {
    if (file == INVALID_HANDLE_VALUE) {
        return 1;
    }
    const HANDLE closing = file;
    file = INVALID_HANDLE_VALUE;  // even a failed close must not be repeated
    ::SetLastError(ERROR_SUCCESS);
    return CurrentFileCalls().Close(closing) != FALSE ? 1 : 0;
}

}  // namespace lunara
