#include <array>

#include "platform/posix/win32_posix.h"
#include "platform/string_table.h"
#include "platform/text.h"

namespace {

/// Parses the decimal number at `source` and advances past it. Reads at most two digits, like
/// Windows.
int TakeInsertNumber(const WCHAR*& source) {
    int number = 0;
    for (int digit = 0; digit < 2 && *source >= '0' && *source <= '9'; ++digit) {
        number = number * 10 + (*source++ - '0');
    }
    return number;
}

/// Parses the optional printf conversion "!...!" after an insert's number and advances past it.
/// Returns it with a leading '%'; "%s" when there is none; empty when the closing '!' is missing.
lunara::WideString TakeConversion(const WCHAR*& source) {
    if (*source != '!') {
        return TEXT("%s");
    }
    lunara::WideString conversion = TEXT("%");
    for (++source; *source != 0 && *source != '!'; ++source) {
        conversion.push_back(*source);
    }
    if (*source == 0) {
        return {};
    }
    ++source;
    return conversion;
}

/// Formats `argument` with `conversion` and appends the result. False when it was cut at 511 units.
bool AppendInsert(lunara::WideString& text, const lunara::WideString& conversion,
                  DWORD_PTR argument) {
    std::array<WCHAR, 512> formatted{};
    const WCHAR kind = conversion.back();
    int length = -1;
    if (kind == 's' || kind == 'S') {
        length = lunara::FormatText(formatted.data(), formatted.size(), conversion.c_str(),
                                    reinterpret_cast<const WCHAR*>(argument));
    } else {
        length = lunara::FormatText(formatted.data(), formatted.size(), conversion.c_str(),
                                    static_cast<int>(argument));
    }
    text.append(formatted.data());
    return length >= 0;
}

}  // namespace

int LoadStringW(HINSTANCE /*instance*/, UINT id, LPWSTR buffer, int size) {
    if (buffer == nullptr || size < 1) {
        return 0;
    }
    for (const lunara::StringResource& resource : lunara::StringResources()) {
        if (resource.id == id) {
            const lunara::WideView text = resource.text;
            lunara::CopyText(buffer, static_cast<std::size_t>(size), text);
            return static_cast<int>(text.size()) < size ? static_cast<int>(text.size()) : size - 1;
        }
    }
    buffer[0] = 0;
    SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return 0;
}

DWORD FormatMessageW(DWORD flags, const void* source, DWORD /*messageId*/, DWORD /*languageId*/,
                     LPWSTR buffer, DWORD size, va_list* arguments) {
    if ((flags & FORMAT_MESSAGE_FROM_SYSTEM) != 0) {
        SetLastError(ERROR_MR_MID_NOT_FOUND);
        return 0;
    }
    if (flags != (FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const auto* values = reinterpret_cast<const DWORD_PTR*>(arguments);
    lunara::WideString text;
    for (const auto* next = static_cast<const WCHAR*>(source); *next != 0;) {
        if (*next != '%') {
            text.push_back(*next++);
            continue;
        }
        ++next;
        if (*next >= '1' && *next <= '9') {
            const int number = TakeInsertNumber(next);
            const lunara::WideString conversion = TakeConversion(next);
            if (values == nullptr || conversion.size() < 2 ||
                !AppendInsert(text, conversion, values[number - 1])) {
                SetLastError(ERROR_INVALID_PARAMETER);
                return 0;
            }
        } else if (*next == '0') {  // "%0" ends the text without a line break
            break;
        } else if (*next == 'n') {
            text.append(TEXT("\r\n"));
            ++next;
        } else if (*next != 0) {
            text.push_back(*next++);
        }
    }
    if (text.size() + 1 > size) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    lunara::CopyText(buffer, size, text);
    return static_cast<DWORD>(text.size());
}
