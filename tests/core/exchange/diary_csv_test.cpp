#include "exchange/diary_csv.h"

#include <gtest/gtest.h>

#include <limits>

namespace lunara::test {
namespace {

DayChange OnlyChange(const std::string& text) {
    DiaryCsv csv;
    CsvFault fault;
    EXPECT_TRUE(ReadDiaryCsv(text, csv, fault)) << text << fault.reason;
    EXPECT_EQ(csv.changes.size(), 1U) << text;
    return csv.changes.empty() ? DayChange{} : csv.changes[0];
}

TEST(DiaryCsv, FilledCellsSetAndEmptyCellsLeave) {
    const DayChange all = OnlyChange(
        "date,bleeding,temperature_f,cramps,pms,note\n2006-01-02,3,98.60,1,0,\"a, b\"\n");
    EXPECT_EQ(all.date, MakeDateKey(2006, 1, 2));
    EXPECT_EQ(all.bleeding, 3);
    EXPECT_EQ(all.temperature, 9860);
    EXPECT_EQ(all.cramps, true);
    EXPECT_EQ(all.pms, false);
    EXPECT_EQ(all.note, WideString(TEXT("a, b")));

    const DayChange none =
        OnlyChange("date,bleeding,temperature_f,cramps,pms,note\n2006-01-02,,,,,\"\"\n");
    EXPECT_FALSE(none.bleeding || none.temperature || none.cramps || none.pms || none.note);
}

TEST(DiaryCsv, ColumnsStandInAnyOrderAndMayBeMissing) {
    const DayChange change = OnlyChange("pms,\"date\"\r\n1,2006-01-02\r\n");
    EXPECT_EQ(change.date, MakeDateKey(2006, 1, 2));
    EXPECT_EQ(change.pms, true);
    EXPECT_FALSE(change.bleeding);
}

TEST(DiaryCsv, ByteOrderMarkIsSkipped) {
    EXPECT_EQ(OnlyChange("\xEF\xBB\xBF"
                         "date,bleeding\n2006-01-02,1\n")
                  .bleeding,
              1);
    EXPECT_EQ(OnlyChange("\xEF\xBB\xBF"
                         "\"date\",bleeding\n2006-01-02,1\n")
                  .bleeding,
              1);
}

TEST(DiaryCsv, HeaderAloneChangesNothing) {
    DiaryCsv csv;
    CsvFault fault;
    EXPECT_TRUE(ReadDiaryCsv("date,note", csv, fault));
    EXPECT_TRUE(csv.changes.empty());
}

struct GoodTemperature {
    const char* text;
    std::int32_t hundredths;
};

TEST(DiaryCsv, TemperaturesHaveAtMostTwoDecimals) {
    constexpr GoodTemperature Good[] = {
        {"98.60", 9860},
        {"98.6", 9860},
        {"98", 9800},
        {"0.05", 5},
        {"097.5", 9750},
        {"-0.05", -5},
        {"-1.00", -100},
        {"100.01", 10001},
        {"0", 0},
        {"-0.00", 0},
        {"21474836.47", 2147483647},
        {"-21474836.48", std::numeric_limits<std::int32_t>::min()},
    };
    for (const GoodTemperature& good : Good) {
        const std::string text = std::string("date,temperature_f\n2006-01-02,") + good.text;
        EXPECT_EQ(OnlyChange(text).temperature, good.hundredths) << good.text;
    }
}

TEST(DiaryCsv, TemperaturesArePrintedWithTwoDecimals) {
    const std::pair<std::int32_t, const char*> texts[] = {
        {9860, "98.60"},
        {9750, "97.50"},
        {5, "0.05"},
        {0, "0.00"},
        {-5, "-0.05"},
        {-100, "-1.00"},
        {std::numeric_limits<std::int32_t>::max(), "21474836.47"},
        {std::numeric_limits<std::int32_t>::min(), "-21474836.48"},
    };
    for (const auto& [hundredths, text] : texts) {
        EXPECT_EQ(TemperatureText(hundredths), text);
    }
}

struct BadDiary {
    const char* label;
    std::string text;
    int line;
    int column;
    const char* reason;  // a part of the fault's reason
};

constexpr char GoodHeader[] = "date,bleeding,temperature_f,cramps,pms,note\n2006-01-02,,,,,\n";

BadDiary BadCell(const char* label, const std::string& row, int column, const char* reason) {
    return {label, GoodHeader + row + "\n", 3, column, reason};
}

std::vector<BadDiary> BadDiaries() {
    return {
        {"empty file", "", 1, 1, "header"},
        {"only line ends", "\n\n", 1, 1, "header"},
        {"unknown column", "date,foo\n", 1, 2, "unknown column \"foo\""},
        {"column in capitals", "Date\n", 1, 1, "unknown column"},
        {"column with a blank", "date, note\n", 1, 2, "unknown column"},
        {"empty column name", "date,\n", 1, 2, "unknown column \"\""},
        {"column twice", "date,note,date\n", 1, 3, "twice"},
        {"no date column", "note\n", 1, 1, "no column \"date\""},
        {"broken header", "date,\"note\n", 1, 2, "never closed"},
        BadCell("too few cells", "2006-01-03,1", 3, "fewer cells"),
        BadCell("too many cells", "2006-01-03,,,,,,", 7, "more cells"),
        BadCell("broken quotes", "2006-01-03,,,,,\"a\"b", 6, "behind a closing quote"),
        BadCell("empty date", ",1,,,,", 1, "date: not a date"),
        BadCell("day 0", "2006-01-00,,,,,", 1, "not a date"),
        BadCell("day 32", "2006-01-32,,,,,", 1, "not a date"),
        BadCell("month 0", "2006-00-01,,,,,", 1, "not a date"),
        BadCell("month 13", "2006-13-01,,,,,", 1, "not a date"),
        BadCell("year 1600", "1600-12-31,,,,,", 1, "not a date"),
        BadCell("year 2501", "2501-01-01,,,,,", 1, "not a date"),
        BadCell("date with one digit", "2006-1-03,,,,,", 1, "not a date"),
        BadCell("date with slashes", "2006/01/03,,,,,", 1, "not a date"),
        BadCell("date with a time", "2006-01-03T00:00,,,,,", 1, "not a date"),
        BadCell("date with a blank", " 2006-01-3,,,,,", 1, "not a date"),
        BadCell("date with a sign", "2006-+1-03,,,,,", 1, "not a date"),
        BadCell("bleeding word", "2006-01-03,heavy,,,,", 2, "bleeding: not a bleeding level"),
        BadCell("bleeding with decimals", "2006-01-03,1.0,,,,", 2, "not a bleeding level"),
        BadCell("bleeding with a plus", "2006-01-03,+1,,,,", 2, "not a bleeding level"),
        BadCell("bleeding with a blank", "2006-01-03,1 ,,,,", 2, "not a bleeding level"),
        BadCell("bleeding of 33 bits", "2006-01-03,2147483648,,,,", 2, "not a bleeding level"),
        BadCell("bleeding below 32 bits", "2006-01-03,-2147483649,,,,", 2, "not a bleeding level"),
        BadCell("bleeding past 64 bits", "2006-01-03,18446744073709551617,,,,", 2, "not a bl"),
        BadCell("three decimals", "2006-01-03,,98.600,,,", 3, "temperature_f: not a temperature"),
        BadCell("decimal comma", "2006-01-03,,\"98,6\",,,", 3, "not a temperature"),
        BadCell("point without decimals", "2006-01-03,,98.,,,", 3, "not a temperature"),
        BadCell("decimals alone", "2006-01-03,,.5,,,", 3, "not a temperature"),
        BadCell("minus alone", "2006-01-03,,-.5,,,", 3, "not a temperature"),
        BadCell("minus in the decimals", "2006-01-03,,98.-5,,,", 3, "not a temperature"),
        BadCell("two points", "2006-01-03,,9.8.6,,,", 3, "not a temperature"),
        BadCell("exponent", "2006-01-03,,1e2,,,", 3, "not a temperature"),
        BadCell("unit", "2006-01-03,,98.6F,,,", 3, "not a temperature"),
        BadCell("temperature of 33 bits", "2006-01-03,,21474836.48,,,", 3, "not a temperature"),
        BadCell("temperature nan", "2006-01-03,,nan,,,", 3, "not a temperature"),
        BadCell("cramps 2", "2006-01-03,,,2,,", 4, "cramps: neither 1 nor 0"),
        BadCell("cramps yes", "2006-01-03,,,yes,,", 4, "neither 1 nor 0"),
        BadCell("cramps 01", "2006-01-03,,,01,,", 4, "neither 1 nor 0"),
        BadCell("pms x", "2006-01-03,,,,x,", 5, "pms: neither 1 nor 0"),
        BadCell("note of 128 units", "2006-01-03,,,,," + std::string(128, 'n'), 6,
                "note: longer than 127 UTF-16 units"),
        BadCell("note that is not UTF-8", "2006-01-03,,,,,caf\xE9", 6, "note: not UTF-8"),
        BadCell("zero character in a note", std::string("2006-01-03,,,,,a\0b", 18), 6,
                "zero character"),
    };
}

TEST(DiaryCsv, WhatIsWrongIsReportedWithLineAndColumn) {
    for (const BadDiary& bad : BadDiaries()) {
        DiaryCsv csv;
        CsvFault fault;
        EXPECT_FALSE(ReadDiaryCsv(bad.text, csv, fault)) << bad.label;
        EXPECT_EQ(fault.line, bad.line) << bad.label;
        EXPECT_EQ(fault.column, bad.column) << bad.label;
        EXPECT_NE(fault.reason.find(bad.reason), std::string::npos)
            << bad.label << ": " << fault.reason;
    }
}

TEST(DiaryCsv, LineBreaksInNotesCountAsLines) {
    DiaryCsv csv;
    CsvFault fault;
    EXPECT_FALSE(ReadDiaryCsv("note,date\n\"a\r\nb\nc\",2006-01-02\nx,y\n", csv, fault));
    EXPECT_EQ(fault.line, 5);
    EXPECT_EQ(fault.column, 2);
}

TEST(DiaryCsv, MessagesShowNothingThatATerminalObeys) {
    DiaryCsv csv;
    CsvFault fault;
    EXPECT_FALSE(ReadDiaryCsv("date,bleeding\n2006-01-02,\"\x1B[2J\nx\"\n", csv, fault));
    EXPECT_EQ(fault.reason, "bleeding: not a bleeding level: \"?[2J?x\"");
}

TEST(DiaryCsv, NoteMayHave127UnitsCountedInUtf16) {
    const std::string longest(127, 'n');
    EXPECT_EQ(OnlyChange("date,note\n2006-01-02," + longest).note->size(), 127U);
    std::string moons;  // two UTF-16 units each
    for (int i = 0; i < 63; ++i) {
        moons += "\xF0\x9F\x8C\x99";
    }
    EXPECT_EQ(OnlyChange("date,note\n2006-01-02," + moons + "n").note->size(), 127U);
    DiaryCsv csv;
    CsvFault fault;
    EXPECT_FALSE(ReadDiaryCsv("date,note\n2006-01-02," + moons + "nn", csv, fault));
}

struct OddCell {
    const char* cells;
    int column;
    const char* reason;
};

TEST(DiaryCsv, ProbableSlipsAreTakenAndNamed) {
    constexpr OddCell Odd[] = {
        {"2006-02-31,,", 1, "date: the calendar has no such day: \"2006-02-31\""},
        {"2006-01-02,4,", 2, "bleeding: not one of the levels 0 to 3: \"4\""},
        {"2006-01-02,-1,", 2, "bleeding: not one of the levels 0 to 3: \"-1\""},
        {"2006-01-02,,94.99", 3, "temperature_f: not between 95.00 and 100.00: \"94.99\""},
        {"2006-01-02,,100.01", 3, "temperature_f: not between 95.00 and 100.00: \"100.01\""},
    };
    for (const OddCell& odd : Odd) {
        DiaryCsv csv;
        CsvFault fault;
        const std::string text = std::string("date,bleeding,temperature_f\n") + odd.cells;
        ASSERT_TRUE(ReadDiaryCsv(text, csv, fault)) << odd.cells;
        EXPECT_EQ(csv.changes.size(), 1U) << odd.cells;
        ASSERT_EQ(csv.oddities.size(), 1U) << odd.cells;
        EXPECT_EQ(csv.oddities[0].line, 2) << odd.cells;
        EXPECT_EQ(csv.oddities[0].column, odd.column) << odd.cells;
        EXPECT_EQ(csv.oddities[0].reason, odd.reason);
    }
    DiaryCsv csv;
    CsvFault fault;
    ASSERT_TRUE(ReadDiaryCsv("date,bleeding,temperature_f\n2004-02-29,0,95\n2004-02-29,3,100.00\n",
                             csv, fault));
    EXPECT_TRUE(csv.oddities.empty());
}

}  // namespace
}  // namespace lunara::test
