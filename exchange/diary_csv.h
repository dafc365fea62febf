#pragma once

// Reads and writes a diary as CSV: the header "date,bleeding,temperature_f,cramps,pms,note" and one
// row per day with any record. docs/companion.md describes the format to those who write such
// files.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diary/user_data.h"
#include "exchange/csv.h"
#include "platform/text.h"

namespace lunara {

/// What one row sets for its day. A missing value leaves the stored one as it is.
struct DayChange {
    DateKey date = 0;
    std::optional<std::int32_t> bleeding;     // level; 0 deletes the record
    std::optional<std::int32_t> temperature;  // hundredths of a degree F; NoTemperature deletes
    std::optional<bool> cramps;
    std::optional<bool> pms;
    std::optional<WideString> note;  // never empty
};

struct DiaryCsv {
    std::vector<DayChange> changes;  // one per row, in the order of the rows
    /// Cells that were accepted but are probably slips: a day that the calendar does not have, or a
    /// value that the program itself does not offer.
    std::vector<CsvFault> oddities;
};

/// Reads a whole CSV text; skips a byte order mark at its start. Columns may stand in any order,
/// and all but `date` may be missing. Returns false, with the first fault in `fault`, when anything
/// is wrong anywhere; `csv` is then incomplete.
///
/// Dates and numbers are accepted as widely as the data files hold them, so that every exported
/// diary can be imported: day 1 to 31 of any month of 1601 to 2500, any 32-bit value.
bool ReadDiaryCsv(std::string_view text, DiaryCsv& csv, CsvFault& fault);

/// Returns the whole diary as CSV, with rows in date order and lines that end with CR LF.
std::string WriteDiaryCsv(const UserData& data);

/// Decimal text of a value in hundredths, with two decimals: "98.60" for 9860.
std::string TemperatureText(std::int32_t hundredths);

}  // namespace lunara
