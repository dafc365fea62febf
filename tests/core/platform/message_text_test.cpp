#include "platform/message_text.h"

#include <gtest/gtest.h>

#include "tests/support/dates.h"

namespace lunara::test {
namespace {

std::string TextOf(const MessageText& text) { return ToUtf8(text.Text()); }

TEST(MessageText, StartsEmpty) {
    const MessageText text(16);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.Capacity(), 16);
    EXPECT_EQ(TextOf(text), "");
}

TEST(MessageText, SetReplacesWhileAppendAndPrependAdd) {
    MessageText text(16);
    text.Set(TEXT("middle"));
    text.Append(TEXT("-end"));
    text.Prepend(TEXT("a-"));
    EXPECT_EQ(TextOf(text), "a-middle-end");
    text.Set(TEXT("new"));
    EXPECT_EQ(TextOf(text), "new");
}

struct StoreCase {
    const char* label;
    int capacity;
    const WCHAR* before;
    MessageText::Store store;
    const WCHAR* stored;
    const char* after;
};

TEST(MessageText, NeverExceedsItsCapacity) {
    const auto set = &MessageText::Set;
    const auto append = &MessageText::Append;
    const auto prepend = &MessageText::Prepend;
    const StoreCase cases[] = {
        {"set fits exactly", 8, TEXT(""), set, TEXT("1234567"), "1234567"},
        {"set one too many", 8, TEXT(""), set, TEXT("12345678"), "1234..."},
        {"append fits exactly", 8, TEXT("123"), append, TEXT("4567"), "1234567"},
        {"append one too many", 8, TEXT("123"), append, TEXT("45678"), "1234..."},
        {"append to a full text", 8, TEXT("1234567"), append, TEXT("8"), "1234..."},
        {"append to a cut text", 8, TEXT("123456789"), append, TEXT("x"), "1234..."},
        {"append nothing to a full text", 8, TEXT("1234567"), append, TEXT(""), "1234567"},
        {"prepend fits exactly", 8, TEXT("567"), prepend, TEXT("1234"), "1234567"},
        {"prepend one too many", 8, TEXT("5678"), prepend, TEXT("1234"), "1234..."},
        {"prepend leaves some of the old", 10, TEXT("89abcdef"), prepend, TEXT("12"), "1289ab..."},
        {"prepend fills the buffer", 8, TEXT("old"), prepend, TEXT("1234567"), "1234..."},
        {"prepend more than the buffer", 8, TEXT("old"), prepend, TEXT("123456789"), "1234..."},
        {"prepend a full text to nothing", 8, TEXT(""), prepend, TEXT("1234567"), "1234567"},
        {"room for the dots alone", 4, TEXT(""), set, TEXT("1234"), "..."},
        {"room for two dots", 3, TEXT(""), set, TEXT("1234"), ".."},
        {"room for the terminator", 1, TEXT(""), set, TEXT("1"), ""},
        {"no buffer", 0, TEXT(""), set, TEXT("1"), ""},
        {"no buffer to append to", 0, TEXT(""), append, TEXT("1"), ""},
        {"no buffer to prepend to", 0, TEXT(""), prepend, TEXT("1"), ""},
    };
    for (const StoreCase& test : cases) {
        SCOPED_TRACE(test.label);
        MessageText text(test.capacity);
        text.Set(test.before);
        (text.*test.store)(test.stored);
        EXPECT_EQ(TextOf(text), test.after);
        EXPECT_EQ(text.Capacity(), test.capacity);
    }
}

TEST(MessageText, ResizeKeepsWhatFits) {
    MessageText text(8);
    text.Set(TEXT("1234567"));
    text.Resize(16);
    EXPECT_EQ(TextOf(text), "1234567");
    text.Append(TEXT("89"));
    EXPECT_EQ(TextOf(text), "123456789");
    text.Resize(5);  // no dots: resizing stores nothing
    EXPECT_EQ(TextOf(text), "1234");
    EXPECT_EQ(text.Capacity(), 5);
    text.Resize(0);
    EXPECT_EQ(TextOf(text), "");
    EXPECT_EQ(text.Capacity(), 0);
    text.Resize(5);
    text.Append(TEXT("ab"));
    EXPECT_EQ(TextOf(text), "ab");
}

TEST(MessageText, FormatsResourceStrings) {
    MessageText text(200);
    text.FormatResource(&MessageText::Set, 50002);
    EXPECT_EQ(TextOf(text), "No statistical data. ");
    text.FormatResource(&MessageText::Append, 50006, 3, 1);
    EXPECT_EQ(TextOf(text), "No statistical data. 3 discarded period(s). 1 invalid cycle(s). ");
    text.FormatResource(&MessageText::Prepend, 1);
    EXPECT_EQ(TextOf(text).substr(0, 9), "LunaraNo ");
}

TEST(MessageText, MissingResourceIsNamedByItsNumber) {
    MessageText text(64);
    text.FormatResource(&MessageText::Append, 0xABCD, 1);
    EXPECT_EQ(TextOf(text), "Resource message 0x0000ABCD\n");
}

TEST(MessageText, ErrorWithoutASystemTextIsNamedByItsNumber) {
    MessageText text(64);
    text.FormatSystem(&MessageText::Set, 0x2FFF'FFFF);
    EXPECT_EQ(TextOf(text), "System message 0x2FFFFFFF\n");
}

struct CopyCase {
    const char* label;
    int size;
    const char* copy;
};

TEST(MessageText, CopyIsMarkedWhenItIsCut) {
    constexpr CopyCase Cases[] = {{"larger", 20, "1234567"},  {"exact", 8, "1234567"},
                                  {"one short", 7, "123..."}, {"dots alone", 4, "..."},
                                  {"one dot", 2, "."},        {"terminator", 1, ""}};
    MessageText text(8);
    text.Set(TEXT("1234567"));
    for (const CopyCase& test : Cases) {
        SCOPED_TRACE(test.label);
        std::vector<WCHAR> target(static_cast<std::size_t>(test.size) + 1, 'x');
        text.CopyTo(target.data(), test.size);
        EXPECT_EQ(target.back(), 'x');
        target.back() = 0;
        EXPECT_EQ(ToUtf8(target.data()), test.copy);
    }
}

}  // namespace
}  // namespace lunara::test
