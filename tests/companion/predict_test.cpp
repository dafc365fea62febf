#include <bit>
#include <charconv>
#include <nlohmann/json.hpp>
#include <set>

#include "cycle/day_status.h"
#include "cycle/predictor.h"
#include "exchange/iso_date.h"
#include "platform/clock.h"
#include "platform/text.h"
#include "tests/companion/fixture.h"
#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

using Json = nlohmann::ordered_json;

class Predict : public CompanionTest {
  protected:
    Json PredictJson(const std::string& today) const {
        const Outcome outcome = RunCli({"predict", Diary(), "--json", "--today", today});
        EXPECT_EQ(outcome.code, ExitDone) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        return Json::parse(outcome.out);
    }

    /// Imports periods of five days of level 2 that begin on these days (YYYY-MM-DD).
    void PutPeriods(std::initializer_list<const char*> starts) const {
        std::string csv = "date,bleeding\n";
        for (const char* start : starts) {
            const std::int32_t first = DayNumber(ParseIsoDate(start).value());
            for (std::int32_t day = first; day < first + 5; ++day) {
                csv += IsoDate(KeyOfDayNumber(day)) + ",2\n";
            }
        }
        const Outcome outcome = ImportCsv(csv);
        ASSERT_EQ(outcome.code, ExitDone) << outcome.err;
    }
};

std::vector<std::string> KeysOf(const Json& object) {
    std::vector<std::string> keys;
    for (const auto& item : object.items()) {
        keys.push_back(item.key());
    }
    return keys;
}

const Json* DayOf(const Json& report, const std::string& date) {
    for (const Json& day : report["days"]) {
        if (day["date"] == date) {
            return &day;
        }
    }
    return nullptr;
}

TEST_F(Predict, JsonHasExactlyTheDocumentedKeys) {
    PutPeriods({"2006-01-02", "2006-01-27", "2006-02-22", "2006-03-22", "2006-04-19"});
    const Json report = PredictJson("2006-04-25");
    EXPECT_EQ(KeysOf(report), (std::vector<std::string>{
                                  "today", "warning", "lastValidPeriodStart", "todayIsBleeding",
                                  "cycles", "discardedPeriods", "invalidCycles", "days"}));
    EXPECT_EQ(report["today"], "2006-04-25");
    EXPECT_EQ(report["warning"], "");
    EXPECT_EQ(report["lastValidPeriodStart"], "2006-04-19");
    EXPECT_EQ(report["todayIsBleeding"], false);
    EXPECT_EQ(report["discardedPeriods"], 0);
    EXPECT_EQ(report["invalidCycles"], 1);
    ASSERT_EQ(report["cycles"].size(), 4U);
    EXPECT_EQ(report["cycles"][0],
              Json::parse(R"({"start":"2006-01-02","periodLength":5,"cycleLength":25})"));
    EXPECT_EQ(report["cycles"][3],
              Json::parse(R"({"start":"2006-03-22","periodLength":5,"cycleLength":28})"));

    const std::vector<std::string> all = {"date",
                                          "bleedingLevel",
                                          "periodProbability",
                                          "ovulationProbability",
                                          "pregnancyWeight",
                                          "discarded",
                                          "flags",
                                          "status"};
    std::string before;
    for (const Json& day : report["days"]) {
        EXPECT_LT(before, day["date"].get<std::string>());
        before = day["date"];
        std::size_t position = 0;
        for (const std::string& key : KeysOf(day)) {
            const auto found = std::find(all.begin(), all.end(), key);
            ASSERT_NE(found, all.end()) << key;
            EXPECT_GE(static_cast<std::size_t>(found - all.begin()), position) << key;
            position = static_cast<std::size_t>(found - all.begin());
        }
        EXPECT_GT(day.size(), 1U);
        EXPECT_EQ(day.contains("flags"), day.contains("status"));
    }
}

TEST_F(Predict, DaysSayOnlyWhatTheyHave) {
    PutPeriods({"2006-01-02", "2006-01-30"});
    const Json report = PredictJson("2006-02-05");
    const Json* start = DayOf(report, "2006-01-02");
    ASSERT_NE(start, nullptr);
    EXPECT_EQ(start->dump(), R"({"date":"2006-01-02","bleedingLevel":2.0,"periodProbability":1.0,)"
                             R"("flags":3,"status":"Cycle start. Period len 5. Cycle len 28. "})");
    const Json* middle = DayOf(report, "2006-01-04");
    ASSERT_NE(middle, nullptr);
    EXPECT_EQ(middle->dump(),
              R"({"date":"2006-01-04","bleedingLevel":2.0,"periodProbability":1.0})");
    const Json* ovulation = DayOf(report, "2006-01-16");
    ASSERT_NE(ovulation, nullptr);
    EXPECT_EQ(ovulation->dump(),
              R"({"date":"2006-01-16","ovulationProbability":1.0,"pregnancyWeight":1.0,)"
              R"("flags":512,"status":"Ovulation. "})");
    EXPECT_EQ(DayOf(report, "2006-01-10"), nullptr);
    EXPECT_EQ(report["warning"], "Too few valid cycles for stable prediction. ");
}

/// How many significant digits a decimal number has.
int SignificantDigits(const std::string& number) {
    int digits = 0;
    for (const char character : number.substr(0, number.find('e'))) {
        const bool isDigit = character >= '0' && character <= '9';
        digits += isDigit && (digits > 0 || character != '0') ? 1 : 0;
    }
    return digits;
}

TEST_F(Predict, NumbersReadBackAsTheVeryFloats) {
    ASSERT_EQ(RunCli({"sample", Diary(), "--today", "2006-11-20"}).code, ExitDone);
    const Outcome outcome = RunCli({"predict", Diary(), "--json", "--today", "2006-11-20"});
    const Json report = Json::parse(outcome.out);

    SYSTEMTIME today{};
    FromDateKey(MakeDateKey(2006, 11, 20), today);
    SetLocalNow(today);
    UserData data;
    ASSERT_EQ(data.LoadFolder(FromUtf8(Diary())->c_str(), TEXT("")), 1);
    UpdatePrediction(data, 0);
    ReleaseClock();

    const std::pair<const char*, const DayValueList*> lists[] = {
        {"bleedingLevel", &data.Prediction().bleedingLevels},
        {"periodProbability", &data.Prediction().periodProbabilities},
        {"ovulationProbability", &data.Prediction().ovulationProbabilities},
        {"pregnancyWeight", &data.Prediction().pregnancyProbabilities},
    };
    std::set<std::string> dates;
    for (const auto& [key, list] : lists) {
        EXPECT_GT(list->Count(), 100) << key;
        for (const DayValue& record : *list) {
            const std::string date = IsoDate(record.date);
            dates.insert(date);
            const Json* day = DayOf(report, date);
            ASSERT_NE(day, nullptr) << date;
            const float read = static_cast<float>(day->at(key).get<double>());
            EXPECT_EQ(std::bit_cast<std::int32_t>(read), record.value) << key << date;
            // Nine significant digits identify every float.
            EXPECT_LE(SignificantDigits(day->at(key).dump()), 9) << key << date;
        }
    }
    EXPECT_EQ(report["days"].size(), dates.size());
}

TEST_F(Predict, NoBleedingRecordGivesAnEmptyReport) {
    std::filesystem::create_directory(root / "diary");
    const Json report = PredictJson("2006-04-25");
    EXPECT_EQ(report.dump(), R"({"today":"2006-04-25","warning":"No statistical data. ",)"
                             R"("lastValidPeriodStart":null,"todayIsBleeding":false,"cycles":[],)"
                             R"("discardedPeriods":0,"invalidCycles":0,"days":[]})");
}

TEST_F(Predict, FirstRecordAfterTodayGivesAnEmptyReport) {
    PutPeriods({"2006-05-02"});
    const Json report = PredictJson("2006-05-01");
    EXPECT_EQ(report.dump(), R"({"today":"2006-05-01","warning":)"
                             R"("Insufficient statistical data. Prediction not available! ",)"
                             R"("lastValidPeriodStart":null,"todayIsBleeding":false,"cycles":[],)"
                             R"("discardedPeriods":0,"invalidCycles":0,"days":[]})");
}

TEST_F(Predict, ValidCyclesAreListedWithoutAPrediction) {
    PutPeriods({"2006-01-02", "2006-01-30"});
    const Json report = PredictJson("2006-06-01");
    EXPECT_EQ(report["warning"],
              "Too few valid cycles for stable prediction. "
              "Too far from the last valid period start. Prediction not meaningfull! ");
    EXPECT_EQ(report["cycles"].size(), 1U);
    EXPECT_EQ(report["lastValidPeriodStart"], "2006-01-30");
}

TEST_F(Predict, DiscardedDaysAreMarked) {
    ImportCsv("date,bleeding\n2006-01-02,1\n");
    const Json report = PredictJson("2006-01-10");
    EXPECT_EQ(report["discardedPeriods"], 1);
    EXPECT_EQ(report["invalidCycles"], 0);
    EXPECT_EQ(report["lastValidPeriodStart"], nullptr);
    const Json* day = DayOf(report, "2006-01-02");
    ASSERT_NE(day, nullptr);
    EXPECT_EQ(day->at("discarded"), true);
    EXPECT_EQ(report["warning"],
              "Insufficient statistical data. 1 discarded period(s). 0 invalid cycle(s). "
              "Prediction not available! ");
}

TEST_F(Predict, TodayIsBleedingOnARecordedDay) {
    PutPeriods({"2006-01-02"});
    EXPECT_EQ(PredictJson("2006-01-06")["todayIsBleeding"], true);
    EXPECT_EQ(PredictJson("2006-01-07")["todayIsBleeding"], false);
}

TEST_F(Predict, Stored31FebruaryDoesNoHarm) {
    PutInDiary("Bleeding.dat", DayFile({{MakeDateKey(2006, 1, 31), 1},
                                        {MakeDateKey(2006, 2, 31), 2},
                                        {MakeDateKey(2006, 3, 1), 2}}));
    const Json report = PredictJson("2006-02-20");
    EXPECT_NE(DayOf(report, "2006-01-31"), nullptr);
    EXPECT_EQ(RunCli({"predict", Diary(), "--today", "2006-02-20"}).code, ExitDone);
    EXPECT_EQ(RunCli({"predict", Diary(), "--today", "2006-03-10"}).code, ExitDone);
}

TEST_F(Predict, TableShowsTheNext60Days) {
    ASSERT_EQ(RunCli({"sample", Diary(), "--today", "2006-11-20"}).code, ExitDone);
    const Outcome outcome = RunCli({"predict", Diary(), "--today", "2006-11-20"});
    EXPECT_EQ(outcome.code, ExitDone);
    std::vector<std::string> lines;
    std::istringstream text(outcome.out);
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
        EXPECT_TRUE(line.empty() || line.back() != ' ') << line;
    }
    ASSERT_EQ(lines.size(), 66U);
    EXPECT_EQ(lines[0], "Today:             2006-11-20");
    EXPECT_EQ(lines[1], "Last period start: 2006-11-09");
    EXPECT_EQ(lines[2], "Valid cycles:      26, of 24 to 32 days");
    EXPECT_EQ(lines[3], "Left out:          0 discarded period(s), 1 invalid cycle(s)");
    EXPECT_EQ(lines[4], "");
    EXPECT_EQ(lines[6].substr(0, 14), "Mon 2006-11-20");
    EXPECT_EQ(lines[65].substr(0, 14), "Thu 2007-01-18");
    EXPECT_NE(outcome.out.find("1st day bleeding possible."), std::string::npos);
}

TEST_F(Predict, TableShowsTheWarning) {
    std::filesystem::create_directory(root / "diary");
    const Outcome outcome = RunCli({"predict", Diary(), "--today", "2006-11-20"});
    EXPECT_NE(outcome.out.find("Last period start: none\n"), std::string::npos);
    EXPECT_NE(outcome.out.find("Warning:           No statistical data.\n"), std::string::npos);
}

TEST_F(Predict, TableSaysWhetherTodayIsBleeding) {
    PutPeriods({"2006-01-02"});
    EXPECT_EQ(RunCli({"predict", Diary(), "--today", "2006-01-06"}).out.substr(0, 55),
              "Today:             2006-01-06, a recorded bleeding day\n");
    EXPECT_EQ(RunCli({"predict", Diary(), "--today", "2006-01-07"}).out.substr(0, 30),
              "Today:             2006-01-07\n");
}

TEST_F(Predict, WithoutTodayItIsTheClocksDay) {
    PutPeriods({"2006-01-02"});
    SYSTEMTIME now{};
    FromDateKey(MakeDateKey(2006, 1, 3), now);
    SetLocalNow(now);
    const Json report = Json::parse(RunCli({"predict", Diary(), "--json"}).out);
    ReleaseClock();
    EXPECT_EQ(report["today"], "2006-01-03");
}

TEST_F(Predict, ClockIsGivenBackToTheSystem) {
    PutPeriods({"2006-01-02"});
    PredictJson("2006-01-20");
    EXPECT_NE(ToDateKey(LocalNow()), MakeDateKey(2006, 1, 20));
}

}  // namespace
}  // namespace lunara::test
