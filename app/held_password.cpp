#include "app/held_password.h"

#include <algorithm>
#include <cstring>

#include "platform/random.h"
#include "platform/text.h"

namespace lunara {
namespace {

static_assert(HeldPassword::MaskedWords * sizeof(std::uint32_t) <=
              HeldPassword::Capacity * sizeof(WCHAR));

/// Replaces each of the MaskedWords 32-bit words at the start of `text` by `change`(word).
template <typename Change>
void ChangeWords(WCHAR* text, Change change) {
    for (int i = 0; i < HeldPassword::MaskedWords; ++i) {
        WCHAR* place = text + static_cast<std::size_t>(i) * (sizeof(std::uint32_t) / sizeof(WCHAR));
        std::uint32_t word = 0;
        std::memcpy(&word, place, sizeof(word));
        word = change(word);
        std::memcpy(place, &word, sizeof(word));
    }
}

}  // namespace

void HeldPassword::Wipe() {
    mask = 0;
    held = false;
    ChangeWords(text.data(), [](std::uint32_t) { return RandomWord(); });
}

void HeldPassword::Mask() {
    mask = RandomWord();
    ApplyMask();
}

void HeldPassword::ApplyMask() {
    ChangeWords(text.data(), [this](std::uint32_t word) { return word ^ mask; });
}

void HeldPassword::Set(const WCHAR* password) {
    CopyText(text.data(), text.size(), password);
    held = true;
}

bool HeldPassword::Equals(const WCHAR* password) const {
    return WideView(text.data()) == WideView(password);
}

}  // namespace lunara
