#pragma once

// The one place that asks the system for random words. Tests set it.

#include <cstdint>

namespace lunara {

/// 32 bits from the system's generator, fit for masking secrets.
std::uint32_t RandomWord();

/// From here on `RandomWord` answers what `source` answers; null asks the system again.
void SetRandomSource(std::uint32_t (*source)());

}  // namespace lunara
