#include "platform/pocketpc/owner_name.h"

#include <cstring>
#include <vector>

#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

/// Keeps the owner record under a registry key of the test's own.
class OwnerName : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(::RegCreateKeyExW(HKEY_CURRENT_USER, TestSettingsPath, 0, nullptr, 0,
                                    KEY_ALL_ACCESS, nullptr, &root, nullptr),
                  ERROR_SUCCESS);
    }
    void TearDown() override {
        ::RegCloseKey(root);
        UiTest::TearDown();
    }
    void Store(DWORD type, const std::vector<BYTE>& record) {
        ASSERT_EQ(::RegSetKeyValueW(root, TEXT("ControlPanel\\Owner"), TEXT("Owner"), type,
                                    record.data(), static_cast<DWORD>(record.size())),
                  ERROR_SUCCESS);
    }
    /// A record of that many bytes that begins with the name, unterminated if it fills them.
    static std::vector<BYTE> Record(const std::wstring& name, std::size_t bytes) {
        std::vector<BYTE> record(bytes);
        std::memcpy(record.data(), name.data(), std::min(bytes, name.size() * sizeof(WCHAR)));
        return record;
    }
    HKEY root = nullptr;
};

TEST_F(OwnerName, IsReadFromTheFirstFieldOfTheRecord) {
    std::vector<BYTE> record = Record(L"Anna", 640);
    record[OwnerNameUnits * sizeof(WCHAR)] = 'x';  // first byte of the next field
    Store(REG_BINARY, record);
    EXPECT_EQ(lunara::OwnerName(root), L"Anna");
}

TEST_F(OwnerName, EndsAtTheEndOfItsFieldOrOfTheRecord) {
    const struct {
        const char* label;
        std::size_t units;
        std::size_t bytes;
        std::size_t wanted;
    } rows[] = {
        {"36 units without a terminator, more behind", 60, 640, 36},
        {"a full record", 60, 768, 36},
        {"a record that ends inside the name", 60, 20, 10},
        {"an odd byte at its end", 60, 21, 10},
        {"one byte", 60, 1, 0},
    };
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        Store(REG_BINARY, Record(std::wstring(row.units, L'o'), row.bytes));
        EXPECT_EQ(lunara::OwnerName(root), std::wstring(row.wanted, L'o'));
    }
}

TEST_F(OwnerName, WithoutAUsableRecordItIsTheSystemsUserName) {
    WCHAR account[257] = {};
    DWORD size = 257;
    ASSERT_TRUE(::GetUserNameW(account, &size));
    EXPECT_EQ(lunara::OwnerName(root), account) << "no record";
    Store(REG_SZ, Record(L"Anna", 10));
    EXPECT_EQ(lunara::OwnerName(root), account) << "another type";
    Store(REG_BINARY, Record(L"Anna", 769));
    EXPECT_EQ(lunara::OwnerName(root), account) << "too large";
}

TEST_F(OwnerName, AnEmptyRecordIsAnEmptyName) {
    Store(REG_BINARY, {});
    EXPECT_EQ(lunara::OwnerName(root), L"");
}

}  // namespace
}  // namespace lunara::test
