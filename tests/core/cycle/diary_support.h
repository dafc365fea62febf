#pragma once

// What the tests of the prediction share: diaries written in one line, and a sink that keeps the
// warnings.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "cycle/day_status.h"
#include "cycle/predictor.h"
#include "platform/text.h"
#include "tests/support/dates.h"
#include "tests/support/user_data_access.h"

namespace lunara::test {

inline constexpr std::uint32_t AllBits = 0xFFFF'FFFF;

/// Keeps the texts of warnings in the order of posting.
class WarningRecorder : public WarningSink {
  public:
    void PostPredictionWarning(const WCHAR* text) override { warnings.push_back(ToUtf8(text)); }

    std::vector<std::string> warnings;
};

/// The date `days` after another, with its time of day.
inline SYSTEMTIME Later(const SYSTEMTIME& date, std::int32_t days) {
    SYSTEMTIME result{};
    EXPECT_EQ(AddDays(date, days, result), 1);
    return result;
}

/// A diary and its prediction. Bleeding levels are written as digits, one for each day.
class Diary {
  public:
    Diary() { data.SetWarningSink(&recorder); }
    Diary(const Diary&) = delete;
    Diary& operator=(const Diary&) = delete;
    ~Diary() { ReleaseClock(); }

    /// Records the levels of consecutive days from `start` on; '0' records nothing.
    Diary& Bleed(const SYSTEMTIME& start, const std::string& levels) {
        for (std::size_t i = 0; i < levels.size(); ++i) {
            if (levels[i] != '0') {
                UserDataTestAccess::Bleeding(data).Set(
                    ToDateKey(Later(start, static_cast<std::int32_t>(i))), levels[i] - '0');
            }
        }
        UserDataTestAccess::Prediction(data).predictionUpToDate = false;
        return *this;
    }

    /// Records a period of these levels at the start of each cycle of the given lengths, and one
    /// more behind the last cycle. Returns the first day of that last period.
    SYSTEMTIME BleedCycles(SYSTEMTIME start, const std::vector<std::int32_t>& lengths,
                           const std::string& levels = "33211") {
        Bleed(start, levels);
        for (const std::int32_t length : lengths) {
            start = Later(start, length);
            Bleed(start, levels);
        }
        return start;
    }

    /// Stops the clock at noon of `today`, computes the prediction anew and returns its warning, ""
    /// for none.
    std::string Predict(const SYSTEMTIME& today) {
        recorder.warnings.clear();
        SYSTEMTIME noon = today;
        noon.wHour = 12;
        SetLocalNow(noon);
        UserDataTestAccess::Prediction(data).predictionUpToDate = false;
        EXPECT_EQ(UpdatePrediction(data, 1), 1);
        EXPECT_LE(recorder.warnings.size(), 1U);
        return recorder.warnings.empty() ? "" : recorder.warnings[0];
    }

    /// The status text of a day, "" for none; `mask` selects DAY_ flags.
    std::string StatusOf(const SYSTEMTIME& date, std::uint32_t mask = AllBits) {
        WCHAR text[128];
        const int found = GetDayStatusText(data, date, text, 128, mask);
        EXPECT_EQ(found != 0, text[0] != 0);
        return ToUtf8(text);
    }

    /// Period length and cycle length of each valid cycle, in days, oldest first.
    std::vector<std::pair<std::int32_t, std::int32_t>> ValidCycles() const {
        std::vector<std::pair<std::int32_t, std::int32_t>> cycles;
        for (const CycleRecord& cycle : data.Prediction().validCycles) {
            cycles.emplace_back(cycle.periodLength, cycle.cycleLength);
        }
        return cycles;
    }

    UserData data;
    WarningRecorder recorder;
};

}  // namespace lunara::test
