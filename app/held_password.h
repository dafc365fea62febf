#pragma once

// The signed-in user's password while the program runs. It is in clear only between `Unmask` and
// the following `Mask` or `Wipe`.
//
// Masked and wiped are the first 16 characters only; the rest of a longer password stays in clear.
// That looks like a slip, but it is what the mask covers on purpose: do not extend it to all 32.

#include <array>
#include <cstdint>

#include "platform/win32.h"

namespace lunara {

class HeldPassword {
  public:
    static constexpr int Capacity = 32;  // UTF-16 units with the terminator
    static constexpr int MaskedWords = 8;

    HeldPassword() { Wipe(); }
    HeldPassword(const HeldPassword&) = delete;
    HeldPassword& operator=(const HeldPassword&) = delete;
    ~HeldPassword() = default;

    /// Overwrites the masked part with random words, each a fresh one, and clears the mask. No
    /// password is held then.
    void Wipe();
    /// Picks a new mask and lays it over the text. To be called on a text in clear.
    void Mask();
    /// Lays the mask over the text once more. The mask is kept, so a second call undoes the first.
    void Unmask();

    /// Stores a text in clear, cut to 31 characters. It is held until the next `Wipe`.
    void Set(const WCHAR* password);
    /// Whether there is a password to unmask. After a wipe there is only noise, with which nothing
    /// must be enciphered.
    bool IsHeld() const { return held; }
    /// Whether the text in clear is `password`, unit by unit.
    bool Equals(const WCHAR* password) const;

    /// The text as it is now, in clear or masked (then perhaps without a terminator in the first
    /// half; the last unit is always zero).
    const WCHAR* Text() const { return text.data(); }
    std::uint32_t CurrentMask() const { return mask; }

  private:
    std::array<WCHAR, Capacity> text{};
    std::uint32_t mask = 0;
    bool held = false;
};

}  // namespace lunara
