#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "exchange/diary_csv.h"
#include "exchange/iso_date.h"

namespace lunara {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// The messages below name these limits.
static_assert(FirstRecordYear == 1601 && LastRecordYear == 2500);
static_assert(HeaviestBleeding == 3);
static_assert(LowestTemperature == 9500 && HighestTemperature == 10000);
static_assert(MaxNoteUnits == 127);

/// Parses a cell of one column into `change`. Returns null, or the reason why the cell is refused.
/// Sets `oddity` to the doubt when a cell is accepted with one.
using TakeCellText = const char* (*)(std::string_view text, DayChange& change,
                                     std::string_view& oddity);

const char* TakeDate(std::string_view text, DayChange& change, std::string_view& oddity) {
    const std::optional<DateKey> key = ParseIsoDate(text);
    if (!key) {
        return "not a date from 1601-01-01 to 2500-12-31";
    }
    change.date = *key;
    if (!IsRealDay(*key)) {
        oddity = "the calendar has no such day";
    }
    return nullptr;
}

/// Parses all of `text` as a decimal integer without plus sign or blanks; nothing for other text.
std::optional<std::int64_t> WholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

bool FitsRecord(std::int64_t number) {
    return number >= std::numeric_limits<std::int32_t>::min() &&
           number <= std::numeric_limits<std::int32_t>::max();
}

const char* TakeBleeding(std::string_view text, DayChange& change, std::string_view& oddity) {
    const std::optional<std::int64_t> level = WholeNumber(text);
    if (!level || !FitsRecord(*level)) {
        return "not a bleeding level";
    }
    change.bleeding = static_cast<std::int32_t>(*level);
    if (*level < 0 || *level > HeaviestBleeding) {
        oddity = "not one of the levels 0 to 3";
    }
    return nullptr;
}

/// Parses a decimal number with at most two decimals and returns its hundredths; nothing for other
/// text.
std::optional<std::int64_t> Hundredths(std::string_view text) {
    const std::size_t point = text.find('.');
    std::string digits(text.substr(0, point));
    std::string_view decimals;
    if (point != std::string_view::npos) {
        decimals = text.substr(point + 1);
        if (decimals.empty() || decimals.size() > 2) {
            return std::nullopt;
        }
    }
    if (digits.empty() || digits.back() < '0' || digits.back() > '9') {
        return std::nullopt;
    }
    digits.append(decimals).append(2 - decimals.size(), '0');
    return WholeNumber(digits);
}

const char* TakeTemperature(std::string_view text, DayChange& change, std::string_view& oddity) {
    const std::optional<std::int64_t> value = Hundredths(text);
    if (!value || !FitsRecord(*value)) {
        return "not a temperature with at most two decimals";
    }
    change.temperature = static_cast<std::int32_t>(*value);
    if (*value < LowestTemperature || *value > HighestTemperature) {
        oddity = "not between 95.00 and 100.00";
    }
    return nullptr;
}

const char* TakeMark(std::string_view text, std::optional<bool>& mark) {
    if (text != "0" && text != "1") {
        return "neither 1 nor 0 nor empty";
    }
    mark = text == "1";
    return nullptr;
}

const char* TakeCramps(std::string_view text, DayChange& change, std::string_view& /*oddity*/) {
    return TakeMark(text, change.cramps);
}

const char* TakePms(std::string_view text, DayChange& change, std::string_view& /*oddity*/) {
    return TakeMark(text, change.pms);
}

/// Turns every bare LF into CR LF. The edit control of the notes dialog writes CR LF and would run
/// lines together at a bare LF.
WideString WithCrLf(const WideString& note) {
    WideString text;
    for (const WCHAR unit : note) {
        if (unit == '\n' && (text.empty() || text.back() != '\r')) {
            text.push_back('\r');
        }
        text.push_back(unit);
    }
    return text;
}

const char* TakeNote(std::string_view text, DayChange& change, std::string_view& /*oddity*/) {
    std::optional<WideString> note = FromUtf8(text);
    if (!note) {
        return "not UTF-8";
    }
    if (note->find(WCHAR{0}) != WideString::npos) {
        return "a note cannot hold a zero character";
    }
    WideString stored = WithCrLf(*note);
    if (stored.size() > std::size_t{MaxNoteUnits}) {
        return "longer than 127 UTF-16 units";
    }
    change.note = std::move(stored);
    return nullptr;
}

struct Column {
    std::string_view name;
    TakeCellText take;
};

constexpr Column Columns[] = {
    {"date", TakeDate},     {"bleeding", TakeBleeding}, {"temperature_f", TakeTemperature},
    {"cramps", TakeCramps}, {"pms", TakePms},           {"note", TakeNote},
};

/// Quotes a cell for a message: at most 40 bytes, with '?' for everything but printable ASCII, so
/// that it stays on one line and a terminal finds no control sequence in it.
std::string Quoted(std::string_view text) {
    constexpr std::size_t LongestShown = 40;
    std::string shown = "\"";
    for (const char character : text.substr(0, LongestShown)) {
        const auto byte = static_cast<unsigned char>(character);
        shown.push_back(byte >= 0x20 && byte < 0x7F ? character : '?');
    }
    shown.append(text.size() > LongestShown ? "...\"" : "\"");
    return shown;
}

class DiaryReader {
  public:
    DiaryReader(std::string_view text, DiaryCsv& target, CsvFault& whatIsWrong)
        : rows(text), csv(target), fault(whatIsWrong) {}

    bool Read() {
        if (!ReadHeader()) {
            return false;
        }
        CsvRow row;
        while (true) {
            switch (rows.Next(row)) {
                case CsvReader::Result::Row:
                    if (!ReadRow(row)) {
                        return false;
                    }
                    break;
                case CsvReader::Result::End:
                    return true;
                case CsvReader::Result::Bad:
                    fault = rows.Fault();
                    return false;
            }
        }
    }

  private:
    bool ReadHeader() {
        CsvRow row;
        switch (rows.Next(row)) {
            case CsvReader::Result::Row:
                break;
            case CsvReader::Result::End:
                return Refuse(1, 1, "the header with the names of the columns is missing");
            case CsvReader::Result::Bad:
                fault = rows.Fault();
                return false;
        }
        for (const CsvCell& cell : row) {
            const int number = static_cast<int>(columns.size()) + 1;
            const auto* column =
                std::find_if(std::begin(Columns), std::end(Columns),
                             [&cell](const Column& known) { return known.name == cell.text; });
            if (column == std::end(Columns)) {
                return Refuse(cell.line, number, "unknown column " + Quoted(cell.text));
            }
            if (std::find(columns.begin(), columns.end(), column) != columns.end()) {
                return Refuse(cell.line, number, "the column stands here twice");
            }
            columns.push_back(column);
        }
        if (std::find(columns.begin(), columns.end(), Columns) == columns.end()) {
            return Refuse(row.front().line, 1, "there is no column \"date\"");
        }
        return true;
    }

    bool ReadRow(const CsvRow& row) {
        if (row.size() > columns.size()) {
            return Refuse(row[columns.size()].line, static_cast<int>(columns.size()) + 1,
                          "more cells than the header has columns");
        }
        DayChange change;
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (!TakeCell(row[i], static_cast<int>(i) + 1, *columns[i], change)) {
                return false;
            }
        }
        if (row.size() < columns.size()) {
            return Refuse(row.back().line, static_cast<int>(row.size()) + 1,
                          "fewer cells than the header has columns");
        }
        csv.changes.push_back(std::move(change));
        return true;
    }

    bool TakeCell(const CsvCell& cell, int number, const Column& column, DayChange& change) {
        if (cell.text.empty() && column.take != TakeDate) {
            return true;
        }
        std::string_view oddity;
        const char* refusal = column.take(cell.text, change, oddity);
        const auto reasonOf = [&](std::string_view why) {
            return std::string(column.name)
                .append(": ")
                .append(why)
                .append(": ")
                .append(Quoted(cell.text));
        };
        if (refusal != nullptr) {
            return Refuse(cell.line, number, reasonOf(refusal));
        }
        if (!oddity.empty()) {
            csv.oddities.push_back({cell.line, number, reasonOf(oddity)});
        }
        return true;
    }

    bool Refuse(int line, int column, std::string reason) {
        fault = {line, column, std::move(reason)};
        return false;
    }

    CsvReader rows;
    DiaryCsv& csv;
    CsvFault& fault;
    std::vector<const Column*> columns;  // the header's, by position in the file
};

}  // namespace

bool ReadDiaryCsv(std::string_view text, DiaryCsv& csv, CsvFault& fault) {
    csv = {};
    fault = {};
    if (text.substr(0, ByteOrderMark.size()) == ByteOrderMark) {
        text.remove_prefix(ByteOrderMark.size());
    }
    return DiaryReader(text, csv, fault).Read();
}

}  // namespace lunara
