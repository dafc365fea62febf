#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <string>

#include "platform/posix/native_path.h"
#include "platform/posix/win32_posix.h"
#include "platform/text.h"

std::string lunara::NativePath(LPCWSTR path) {
    std::string bytes = ToUtf8(path);
    for (char& byte : bytes) {
        if (byte == '\\') {
            byte = '/';
        }
    }
    return bytes;
}

namespace {

using lunara::NativePath;

/// The ERROR_ code for an errno value; `otherwise` for a value without a counterpart.
DWORD ErrorOf(int number, DWORD otherwise) {
    switch (number) {
        case ENOENT:
            return ERROR_FILE_NOT_FOUND;
        case ENOTDIR:
            return ERROR_PATH_NOT_FOUND;
        case EACCES:
        case EPERM:
        case EISDIR:
        case EROFS:
            return ERROR_ACCESS_DENIED;
        case EEXIST:
            return ERROR_ALREADY_EXISTS;
        case ENAMETOOLONG:
            return ERROR_FILENAME_EXCED_RANGE;
        case ENOSPC:
        case EDQUOT:
            return ERROR_DISK_FULL;
        case EBADF:
            return ERROR_INVALID_HANDLE;
        default:
            return otherwise;
    }
}

/// Sets the last error from errno (see ErrorOf) and returns FALSE.
BOOL Fail(DWORD otherwise) {
    SetLastError(ErrorOf(errno, otherwise));
    return FALSE;
}

/// A handle is the descriptor plus 1, so that descriptor 0 does not become a null handle.
HANDLE HandleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(descriptor) + 1);
}

int DescriptorOf(HANDLE file) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(file) - 1);
}

bool IsFolder(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

/// Flushes the folder of `path` to the disk, so that a rename in it survives a power failure.
/// Ignores errors.
void FlushFolderOf(const std::string& path) {
    const std::size_t last = path.find_last_of('/');
    const std::string folder = last == std::string::npos ? "." : path.substr(0, last + 1);
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

}  // namespace

HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD /*share*/, void* /*security*/,
                   DWORD disposition, DWORD /*flags*/, HANDLE /*templateFile*/) {
    int mode = (access & GENERIC_WRITE) == 0  ? O_RDONLY
               : (access & GENERIC_READ) == 0 ? O_WRONLY
                                              : O_RDWR;
    if (disposition == CREATE_ALWAYS) {
        mode |= O_CREAT | O_TRUNC;
    }
    const int descriptor = ::open(NativePath(path).c_str(), mode | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        Fail(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    if (IsFolder(descriptor)) {
        ::close(descriptor);
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    return HandleOf(descriptor);
}

BOOL ReadFile(HANDLE file, void* buffer, DWORD bytes, DWORD* read, void* /*overlapped*/) {
    *read = 0;
    while (*read < bytes) {
        const ssize_t got =
            ::read(DescriptorOf(file), static_cast<char*>(buffer) + *read, bytes - *read);
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            return Fail(ERROR_READ_FAULT);
        }
        if (got == 0) {
            break;
        }
        *read += static_cast<DWORD>(got);
    }
    return TRUE;
}

BOOL WriteFile(HANDLE file, const void* buffer, DWORD bytes, DWORD* written, void* /*overlapped*/) {
    *written = 0;
    while (*written < bytes) {
        const ssize_t put = ::write(DescriptorOf(file), static_cast<const char*>(buffer) + *written,
                                    bytes - *written);
        if (put < 0) {
            if (errno == EINTR) {
                continue;
            }
            return Fail(ERROR_WRITE_FAULT);
        }
        *written += static_cast<DWORD>(put);
    }
    return TRUE;
}

BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size) {
    struct stat status {};
    if (::fstat(DescriptorOf(file), &status) != 0) {
        return Fail(ERROR_INVALID_HANDLE);
    }
    size->QuadPart = status.st_size;
    return TRUE;
}

BOOL FlushFileBuffers(HANDLE file) {
    return ::fsync(DescriptorOf(file)) == 0 ? TRUE : Fail(ERROR_WRITE_FAULT);
}

BOOL CloseHandle(HANDLE file) {
    return ::close(DescriptorOf(file)) == 0 ? TRUE : Fail(ERROR_INVALID_HANDLE);
}

BOOL MoveFileExW(LPCWSTR from, LPCWSTR to, DWORD flags) {
    const std::string source = NativePath(from);
    const std::string target = NativePath(to);
    if ((flags & MOVEFILE_REPLACE_EXISTING) == 0 && ::access(target.c_str(), F_OK) == 0) {
        SetLastError(ERROR_ALREADY_EXISTS);
        return FALSE;
    }
    if (::rename(source.c_str(), target.c_str()) != 0) {
        return Fail(ERROR_ACCESS_DENIED);
    }
    if ((flags & MOVEFILE_WRITE_THROUGH) != 0) {
        FlushFolderOf(target);
    }
    return TRUE;
}

BOOL CreateHardLinkW(LPCWSTR name, LPCWSTR path, void* /*security*/) {
    return ::link(NativePath(path).c_str(), NativePath(name).c_str()) == 0
               ? TRUE
               : Fail(ERROR_ACCESS_DENIED);
}

BOOL DeleteFileW(LPCWSTR path) {
    return ::unlink(NativePath(path).c_str()) == 0 ? TRUE : Fail(ERROR_ACCESS_DENIED);
}

BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists) {
    const int source = ::open(NativePath(from).c_str(), O_RDONLY | O_CLOEXEC);
    if (source < 0) {
        return Fail(ERROR_ACCESS_DENIED);
    }
    if (IsFolder(source)) {
        ::close(source);
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    const int mode = O_WRONLY | O_CREAT | O_CLOEXEC | (failIfExists != FALSE ? O_EXCL : O_TRUNC);
    const int target = ::open(NativePath(to).c_str(), mode, 0600);
    if (target < 0) {
        const int number = errno;
        ::close(source);
        SetLastError(failIfExists != FALSE && number == EEXIST
                         ? ERROR_FILE_EXISTS
                         : ErrorOf(number, ERROR_ACCESS_DENIED));
        return FALSE;
    }
    std::array<char, 65536> bytes{};
    BOOL copied = TRUE;
    DWORD got = 0;
    do {
        DWORD put = 0;
        copied = ReadFile(HandleOf(source), bytes.data(), static_cast<DWORD>(bytes.size()), &got,
                          nullptr) != FALSE &&
                         (got == 0 ||
                          WriteFile(HandleOf(target), bytes.data(), got, &put, nullptr) != FALSE)
                     ? TRUE
                     : FALSE;
    } while (copied != FALSE && got != 0);
    ::close(source);
    return ::close(target) == 0 || copied == FALSE ? copied : Fail(ERROR_WRITE_FAULT);
}

BOOL RemoveDirectoryW(LPCWSTR path) {
    if (::rmdir(NativePath(path).c_str()) == 0) {
        return TRUE;
    }
    if (errno == ENOTEMPTY) {
        SetLastError(ERROR_DIR_NOT_EMPTY);
        return FALSE;
    }
    return Fail(ERROR_ACCESS_DENIED);
}

BOOL SetFileAttributesW(LPCWSTR path, DWORD /*attributes*/) {
    return ::access(NativePath(path).c_str(), F_OK) == 0 ? TRUE : Fail(ERROR_ACCESS_DENIED);
}

BOOL CreateDirectoryW(LPCWSTR path, void* /*security*/) {
    if (::mkdir(NativePath(path).c_str(), 0700) == 0) {
        return TRUE;
    }
    if (errno == ENOENT) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return FALSE;
    }
    return Fail(ERROR_ACCESS_DENIED);
}

DWORD GetFileAttributesW(LPCWSTR path) {
    struct stat status {};
    if (::stat(NativePath(path).c_str(), &status) != 0) {
        Fail(ERROR_ACCESS_DENIED);
        return INVALID_FILE_ATTRIBUTES;
    }
    return S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
}

DWORD GetModuleFileNameW(HINSTANCE /*module*/, LPWSTR path, DWORD size) {
    std::string bytes(4096, '\0');
    const ssize_t length = ::readlink("/proc/self/exe", bytes.data(), bytes.size());
    bytes.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    const lunara::WideString wide = lunara::FromUtf8(bytes).value_or(lunara::WideString());
    lunara::CopyText(path, size, wide);
    return wide.size() < size ? static_cast<DWORD>(wide.size()) : size;
}
