#include "tests/driver/remote.h"

#include <psapi.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "tests/driver/wait.h"

namespace lunara::test {
namespace {

/// The mailbox of the visiting thread. The machine code below relies on the offsets.
struct Visit {
    std::uint64_t function;                  // 0x00
    std::array<std::uint64_t, 4> arguments;  // 0x08, 0x10, 0x18, 0x20
    std::uint64_t result;                    // 0x28
    std::uint64_t waitForSingleObject;       // 0x30
    std::uint64_t setEvent;                  // 0x38
    HANDLE request;                          // 0x40
    HANDLE done;                             // 0x48
};

// A thread procedure that waits, calls, signals and repeats until its process ends. Its parameter
// (rcx) is the address of a Visit.
constexpr std::array<std::uint8_t, 51> ThreadCode = {
    0x53,                          // push rbx
    0x48, 0x83, 0xEC, 0x20,        // sub rsp, 32
    0x48, 0x89, 0xCB,              // mov rbx, rcx
    0x48, 0x8B, 0x4B, 0x40,        // next: mov rcx, [rbx + 0x40]
    0xBA, 0xFF, 0xFF, 0xFF, 0xFF,  // mov edx, INFINITE
    0xFF, 0x53, 0x30,              // call [rbx + 0x30]
    0x48, 0x8B, 0x4B, 0x08,        // mov rcx, [rbx + 0x08]
    0x48, 0x8B, 0x53, 0x10,        // mov rdx, [rbx + 0x10]
    0x4C, 0x8B, 0x43, 0x18,        // mov r8, [rbx + 0x18]
    0x4C, 0x8B, 0x4B, 0x20,        // mov r9, [rbx + 0x20]
    0xFF, 0x13,                    // call [rbx]
    0x48, 0x89, 0x43, 0x28,        // mov [rbx + 0x28], rax
    0x48, 0x8B, 0x4B, 0x48,        // mov rcx, [rbx + 0x48]
    0xFF, 0x53, 0x38,              // call [rbx + 0x38]
    0xEB, 0xD5,                    // jmp next
};
constexpr std::size_t VisitOffset = 64;  // of the Visit in the block, behind the code
constexpr WCHAR SystemLibrary[] = L"kernelbase.dll";
constexpr WCHAR WindowLibrary[] = L"user32.dll";

// A function that returns the 32-bit tick count plus a number of milliseconds.
constexpr std::array<std::uint8_t, 26> LaterTicksCode = {
    0x48, 0x83, 0xEC, 0x28,                    // sub rsp, 40
    0x48, 0xB8, 0,    0,    0, 0, 0, 0, 0, 0,  // mov rax, GetTickCount
    0xFF, 0xD0,                                // call rax
    0x05, 0,    0,    0,    0,                 // add eax, ms
    0x48, 0x83, 0xC4, 0x28,                    // add rsp, 40
    0xC3,                                      // ret
};
constexpr std::size_t LaterTicksFunction = 6;
constexpr std::size_t LaterTicksMs = 17;

// Overwrites the first bytes of a function. It cannot run into the next function: those of system
// libraries are aligned to 16 bytes.
constexpr std::array<std::uint8_t, 12> JumpCode = {
    0x48, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0,  // mov rax, target
    0xFF, 0xE0,                          // jmp rax
};
constexpr std::size_t JumpTarget = 2;

/// The library's base address in the process; null when the process has not loaded it.
HMODULE FindLibrary(HANDLE process, const WCHAR* library) {
    std::array<HMODULE, 256> modules{};
    DWORD bytes = 0;
    if (::EnumProcessModules(process, modules.data(), sizeof modules, &bytes) == 0) {
        return nullptr;
    }
    for (std::size_t i = 0; i < bytes / sizeof(HMODULE) && i < modules.size(); ++i) {
        std::array<WCHAR, MAX_PATH> name{};
        ::GetModuleBaseNameW(process, modules[i], name.data(), static_cast<DWORD>(name.size()));
        if (::lstrcmpiW(name.data(), library) == 0) {
            return modules[i];
        }
    }
    return nullptr;
}

/// The function's address in a process that has the library at base address `there`. Base addresses
/// differ between processes, offsets do not. 0 when there is no such function.
std::uint64_t FindFunction(const WCHAR* library, HMODULE there, const char* name) {
    const HMODULE here = ::GetModuleHandleW(library);
    const FARPROC function = ::GetProcAddress(here, name);
    if (function == nullptr || there == nullptr) {
        return 0;
    }
    return reinterpret_cast<std::uintptr_t>(function) - reinterpret_cast<std::uintptr_t>(here) +
           reinterpret_cast<std::uintptr_t>(there);
}

/// Duplicates the event into that process; null when that fails.
HANDLE GiveTo(HANDLE process, HANDLE event) {
    HANDLE given = nullptr;
    ::DuplicateHandle(::GetCurrentProcess(), event, process, &given, 0, FALSE,
                      DUPLICATE_SAME_ACCESS);
    return given;
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

Visitor::Visitor(HANDLE ofProcess)
    : process(ofProcess),
      block(ofProcess, VisitOffset + sizeof(Visit)),
      request(::CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      done(::CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      isWaiting(Enter()) {}

Visitor::~Visitor() {
    ::CloseHandle(request);
    ::CloseHandle(done);
}

bool Visitor::Enter() {
    user32 = FindLibrary(process, WindowLibrary);
    const HMODULE system = FindLibrary(process, SystemLibrary);
    Visit visit{};
    visit.waitForSingleObject = FindFunction(SystemLibrary, system, "WaitForSingleObject");
    visit.setEvent = FindFunction(SystemLibrary, system, "SetEvent");
    visit.request = GiveTo(process, request);
    visit.done = GiveTo(process, done);
    if (visit.waitForSingleObject == 0 || visit.setEvent == 0 || visit.request == nullptr ||
        visit.done == nullptr || !block.Write(ThreadCode.data(), ThreadCode.size()) ||
        !block.Write(&visit, sizeof visit, VisitOffset)) {
        return false;
    }
    const auto code = reinterpret_cast<LPTHREAD_START_ROUTINE>(block.Address());
    const HANDLE thread = ::CreateRemoteThread(
        process, nullptr, 0, code, static_cast<char*>(block.Address()) + VisitOffset, 0, nullptr);
    ::CloseHandle(thread);
    return thread != nullptr;
}

bool Visitor::Call(const char* function, const std::array<std::uint64_t, 4>& arguments,
                   std::uint64_t& result) {
    const struct {
        std::uint64_t function;
        std::array<std::uint64_t, 4> arguments;
    } call{FindFunction(WindowLibrary, user32, function), arguments};
    if (!isWaiting || call.function == 0 || !block.Write(&call, sizeof call, VisitOffset)) {
        return false;
    }
    ::SetEvent(request);
    // A call that does not return keeps the only thread, so that no further call is possible.
    const std::array<HANDLE, 2> ends = {done, process};
    isWaiting = ::WaitForMultipleObjects(static_cast<DWORD>(ends.size()), ends.data(), FALSE,
                                         PatienceMs) == WAIT_OBJECT_0;
    return isWaiting && block.Read(&result, sizeof result, VisitOffset + offsetof(Visit, result));
}

bool Visitor::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    std::uint64_t answer = 0;
    if (!Call("SendMessageW",
              {reinterpret_cast<std::uintptr_t>(window), message, wParam,
               static_cast<std::uint64_t>(lParam)},
              answer)) {
        return false;
    }
    result = static_cast<LRESULT>(answer);
    return true;
}

bool AdvanceTicks(HANDLE process, DWORD ms) {
    // Programs link kernel32; kernelbase may hold other functions of the same names.
    constexpr WCHAR Library[] = L"kernel32.dll";
    const HMODULE there = FindLibrary(process, Library);
    const std::uint64_t asked = FindFunction(Library, there, "GetTickCount64");
    const std::uint64_t untouched = FindFunction(Library, there, "GetTickCount");
    // Never freed: the process's patched GetTickCount64 jumps to this code until the process ends.
    void* const later = ::VirtualAllocEx(process, nullptr, LaterTicksCode.size(),
                                         MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
    if (asked == 0 || untouched == 0 || later == nullptr) {
        return false;
    }
    auto ticks = LaterTicksCode;
    std::memcpy(ticks.data() + LaterTicksFunction, &untouched, sizeof untouched);
    std::memcpy(ticks.data() + LaterTicksMs, &ms, sizeof ms);
    auto jump = JumpCode;
    std::memcpy(jump.data() + JumpTarget, &later, sizeof later);
    const auto entry = reinterpret_cast<void*>(asked);
    DWORD before = 0;
    SIZE_T written = 0;
    return ::WriteProcessMemory(process, later, ticks.data(), ticks.size(), &written) != 0 &&
           ::VirtualProtectEx(process, entry, jump.size(), PAGE_EXECUTE_READWRITE, &before) != 0 &&
           ::WriteProcessMemory(process, entry, jump.data(), jump.size(), &written) != 0 &&
           ::VirtualProtectEx(process, entry, jump.size(), before, &before) != 0 &&
           ::FlushInstructionCache(process, entry, jump.size()) != 0;
}

}  // namespace lunara::test
