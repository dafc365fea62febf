#include "storage/cipher/password_key.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace lunara {
namespace {

// The characters of the bytes 0x80 to 0x9F in Windows-1252. Every other byte is the number of its
// character.
constexpr unsigned FirstMapped = 0x80;
constexpr WCHAR Mapped[] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
static_assert(std::size(Mapped) == 0x20);

/// The character's byte in Windows-1252, or 0 when it has none.
unsigned char Windows1252Byte(WCHAR unit) {
    if (unit < FirstMapped || (unit >= FirstMapped + std::size(Mapped) && unit <= 0xFF)) {
        return static_cast<unsigned char>(unit);
    }
    const WCHAR* match = std::find(std::begin(Mapped), std::end(Mapped), unit);
    return match == std::end(Mapped)
               ? 0
               : static_cast<unsigned char>(FirstMapped + (match - std::begin(Mapped)));
}

bool IsSurrogatePair(WideView text) {
    return text.size() >= 2 && (text[0] & 0xFC00) == 0xD800 && (text[1] & 0xFC00) == 0xDC00;
}

}  // namespace

DataKey::DataKey(const WCHAR* password) {
    const WideView text = password != nullptr ? WideView(password) : WideView();
    if (std::all_of(text.begin(), text.end(),
                    [](WCHAR unit) { return Windows1252Byte(unit) != 0; })) {
        TakeWindows1252(text);
    } else {
        TakeUtf8(text);
    }
}

DataKey::~DataKey() { ::SecureZeroMemory(bytes, sizeof(bytes)); }

void DataKey::TakeWindows1252(WideView password) {
    for (const WCHAR unit : password.substr(0, DataKeyBytes)) {
        Append(static_cast<char>(Windows1252Byte(unit)));
    }
}

void DataKey::TakeUtf8(WideView password) {
    // Converts one character at a time and wipes it: a string of the whole password would leave
    // copies in freed memory.
    bool hasRoom = true;
    while (hasRoom && !password.empty()) {
        const std::size_t units = IsSurrogatePair(password) ? 2 : 1;
        std::string character = ToUtf8(password.substr(0, units));
        for (const char byte : character) {
            hasRoom = Append(byte);
        }
        ::SecureZeroMemory(character.data(), character.size());
        password.remove_prefix(units);
    }
}

bool DataKey::Append(char byte) {
    if (length == DataKeyBytes) {
        return false;
    }
    bytes[length++] = byte;
    return true;
}

}  // namespace lunara
