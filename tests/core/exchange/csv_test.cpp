#include "exchange/csv.h"

#include <gtest/gtest.h>

#include <utility>

namespace lunara::test {
namespace {

using Texts = std::vector<std::vector<std::string>>;

struct GoodCsv {
    const char* label;
    std::string text;
    Texts rows;
};

const GoodCsv GoodTexts[] = {
    {"nothing", "", {}},
    {"one cell", "a", {{"a"}}},
    {"line feed", "a,b\nc,d\n", {{"a", "b"}, {"c", "d"}}},
    {"carriage return and line feed", "a,b\r\nc,d\r\n", {{"a", "b"}, {"c", "d"}}},
    {"both kinds of line end", "a\r\nb\nc", {{"a"}, {"b"}, {"c"}}},
    {"no line end behind the last row", "a,b\nc,d", {{"a", "b"}, {"c", "d"}}},
    {"empty cells", ",,\n", {{"", "", ""}}},
    {"empty last cell without a line end", "a,", {{"a", ""}}},
    {"lines without a character are skipped", "\n\r\na\n\n\r\nb\n\n", {{"a"}, {"b"}}},
    {"blanks belong to the cell", " a , b \n", {{" a ", " b "}}},
    {"quoted", "\"a\",\"b\"\n", {{"a", "b"}}},
    {"quoted empty cell is a row", "\"\"\n", {{""}}},
    {"comma in quotes", "\"a,b\",c\n", {{"a,b", "c"}}},
    {"doubled quote", "\"a\"\"b\",\"\"\"\"\n", {{"a\"b", "\""}}},
    {"line breaks in quotes stay as they are", "\"a\nb\r\nc\rd\"\n", {{"a\nb\r\nc\rd"}}},
    {"zero characters", std::string("a\0b,c", 5), {{std::string("a\0b", 3), "c"}}},
};

Texts AllRows(const std::string& text) {
    Texts rows;
    CsvReader reader(text);
    CsvRow row;
    CsvReader::Result result{};
    while ((result = reader.Next(row)) == CsvReader::Result::Row) {
        rows.emplace_back();
        for (const CsvCell& cell : row) {
            rows.back().push_back(cell.text);
        }
    }
    EXPECT_EQ(result, CsvReader::Result::End) << reader.Fault().reason;
    return rows;
}

TEST(Csv, GoodTextsAreReadRowByRow) {
    for (const GoodCsv& good : GoodTexts) {
        EXPECT_EQ(AllRows(good.text), good.rows) << good.label;
    }
}

struct BadCsv {
    const char* label;
    const char* text;
    int goodRows;
    int line;
    int column;
    const char* reason;
};

constexpr BadCsv BadTexts[] = {
    {"quote inside a plain cell", "a\nb,c\"d\n", 1, 2, 2,
     "a quote inside a cell that does not begin with one"},
    {"text behind a closing quote", "\"a\"b\n", 0, 1, 1, "text behind a closing quote"},
    {"blank behind a closing quote", "a,\"b\" ,c\n", 0, 1, 2, "text behind a closing quote"},
    {"open quote", "a,\"b\nc\n", 0, 1, 2, "the quote that begins here is never closed"},
    {"open quote after a doubled one", "\"a\"\"", 0, 1, 1,
     "the quote that begins here is never closed"},
    {"lone carriage return", "a,b\rc\n", 0, 1, 2, "a carriage return without a line feed"},
    {"carriage return at the end", "a\r", 0, 1, 1, "a carriage return without a line feed"},
    {"carriage return behind quotes", "\"a\"\r", 0, 1, 1, "text behind a closing quote"},
    {"carriage return and line feed count once", "a\r\n\r\nb\r\nc\"\r\n", 2, 4, 1,
     "a quote inside a cell that does not begin with one"},
    {"line breaks in quotes count", "\"a\nb\"\n\nc,\"d\n\",e\"\n", 1, 5, 3,
     "a quote inside a cell that does not begin with one"},
};

TEST(Csv, FaultsAreReportedWithLineAndColumn) {
    for (const BadCsv& bad : BadTexts) {
        CsvReader reader(bad.text);
        CsvRow row;
        int rows = 0;
        while (reader.Next(row) == CsvReader::Result::Row) {
            ++rows;
        }
        EXPECT_EQ(rows, bad.goodRows) << bad.label;
        EXPECT_EQ(reader.Fault().line, bad.line) << bad.label;
        EXPECT_EQ(reader.Fault().column, bad.column) << bad.label;
        EXPECT_EQ(reader.Fault().reason, bad.reason) << bad.label;
        EXPECT_EQ(reader.Next(row), CsvReader::Result::Bad) << bad.label;
    }
}

TEST(Csv, CellsKnowTheLineInWhichTheyBegin) {
    CsvReader reader("a,\"b\n\nc\",d\ne");
    CsvRow row;
    ASSERT_EQ(reader.Next(row), CsvReader::Result::Row);
    ASSERT_EQ(row.size(), 3U);
    EXPECT_EQ(row[0].line, 1);
    EXPECT_EQ(row[1].line, 1);
    EXPECT_EQ(row[2].line, 3);
    ASSERT_EQ(reader.Next(row), CsvReader::Result::Row);
    EXPECT_EQ(row[0].line, 4);
}

TEST(Csv, CellsAreQuotedOnlyWhenTheyMustBe) {
    const std::pair<const char*, const char*> cells[] = {
        {"", ""},
        {"plain text; it's", "plain text; it's"},
        {" a ", " a "},
        {"a,b", "\"a,b\""},
        {"a\"b", "\"a\"\"b\""},
        {"a\nb", "\"a\nb\""},
        {"a\r", "\"a\r\""},
    };
    for (const auto& [cell, quoted] : cells) {
        EXPECT_EQ(QuoteCsvCell(cell), quoted);
        EXPECT_EQ(AllRows(QuoteCsvCell(cell) + ",x\n"), (Texts{{cell, "x"}}));
    }
}

}  // namespace
}  // namespace lunara::test
