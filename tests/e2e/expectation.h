#pragma once

// What the diary must show, derived from the companion's output for the same files.

#include <windows.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/driver/program.h"

namespace lunara::test {

inline constexpr DWORD AllItems = 31;

/// One cell of a row. Pictures are resource ids; 0 is none.
struct ExpectedCell {
    COLORREF color;
    UINT bitmap;
    UINT overlay;
};

struct ExpectedRow {
    std::wstring text;
    std::vector<ExpectedCell> cells;
};

/// One user's diary and its prediction for one day. Runs the companion once, on construction; the
/// current test fails when that fails.
class Expectation {
  public:
    Expectation(const ProgramFolder& folder, const std::wstring& user, const std::wstring& password,
                Day predictedFor);

    /// The text of the warning box; empty when none is due.
    std::wstring Warning() const;
    /// The row of a day while all five items are shown, which makes five cells.
    ExpectedRow RowOf(Day day) const;
    /// Compares a cell on the screen, without its border, pixel by pixel. `side` is the distance of
    /// the cells in px; `program` holds the bitmaps. Where they differ, the current test fails.
    static bool CellLooksLike(const Picture& agenda, int column, int row, int side,
                              const ExpectedCell& cell, const std::wstring& program);

  private:
    /// The prediction's entry for a day; an empty object when it has none.
    nlohmann::json Entry(Day day) const;
    ExpectedCell NotesCell(Day day) const;
    /// The overlay of a bleeding or period cell: discarded, predicted or 0.
    UINT DateMark(Day day, const nlohmann::json& entry) const;

    Day today;
    nlohmann::json prediction;  // of `lunara-cli predict --json`
    std::string records;        // CSV
};

/// Mixes two colours as the diary shades its cells; `share` of `color` is [0, 1].
COLORREF Blend(COLORREF color, COLORREF ground, float share);

/// Compares every row that the diary shows whole, both the view's answers and the pixels on the
/// screen. The current test fails where they differ from what is expected.
void CompareDiary(Program& program, const ProgramFolder& folder, const Expectation& expected);

}  // namespace lunara::test
