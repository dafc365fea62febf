#include "tests/companion/fixture.h"
#include "tests/support/failing_file_calls.h"
#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

class Import : public CompanionTest {
  protected:
    /// Imports `csv` and returns the exported diary without its header line.
    std::string After(const std::string& csv) const {
        const Outcome outcome = ImportCsv(csv);
        EXPECT_EQ(outcome.code, ExitDone) << outcome.err;
        return ExportCsv().substr(sizeof Header - 1);
    }
};

constexpr DateKey Day = MakeDateKey(2006, 1, 2);

TEST_F(Import, CreatesTheFolderAndItsParents) {
    const std::string folder = Utf8(root / "a" / "b" / "c");
    const Outcome outcome =
        RunCli({"import", folder, "--csv", "-"}, "date,bleeding\n2006-01-02,3\n");
    EXPECT_EQ(outcome.code, ExitDone) << outcome.err;
    EXPECT_EQ(outcome.out + outcome.err, "");
    EXPECT_EQ(ReadBytes(root / "a" / "b" / "c" / "Bleeding.dat"), DayFile({{Day, 3}}));
}

TEST_F(Import, FolderMayHaveAnyName) {
    const std::filesystem::path folder = root / u8"caf\u00E9 \u6708";
    const Outcome outcome =
        RunCli({"import", Utf8(folder), "--csv", "-"}, "date,pms\n2006-01-02,1\n");
    EXPECT_EQ(outcome.code, ExitDone) << outcome.err;
    EXPECT_EQ(ReadBytes(folder / "Notes.dat"), DayFile({{Day, 2}}));
}

TEST_F(Import, HeaderAloneCreatesTheFolder) { EXPECT_EQ(After("date\n"), ""); }

TEST_F(Import, ReadsAFileOrStandardInput) {
    const std::string csv = Beside("in.csv", "date,bleeding\r\n2006-01-02,3\r\n");
    EXPECT_EQ(RunCli({"import", Diary(), "--csv", csv}).code, ExitDone);
    EXPECT_EQ(After("date,bleeding\n2006-01-03,2"), "2006-01-02,3,,,,\r\n2006-01-03,2,,,,\r\n");
}

TEST_F(Import, EmptyCellsLeaveWhatIsStored) {
    After("date,bleeding,temperature_f,cramps,pms,note\n2006-01-02,3,98.60,1,1,note\n");
    EXPECT_EQ(After("date,bleeding,temperature_f,cramps,pms,note\n2006-01-02,,,,,\n"),
              "2006-01-02,3,98.60,1,1,note\r\n");
    EXPECT_EQ(After("date,temperature_f\n2006-01-02,97.10\n"), "2006-01-02,3,97.10,1,1,note\r\n");
}

TEST_F(Import, ZeroClearsMarksAndNoneValuesDeleteRecords) {
    After("date,bleeding,temperature_f,cramps,pms\n2006-01-02,3,98.60,1,1\n");
    EXPECT_EQ(After("date,cramps\n2006-01-02,0\n"), "2006-01-02,3,98.60,,1,\r\n");
    EXPECT_EQ(After("date,pms\n2006-01-02,0\n"), "2006-01-02,3,98.60,,,\r\n");
    EXPECT_FALSE(std::filesystem::exists(InDiary("Notes.dat")));
    EXPECT_EQ(After("date,bleeding\n2006-01-02,0\n"), "2006-01-02,,98.60,,,\r\n");
    EXPECT_FALSE(std::filesystem::exists(InDiary("Bleeding.dat")));
    EXPECT_EQ(After("date,temperature_f\n2006-01-02,97.50\n"), "");
    EXPECT_FALSE(std::filesystem::exists(InDiary("Temperature.dat")));
}

TEST_F(Import, NoneValuesOnADayWithoutRecordsChangeNothing) {
    EXPECT_EQ(After("date,bleeding,temperature_f,cramps,pms\n2006-01-02,0,97.5,0,0\n"), "");
    EXPECT_EQ(Snapshot().size(), 1U);
}

TEST_F(Import, OtherNoteFlagBitsStay) {
    PutInDiary("Notes.dat", DayFile({{Day, 7}, {Day + 1, 4}}));
    After("date,cramps,pms\n2006-01-02,0,0\n2006-01-03,1,\n");
    EXPECT_EQ(ReadBytes(InDiary("Notes.dat")), DayFile({{Day, 4}, {Day + 1, 5}}));
}

TEST_F(Import, SeveralRowsForOneDayApplyInFileOrder) {
    EXPECT_EQ(After("date,bleeding,temperature_f,cramps,note\n"
                    "2006-01-03,1,,,\n"
                    "2006-01-02,1,98.1,1,first\n"
                    "2006-01-02,2,97.5,,second\n"
                    "2006-01-02,,,0,\n"),
              "2006-01-02,2,,,,second\r\n2006-01-03,1,,,,\r\n");
}

TEST_F(Import, FutureDaysAreAccepted) {
    EXPECT_EQ(After("date,bleeding,temperature_f\n2500-12-31,3,98.6\n"),
              "2500-12-31,3,98.60,,,\r\n");
}

TEST_F(Import, RowsInAnyOrderAreStoredInDateOrder) {
    After("date,bleeding\n2006-01-04,3\n2006-01-02,1\n2006-01-03,2\n");
    EXPECT_EQ(ReadBytes(InDiary("Bleeding.dat")), DayFile({{Day, 1}, {Day + 1, 2}, {Day + 2, 3}}));
}

TEST_F(Import, OnlyCollectionsThatChangeAreWritten) {
    // A save writes the current version byte, so an older one shows that a file was left alone.
    std::string bleeding = DayFile({{Day, 3}});
    std::string temperature = DayFile({{Day, 9800}});
    std::string pages = PageFile({Page(Day, "note")});
    bleeding[2] = temperature[2] = pages[2] = 0;
    PutInDiary("Bleeding.dat", bleeding);
    PutInDiary("Temperature.dat", temperature);
    PutInDiary("NotePages.dat", pages);
    const auto before = Snapshot();
    After("date,bleeding,temperature_f,note\n2006-01-02,3,98.00,note\n");
    EXPECT_EQ(Snapshot(), before);
    After("date,bleeding,temperature_f,note\n2006-01-02,2,98.00,note\n");
    EXPECT_EQ(ReadBytes(InDiary("Bleeding.dat")), DayFile({{Day, 2}}));
    EXPECT_EQ(ReadBytes(InDiary("Temperature.dat")), temperature);
    EXPECT_EQ(ReadBytes(InDiary("NotePages.dat")), pages);
}

TEST_F(Import, ChangedNoteMovesToTheEndAndOthersKeepTheirOrder) {
    PutInDiary("NotePages.dat", PageFile({Page(Day + 2, "c"), Page(Day, "a"), Page(Day + 1, "b")}));
    After("date,note\n2006-01-02,new\n2006-01-03,b\n");
    EXPECT_EQ(ReadBytes(InDiary("NotePages.dat")),
              PageFile({Page(Day + 2, "c"), Page(Day + 1, "b"), Page(Day, "new")}));
}

TEST_F(Import, SaveThatFailsAtAnyStepPutsEveryFileBack) {
    PutInDiary("Temperature.dat", DayFile({{Day, 9800}}));
    PutInDiary("Bleeding.dat", DayFile({{Day, 1}}));
    PutInDiary("Notes.dat", DayFile({{Day, 1}}));
    const auto before = Snapshot();
    constexpr std::pair<const char*, FileCallKind> Steps[] = {{"create", CreateCall},
                                                              {"write", WriteCall},
                                                              {"flush", FlushCall},
                                                              {"close", CloseCall},
                                                              {"rename", RenameCall}};
    for (const auto& [label, kind] : Steps) {
        const FailingFileCalls calls(
            {.kinds = kind, .pathEnd = TEXT("NotePages.new"), .times = FromThereOn});
        const Outcome outcome =
            ImportCsv("date,bleeding,temperature_f,cramps,note\n2006-01-02,2,97.5,0,note\n");
        EXPECT_EQ(outcome.code, ExitData);
        EXPECT_EQ(outcome.err,
                  Shown(Diary(), "NotePages.dat") + ": there is no room left on the disk\n");
        EXPECT_EQ(Snapshot(), before) << label;
    }
}

TEST_F(Import, SaveOnADiskThatIsFullFromThereOnChangesNothing) {
    PutInDiary("Temperature.dat", DayFile({{Day, 9800}}));
    PutInDiary("Bleeding.dat", DayFile({{Day, 1}}));
    const auto before = Snapshot();
    const FailingFileCalls calls({.kinds = CreateCall,
                                  .pathEnd = TEXT("NotePages.new"),
                                  .times = FromThereOn,
                                  .spreadsToAllFiles = true});
    const Outcome outcome = ImportCsv("date,bleeding,temperature_f,note\n2006-01-02,2,99,note\n");
    EXPECT_EQ(outcome.code, ExitData);
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(Import, SaveThatWasBrokenOffIsUndoneFirst) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 2}}));
    PutInDiary("Bleeding.old", DayFile({{Day, 1}}));
    PutInDiary("Save.set", "LUS1.r..");
    EXPECT_EQ(RunCli({"check", Diary()}).code, ExitDone);
    EXPECT_EQ(ReadBytes(InDiary("Bleeding.dat")), DayFile({{Day, 1}}));
    EXPECT_EQ(Snapshot().size(), 2U);  // the folder and its file
    PutInDiary("Bleeding.old", DayFile({{Day, 3}}));
    PutInDiary("Save.set", "LUS1.r..");
    EXPECT_EQ(ExportCsv(), std::string(Header) + "2006-01-02,3,,,,\r\n");
}

TEST_F(Import, FileThatCannotBeDeletedIsNamed) {
    PutInDiary("Temperature.dat", DayFile({{Day, 9800}}));
    PutInDiary("Notes.dat", DayFile({{Day, 1}}));
    const auto before = Snapshot();
    const FailingFileCalls calls({.kinds = RemoveCall,
                                  .pathEnd = TEXT("Notes.dat"),
                                  .times = FromThereOn,
                                  .error = ERROR_SUCCESS});
    const Outcome outcome = ImportCsv("date,temperature_f,cramps\n2006-01-02,99,0\n");
    EXPECT_EQ(outcome.code, ExitData);
    EXPECT_EQ(outcome.err, Shown(Diary(), "Notes.dat") + ": it could not be deleted\n");
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(Import, SiblingNameThatIsTakenByAFolderIsASaveThatFails) {
    PutInDiary("Temperature.dat", DayFile({{Day, 9800}}));
    std::filesystem::create_directories(InDiary("Bleeding.new"));
    const auto before = Snapshot();
    const Outcome outcome = ImportCsv("date,bleeding,temperature_f\n2006-01-02,1,99\n");
    EXPECT_EQ(outcome.code, ExitData);
    EXPECT_EQ(outcome.err, Shown(Diary(), "Bleeding.dat") + ": access is denied\n");
    EXPECT_EQ(Snapshot(), before);
}

struct RoundTrip {
    const char* label;
    std::string rows;
};

TEST_F(Import, WhatWasExportedComesBackTheSame) {
    const RoundTrip diaries[] = {
        {"plain", "2006-01-02,3,98.60,1,1,note\r\n"},
        {"line end in a note", "2006-01-02,,,,,\"a\r\nb\r\n\"\r\n"},
        {"carriage return in a note", "2006-01-02,,,,,\"a\rb\"\r\n"},
        {"quotes and commas", "2006-01-02,,,,,\"\"\"a\"\", b\"\r\n"},
        {"blanks around a note", "2006-01-02,,,,,  a  \r\n"},
        {"34 units", "2006-01-02,,,,," + std::string(34, 'x') + "\r\n"},
        {"68 units", "2006-01-02,,,,," + std::string(68, 'x') + "\r\n"},
        {"127 units", "2006-01-02,,,,," + std::string(127, 'x') + "\r\n"},
        {"moon", "2006-01-02,,,,,\xF0\x9F\x8C\x99 caf\xC3\xA9\r\n"},
        {"half a surrogate pair", "2006-01-02,,,,,a\xED\xA0\x80z\r\n"},
        {"extreme levels", "2006-01-02,-2147483648,,,,\r\n2006-01-03,2147483647,,,,\r\n"},
        {"extreme temperatures", "2006-01-02,,-21474836.48,,,\r\n2006-01-03,,21474836.47,,,\r\n"},
        {"first and last day", "1601-01-01,1,,,,\r\n2500-12-31,1,,,,\r\n"},
        {"31 February", "2006-02-28,1,,,,\r\n2006-02-31,2,98.00,1,,note\r\n"},
    };
    for (const RoundTrip& diary : diaries) {
        EXPECT_EQ(After(Header + diary.rows), diary.rows) << diary.label;
        std::filesystem::remove_all(root / "diary");
    }
}

TEST_F(Import, WhatOnlyADataFileHoldsIsNotAllKept) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 0}, {Day + 1, 2}}));
    PutInDiary("Temperature.dat", DayFile({{Day, NoTemperature}}));
    PutInDiary("Notes.dat", DayFile({{Day, 0}, {Day + 1, 5}, {Day + 2, 4}}));
    PutInDiary("NotePages.dat", PageFile({Page(Day + 4, "late"), Page(Day, ""), Page(Day + 1, "a"),
                                          Page(Day + 3, "b"), Page(Day + 1, "again")}));
    const std::string csv = ExportCsv();
    std::filesystem::remove_all(root / "diary");
    ASSERT_EQ(ImportCsv(csv).code, ExitDone);
    EXPECT_EQ(ReadBytes(InDiary("Bleeding.dat")), DayFile({{Day + 1, 2}}));
    EXPECT_FALSE(std::filesystem::exists(InDiary("Temperature.dat")));
    EXPECT_EQ(ReadBytes(InDiary("Notes.dat")), DayFile({{Day + 1, 1}}));
    EXPECT_EQ(ReadBytes(InDiary("NotePages.dat")),
              PageFile({Page(Day + 1, "a"), Page(Day + 3, "b"), Page(Day + 4, "late")}));
}

TEST_F(Import, BareLineFeedsInANoteBecomeLineEnds) {
    EXPECT_EQ(After("date,note\n2006-01-02,\"\na\n\nb\r\nc\rd\n\"\n"),
              "2006-01-02,,,,,\"\r\na\r\n\r\nb\r\nc\rd\r\n\"\r\n");
    const std::string fits(125, 'n');
    EXPECT_EQ(ImportCsv("date,note\n2006-01-03,\"\n" + fits + "\"\n").code, ExitDone);
    const Outcome outcome = ImportCsv("date,note\n2006-01-03,\"\nn" + fits + "\"\n");
    EXPECT_EQ(outcome.code, ExitData);
    EXPECT_NE(outcome.err.find("longer than 127"), std::string::npos) << outcome.err;
}

TEST_F(Import, ProbableSlipsAreNamedAndTaken) {
    const Outcome outcome = ImportCsv("date,bleeding\n2006-02-31,33\n");
    EXPECT_EQ(outcome.code, ExitDone);
    EXPECT_EQ(outcome.err,
              "-: line 2, column 1: date: the calendar has no such day: \"2006-02-31\"\n"
              "-: line 2, column 2: bleeding: not one of the levels 0 to 3: \"33\"\n");
}

TEST_F(Import, BadCsvChangesNothing) {
    After("date,bleeding\n2006-01-02,3\n");
    const auto before = Snapshot();
    const Outcome bad = ImportCsv("date,bleeding\n2006-01-02,1\n2006-01-03,much\n");
    EXPECT_EQ(bad.code, ExitData);
    EXPECT_EQ(bad.err, "-: line 3, column 2: bleeding: not a bleeding level: \"much\"\n");
    const Outcome longNote = ImportCsv("date,note\n2006-01-02," + std::string(128, 'n') + "\n");
    EXPECT_EQ(longNote.code, ExitData);
    EXPECT_NE(longNote.err.find("line 2, column 2: note: longer than 127"), std::string::npos);
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(Import, BadCsvCreatesNoFolder) {
    EXPECT_EQ(ImportCsv("date,foo\n").code, ExitData);
    EXPECT_EQ(RunCli({"import", Diary(), "--csv", Utf8(root / "no.csv")}).err,
              Utf8(root / "no.csv") + ": The file does not exist\n");
    EXPECT_TRUE(Snapshot().empty());
}

TEST_F(Import, FolderThatCannotBeMadeIsNamed) {
    const std::string folder = Shown(Beside("file", "x"), "diary");
    const auto before = Snapshot();
    const Outcome outcome = RunCli({"import", folder, "--csv", "-"}, "date,pms\n2006-01-02,1\n");
    EXPECT_EQ(outcome.code, ExitData);
    EXPECT_EQ(outcome.err.rfind(folder + ": ", 0), 0U) << outcome.err;
    EXPECT_GT(outcome.err.size(), folder.size() + 5);
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(Import, DataFileThatIsAFolderIsRefused) {
    std::filesystem::create_directories(InDiary("Bleeding.dat"));
    const auto before = Snapshot();
    const Outcome outcome = ImportCsv("date,temperature_f\n2006-01-02,98.6\n");
    EXPECT_EQ(outcome.code, ExitData);
    EXPECT_EQ(outcome.err,
              Shown(Diary(), "Bleeding.dat") + ": Data file is corupted or wrong type\n");
    EXPECT_EQ(Snapshot(), before);
}

}  // namespace
}  // namespace lunara::test
