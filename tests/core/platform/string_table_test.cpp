#include "platform/string_table.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/text.h"

namespace lunara::test {
namespace {

TEST(StringTable, IsWhatLoadStringLoads) {
    for (const StringResource& resource : StringResources()) {
        std::array<WCHAR, 256> text{};
        const int length = ::LoadStringW(nullptr, resource.id, text.data(), 256);
        EXPECT_EQ(ToUtf8(text.data()), ToUtf8(resource.text));
        EXPECT_EQ(static_cast<std::size_t>(length), WideView(resource.text).size());
    }
    std::array<WCHAR, 16> missing{};
    EXPECT_EQ(::LoadStringW(nullptr, 50007, missing.data(), 16), 0);
}

TEST(StringTable, IsInAscendingOrder) {
    UINT previous = 0;
    for (const StringResource& resource : StringResources()) {
        EXPECT_GT(resource.id, previous);
        previous = resource.id;
    }
}

TEST(StringTable, LoadStringCutsATextToItsBuffer) {
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

TEST(FormatMessageW, FillsNumberedInserts) {
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

}  // namespace
}  // namespace lunara::test
