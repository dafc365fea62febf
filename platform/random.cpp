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
    // The generator of the one library that is loaded anyway: the newer one would add two libraries
    // to every start for a handful of words. It is documented not to fail.
    ::RtlGenRandom(&word, sizeof(word));
#else
    // A request this short is neither interrupted nor cut.
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
