#pragma once

// A diary as CSV: the header "date,bleeding,temperature_f,cramps,pms,note" and one row per day with
// any record. docs/companion.md describes it for the people who write such files.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diary/user_data.h"
#include "exchange/csv.h"
#include "platform/text.h"

namespace lunara {

/// What one row sets for its day. A value that is not there leaves what is stored.
struct DayChange {
    DateKey date = 0;
    std::optional<std::int32_t> bleeding;     // 0 deletes
    std::optional<std::int32_t> temperature;  // hundredths of a degree; NoTemperature deletes
    std::optional<bool> cramps;
    std::optional<bool> pms;
    std::optional<WideString> note;  // never empty
};

struct DiaryCsv {
    std::vector<DayChange> changes;  // in the order of the rows
    /// Cells that were taken although they are probably slips: no such day, a value that the
    /// program itself does not offer.
    std::vector<CsvFault> oddities;
};

/// Reads a whole text; a byte order mark at its begin is skipped. Columns may stand in any order
/// and may be missing, but for `date`. False, with `fault` set, when anything is wrong anywhere.
///
/// Dates and numbers are taken as wide as the data files hold them, so that every diary that was
/// exported can be imported: any day 1 to 31 of any month, any 32-bit value.
bool ReadDiaryCsv(std::string_view text, DiaryCsv& csv, CsvFault& fault);

/// The whole diary, rows in date order, lines ended by CR LF. Sorts the lists.
std::string WriteDiaryCsv(const UserData& data);

/// "98.60" for 9860.
std::string TemperatureText(std::int32_t hundredths);

}  // namespace lunara
