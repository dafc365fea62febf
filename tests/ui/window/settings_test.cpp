// Settings: values under the program's registry key, and which root that key lies under.

#include "window/settings.h"

#include <array>

#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

constexpr WCHAR Path[] = TEXT("SOFTWARE\\LunaraTests\\Settings");
constexpr int NameCapacity = 32;

class Settings : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        SetSettingsLocation(SettingsLocation{HKEY_CURRENT_USER, nullptr, Path});
    }
    void Store(const WCHAR* name, DWORD type, const void* data, DWORD bytes) {
        ASSERT_EQ(::RegSetKeyValueW(HKEY_CURRENT_USER, Path, name, type, data, bytes),
                  ERROR_SUCCESS);
    }
    std::array<WCHAR, NameCapacity + 1> text{};
    DWORD number = 77;
};

TEST_F(Settings, WhatIsWrittenIsReadAgain) {
    {
        lunara::Settings settings;
        ASSERT_TRUE(settings.IsOpen());
        EXPECT_TRUE(settings.WriteDword(TEXT("CurrentView"), 3001));
        EXPECT_TRUE(settings.WriteString(TEXT("LastUser"), TEXT("Anna Maria")));
    }
    const lunara::Settings settings;
    EXPECT_TRUE(settings.ReadDword(TEXT("CurrentView"), number));
    EXPECT_EQ(number, 3001U);
    EXPECT_TRUE(settings.ReadString(TEXT("LastUser"), text.data(), NameCapacity));
    EXPECT_STREQ(text.data(), TEXT("Anna Maria"));
}

TEST_F(Settings, TextsAreStoredWithTheirTerminator) {
    lunara::Settings settings;
    ASSERT_TRUE(settings.WriteString(TEXT("LastUser"), TEXT("Anna")));
    DWORD type = 0;
    DWORD bytes = 0;
    ASSERT_EQ(::RegGetValueW(HKEY_CURRENT_USER, Path, TEXT("LastUser"), RRF_RT_ANY | RRF_NOEXPAND,
                             &type, nullptr, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(bytes, 10U);
}

TEST_F(Settings, ANewKeyIsOpenAndHasNoValues) {
    const lunara::Settings settings;
    EXPECT_TRUE(settings.IsOpen());
    EXPECT_FALSE(settings.ReadDword(TEXT("CurrentView"), number));
    EXPECT_FALSE(settings.ReadString(TEXT("LastUser"), text.data(), NameCapacity));
    EXPECT_EQ(number, 77U);
}

TEST_F(Settings, WithoutAKeyNothingIsReadOrWritten) {
    SetSettingsLocation(SettingsLocation{nullptr, nullptr, Path});
    lunara::Settings settings;
    EXPECT_FALSE(settings.IsOpen());
    EXPECT_FALSE(settings.ReadDword(TEXT("CurrentView"), number));
    EXPECT_FALSE(settings.ReadString(TEXT("LastUser"), text.data(), NameCapacity));
    EXPECT_FALSE(settings.WriteDword(TEXT("CurrentView"), 1));
    EXPECT_FALSE(settings.WriteString(TEXT("LastUser"), TEXT("Anna")));
}

TEST_F(Settings, ARootThatCannotBeWrittenGivesWayToTheFallbackRoot) {
    // A closed key stands in for HKEY_LOCAL_MACHINE of a user who may not write there, since Wine
    // grants every right.
    HKEY refusing = nullptr;
    ASSERT_EQ(
        ::RegCreateKeyExW(HKEY_CURRENT_USER, TEXT("SOFTWARE\\LunaraTests\\Refusing"), 0, nullptr,
                          REG_OPTION_NON_VOLATILE, KEY_READ, nullptr, &refusing, nullptr),
        ERROR_SUCCESS);
    ::RegCloseKey(refusing);
    SetSettingsLocation(SettingsLocation{refusing, HKEY_CURRENT_USER, Path});
    lunara::Settings settings;
    ASSERT_TRUE(settings.IsOpen());
    ASSERT_TRUE(settings.WriteDword(TEXT("CurrentView"), 3000));
    DWORD bytes = sizeof(number);
    EXPECT_EQ(::RegGetValueW(HKEY_CURRENT_USER, Path, TEXT("CurrentView"), RRF_RT_REG_DWORD,
                             nullptr, &number, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(number, 3000U);
}

TEST_F(Settings, TheFirstRootIsPreferredToTheFallback) {
    SetSettingsLocation(SettingsLocation{HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER, Path});
    {
        lunara::Settings settings;
        ASSERT_TRUE(settings.WriteDword(TEXT("CurrentView"), 3000));
    }
    DWORD bytes = sizeof(number);
    EXPECT_EQ(::RegGetValueW(HKEY_LOCAL_MACHINE, Path, TEXT("CurrentView"), RRF_RT_REG_DWORD,
                             nullptr, &number, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(number, 3000U);
    EXPECT_NE(::RegGetValueW(HKEY_CURRENT_USER, Path, TEXT("CurrentView"), RRF_RT_REG_DWORD,
                             nullptr, &number, &bytes),
              ERROR_SUCCESS);
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\LunaraTests"));
}

TEST_F(Settings, TheDefaultIsTheProgramsKeyOfTheMachineThenOfTheUser) {
    const SettingsLocation location = DefaultSettingsLocation();
    EXPECT_EQ(location.root, HKEY_LOCAL_MACHINE);
    EXPECT_EQ(location.fallbackRoot, HKEY_CURRENT_USER);
    EXPECT_STREQ(location.path, TEXT("SOFTWARE\\Apps\\Lunara"));
}

TEST_F(Settings, ANumberOfTheWrongTypeOrSizeReadsAsMissing) {
    struct Row {
        const char* label;
        DWORD type;
        DWORD bytes;
        bool found;
    };
    constexpr Row Rows[] = {
        {"four bytes", REG_DWORD, 4, true},   {"two bytes", REG_DWORD, 2, false},
        {"eight bytes", REG_DWORD, 8, false}, {"no bytes", REG_DWORD, 0, false},
        {"text", REG_SZ, 4, false},           {"binary", REG_BINARY, 4, false},
        {"long number", REG_QWORD, 8, false},
    };
    constexpr std::array<BYTE, 8> Data = {1, 2, 0, 0, 0, 0, 0, 0};
    for (const Row& row : Rows) {
        LUNARA_ROW(row);
        Store(TEXT("Number"), row.type, Data.data(), row.bytes);
        number = 77;
        const lunara::Settings settings;
        EXPECT_EQ(settings.ReadDword(TEXT("Number"), number), row.found);
        EXPECT_EQ(number, row.found ? 513U : 77U);
    }
}

TEST_F(Settings, ATextOfTheWrongTypeOrSizeReadsAsMissing) {
    struct Row {
        const char* label;
        DWORD type;
        DWORD bytes;
        const WCHAR* data;
        const WCHAR* read;  // null: reads as missing
    };
    constexpr WCHAR Longest[] = TEXT("0123456789012345678901234567890");
    constexpr WCHAR TooLong[] = TEXT("01234567890123456789012345678901");
    const Row rows[] = {
        {"terminated", REG_SZ, 10, TEXT("Anna"), TEXT("Anna")},
        {"unterminated", REG_SZ, 8, TEXT("Anna"), TEXT("Anna")},
        {"junk after the terminator", REG_SZ, 20, TEXT("Anna\0junk"), TEXT("Anna")},
        {"empty", REG_SZ, 2, TEXT(""), TEXT("")},
        {"no bytes", REG_SZ, 0, TEXT(""), TEXT("")},
        {"longest", REG_SZ, 64, Longest, Longest},
        {"longest, unterminated", REG_SZ, 62, Longest, Longest},
        {"too long", REG_SZ, 66, TooLong, nullptr},
        {"too long, unterminated", REG_SZ, 64, TooLong, nullptr},
        {"odd number of bytes", REG_SZ, 7, TEXT("Anna"), nullptr},
        {"expanding", REG_EXPAND_SZ, 10, TEXT("Anna"), nullptr},
        {"several", REG_MULTI_SZ, 12, TEXT("Anna\0"), nullptr},
        {"binary", REG_BINARY, 10, TEXT("Anna"), nullptr},
        {"number", REG_DWORD, 4, TEXT("Anna"), nullptr},
    };
    for (const Row& row : rows) {
        LUNARA_ROW(row);
        Store(TEXT("Text"), row.type, row.data, row.bytes);
        text.fill(TEXT('#'));
        const lunara::Settings settings;
        EXPECT_EQ(settings.ReadString(TEXT("Text"), text.data(), NameCapacity),
                  row.read != nullptr);
        EXPECT_EQ(text[NameCapacity], TEXT('#')) << "written past the buffer";
        if (row.read != nullptr) {
            EXPECT_STREQ(text.data(), row.read);
        } else {
            EXPECT_EQ(text[0], TEXT('#'));
        }
    }
}

TEST_F(Settings, AHugeTextReadsAsMissingAndIsNotWritten) {
    const std::wstring huge(100000, TEXT('x'));
    Store(TEXT("Text"), REG_SZ, huge.c_str(), static_cast<DWORD>(huge.size() * sizeof(WCHAR)));
    const lunara::Settings settings;
    EXPECT_FALSE(settings.ReadString(TEXT("Text"), text.data(), NameCapacity));
    lunara::Settings writing;
    EXPECT_FALSE(writing.WriteString(TEXT("Other"), huge.c_str()));
}

}  // namespace
}  // namespace lunara::test
