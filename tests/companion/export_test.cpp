#include <clocale>
#include <locale>
#include <sstream>

#include "tests/companion/fixture.h"
#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

class Export : public CompanionTest {};

constexpr DateKey Day = MakeDateKey(2006, 1, 2);

TEST_F(Export, WritesOneRowForEveryDayWithARecordInDateOrder) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 3}, {Day + 3, 1}}));
    PutInDiary("Temperature.dat", DayFile({{Day + 1, 9860}, {Day + 3, 9700}}));
    PutInDiary("Notes.dat", DayFile({{Day + 2, 1}, {Day + 3, 2}, {Day + 4, 3}}));
    PutInDiary("NotePages.dat", PageFile({Page(Day + 5, "later"), Page(Day, "a, \"b\"")}));
    EXPECT_EQ(ExportCsv(), std::string(Header) +
                               "2006-01-02,3,,,,\"a, \"\"b\"\"\"\r\n"
                               "2006-01-03,,98.60,,,\r\n"
                               "2006-01-04,,,1,,\r\n"
                               "2006-01-05,1,97.00,,1,\r\n"
                               "2006-01-06,,,1,1,\r\n"
                               "2006-01-07,,,,,later\r\n");
}

TEST_F(Export, StoredValuesAreWrittenAsTheyAre) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 0}, {Day + 1, -1}, {Day + 2, 2147483647}}));
    PutInDiary("Temperature.dat", DayFile({{Day, NoTemperature}, {Day + 1, -5}}));
    PutInDiary("Notes.dat", DayFile({{Day + 3, 0}, {Day + 4, 7}}));
    EXPECT_EQ(ExportCsv(), std::string(Header) +
                               "2006-01-02,0,97.50,,,\r\n"
                               "2006-01-03,-1,-0.05,,,\r\n"
                               "2006-01-04,2147483647,,,,\r\n"
                               "2006-01-05,,,,,\r\n"
                               "2006-01-06,,,1,1,\r\n");
}

TEST_F(Export, ImpossibleStoredDateIsWrittenAsItIs) {
    PutInDiary("Bleeding.dat", DayFile({{MakeDateKey(2006, 2, 31), 2}}));
    EXPECT_EQ(ExportCsv(), std::string(Header) + "2006-02-31,2,,,,\r\n");
}

TEST_F(Export, NoteOfSeveralPagesIsOneText) {
    const std::string full(34, 'x');
    PutInDiary("NotePages.dat",
               PageFile({Page(Day, full), Page(Day, "end"), Page(Day + 1, full), Page(Day + 1, ""),
                         Page(Day + 2, full), Page(Day, "again")}));
    // The last unit of a day's last page reads as the terminator, whatever it holds. Pages of a day
    // that do not follow its first ones directly are not part of its note.
    EXPECT_EQ(ExportCsv(), std::string(Header) + "2006-01-02,,,,," + full + "end\r\n" +
                               "2006-01-03,,,,," + full + "\r\n" + "2006-01-04,,,,," +
                               full.substr(1) + "\r\n");
}

TEST_F(Export, FileIsReplacedWhole) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 3}}));
    const std::string csv = Beside("out.csv", std::string(1000, 'o'));
    const Outcome outcome = RunCli({"export", Diary(), "--csv", csv});
    EXPECT_EQ(outcome.code, ExitDone) << outcome.err;
    EXPECT_EQ(outcome.out + outcome.err, "");
    EXPECT_EQ(ReadBytes(root / "out.csv"), std::string(Header) + "2006-01-02,3,,,,\r\n");
    EXPECT_EQ(Snapshot().size(), 3U);  // no sibling file is left
}

TEST_F(Export, FileThatCannotBeWrittenIsNamed) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 3}}));
    const auto before = Snapshot();
    const std::string missing = Utf8(root / "nowhere" / "out.csv");
    const Outcome outcome = RunCli({"export", Diary(), "--csv", missing});
    EXPECT_EQ(outcome.code, ExitData);
    EXPECT_EQ(outcome.err.rfind(missing + ": there is no such ", 0), 0U) << outcome.err;
    const Outcome onFolder = RunCli({"export", Diary(), "--csv", Diary()});
    EXPECT_EQ(onFolder.code, ExitData);
    EXPECT_EQ(onFolder.err.rfind(Diary() + ": ", 0), 0U) << onFolder.err;
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(Export, StandardOutputThatCannotBeWrittenIsAnError) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 3}}));
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(RunCompanion({"export", Diary(), "--csv", "-"}, {in, out, err}), ExitData);
    EXPECT_EQ(err.str(), "-: standard output could not be written\n");
}

TEST_F(Export, FileOfTheDiaryIsNeverOverwrittenWithCsv) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 3}}));
    std::filesystem::create_directories(InDiary("below"));
    const auto before = Snapshot();
    const std::string spellings[] = {
        Diary() + "/Bleeding.dat",
        Diary() + "\\Bleeding.dat",
        Diary() + "/./below\\..//Bleeding.dat",
        Diary() + "/bleeding.DAT",
        Diary() + "/Bleeding.dat. .",
        Diary() + "/Notes.dat",  // not there yet
        Diary() + "\\notePages.dat",
        Diary() + "/Temperature.new",
        Diary() + "/Temperature.old",
        Diary() + "/Save.set",
        Diary() + "/save.END",
    };
    for (const std::string& csv : spellings) {
        const Outcome outcome = RunCli({"export", Diary(), "--csv", csv});
        EXPECT_EQ(outcome.code, ExitData) << csv;
        EXPECT_EQ(outcome.err, csv + ": a data file of the diary itself\n");
        EXPECT_EQ(Snapshot(), before) << csv;
    }
    const std::filesystem::path here = std::filesystem::current_path();
    std::filesystem::current_path(Diary());
    EXPECT_EQ(RunCli({"export", ".", "--csv", "Notes.dat"}).code, ExitData);
    EXPECT_EQ(RunCli({"export", Diary(), "--csv", "notes.dat"}).code, ExitData);
    std::filesystem::current_path(here);
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(Export, OtherNamesAndFoldersAreFree) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 3}}));
    for (const std::string& csv : {Diary() + "/Bleeding.csv", Utf8(root / "Bleeding.dat")}) {
        const Outcome outcome = RunCli({"export", Diary(), "--csv", csv});
        EXPECT_EQ(outcome.code, ExitDone) << outcome.err;
        EXPECT_EQ(ReadBytes(csv), std::string(Header) + "2006-01-02,3,,,,\r\n");
    }
}

TEST_F(Export, FilesBesideTheTargetStay) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 3}}));
    const std::string csv = Utf8(root / "out.csv");
    Beside("out.csv.new", "hers");
    Beside("out.csv.2.new", "hers, too");
    EXPECT_EQ(RunCli({"export", Diary(), "--csv", csv}).code, ExitDone);
    EXPECT_EQ(ReadBytes(csv), std::string(Header) + "2006-01-02,3,,,,\r\n");
    EXPECT_EQ(ReadBytes(root / "out.csv.new"), "hers");
    EXPECT_EQ(ReadBytes(root / "out.csv.2.new"), "hers, too");
    EXPECT_EQ(Snapshot().size(), 5U);
}

/// Numbers with a decimal comma and a point between thousands.
class CommaNumbers : public std::numpunct<char> {
  protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// Makes such numbers the global locale until the end of the scope.
class LocaleScope {
  public:
    LocaleScope() : before(std::locale::global(std::locale(std::locale(), new CommaNumbers))) {
        std::setlocale(LC_ALL, "de_DE.UTF-8");  // no effect where the system lacks it
    }
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;
    ~LocaleScope() {
        std::locale::global(before);
        std::setlocale(LC_ALL, "C");
    }

  private:
    std::locale before;
};

TEST_F(Export, LocaleChangesNothing) {
    const LocaleScope locale;
    const std::string csv = std::string(Header) + "2006-01-02,123456,98.65,,,\r\n";
    const Outcome import = ImportCsv(csv);
    EXPECT_EQ(import.code, ExitDone) << import.err;
    EXPECT_EQ(ExportCsv(), csv);
    const Outcome json = RunCli({"predict", Diary(), "--json", "--today", "2006-01-02"});
    EXPECT_NE(json.out.find("\"bleedingLevel\": 123456.0"), std::string::npos) << json.out;
    const Outcome table = RunCli({"predict", Diary(), "--today", "2006-01-02"});
    EXPECT_NE(table.out.find(" 123456.00 "), std::string::npos) << table.out;
    const Outcome bad = ImportCsv("date\n" + std::string(1233, '\n') + "x\n");
    EXPECT_NE(bad.err.find("line 1235, column 1"), std::string::npos) << bad.err;
}

}  // namespace
}  // namespace lunara::test
