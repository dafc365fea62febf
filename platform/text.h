#pragma once

// UTF-16 texts: the types the core passes them in, conversion from and to UTF-8, and the one
// printf-style formatter. The C library's wide-character functions are not used, because their
// character is 32 bits wide outside Windows.

#include <array>
#include <cstdarg>
#include <optional>
#include <string>
#include <string_view>

#include "platform/win32.h"

namespace lunara {

using WideString = std::basic_string<WCHAR>;
using WideView = std::basic_string_view<WCHAR>;

/// Longest path of the program, terminator included.
inline constexpr std::size_t PathCapacity = 260;

/// UTF-8 of `text`. A surrogate without its partner becomes the three bytes of its own number, so
/// that two different texts never become the same bytes.
std::string ToUtf8(WideView text);

/// UTF-16 of `bytes`; nothing when they are not UTF-8. Surrogates written as three bytes are taken
/// back, so that FromUtf8(ToUtf8(t)) is t for every t.
std::optional<WideString> FromUtf8(std::string_view bytes);

/// The same without surrogates: what nobody but `ToUtf8` writes is not taken.
std::optional<WideString> FromStrictUtf8(std::string_view bytes);

/// Copies as much of `text` as fits into `size` code units and always terminates (size >= 1).
void CopyText(WCHAR* target, std::size_t size, WideView text);

/// Formats into `size` code units (size >= 1), always terminated. Returns the length, or -1 when
/// the result was cut. Conversions: d i u x X c s with flags, width, precision and h/l lengths
/// (%s and %c take UTF-16), and %%.
int FormatText(WCHAR* target, std::size_t size, const WCHAR* format, ...);
int FormatTextV(WCHAR* target, std::size_t size, const WCHAR* format, va_list arguments);

}  // namespace lunara
