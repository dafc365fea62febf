#include "platform/posix/win32_posix.h"

namespace {

thread_local DWORD lastError = ERROR_SUCCESS;

}  // namespace

DWORD GetLastError() { return lastError; }

void SetLastError(DWORD error) { lastError = error; }

void* SecureZeroMemory(void* memory, std::size_t bytes) {
    std::memset(memory, 0, bytes);
    // The compiler must take it that the zeros are read, and so cannot leave them out.
    asm volatile("" : : "r"(memory) : "memory");
    return memory;
}
