#pragma once

// The signed-in user's password while the program runs. It is kept XORed with a random mask, and is
// in clear only from `Set` or `Unmask` to the next `Mask` or `Wipe`.
//
// `Mask` and `Wipe` cover the first 16 characters only; the rest of a longer password stays in
// clear. That is deliberate: do not extend them to all 32.

#include <array>
#include <cstdint>

#include "platform/win32.h"

namespace lunara {

class HeldPassword {
  public:
    static constexpr int Capacity = 32;    // UTF-16 units, terminator included
    static constexpr int MaskedWords = 8;  // 32-bit words, 16 UTF-16 units

    /// Starts wiped, with no password held.
    HeldPassword() { Wipe(); }
    HeldPassword(const HeldPassword&) = delete;
    HeldPassword& operator=(const HeldPassword&) = delete;
    ~HeldPassword() = default;

    /// Forgets the password: overwrites each of the MaskedWords words with a fresh random one and
    /// sets the mask to 0.
    void Wipe();
    /// Masks the text with a new random mask. Precondition: the text is in clear; masked a second
    /// time, it could never be unmasked.
    void Mask();
    /// Puts a masked text in clear; the mask is kept. Applied to a text in clear it masks the text,
    /// because masking is an XOR that undoes itself.
    void Unmask() { ApplyMask(); }

    /// Stores `password` in clear, cut to 31 characters, and marks it held until the next `Wipe`.
    void Set(const WCHAR* password);
    /// Whether a password was set since the last `Wipe`. If not, the text is random noise and must
    /// not be used to encipher anything.
    bool IsHeld() const { return held; }
    /// Whether the text equals `password`, unit by unit. Precondition: the text is in clear.
    bool Equals(const WCHAR* password) const;

    /// The text as it is stored now, in clear or masked. A masked text may lack its terminator in
    /// the first 16 units; the last unit is always 0.
    const WCHAR* Text() const { return text.data(); }
    /// The mask of the last `Mask`; 0 after `Wipe`.
    std::uint32_t CurrentMask() const { return mask; }

  private:
    /// XORs the masked words with the mask.
    void ApplyMask();

    std::array<WCHAR, Capacity> text{};
    std::uint32_t mask = 0;
    bool held = false;
};

/// Holds the password in clear for one scope; a new mask covers it at the end.
class ClearPasswordScope {
  public:
    /// `held` must hold a masked password.
    explicit ClearPasswordScope(HeldPassword& held) : password(held) { password.Unmask(); }
    ClearPasswordScope(const ClearPasswordScope&) = delete;
    ClearPasswordScope& operator=(const ClearPasswordScope&) = delete;
    ~ClearPasswordScope() { password.Mask(); }

  private:
    HeldPassword& password;
};

}  // namespace lunara
