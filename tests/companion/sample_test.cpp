#include "tools/lunara-cli/sample_diary.h"

#include <nlohmann/json.hpp>

#include "platform/clock.h"
#include "platform/text.h"
#include "tests/companion/fixture.h"
#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

class Sample : public CompanionTest {};

constexpr DateKey Today = MakeDateKey(2006, 11, 20);
constexpr char TodayText[] = "2006-11-20";

TEST_F(Sample, GivesAProperPrediction) {
    ASSERT_EQ(RunCli({"sample", Diary(), "--today", TodayText}).code, ExitDone);
    const Outcome outcome = RunCli({"predict", Diary(), "--today", TodayText, "--json"});
    ASSERT_EQ(outcome.code, ExitDone) << outcome.err;
    const auto json = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(json["warning"], "");
    EXPECT_EQ(json["lastValidPeriodStart"], "2006-11-09");
    EXPECT_EQ(json["cycles"].size(), 26U);
    EXPECT_EQ(json["discardedPeriods"], 0);
    EXPECT_EQ(json["invalidCycles"], 1);  // the open cycle
    EXPECT_EQ(json["cycles"][0]["cycleLength"], 29);
    EXPECT_EQ(json["cycles"][25]["cycleLength"], 32);
    EXPECT_GT(json["days"].back()["date"], "2007-10-01");
}

TEST_F(Sample, EndsTodayAndBeginsTwoYearsBefore) {
    ASSERT_EQ(RunCli({"sample", Diary(), "--today", TodayText}).code, ExitDone);
    UserData data;
    ASSERT_EQ(data.LoadFolder(FromUtf8(Diary())->c_str(), TEXT("")), 1);
    EXPECT_EQ(data.Bleeding().At(0).date, MakeDateKey(2004, 11, 28));
    for (const DayValueList* list : {&data.Bleeding(), &data.Temperature(), &data.NoteFlags()}) {
        EXPECT_LE(list->At(list->Count() - 1).date, Today);
    }
    EXPECT_EQ(data.Temperature().At(data.Temperature().Count() - 1).date, Today);
    for (const NotePage& page : data.NotePages()) {
        EXPECT_LE(page.date, Today);
    }
}

TEST_F(Sample, RecordsAreOnesThatTheUserCouldHaveEntered) {
    SYSTEMTIME today{};
    FromDateKey(Today, today);
    UserData data;
    ASSERT_EQ(FillSampleDiary(data, today), 1);
    EXPECT_GT(data.Temperature().Count(), 600);
    EXPECT_LT(data.Temperature().Count(), 710);
    for (const DayValue& record : data.Temperature()) {
        EXPECT_GE(record.value, 9500);
        EXPECT_LE(record.value, 10000);
        EXPECT_EQ(record.value % 10, 0);
        EXPECT_NE(record.value, NoTemperature);
    }
    for (const DayValue& record : data.Bleeding()) {
        EXPECT_GE(record.value, 1);
        EXPECT_LE(record.value, 3);
    }
    EXPECT_GT(data.NoteFlags().Count(), 20);
    for (const DayValue& record : data.NoteFlags()) {
        EXPECT_GE(record.value, 1);
        EXPECT_LE(record.value, 3);
    }
    EXPECT_GT(data.NotePages().Count(), 20);
}

TEST_F(Sample, TemperaturesRiseAfterOvulation) {
    SYSTEMTIME today{};
    FromDateKey(Today, today);
    UserData data;
    ASSERT_EQ(FillSampleDiary(data, today), 1);
    // The first cycle has 29 days and ovulates on its 17th.
    const std::int32_t start = DayNumber(data.Bleeding().At(0).date);
    std::int32_t sums[2] = {};
    std::int32_t counts[2] = {};
    for (const DayValue& record : data.Temperature()) {
        const std::int32_t day = DayNumber(record.date) - start + 1;
        if (day < 17 || (day > 18 && day < 29)) {
            sums[day > 17 ? 1 : 0] += record.value;
            ++counts[day > 17 ? 1 : 0];
        }
    }
    ASSERT_GT(counts[0], 10);
    ASSERT_GT(counts[1], 7);
    EXPECT_GT(sums[1] / counts[1], sums[0] / counts[0] + 40);
}

TEST_F(Sample, SameTodayGivesTheSameFiles) {
    ASSERT_EQ(RunCli({"sample", Diary(), "--today", TodayText}).code, ExitDone);
    const auto first = Snapshot();
    EXPECT_EQ(first.size(), 5U);
    std::filesystem::remove_all(root / "diary");
    ASSERT_EQ(RunCli({"sample", Diary(), "--today", TodayText}).code, ExitDone);
    EXPECT_EQ(Snapshot(), first);
}

TEST_F(Sample, WithoutTodayItEndsOnTheClocksDay) {
    SYSTEMTIME now{};
    FromDateKey(MakeDateKey(2020, 2, 29), now);
    SetLocalNow(now);
    EXPECT_EQ(RunCli({"sample", Diary()}).code, ExitDone);
    ReleaseClock();
    EXPECT_NE(ExportCsv().find("\r\n2020-02-29,"), std::string::npos);
    EXPECT_EQ(ExportCsv().find("\r\n2020-03-01,"), std::string::npos);
}

TEST_F(Sample, DiaryWhoseSaveWasBrokenOffIsADiary) {
    PutInDiary("Bleeding.old",
               "anything");  // moved away by the save, with no new file in its place
    PutInDiary("Save.set", "LUS1.r..");
    EXPECT_EQ(RunCli({"sample", Diary()}).code, ExitData);
    EXPECT_EQ(ReadBytes(InDiary("Bleeding.dat")), "anything");
}

TEST_F(Sample, AnExistingDiaryIsNotTouched) {
    for (const char* name : {"Temperature.dat", "Bleeding.dat", "Notes.dat", "NotePages.dat"}) {
        PutInDiary(name, "anything");
        const auto before = Snapshot();
        const Outcome outcome = RunCli({"sample", Diary()});
        EXPECT_EQ(outcome.code, ExitData) << name;
        EXPECT_EQ(outcome.err.rfind(Shown(Diary(), name) + ": there is a diary already", 0), 0U)
            << outcome.err;
        EXPECT_EQ(Snapshot(), before) << name;
        std::filesystem::remove(InDiary(name));
    }
    EXPECT_EQ(RunCli({"sample", Diary()}).code, ExitDone);  // an existing folder without a diary
}

TEST_F(Sample, DiaryThatWouldBeginBefore1601IsRefused) {
    const Outcome outcome = RunCli({"sample", Diary(), "--today", "1602-12-01"});
    EXPECT_EQ(outcome.code, ExitData);
    EXPECT_TRUE(Snapshot().empty());
    EXPECT_EQ(RunCli({"sample", Diary(), "--today", "2500-12-31"}).code, ExitDone);
}

TEST_F(Sample, IsEncipheredWithThePassword) {
    const std::string password = Beside("password", "moon\n");
    ASSERT_EQ(RunCli({"sample", Diary(), "--password-file", password}).code, ExitDone);
    EXPECT_EQ(RunCli({"check", Diary(), "--password-file", password}).code, ExitDone);
    EXPECT_EQ(RunCli({"check", Diary()}).code, ExitData);
}

TEST_F(Sample, SurvivesExportAndImport) {
    ASSERT_EQ(RunCli({"sample", Diary(), "--today", TodayText}).code, ExitDone);
    const std::string csv = ExportCsv();
    const std::string copy = Utf8(root / "copy");
    ASSERT_EQ(RunCli({"import", copy, "--csv", "-"}, csv).code, ExitDone);
    EXPECT_EQ(RunCli({"export", copy, "--csv", "-"}).out, csv);
    for (const char* name : {"Temperature.dat", "Bleeding.dat", "Notes.dat", "NotePages.dat"}) {
        EXPECT_EQ(ReadBytes(root / "copy" / name), ReadBytes(InDiary(name))) << name;
    }
}

}  // namespace
}  // namespace lunara::test
