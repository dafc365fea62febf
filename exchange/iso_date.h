#pragma once

// Days as text of the form 2006-01-31, which CSV, JSON and the command line use.

#include <optional>
#include <string>
#include <string_view>

#include "records/dates.h"

namespace lunara {

/// Formats the key's parts as "YYYY-MM-DD", whether they name a real day or not.
std::string IsoDate(DateKey key);

/// Parses "YYYY-MM-DD" with year 1601 to 2500, month 1 to 12 and day 1 to 31. Accepts days that the
/// calendar does not have, because data files may hold them. Nothing for any other text.
std::optional<DateKey> ParseIsoDate(std::string_view text);

}  // namespace lunara
