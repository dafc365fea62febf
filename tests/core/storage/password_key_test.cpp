#include "storage/cipher/password_key.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <string>

namespace lunara::test {
namespace {

TEST(DataKey, CharactersOfTheCodePageBecomeItsBytes) {
    const struct {
        const char* label;
        const WCHAR* password;
        const char* bytes;
    } cases[] = {
        {"ASCII", TEXT("Secret 1~"), "Secret 1~"},
        {"control characters below 0x80", TEXT("\x01\x1F\x7F"), "\x01\x1F\x7F"},
        {"Latin-1", TEXT("\u00A0\u00E9\u00DF\u00FF"), "\xA0\xE9\xDF\xFF"},
        {"quotes and euro", TEXT("\u20AC\u201E\u201C\u2026"), "\x80\x84\x93\x85"},
        {"the table's ends", TEXT("\u20AC\u0178"), "\x80\x9F"},
        {"the codes left free", TEXT("\u0081\u008D\u008F\u0090\u009D"), "\x81\x8D\x8F\x90\x9D"},
        {"the rest of the table",
         TEXT("\u201A\u0192\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u017D\u2018\u2019\u201D\u2022"
              "\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u017E"),
         "\x82\x83\x86\x87\x88\x89\x8A\x8B\x8C\x8E\x91\x92\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C"
         "\x9E"},
    };
    for (const auto& [label, password, bytes] : cases) {
        EXPECT_STREQ(DataKey(password).Bytes(), bytes) << label;
    }
}

TEST(DataKey, OneCharacterOutsideTheCodePageMakesAllOfItUtf8) {
    const struct {
        const char* label;
        const WCHAR* password;
        const char* bytes;
    } cases[] = {
        {"Cyrillic with Latin-1", TEXT("\u044F\u00FC"), "\xD1\x8F\xC3\xBC"},
        {"a control character that has no byte", TEXT("a\u0080"), "a\xC2\x80"},
        {"three bytes", TEXT("\u20AC\u3042"), "\xE2\x82\xAC\xE3\x81\x82"},
        {"a surrogate pair", TEXT("x\U0001F600"), "x\xF0\x9F\x98\x80"},
        {"lone surrogates stay apart", TEXT("\xD83D-\xDE00"), "\xED\xA0\xBD-\xED\xB8\x80"},
    };
    for (const auto& [label, password, bytes] : cases) {
        EXPECT_STREQ(DataKey(password).Bytes(), bytes) << label;
    }
}

TEST(DataKey, EmptyOrMissingPasswordIsNoKey) {
    EXPECT_STREQ(DataKey(TEXT("")).Bytes(), "");
    EXPECT_STREQ(DataKey(nullptr).Bytes(), "");
}

TEST(DataKey, TakesTheFirst55BytesOnly) {
    const WideString longest(55, 'p');
    EXPECT_EQ(DataKey((longest + TEXT("q")).c_str()).Bytes(), std::string(55, 'p'));
    EXPECT_EQ(DataKey(longest.c_str()).Bytes(), std::string(55, 'p'));
    EXPECT_EQ(DataKey(longest.substr(1).c_str()).Bytes(), std::string(54, 'p'));
}

TEST(DataKey, CutsUtf8InTheMiddleOfACharacterToo) {
    std::string expected;
    for (int i = 0; i < 27; ++i) {
        expected += "\xD1\x8F";
    }
    EXPECT_EQ(DataKey(WideString(40, u'\u044F').c_str()).Bytes(), expected + "\xD1");
}

TEST(DataKey, CharacterPastTheCutStillDecidesForUtf8) {
    // The last character, far behind byte 55, is not in Windows-1252, so the key is UTF-8.
    const WideString password = WideString(60, u'\u00FC') + TEXT("\u044F");
    const std::string bytes = DataKey(password.c_str()).Bytes();
    EXPECT_EQ(bytes.size(), 55U);
    EXPECT_EQ(bytes.substr(0, 4), "\xC3\xBC\xC3\xBC");
}

TEST(DataKey, IsWipedAtItsEnd) {
    alignas(DataKey) unsigned char memory[sizeof(DataKey)];
    auto* key = new (memory) DataKey(TEXT("secret"));
    const auto* bytes = reinterpret_cast<const unsigned char*>(key->Bytes());
    ASSERT_EQ(bytes[0], 's');
    key->~DataKey();
    EXPECT_TRUE(
        std::all_of(bytes, bytes + DataKeyBytes + 1, [](unsigned char byte) { return byte == 0; }));
}

}  // namespace
}  // namespace lunara::test
