#include "tests/e2e/expectation.h"

#include <gtest/gtest.h>

namespace lunara::test {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Blue = RGB(0, 0, 255);
constexpr COLORREF Orange = RGB(255, 128, 0);
constexpr COLORREF Green = RGB(0, 255, 0);

/// The entry's number; 0 when it has none of that name.
float Number(const nlohmann::json& entry, const char* key) {
    return entry.contains(key) ? entry[key].get<float>() : 0.0F;
}

std::wstring Widen(const std::string& utf8) {
    std::wstring text(utf8.size(), L'\0');
    const int length = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                             text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

/// "Mar, 05"
std::wstring MonthDay(Day day) {
    static constexpr std::array<const WCHAR*, 12> Months = {L"Jan", L"Feb", L"Mar", L"Apr",
                                                            L"May", L"Jun", L"Jul", L"Aug",
                                                            L"Sep", L"Oct", L"Nov", L"Dec"};
    std::array<WCHAR, 16> text{};
    ::wsprintfW(text.data(), L"%s, %02d", Months[static_cast<std::size_t>(day.month - 1)], day.day);
    return text.data();
}

bool IsBefore(Day a, Day b) { return IsoDate(a) < IsoDate(b); }

/// Splits a day's CSV row into the first `count` columns and one string for the rest, which may
/// contain commas. Empty when the day has no row.
std::vector<std::string> ColumnsOf(const std::string& csv, Day day, std::size_t count) {
    std::string lineStart = "\n";
    lineStart += ToUtf8(IsoDate(day));
    lineStart += ',';
    const std::size_t start = csv.find(lineStart);
    std::vector<std::string> columns;
    if (start == std::string::npos) {
        return columns;
    }
    std::string row = csv.substr(start + 1, csv.find('\n', start + 1) - start - 1);
    while (columns.size() < count) {
        const std::size_t comma = row.find(',');
        columns.push_back(row.substr(0, comma));
        row.erase(0, comma + 1);
    }
    while (!row.empty() && row.back() == '\r') {
        row.pop_back();
    }
    columns.push_back(row);
    return columns;
}

/// One channel of `Blend`. Rounds through float and double as the diary does, to the same last bit.
BYTE Mix(int color, int ground, float share) {
    const float part = static_cast<float>(color) * share;
    return static_cast<BYTE>(
        static_cast<int>(static_cast<double>(part) + ground * (1.0 - static_cast<double>(share))));
}

}  // namespace

COLORREF Blend(COLORREF color, COLORREF ground, float share) {
    return RGB(Mix(GetRValue(color), GetRValue(ground), share),
               Mix(GetGValue(color), GetGValue(ground), share),
               Mix(GetBValue(color), GetBValue(ground), share));
}

Expectation::Expectation(const ProgramFolder& folder, const std::wstring& user,
                         const std::wstring& password, Day predictedFor)
    : today(predictedFor) {
    const std::wstring data = L"\"" + folder.UserFolder(user) + L"\"";
    const auto predicted =
        folder.RunCompanion(L"predict " + data + L" --json --today " + IsoDate(today), password);
    EXPECT_EQ(predicted.exitCode, 0u) << predicted.output;
    prediction = nlohmann::json::parse(predicted.output, nullptr, false);
    EXPECT_TRUE(prediction.is_object()) << predicted.output.substr(0, 200);
    const auto exported = folder.RunCompanion(L"export " + data + L" --csv -", password);
    EXPECT_EQ(exported.exitCode, 0u) << exported.output;
    records = exported.output;
}

std::wstring Expectation::Warning() const {
    return Widen(prediction["warning"].get<std::string>());
}

nlohmann::json Expectation::Entry(Day day) const {
    for (const nlohmann::json& entry : prediction["days"]) {
        if (entry["date"] == ToUtf8(IsoDate(day))) {
            return entry;
        }
    }
    return nlohmann::json::object();
}

ExpectedCell Expectation::NotesCell(Day day) const {
    const std::vector<std::string> columns = ColumnsOf(records, day, 5);
    if (columns.empty()) {
        return {White, 0, 0};
    }
    const bool cramps = columns[3] == "1";
    const bool pms = columns[4] == "1";
    const COLORREF color = cramps && pms ? RGB(255, 0, 0)
                           : pms         ? RGB(255, 64, 64)
                           : cramps      ? RGB(255, 128, 128)
                                         : White;
    return {color, 0, columns[5].empty() ? 0U : 116U};
}

UINT Expectation::DateMark(Day day, const nlohmann::json& entry) const {
    if (IsBefore(day, today)) {
        return entry.contains("discarded") ? 112 : 0;
    }
    return day == today && prediction["todayIsBleeding"].get<bool>() ? 0 : 106;
}

ExpectedRow Expectation::RowOf(Day day) const {
    const nlohmann::json entry = Entry(day);
    const nlohmann::json& start = prediction["lastValidPeriodStart"];
    const bool afterStart = start.is_string() && ToUtf8(IsoDate(day)) > start.get<std::string>();

    ExpectedRow row;
    row.cells.push_back(NotesCell(day));
    ExpectedCell bleeding{Blend(Blue, White, Number(entry, "bleedingLevel") * 0.33333334F), 0, 0};
    if (bleeding.color != White) {
        bleeding.bitmap = 107;
        bleeding.overlay = DateMark(day, entry);
    }
    row.cells.push_back(bleeding);
    ExpectedCell period{Blend(Blue, White, Number(entry, "periodProbability")), 0, 0};
    if (period.color != White) {
        period.overlay = DateMark(day, entry);
    }
    row.cells.push_back(period);
    for (const auto& [color, key] :
         {std::pair(Orange, "ovulationProbability"), std::pair(Green, "pregnancyWeight")}) {
        ExpectedCell cell{Blend(color, White, Number(entry, key)), 0, 0};
        cell.overlay = cell.color != White && afterStart ? 106U : 0U;
        row.cells.push_back(cell);
    }
    const std::string status = entry.value("status", "");
    if (!status.empty()) {
        row.text = MonthDay(day);
        row.text += L'\n';
        row.text += Widen(status);
    }
    return row;
}

bool Expectation::CellLooksLike(const Picture& agenda, int column, int row, int side,
                                const ExpectedCell& cell, const std::wstring& program) {
    const Picture bitmap = Picture::OfResource(program, cell.bitmap);
    const Picture overlay = Picture::OfResource(program, cell.overlay);
    const auto under = [&](const Picture& mark, int x, int y, COLORREF& pixel) {
        const int markX = x - (side - mark.Width()) / 2 - 1;
        const int markY = y - (side - mark.Height()) / 2 - 1;
        pixel = mark.At(markX, markY);
        return markX >= 0 && markY >= 0 && markX < mark.Width() && markY < mark.Height();
    };
    for (int y = 1; y < side; ++y) {
        for (int x = 1; x < side; ++x) {
            COLORREF expected = cell.bitmap != 0 ? White : cell.color;
            COLORREF mark = 0;
            if (under(bitmap, x, y, mark)) {
                expected = cell.color | mark;
            }
            if (under(overlay, x, y, mark)) {
                expected &= mark;
            }
            if (agenda.At(column * side + x, row * side + y) != expected) {
                ADD_FAILURE() << "row " << row << " column " << column << " pixel " << x << "," << y
                              << std::hex << " is " << agenda.At(column * side + x, row * side + y)
                              << " instead of " << expected << " (BBGGRR)";
                return false;
            }
        }
    }
    return true;
}

void CompareDiary(Program& program, const ProgramFolder& folder, const Expectation& expected) {
    const Day first = program.FirstDay();
    const Picture agenda = Program::Look(program.Agenda());
    const int side = program.AskRow(0, 5).height;
    ASSERT_GT(side, 0);
    const int rows = agenda.Height() / side;
    ASSERT_GE(rows, 10);
    for (int i = 0; i < rows; ++i) {
        const Day day = AddDays(first, i);
        SCOPED_TRACE(ToUtf8(IsoDate(day)));
        const ExpectedRow row = expected.RowOf(day);
        const Row answer = program.AskRow(i, 5);
        EXPECT_EQ(answer.answered, 1);
        EXPECT_EQ(answer.height, side);
        EXPECT_EQ(answer.text, row.text);
        for (int column = 0; column < 5; ++column) {
            const ExpectedCell& cell = row.cells[static_cast<std::size_t>(column)];
            const Row::Cell& shown = answer.cells[static_cast<std::size_t>(column)];
            EXPECT_EQ(shown.color, cell.color) << "column " << column;
            EXPECT_EQ(shown.bitmap != nullptr, cell.bitmap != 0) << "column " << column;
            EXPECT_EQ(shown.overlay != nullptr, cell.overlay != 0) << "column " << column;
            Expectation::CellLooksLike(agenda, column, i, side, cell, folder.Program());
        }
    }
}

}  // namespace lunara::test
