#pragma once

// Memory and calls inside another process: for the messages whose parameters are addresses, which
// the system does not carry from one process to another.

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace lunara::e2e {

/// A block of memory of another process, readable, writable and executable there; freed at the end.
class RemoteBlock {
  public:
    RemoteBlock(HANDLE ofProcess, std::size_t size);
    RemoteBlock(const RemoteBlock&) = delete;
    RemoteBlock& operator=(const RemoteBlock&) = delete;
    ~RemoteBlock();

    /// Null when it could not be had.
    void* Address() const { return address; }
    bool Write(const void* data, std::size_t size, std::size_t offset = 0);
    bool Read(void* data, std::size_t size, std::size_t offset = 0) const;

  private:
    HANDLE process;
    void* address;
};

/// A thread of ours in another process, which makes calls there. One for all calls: Wine starts a
/// thread for somebody else on the back of whatever the process is doing, and never comes back when
/// that is to get memory. While this one waits for its next call, it is the one that Wine disturbs.
class Visitor {
  public:
    /// The process should be waiting for its next message.
    explicit Visitor(HANDLE ofProcess);
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;
    ~Visitor();

    /// A function of user32 with up to four arguments. False when it did not come to its end.
    bool Call(const char* function, const std::array<std::uint64_t, 4>& arguments,
              std::uint64_t& result);
    /// SendMessageW, so that the addresses in the parameters mean something there.
    bool Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

  private:
    bool Enter();

    HANDLE process;
    RemoteBlock block;
    HANDLE request;
    HANDLE done;
    HMODULE user32 = nullptr;
    bool isWaiting = false;
};

/// From now on GetTickCount64 answers that process `ms` more than it is. The date that the tests
/// set leaves the tick count alone, by which the program measures how long ago something was.
/// Windows' own timers are not touched, and neither is the program. Once per process.
bool AdvanceTicks(HANDLE process, DWORD ms);

}  // namespace lunara::e2e
