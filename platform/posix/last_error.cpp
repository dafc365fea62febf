#include "platform/posix/win32_posix.h"

namespace {

thread_local DWORD lastError = ERROR_SUCCESS;

}  // namespace

DWORD GetLastError() { return lastError; }

void SetLastError(DWORD error) { lastError = error; }

void* SecureZeroMemory(void* memory, std::size_t bytes) {
    std::memset(memory, 0, bytes);
    // The empty statement claims to read `memory`, so the compiler cannot remove the memset as a
    // dead store.
    asm volatile("" : : "r"(memory) : "memory");
    return memory;
}
