#pragma once

// UTF-16 texts: the string types of the core, conversion from and to UTF-8, and the only
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

/// Longest path that the program handles, in units, terminator included.
inline constexpr std::size_t PathCapacity = 260;

/// Encodes `text` as UTF-8. A surrogate without its partner becomes the three bytes of its own
/// code, so that two different texts never give the same bytes.
std::string ToUtf8(WideView text);

/// Decodes UTF-8; nothing when `bytes` are not UTF-8. Accepts surrogates encoded as three bytes, so
/// that FromUtf8(ToUtf8(t)) is t for every t.
std::optional<WideString> FromUtf8(std::string_view bytes);

/// Decodes UTF-8 without encoded surrogates, which only `ToUtf8` writes; nothing when `bytes` hold
/// one or are not UTF-8.
std::optional<WideString> FromStrictUtf8(std::string_view bytes);

/// Copies as much of `text` as fits into `size` (>= 1) units and always terminates it.
void CopyText(WCHAR* target, std::size_t size, WideView text);

/// Formats into `size` (>= 1) units, always terminated. Returns the length, or -1 when the result
/// was cut. Conversions: d i u x X c s with flags, width, precision and h/l lengths (%s and %c take
/// UTF-16), and %%.
int FormatText(WCHAR* target, std::size_t size, const WCHAR* format, ...);
int FormatTextV(WCHAR* target, std::size_t size, const WCHAR* format, va_list arguments);

}  // namespace lunara
