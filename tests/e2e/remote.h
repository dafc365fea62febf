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

/// A function of user32 with up to four arguments, called by a thread of that process. False when
/// the thread could not be run to its end.
bool CallInside(HANDLE process, const char* function, const std::array<std::uint64_t, 4>& arguments,
                std::uint64_t& result);

/// SendMessageW called by a thread of the window's own process, so that the addresses in the
/// parameters mean something there. False when the thread could not be run to its end.
bool SendFromInside(HANDLE process, HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                    LRESULT& result);

}  // namespace lunara::e2e
