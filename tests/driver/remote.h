#pragma once

// Memory and calls inside another process. Needed for messages whose parameters are addresses: the
// system marshals those of its own basic messages only, not those of the common controls and ours.

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace lunara::test {

/// Owns a block of memory in another process, readable, writable and executable there. The process
/// handle is borrowed and must outlive the block.
class RemoteBlock {
  public:
    RemoteBlock(HANDLE ofProcess, std::size_t size);
    RemoteBlock(const RemoteBlock&) = delete;
    RemoteBlock& operator=(const RemoteBlock&) = delete;
    ~RemoteBlock();

    /// The block's address in the other process; null when the allocation failed.
    void* Address() const { return address; }
    /// Copies `size` bytes to or from `offset` bytes into the block; false when not all were
    /// copied.
    bool Write(const void* data, std::size_t size, std::size_t offset = 0);
    bool Read(void* data, std::size_t size, std::size_t offset = 0) const;

  private:
    HANDLE process;
    void* address;
};

/// A thread of ours in another process, which makes one call after the other there.
///
/// One thread serves all calls because starting one is risky under Wine: Wine creates a remote
/// thread by interrupting a thread of the process, and when that one is inside the allocator the
/// creation never returns. Later the waiting visitor is the thread that Wine interrupts.
class Visitor {
  public:
    /// Enters the process, which should be waiting for its next message. When that fails, every
    /// call fails.
    explicit Visitor(HANDLE ofProcess);
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;
    ~Visitor();

    /// Calls a function of user32 with up to four arguments. False when the function is unknown,
    /// the process ends, or the call does not return in time; after that every call fails.
    bool Call(const char* function, const std::array<std::uint64_t, 4>& arguments,
              std::uint64_t& result);
    /// Calls SendMessageW inside the process, where addresses in the parameters are valid.
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

/// Makes GetTickCount64 answer `ms` more than the truth in that process, from now on. The date that
/// a test sets leaves the tick count alone, with which the program measures how long ago something
/// was. Patches the entry of the function in memory; window timers are not affected. At most once
/// for each process. False when it could not be done.
bool AdvanceTicks(HANDLE process, DWORD ms);

}  // namespace lunara::test
