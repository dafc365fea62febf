#include "platform/posix/win32_posix.h"

namespace {

thread_local DWORD lastError = ERROR_SUCCESS;

}  // namespace

DWORD GetLastError() { return lastError; }

void SetLastError(DWORD error) { lastError = error; }

void* SecureZeroMemory(void* memory, std::size_t bytes) {
    auto* byte = static_cast<volatile unsigned char*>(memory);
    while (bytes-- > 0) {
        *byte++ = 0;
    }
    return memory;
}
