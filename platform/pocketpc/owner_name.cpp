#include "platform/pocketpc/owner_name.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace lunara {
namespace {

constexpr WCHAR OwnerKey[] = TEXT("ControlPanel\\Owner");
constexpr WCHAR OwnerValue[] = TEXT("Owner");
constexpr std::size_t RecordCapacity = 768;  // bytes
constexpr DWORD AccountCapacity = 257;       // UTF-16 units; longest account name and terminator

std::optional<WideString> NameInRegistry(HKEY root) {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(root, OwnerKey, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    std::array<BYTE, RecordCapacity> record{};
    auto bytes = static_cast<DWORD>(record.size());
    DWORD type = REG_NONE;
    const LSTATUS status =
        ::RegQueryValueExW(key, OwnerValue, nullptr, &type, record.data(), &bytes);
    ::RegCloseKey(key);
    if (status != ERROR_SUCCESS || type != REG_BINARY) {
        return std::nullopt;
    }
    return OwnerNameOfRecord(std::span(record).first(bytes));
}

WideString AccountName() {
    std::array<WCHAR, AccountCapacity> name{};
    auto units = static_cast<DWORD>(name.size());
    if (::GetUserNameW(name.data(), &units) == FALSE) {
        return {};
    }
    return name.data();
}

}  // namespace

WideString OwnerNameOfRecord(std::span<const BYTE> record) {
    std::array<WCHAR, OwnerNameUnits + 1> name{};
    const std::size_t units = std::min(record.size() / sizeof(WCHAR), OwnerNameUnits);
    if (units > 0) {
        std::memcpy(name.data(), record.data(), units * sizeof(WCHAR));
    }
    return name.data();
}

WideString OwnerName(HKEY root) {
    const std::optional<WideString> name = NameInRegistry(root);
    return name ? *name : AccountName();
}

}  // namespace lunara
