#include "platform/text.h"

#include <gtest/gtest.h>

#include <array>

namespace lunara::test {
namespace {

struct Utf8Case {
    const char* label;
    WideString wide;
    std::string bytes;
};

TEST(Utf8, RoundTripsEveryLength) {
    const Utf8Case cases[] = {
        {"empty", TEXT(""), ""},
        {"ASCII", TEXT("a~"), "a~"},
        {"two bytes", WideString{0x80, 0x7FF}, "\xC2\x80\xDF\xBF"},
        {"three bytes", WideString{0x800, 0xFFFD}, "\xE0\xA0\x80\xEF\xBF\xBD"},
        {"a pair", WideString{0xD83D, 0xDE00}, "\xF0\x9F\x98\x80"},
        {"a lone high surrogate", WideString{0xD83D, 'x'}, "\xED\xA0\xBDx"},
        {"a lone low surrogate", WideString{0xDE00}, "\xED\xB8\x80"},
    };
    for (const Utf8Case& one : cases) {
        SCOPED_TRACE(one.label);
        EXPECT_EQ(ToUtf8(one.wide), one.bytes);
        const std::optional<WideString> back = FromUtf8(one.bytes);
        ASSERT_TRUE(back.has_value());
        EXPECT_EQ(*back, one.wide);
    }
}

TEST(Utf8, RefusesWhatIsNotUtf8) {
    const std::pair<const char*, std::string> cases[] = {
        {"a lone continuation", "\x80"},
        {"a cut sequence", "a\xE2\x82"},
        {"an overlong slash", "\xC0\xAF"},
        {"an overlong three", "\xE0\x80\xAF"},
        {"above the last code", "\xF4\x90\x80\x80"},
        {"an impossible lead", "\xFF"},
        {"a lead without continuation", "\xC3("},
    };
    for (const auto& [label, bytes] : cases) {
        SCOPED_TRACE(label);
        EXPECT_FALSE(FromUtf8(bytes).has_value());
    }
}

std::string Formatted(std::size_t size, int& result, const WCHAR* format, ...) {
    std::array<WCHAR, 64> text{};
    text.fill('#');
    va_list arguments;
    va_start(arguments, format);
    result = FormatTextV(text.data(), size, format, arguments);
    va_end(arguments);
    EXPECT_EQ(text[size], '#');
    return ToUtf8(text.data());
}

TEST(FormatText, KnowsTheConversionsOfTheProgram) {
    int result = 0;
    EXPECT_EQ(Formatted(60, result, TEXT("%d|%02d|%5u|%-4dx|%%"), -7, 5, 42U, 3),
              "-7|05|   42|3   x|%");
    EXPECT_EQ(result, 19);
    EXPECT_EQ(Formatted(60, result, TEXT("0x%08X %x"), 0xC0FFEEU, 255U), "0x00C0FFEE ff");
    EXPECT_EQ(Formatted(60, result, TEXT("[%s][%5s][%-5s][%.2s][%c]"), TEXT("ab"), TEXT("ab"),
                        TEXT("ab"), TEXT("abc"), 'z'),
              "[ab][   ab][ab   ][ab][z]");
    EXPECT_EQ(Formatted(60, result, TEXT("%s"), static_cast<const WCHAR*>(nullptr)), "(null)");
    EXPECT_EQ(Formatted(60, result, TEXT("%lld"), 5'000'000'000LL), "5000000000");
}

TEST(FormatText, SaysWhenTheResultWasCut) {
    int result = 0;
    EXPECT_EQ(Formatted(4, result, TEXT("%d"), 1234), "123");
    EXPECT_EQ(result, -1);
    EXPECT_EQ(Formatted(5, result, TEXT("%d"), 1234), "1234");
    EXPECT_EQ(result, 4);
    EXPECT_EQ(Formatted(1, result, TEXT("abc")), "");
    EXPECT_EQ(result, -1);
}

TEST(FormatText, SurvivesAFormatThatEndsInsideAConversion) {
    int result = 0;
    EXPECT_EQ(Formatted(20, result, TEXT("100%")), "100");
    EXPECT_EQ(Formatted(20, result, TEXT("100%-5.")), "100");
}

}  // namespace
}  // namespace lunara::test
