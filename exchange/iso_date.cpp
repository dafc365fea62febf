#include "exchange/iso_date.h"

#include <algorithm>
#include <cstdio>

namespace lunara {
namespace {

/// The value of a string of digits; 10000, past every limit here, when it holds anything else.
unsigned NumberOf(std::string_view digits) {
    unsigned number = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') {
            return 0xFF;
        }
        number = number * 10 + static_cast<unsigned>(digit - '0');
    }
    return number;
}

}  // namespace

std::string IsoDate(DateKey key) {
    char text[16];  // the longest text is 65535-255-255
    const int length = std::snprintf(text, sizeof text, "%04u-%02u-%02u", key >> 16,
                                     (key >> 8) & 0xFFU, key & 0xFFU);
    return {text, static_cast<std::size_t>(length)};
}

std::optional<DateKey> ParseIsoDate(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    const unsigned year = NumberOf(text.substr(0, 4));
    const unsigned month = NumberOf(text.substr(5, 2));
    const unsigned day = NumberOf(text.substr(8, 2));
    const DateKey key = MakeDateKey(year, month, day);
    return IsRecordDate(key) ? std::optional(key) : std::nullopt;
}

}  // namespace lunara
