#pragma once

// Comma-separated values as RFC 4180 has them, read strictly: what is not CSV is refused with the
// place where it stops being so.

#include <string>
#include <string_view>
#include <vector>

namespace lunara {

/// Why a CSV text was refused, or what is odd about it. Lines and columns count from 1; the line is
/// that of the text, so that a line break inside quotes counts; the column is the cell's number.
struct CsvFault {
    int line = 0;
    int column = 0;
    std::string reason;
};

struct CsvCell {
    int line = 0;  // where it begins
    std::string text;
};

using CsvRow = std::vector<CsvCell>;

/// Reads a text row by row. Lines end with LF or CR LF, the last one with neither, too. A line
/// without any character is skipped. A cell in quotes may hold commas, line breaks and doubled
/// quotes; a quote in a cell that does not begin with one, text behind a closing quote, a quote
/// that is never closed and a CR without its LF outside quotes are faults.
class CsvReader {
  public:
    enum class Result { Row, End, Bad };

    /// `whole` must outlive the reader.
    explicit CsvReader(std::string_view whole) : text(whole) {}

    /// Fills `row` (at least one cell) with the next row. After End or Bad the same comes again.
    Result Next(CsvRow& row);

    /// What was wrong when `Next` answered Bad.
    const CsvFault& Fault() const { return fault; }

  private:
    enum class CellEnd { Comma, Line, Bad };

    CellEnd TakeCell(CsvCell& cell, int column);
    CellEnd TakeQuoted(CsvCell& cell, int column);
    CellEnd TakePlain(CsvCell& cell, int column);
    CellEnd TakeEnd(int column, const char* otherwise);
    bool TakeLineEnd();
    CellEnd Refuse(int atLine, int column, const char* reason);

    std::string_view text;
    std::size_t position = 0;
    int line = 1;
    CsvFault fault;
};

/// `cell` as it stands in a row: in quotes when it holds a comma, a quote or a line break.
std::string QuoteCsvCell(std::string_view cell);

}  // namespace lunara
