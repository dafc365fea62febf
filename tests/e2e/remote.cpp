#include "tests/e2e/remote.h"

#include <psapi.h>

#include <array>
#include <cstdint>
#include <cwchar>

#include "tests/e2e/wait.h"

namespace lunara::e2e {
namespace {

/// What the inside thread reads and writes; the offsets stand in its code.
struct Call {
    std::uint64_t function;                  // 0x00
    std::array<std::uint64_t, 4> arguments;  // 0x08, 0x10, 0x18, 0x20
    std::uint64_t result;                    // 0x28
};

// A thread procedure: its parameter (rcx) is the address of a Call.
constexpr std::array<std::uint8_t, 40> ThreadCode = {
    0x53,                    // push rbx
    0x48, 0x83, 0xEC, 0x20,  // sub rsp, 32
    0x48, 0x89, 0xCB,        // mov rbx, rcx
    0x48, 0x8B, 0x4B, 0x08,  // mov rcx, [rbx + 0x08]
    0x48, 0x8B, 0x53, 0x10,  // mov rdx, [rbx + 0x10]
    0x4C, 0x8B, 0x43, 0x18,  // mov r8, [rbx + 0x18]
    0x4C, 0x8B, 0x4B, 0x20,  // mov r9, [rbx + 0x20]
    0xFF, 0x13,              // call [rbx]
    0x48, 0x89, 0x43, 0x28,  // mov [rbx + 0x28], rax
    0x31, 0xC0,              // xor eax, eax
    0x48, 0x83, 0xC4, 0x20,  // add rsp, 32
    0x5B,                    // pop rbx
    0xC3,                    // ret
};
constexpr std::size_t CallOffset = 64;

/// Where the process has user32.dll; null when it is not found.
HMODULE FindUser32(HANDLE process) {
    std::array<HMODULE, 256> modules{};
    DWORD bytes = 0;
    if (::EnumProcessModules(process, modules.data(), sizeof modules, &bytes) == 0) {
        return nullptr;
    }
    for (std::size_t i = 0; i < bytes / sizeof(HMODULE) && i < modules.size(); ++i) {
        std::array<WCHAR, MAX_PATH> name{};
        ::GetModuleBaseNameW(process, modules[i], name.data(), static_cast<DWORD>(name.size()));
        if (::lstrcmpiW(name.data(), L"user32.dll") == 0) {
            return modules[i];
        }
    }
    return nullptr;
}

/// Where the process has the function: libraries need not lie at the same place in every process.
std::uint64_t FindFunction(HANDLE process, const char* name) {
    const HMODULE here = ::GetModuleHandleW(L"user32.dll");
    const FARPROC function = ::GetProcAddress(here, name);
    // Looking through all modules takes many calls; one process is asked many times.
    static DWORD lastProcess = 0;
    static HMODULE there = nullptr;
    const DWORD id = ::GetProcessId(process);
    if (id != lastProcess || there == nullptr) {
        lastProcess = id;
        there = FindUser32(process);
    }
    if (function == nullptr || there == nullptr) {
        return 0;
    }
    return reinterpret_cast<std::uintptr_t>(function) - reinterpret_cast<std::uintptr_t>(here) +
           reinterpret_cast<std::uintptr_t>(there);
}

}  // namespace

RemoteBlock::RemoteBlock(HANDLE ofProcess, std::size_t size)
    : process(ofProcess),
      address(::VirtualAllocEx(process, nullptr, size, MEM_COMMIT | MEM_RESERVE,
                               PAGE_EXECUTE_READWRITE)) {}

RemoteBlock::~RemoteBlock() {
    if (address != nullptr) {
        ::VirtualFreeEx(process, address, 0, MEM_RELEASE);
    }
}

bool RemoteBlock::Write(const void* data, std::size_t size, std::size_t offset) {
    SIZE_T done = 0;
    return address != nullptr &&
           ::WriteProcessMemory(process, static_cast<char*>(address) + offset, data, size, &done) !=
               0 &&
           done == size;
}

bool RemoteBlock::Read(void* data, std::size_t size, std::size_t offset) const {
    SIZE_T done = 0;
    return address != nullptr &&
           ::ReadProcessMemory(process, static_cast<const char*>(address) + offset, data, size,
                               &done) != 0 &&
           done == size;
}

bool CallInside(HANDLE process, const char* function, const std::array<std::uint64_t, 4>& arguments,
                std::uint64_t& result) {
    Call call{FindFunction(process, function), arguments, 0};
    RemoteBlock block(process, CallOffset + sizeof call);
    if (call.function == 0 || !block.Write(ThreadCode.data(), ThreadCode.size()) ||
        !block.Write(&call, sizeof call, CallOffset)) {
        return false;
    }
    const auto code = reinterpret_cast<LPTHREAD_START_ROUTINE>(block.Address());
    const HANDLE thread = ::CreateRemoteThread(
        process, nullptr, 0, code, static_cast<char*>(block.Address()) + CallOffset, 0, nullptr);
    if (thread == nullptr) {
        return false;
    }
    const bool ended = ::WaitForSingleObject(thread, PatienceMs) == WAIT_OBJECT_0;
    ::CloseHandle(thread);
    if (!ended || !block.Read(&call, sizeof call, CallOffset)) {
        return false;
    }
    result = call.result;
    return true;
}

bool SendFromInside(HANDLE process, HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                    LRESULT& result) {
    std::uint64_t answer = 0;
    if (!CallInside(process, "SendMessageW",
                    {reinterpret_cast<std::uintptr_t>(window), message, wParam,
                     static_cast<std::uint64_t>(lParam)},
                    answer)) {
        return false;
    }
    result = static_cast<LRESULT>(answer);
    return true;
}

}  // namespace lunara::e2e
