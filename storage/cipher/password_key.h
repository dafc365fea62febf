#pragma once

// Turns a password into the key of the data files: bytes up to a terminating zero.

#include <cstddef>

#include "platform/text.h"

namespace lunara {

/// Most bytes of a password that become key; the rest has no effect.
inline constexpr std::size_t DataKeyBytes = 55;

/// The key of one password. A password whose characters are all in Windows-1252 becomes its bytes
/// in that code page, in which the five unassigned codes stand for the control characters of the
/// same number (U+0081, 8D, 8F, 90, 9D); the other 27 control characters from U+0080 to U+009F are
/// not in it. Any other password becomes UTF-8 as a whole. Neither the process's locale nor the
/// system's code page matters, so a diary opens on every machine. Wipes its bytes when it ends.
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
    /// False when the key is full; the byte is dropped then.
    bool Append(char byte);

    char bytes[DataKeyBytes + 1] = {};
    std::size_t length = 0;
};

}  // namespace lunara
