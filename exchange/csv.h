#pragma once

// A strict reader for comma-separated values (RFC 4180), and the quoting of cells. Text that is not
// CSV is refused with the line and column of the fault.

#include <string>
#include <string_view>
#include <vector>

namespace lunara {

/// Why a CSV text was refused, or what is doubtful about it. `line` and `column` count from 1:
/// `line` counts the text's line breaks, those inside quotes included; `column` counts cells.
struct CsvFault {
    int line = 0;
    int column = 0;
    std::string reason;
};

/// A cell's text, unquoted, and its place.
struct CsvCell {
    int line = 0;  // on which the cell begins, from 1
    std::string text;
};

using CsvRow = std::vector<CsvCell>;

/// Reads a text row by row. Lines end with LF or CR LF; the last one needs neither. Empty lines are
/// skipped. A cell in quotes may hold commas, line breaks and doubled quotes. Faults are a quote
/// inside an unquoted cell, text behind a closing quote, a quote that is never closed, and a CR
/// without LF outside quotes.
class CsvReader {
  public:
    enum class Result { Row, End, Bad };

    /// `whole` must outlive the reader.
    explicit CsvReader(std::string_view whole) : text(whole) {}

    /// Fills `row` with the cells (at least one) of the next row. After End or Bad every further
    /// call returns the same, with `row` empty.
    Result Next(CsvRow& row);

    /// The fault, after `Next` returned Bad.
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

/// Returns `cell` as it is written in a row: in quotes, with its own quotes doubled, when it holds
/// a comma, a quote or a line break; else unchanged.
std::string QuoteCsvCell(std::string_view cell);

}  // namespace lunara
