#include "platform/text.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/clock.h"
#include "platform/string_table.h"

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

TEST(Strings, LoadFromTheOneList) {
    for (const StringResource& resource : StringResources()) {
        std::array<WCHAR, 256> text{};
        const int length = ::LoadStringW(nullptr, resource.id, text.data(), 256);
        EXPECT_EQ(ToUtf8(text.data()), ToUtf8(resource.text));
        EXPECT_EQ(static_cast<std::size_t>(length), WideView(resource.text).size());
    }
    std::array<WCHAR, 16> missing{};
    EXPECT_EQ(::LoadStringW(nullptr, 50007, missing.data(), 16), 0);
}

TEST(Strings, StandInAscendingOrder) {
    UINT previous = 0;
    for (const StringResource& resource : StringResources()) {
        EXPECT_GT(resource.id, previous);
        previous = resource.id;
    }
}

TEST(Strings, AreCutAtTheBuffersEnd) {
    std::array<WCHAR, 5> text{};
    EXPECT_EQ(::LoadStringW(nullptr, 1, text.data(), 5), 4);
    EXPECT_EQ(ToUtf8(text.data()), "Luna");
}

struct Message {
    const char* label;
    const WCHAR* source;
    DWORD size;
    const char* text;  // null: refused
};

TEST(FormatMessage, FillsNumberedInserts) {
    const Message messages[] = {
        {"no insert", TEXT("plain "), 64, "plain "},
        {"two numbers", TEXT("len %1!d!. len %2!d!. "), 64, "len 5. len -28. "},
        {"reversed", TEXT("%2!d! %1!d!"), 64, "-28 5"},
        {"with a width", TEXT("%1!03d!"), 64, "005"},
        {"a percent sign", TEXT("5%%"), 64, "5%"},
        {"just fits", TEXT("abc"), 4, "abc"},
        {"does not fit", TEXT("abcd"), 4, nullptr},
    };
    for (const Message& message : messages) {
        SCOPED_TRACE(message.label);
        std::array<WCHAR, 64> text{};
        DWORD_PTR arguments[] = {5, static_cast<DWORD_PTR>(-28)};
        const DWORD length = ::FormatMessageW(
            FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY, message.source, 0, 0,
            text.data(), message.size, reinterpret_cast<va_list*>(arguments));
        if (message.text == nullptr) {
            EXPECT_EQ(length, 0U);
        } else {
            EXPECT_EQ(ToUtf8(text.data()), message.text);
            EXPECT_EQ(length, WideView(text.data()).size());
        }
    }
}

TEST(Clock, StandsWhereItWasSetUntilReleased) {
    SYSTEMTIME noon{};
    noon.wYear = 2006;
    noon.wMonth = 1;
    noon.wDay = 2;
    noon.wHour = 12;
    SetLocalNow(noon);
    SetTickCount(7);
    EXPECT_EQ(LocalNow().wYear, 2006);
    EXPECT_EQ(LocalNow().wDayOfWeek, 1);
    EXPECT_EQ(TickCount(), 7U);
    ReleaseClock();
    EXPECT_NE(LocalNow().wYear, 2006);
}

}  // namespace
}  // namespace lunara::test
