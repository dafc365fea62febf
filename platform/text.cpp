#include "platform/text.h"

#include <algorithm>
#include <cstdio>

namespace lunara {
namespace {

constexpr char32_t FirstHighSurrogate = 0xD800;
constexpr char32_t FirstLowSurrogate = 0xDC00;
constexpr char32_t PastSurrogates = 0xE000;

bool IsHighSurrogate(char32_t unit) {
    return unit >= FirstHighSurrogate && unit < FirstLowSurrogate;
}

bool IsLowSurrogate(char32_t unit) { return unit >= FirstLowSurrogate && unit < PastSurrogates; }

void AppendUtf8(std::string& bytes, char32_t code) {
    const auto put = [&bytes](char32_t value) { bytes.push_back(static_cast<char>(value)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

/// Decodes one code point at `position` and moves `position` past it. Nothing when the bytes there
/// are not UTF-8. Accepts encoded surrogates.
std::optional<char32_t> TakeUtf8(std::string_view bytes, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(bytes[position++]);
    if (lead < 0x80) {
        return lead;
    }
    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 ||
        bytes.size() - position < static_cast<std::size_t>(following)) {
        return std::nullopt;
    }
    char32_t code = lead & (0x3FU >> following);
    for (int i = 0; i < following; ++i) {
        const auto next = static_cast<unsigned char>(bytes[position++]);
        if ((next & 0xC0) != 0x80) {
            return std::nullopt;
        }
        code = code << 6 | (next & 0x3F);
    }
    const char32_t smallest = following == 3 ? 0x10000 : following == 2 ? 0x800 : 0x80;
    if (code < smallest || code > 0x10FFFF) {
        return std::nullopt;
    }
    return code;
}

/// Writes formatted output to a buffer of fixed size; counts the units that do not fit and drops
/// them.
class BoundedOutput {
  public:
    BoundedOutput(WCHAR* buffer, std::size_t size) : target(buffer), room(size - 1) {}

    void Put(WCHAR unit) {
        if (length < room) {
            target[length] = unit;
        }
        ++length;
    }

    int Finish() {
        target[std::min(length, room)] = 0;
        return length <= room ? static_cast<int>(length) : -1;
    }

  private:
    WCHAR* target;
    std::size_t room;
    std::size_t length = 0;
};

/// One conversion of a printf format: "%", flags, width, precision, length, and the conversion
/// character.
struct Conversion {
    std::string flags;  // flags, width and precision as text, for snprintf
    int precision = -1;
    int width = 0;
    bool leftAligned = false;
    int longs = 0;
    char kind = 0;  // 0: the format ended
};

int TakeNumber(const WCHAR*& format, std::string& flags) {
    int number = 0;
    while (*format >= '0' && *format <= '9' && number < 10000) {
        number = number * 10 + (*format - '0');
        flags.push_back(static_cast<char>(*format++));
    }
    return number;
}

Conversion TakeConversion(const WCHAR*& format) {
    Conversion conversion;
    while (*format == '-' || *format == '+' || *format == ' ' || *format == '#' || *format == '0') {
        conversion.leftAligned = conversion.leftAligned || *format == '-';
        conversion.flags.push_back(static_cast<char>(*format++));
    }
    conversion.width = TakeNumber(format, conversion.flags);
    if (*format == '.') {
        conversion.flags.push_back('.');
        ++format;
        conversion.precision = TakeNumber(format, conversion.flags);
    }
    for (; *format == 'l' || *format == 'h'; ++format) {
        conversion.longs += *format == 'l' ? 1 : 0;
    }
    if (*format != 0) {
        conversion.kind = *format < 0x80 ? static_cast<char>(*format) : '?';
        ++format;
    }
    return conversion;
}

void PutNumber(BoundedOutput& output, const Conversion& conversion, long long value) {
    const std::string format = "%" + conversion.flags + "ll" + conversion.kind;
    std::array<char, 512> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), format.c_str(), value);
    for (int i = 0; i < std::min(length, static_cast<int>(digits.size()) - 1); ++i) {
        output.Put(static_cast<unsigned char>(digits[static_cast<std::size_t>(i)]));
    }
}

void PutString(BoundedOutput& output, const Conversion& conversion, WideView text) {
    if (conversion.precision >= 0) {
        text = text.substr(0, static_cast<std::size_t>(conversion.precision));
    }
    const int padding = std::max(0, conversion.width - static_cast<int>(text.size()));
    for (int i = 0; i < padding && !conversion.leftAligned; ++i) {
        output.Put(' ');
    }
    for (const WCHAR unit : text) {
        output.Put(unit);
    }
    for (int i = 0; i < padding && conversion.leftAligned; ++i) {
        output.Put(' ');
    }
}

}  // namespace

std::string ToUtf8(WideView text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        if (IsHighSurrogate(code) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            code = 0x10000 + ((code - FirstHighSurrogate) << 10) +
                   (char32_t{text[++i]} - FirstLowSurrogate);
        }
        AppendUtf8(bytes, code);
    }
    return bytes;
}

std::optional<WideString> FromUtf8(std::string_view bytes) {
    WideString text;
    text.reserve(bytes.size());
    for (std::size_t position = 0; position < bytes.size();) {
        const std::optional<char32_t> code = TakeUtf8(bytes, position);
        if (!code) {
            return std::nullopt;
        }
        if (*code < 0x10000) {
            text.push_back(static_cast<WCHAR>(*code));
        } else {
            text.push_back(static_cast<WCHAR>(FirstHighSurrogate + ((*code - 0x10000) >> 10)));
            text.push_back(static_cast<WCHAR>(FirstLowSurrogate + (*code & 0x3FF)));
        }
    }
    return text;
}

std::optional<WideString> FromStrictUtf8(std::string_view bytes) {
    for (std::size_t i = 0; i + 1 < bytes.size(); ++i) {
        if (bytes[i] == '\xED' && static_cast<unsigned char>(bytes[i + 1]) >= 0xA0) {
            return std::nullopt;
        }
    }
    return FromUtf8(bytes);
}

void CopyText(WCHAR* target, std::size_t size, WideView text) {
    const std::size_t length = std::min(text.size(), size - 1);
    std::copy_n(text.data(), length, target);
    target[length] = 0;
}

int FormatText(WCHAR* target, std::size_t size, const WCHAR* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = FormatTextV(target, size, format, arguments);
    va_end(arguments);
    return length;
}

int FormatTextV(WCHAR* target, std::size_t size, const WCHAR* format, va_list arguments) {
    BoundedOutput output(target, size);
    while (*format != 0) {
        if (*format != '%') {
            output.Put(*format++);
            continue;
        }
        ++format;
        const Conversion conversion = TakeConversion(format);
        switch (conversion.kind) {
            case 'd':
            case 'i': {
                const long long value =
                    conversion.longs > 1 ? va_arg(arguments, long long) : va_arg(arguments, int);
                PutNumber(output, conversion, value);
                break;
            }
            case 'u':
            case 'x':
            case 'X': {
                const long long value = conversion.longs > 1 ? va_arg(arguments, long long)
                                                             : va_arg(arguments, unsigned);
                PutNumber(output, conversion, value);
                break;
            }
            case 'c': {
                const auto unit = static_cast<WCHAR>(va_arg(arguments, int));
                PutString(output, conversion, WideView(&unit, 1));
                break;
            }
            case 's': {
                const WCHAR* text = va_arg(arguments, const WCHAR*);
                PutString(output, conversion, text != nullptr ? text : TEXT("(null)"));
                break;
            }
            default:  // "%%" and unknown conversions print the character itself
                if (conversion.kind != 0) {
                    output.Put(static_cast<unsigned char>(conversion.kind));
                }
                break;
        }
    }
    return output.Finish();
}

}  // namespace lunara
