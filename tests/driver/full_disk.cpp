// Simulates a full disk for the programs under test. Preloaded into Wine by scripts/e2e.sh, it
// fails writes to certain files with ENOSPC, as the kernel does on a full disk. While the file
// named by LUNARA_E2E_FULL_DISK_HOST exists, these are the files whose path contains its content.
//
// Built for the host, not for Windows. Mounting a small disk instead would take privileges that not
// every machine grants.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

/// The part of the paths, read into `buffer`; empty when no disk is full.
std::string_view FullPart(std::array<char, 512>& buffer) {
    const char* path = std::getenv("LUNARA_E2E_FULL_DISK_HOST");
    const int file = path == nullptr ? -1 : ::open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return {};
    }
    const ssize_t length = ::read(file, buffer.data(), buffer.size());
    ::close(file);
    return {buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

bool IsOnFullDisk(int file) {
    const int error = errno;
    std::array<char, 512> buffer{};
    const std::string_view part = FullPart(buffer);
    bool full = false;
    if (!part.empty()) {
        std::array<char, 4096> path{};
        const std::string link = "/proc/self/fd/" + std::to_string(file);
        const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
        full = length > 0 &&
               std::string_view(path.data(), static_cast<std::size_t>(length)).find(part) !=
                   std::string_view::npos;
    }
    errno = error;
    return full;
}

/// The next definition of a function in the search order: the one that ours interposes.
template <typename Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

ssize_t DiskFull() {
    errno = ENOSPC;
    return -1;
}

}  // namespace

extern "C" {

ssize_t write(int file, const void* bytes, size_t count) {
    static auto* const next = Next<ssize_t(int, const void*, size_t)>("write");
    return IsOnFullDisk(file) ? DiskFull() : next(file, bytes, count);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
    static auto* const next = Next<ssize_t(int, const void*, size_t, off_t)>("pwrite");
    return IsOnFullDisk(file) ? DiskFull() : next(file, bytes, count, offset);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t offset) {
    static auto* const next = Next<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
    return IsOnFullDisk(file) ? DiskFull() : next(file, bytes, count, offset);
}

}  // extern "C"
