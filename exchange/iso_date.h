#pragma once

// Days as text, the way CSV, JSON and the command line have them: 2006-01-31.

#include <optional>
#include <string>
#include <string_view>

#include "records/dates.h"

namespace lunara {

/// "YYYY-MM-DD" of the key's parts, whether they name a real day or not.
std::string IsoDate(DateKey key);

/// The key of a "YYYY-MM-DD" that a data file could hold: year 1601 to 2500, month 1 to 12, day 1
/// to 31 of any month. Nothing for any other text.
std::optional<DateKey> ParseIsoDate(std::string_view text);

}  // namespace lunara
