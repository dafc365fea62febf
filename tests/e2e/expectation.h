#pragma once

// What the diary must show, worked out from what the companion says of the same files.

#include <windows.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/e2e/driver.h"

namespace lunara::e2e {

inline constexpr DWORD AllItems = 31;

/// The diary's pictures by resource id; 0 is none.
struct ExpectedCell {
    COLORREF color;
    UINT bitmap;
    UINT overlay;
};

struct ExpectedRow {
    std::wstring text;
    std::vector<ExpectedCell> cells;
};

/// One user's diary and its prediction on one day, as the companion reads them.
class Expectation {
  public:
    Expectation(const ProgramFolder& folder, const std::wstring& user, const std::wstring& password,
                Day predictedFor);

    std::wstring Warning() const;
    /// The row of a day with all items shown.
    ExpectedRow RowOf(Day day) const;
    /// The picture of a cell without its border, `side` px apart from the next.
    static bool CellLooksLike(const Picture& agenda, int column, int row, int side,
                              const ExpectedCell& cell, const std::wstring& program);

  private:
    nlohmann::json Entry(Day day) const;
    ExpectedCell NotesCell(Day day) const;
    UINT DateMark(Day day, const nlohmann::json& entry) const;

    Day today;
    nlohmann::json prediction;
    std::string records;
};

/// The mixture of two colours that the diary shades its cells with.
COLORREF Blend(COLORREF color, COLORREF ground, float share);

/// Every whole row that the diary shows, compared with what is expected: the view's answers and the
/// pixels on the screen. The current test fails where they differ.
void CompareDiary(Program& program, const ProgramFolder& folder, const Expectation& expected);

}  // namespace lunara::e2e
