#pragma once

#include <cstdint>

namespace lunara {

/// Mixes two colours (red in bits 0..7, green 8..15, blue 16..23) channel by channel: `f` parts of
/// `c0`, the rest of `c1`, cut to a whole number. The top byte of the result is 0.
///
/// `f` is meant to be 0..1. Outside it (a recorded level above 3, two ovulation days that add up to
/// a pregnancy weight above 1) each channel keeps the low 8 bits of its whole number.
std::uint32_t BlendColor(std::uint32_t c0, std::uint32_t c1, float f);

}  // namespace lunara
