// The password held while the program runs: masking, wiping, comparing.

#include "app/held_password.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/random.h"

namespace lunara::test {
namespace {

constexpr std::size_t MaskedUnits = 16;
constexpr WCHAR LongPassword[] = TEXT("abcdefghijklmnopqrstuvwxyz12345");  // 31 characters

std::uint32_t nextWord = 0;

/// Returns 0x11111111, 0x22222222, ...: every word differs, and none is zero.
std::uint32_t CountingSource() { return ++nextWord * 0x11111111U; }

class HeldPassword : public testing::Test {
  protected:
    void SetUp() override {
        nextWord = 0;
        SetRandomSource(&CountingSource);
    }
    void TearDown() override { SetRandomSource(nullptr); }

    static std::wstring Units(const lunara::HeldPassword& password) {
        return {password.Text(), lunara::HeldPassword::Capacity};
    }
};

TEST_F(HeldPassword, HoldsTheTextInClearUntilItIsMasked) {
    lunara::HeldPassword password;
    password.Set(TEXT("secret"));
    EXPECT_STREQ(password.Text(), TEXT("secret"));
    EXPECT_TRUE(password.Equals(TEXT("secret")));
    password.Mask();
    EXPECT_STRNE(password.Text(), TEXT("secret"));
    EXPECT_FALSE(password.Equals(TEXT("secret")));
    password.Unmask();
    EXPECT_TRUE(password.Equals(TEXT("secret")));
}

TEST_F(HeldPassword, ComparesUnitByUnit) {
    const struct {
        const char* label;
        const WCHAR* typed;
        bool equal;
    } rows[] = {
        {"the same", TEXT("secret"), true}, {"other case", TEXT("Secret"), false},
        {"shorter", TEXT("secre"), false},  {"longer", TEXT("secrets"), false},
        {"nothing", TEXT(""), false},       {"trailing blank", TEXT("secret "), false},
    };
    lunara::HeldPassword password;
    password.Set(TEXT("secret"));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(password.Equals(row.typed), row.equal);
    }
}

TEST_F(HeldPassword, MaskCoversTheFirstSixteenUnitsAndNoMore) {
    lunara::HeldPassword password;
    password.Set(LongPassword);
    const std::wstring clear = Units(password);
    password.Mask();
    const std::wstring masked = Units(password);
    const std::uint32_t mask = password.CurrentMask();
    for (std::size_t i = 0; i < clear.size(); ++i) {
        SCOPED_TRACE(i);
        const std::uint32_t part = i % 2 == 0 ? mask & 0xFFFFU : mask >> 16;
        const auto expected = i < MaskedUnits ? static_cast<WCHAR>(clear[i] ^ part) : clear[i];
        EXPECT_EQ(masked[i], expected);
    }
}

TEST_F(HeldPassword, UnmaskingTwiceChangesNothing) {
    lunara::HeldPassword password;
    password.Set(LongPassword);
    password.Mask();
    const std::wstring masked = Units(password);
    const std::uint32_t mask = password.CurrentMask();
    password.Unmask();
    EXPECT_EQ(password.CurrentMask(), mask);
    password.Unmask();
    EXPECT_EQ(Units(password), masked);
}

TEST_F(HeldPassword, EachMaskIsANewOne) {
    lunara::HeldPassword password;
    password.Set(TEXT("secret"));
    password.Mask();
    const std::uint32_t first = password.CurrentMask();
    password.Unmask();
    password.Mask();
    EXPECT_NE(password.CurrentMask(), first);
}

TEST_F(HeldPassword, WipeTakesAFreshWordForEachOfTheEightAndClearsTheMask) {
    lunara::HeldPassword password;
    password.Set(LongPassword);
    password.Mask();
    nextWord = 0;
    password.Wipe();
    EXPECT_EQ(password.CurrentMask(), 0U);
    EXPECT_EQ(nextWord, 8U);
    const std::wstring wiped = Units(password);
    for (std::size_t i = 0; i < MaskedUnits; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(wiped[i], static_cast<WCHAR>((i / 2 + 1) * 0x1111));
    }
    // Neither mask nor wipe touches a long password beyond its first 16 units. Deliberate.
    EXPECT_EQ(wiped.substr(MaskedUnits), std::wstring(LongPassword).substr(MaskedUnits) + L'\0');
}

TEST_F(HeldPassword, ANewObjectIsWiped) {
    const lunara::HeldPassword password;
    EXPECT_EQ(nextWord, 8U);
    EXPECT_EQ(password.CurrentMask(), 0U);
    EXPECT_EQ(password.Text()[0], 0x1111);
    EXPECT_EQ(password.Text()[lunara::HeldPassword::Capacity - 1], 0);
}

TEST_F(HeldPassword, TextIsCutToThirtyOneCharacters) {
    lunara::HeldPassword password;
    password.Set(TEXT("abcdefghijklmnopqrstuvwxyz123456789"));
    EXPECT_STREQ(password.Text(), LongPassword);
}

}  // namespace
}  // namespace lunara::test
