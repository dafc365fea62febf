#pragma once

// What a password is as a key of the data files: bytes, up to a terminating zero.

#include <cstddef>

#include "platform/text.h"

namespace lunara {

/// Most bytes of a password that count; the rest makes no difference.
inline constexpr std::size_t DataKeyBytes = 55;

/// The key of a password. One that is Windows-1252 throughout becomes its bytes (the five codes
/// that the code page leaves free are the control characters of the same number, and no other
/// control character from U+0080 to U+009F is part of it); one with any other character is taken
/// whole as UTF-8. Neither the process's locale nor the system's code page has a say, so that a
/// diary opens on every machine. Wiped at its end.
class DataKey {
  public:
    /// `password` is UTF-16; null is the same as "".
    explicit DataKey(const WCHAR* password);
    DataKey(const DataKey&) = delete;
    DataKey& operator=(const DataKey&) = delete;
    ~DataKey();

    /// At most `DataKeyBytes` bytes and a terminating zero; "" for an empty password.
    const char* Bytes() const { return bytes; }

  private:
    void TakeWindows1252(WideView password);
    void TakeUtf8(WideView password);
    /// False when the key is full.
    bool Append(char byte);

    char bytes[DataKeyBytes + 1] = {};
    std::size_t length = 0;
};

}  // namespace lunara
