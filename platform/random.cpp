#include "platform/random.h"

#include "platform/win32.h"

#ifdef _WIN32
#include <ntsecapi.h>
#else
#include <sys/random.h>
#endif

namespace lunara {
namespace {

std::uint32_t SystemWord() {
    std::uint32_t word = 0;
#ifdef _WIN32
    // RtlGenRandom lies in a library that is loaded already; BCryptGenRandom would add two
    // libraries to every start for a handful of words. The result is not checked: from Windows 10
    // on the call behaves like ProcessPrng, which always succeeds.
    ::RtlGenRandom(&word, sizeof(word));
#else
    // Requests up to 256 bytes are neither interrupted by signals nor cut short.
    [[maybe_unused]] const auto got = ::getrandom(&word, sizeof(word), 0);
#endif
    return word;
}

std::uint32_t (*currentSource)() = &SystemWord;

}  // namespace

std::uint32_t RandomWord() { return currentSource(); }

void SetRandomSource(std::uint32_t (*source)()) {
    currentSource = source != nullptr ? source : &SystemWord;
}

}  // namespace lunara
