#pragma once

#include <cstdint>

namespace lunara {

/// Mixes two colours (red in bits 0..7, green 8..15, blue 16..23) channel by channel:
/// c0 * f + c1 * (1 - f), truncated to a whole number. The top byte of the result is 0.
///
/// `f` should be in 0..1. Outside that range (a recorded level above 3, or two ovulation days that
/// add up to a pregnancy weight above 1) each channel is the low 8 bits of the truncated number,
/// not a clamped value. A channel whose number does not fit into 32 bits is 0.
std::uint32_t BlendColor(std::uint32_t c0, std::uint32_t c1, float f);

}  // namespace lunara
