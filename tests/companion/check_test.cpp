#include "tests/companion/fixture.h"
#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

class Check : public CompanionTest {};

constexpr DateKey Day = MakeDateKey(2006, 1, 2);

TEST_F(Check, PrintsOneLineForEachFileInLoadOrder) {
    PutInDiary("Temperature.dat", DayFile({{Day, 9800}, {Day + 1, 9810}}));
    PutInDiary("Bleeding.dat", DayFile({{Day, 3}}));
    PutInDiary("Notes.dat", DayFile({}));
    const Outcome outcome = RunCli({"check", Diary()});
    EXPECT_EQ(outcome.code, ExitDone);
    EXPECT_EQ(outcome.out,
              "Temperature.dat: good, 2 records\n"
              "Bleeding.dat: good, 1 record\n"
              "Notes.dat: good, 0 records\n"
              "NotePages.dat: no file, nothing recorded\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(Check, EmptyFolderIsAnEmptyDiary) {
    std::filesystem::create_directory(root / "diary");
    EXPECT_EQ(RunCli({"check", Diary()}).code, ExitDone);
    EXPECT_EQ(ExportCsv(), Header);
}

TEST_F(Check, FolderThatDoesNotExistIsReported) {
    const std::string file = Beside("file", "");
    const std::vector<std::string> commands[] = {
        {"check"}, {"predict"}, {"predict", "--json"}, {"export", "--csv", "-"}};
    for (std::vector<std::string> arguments : commands) {
        for (const std::string& folder : {Diary(), Shown(Diary(), "deeper"), file}) {
            std::vector<std::string> line = arguments;
            line.push_back(folder);
            const Outcome outcome = RunCli(line);
            EXPECT_EQ(outcome.code, ExitData) << arguments[0];
            EXPECT_EQ(outcome.err, folder + ": The file does not exist\n") << arguments[0];
            EXPECT_EQ(outcome.out, "") << arguments[0];
        }
    }
    EXPECT_EQ(Snapshot().size(), 1U);
}

TEST_F(Check, FolderWithATooLongPathIsRefused) {
    // Paths cut at the limit would name one file for all four data files.
    const std::string longName(250, 'd');
    const std::string folder = Utf8(root / longName);
    for (const char* command : {"import", "sample"}) {
        std::vector<std::string> line = {command, folder};
        if (command == std::string("import")) {
            line.insert(line.end(), {"--csv", "-"});
        }
        const Outcome outcome = RunCli(line, "date,bleeding\n2006-01-02,1\n");
        EXPECT_EQ(outcome.code, ExitData) << command;
        EXPECT_NE(outcome.err.find("the path is too long"), std::string::npos) << outcome.err;
    }
    EXPECT_TRUE(Snapshot().empty());
}

struct BadFile {
    const char* label;
    const char* name;
    std::string bytes;
    const char* message;
};

std::vector<BadFile> BadFiles() {
    const std::string good = DayFile({{Day, 1}, {Day + 1, 2}});
    const auto with = [&good](std::size_t offset, char byte) {
        std::string bytes = good;
        bytes[offset] = byte;
        return bytes;
    };
    return {
        {"foreign", "Bleeding.dat", with(0, 'M'), "Not a valid Lunara data file"},
        {"second letter", "Bleeding.dat", with(1, 'V'), "Not a valid Lunara data file"},
        {"newer", "Bleeding.dat", with(3, 1), "Data file requires new version of Lunara"},
        {"much newer", "Bleeding.dat", with(2, 2), "Data file requires new version of Lunara"},
        {"half a record", "Bleeding.dat", good + "half", "Data file is corupted or wrong type"},
        {"pages as bleeding", "Bleeding.dat", good.substr(0, 4) + std::string(68, 'x'),
         "Data file is corupted or wrong type"},
        {"half a page", "NotePages.dat", PageFile({Page(Day, "note")}) + "half",
         "Data file is corupted or wrong type"},
        {"empty file", "Bleeding.dat", "", "Data file is corupted or wrong type"},
        {"short header", "Bleeding.dat", "LU\x01", "Data file is corupted or wrong type"},
        {"same day twice", "Bleeding.dat", DayFile({{Day, 1}, {Day, 2}}), "User/Password invalid"},
        {"days out of order", "Temperature.dat", DayFile({{Day + 1, 1}, {Day, 2}}),
         "User/Password invalid"},
        {"day 32", "Notes.dat", DayFile({{MakeDateKey(2006, 1, 32), 1}}), "User/Password invalid"},
        {"day 0", "Notes.dat", DayFile({{MakeDateKey(2006, 1, 0), 1}}), "User/Password invalid"},
        {"month 13", "Notes.dat", DayFile({{MakeDateKey(2006, 13, 1), 1}}),
         "User/Password invalid"},
        {"year 1600", "Notes.dat", DayFile({{MakeDateKey(1600, 1, 1), 1}}),
         "User/Password invalid"},
        {"year 2501 in pages", "NotePages.dat", PageFile({Page(MakeDateKey(2501, 1, 1), "x")}),
         "User/Password invalid"},
    };
}

TEST_F(Check, BadFileIsNamedWithItsMessageAndStaysAsItIs) {
    const std::string csv = Beside("in.csv", "date,pms\n2006-01-05,1\n");
    for (const BadFile& bad : BadFiles()) {
        PutInDiary(bad.name, bad.bytes);
        const auto before = Snapshot();
        const std::vector<std::string> lines[] = {
            {"check", Diary()},
            {"predict", Diary()},
            {"export", Diary(), "--csv", "-"},
            {"export", Diary(), "--csv", Utf8(root / "out.csv")},
            {"import", Diary(), "--csv", csv},
        };
        for (const std::vector<std::string>& line : lines) {
            const Outcome outcome = RunCli(line);
            EXPECT_EQ(outcome.code, ExitData) << bad.label << ' ' << line[0];
            EXPECT_EQ(outcome.err, Shown(Diary(), bad.name) + ": " + bad.message + "\n")
                << bad.label << ' ' << line[0];
        }
        EXPECT_EQ(Snapshot(), before) << bad.label;
        std::filesystem::remove(InDiary(bad.name));
    }
}

TEST_F(Check, StopsAtTheFirstBadFile) {
    PutInDiary("Bleeding.dat", "foreign");
    PutInDiary("Notes.dat", "foreign");
    const Outcome outcome = RunCli({"check", Diary()});
    EXPECT_EQ(outcome.out, "Temperature.dat: no file, nothing recorded\n");
    EXPECT_EQ(outcome.err, Shown(Diary(), "Bleeding.dat") + ": Not a valid Lunara data file\n");
}

}  // namespace
}  // namespace lunara::test
