// Any bytes as a CSV file to import. A refusal must give a place and a reason. What is accepted
// must make a diary that comes back the same through export and import.

#include <cstdint>
#include <cstdlib>

#include "exchange/diary_csv.h"
#include "exchange/import_changes.h"
#include "tests/support/user_data_access.h"

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void Import(lunara::UserData& data, std::string_view text) {
    lunara::DiaryCsv csv;
    lunara::CsvFault fault;
    Require(lunara::ReadDiaryCsv(text, csv, fault));
    Require(lunara::ApplyChanges(data, csv.changes));
}

void CheckOddities(const lunara::DiaryCsv& csv) {
    for (const lunara::CsvFault& oddity : csv.oddities) {
        Require(oddity.line >= 2 && oddity.column >= 1 && !oddity.reason.empty());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    lunara::DiaryCsv csv;
    lunara::CsvFault fault;
    if (!lunara::ReadDiaryCsv(text, csv, fault)) {
        Require(fault.line >= 1 && fault.column >= 1 && !fault.reason.empty());
        return 0;
    }
    CheckOddities(csv);
    lunara::UserData data;
    Require(lunara::ApplyChanges(data, csv.changes));
    const std::string exported = lunara::WriteDiaryCsv(data);

    lunara::UserData copy;
    Import(copy, exported);
    Require(lunara::WriteDiaryCsv(copy) == exported);

    // Once more changes nothing.
    lunara::test::ClearDirty(data);
    Import(data, exported);
    Require(!data.IsDirty());
    return 0;
}
