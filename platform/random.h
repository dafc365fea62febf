#pragma once

// The only place that asks the system for random words, so that tests can set them.

#include <cstdint>

namespace lunara {

/// Returns 32 bits from the system's generator, good enough to mask secrets.
std::uint32_t RandomWord();

/// Makes `RandomWord` return the words of `source`; null restores the system's generator.
void SetRandomSource(std::uint32_t (*source)());

}  // namespace lunara
