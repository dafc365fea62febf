#include "tools/lunara-cli/sample_diary.h"

#include <iterator>
#include <string_view>

#include "diary/diary_edit.h"
#include "platform/text.h"

namespace lunara {
namespace {

struct SampleCycle {
    std::int32_t length;        // days to the start of the next cycle
    std::int32_t ovulationDay;  // estimated; day 1 is the first of bleeding
    std::string_view levels;    // one digit per bleeding day, from day 1
};

// The first 27 cycles of the first woman in Fehring et al., Menstrual Cycle Data, Marquette
// University, 2012: regular, without a gap, 24 to 32 days long. The last one is the open cycle.
constexpr SampleCycle Cycles[] = {
    {29, 17, "33211"}, {27, 15, "33211"}, {29, 15, "33211"},  {27, 15, "33321"},  {28, 16, "33221"},
    {26, 15, "33211"}, {29, 16, "33211"}, {24, 14, "3321"},   {28, 16, "133221"}, {28, 17, "33211"},
    {26, 14, "33211"}, {29, 16, "33211"}, {27, 15, "332211"}, {28, 16, "23221"},  {30, 18, "3221"},
    {28, 16, "33211"}, {26, 14, "33311"}, {26, 14, "33221"},  {24, 12, "3321"},   {27, 15, "23211"},
    {28, 16, "3321"},  {26, 14, "2321"},  {27, 14, "3221"},   {27, 15, "3321"},   {25, 14, "3221"},
    {32, 19, "2321"},  {27, 16, "2321"},
};
constexpr std::int32_t OpenCycle = static_cast<std::int32_t>(std::size(Cycles)) - 1;
// Today's day of the open cycle: late enough for its bleeding to be over, early enough for
// ovulation and the next period to lie ahead.
constexpr std::int32_t TodaysCycleDay = 12;

struct SampleNote {
    std::int32_t cycle;
    std::int32_t day;  // of the cycle, from 1
    const WCHAR* text;
};

constexpr SampleNote Notes[] = {
    {0, 1, TEXT("First entry. Let us see whether I keep this up.")},
    {0, 20, TEXT("New thermometer, the old one was off by a lot.")},
    {1, 3, TEXT("Hot-water bottle and an early night.")},
    {2, 16, TEXT("Slept only four hours, so do not trust today's temperature.")},
    {3, 27, TEXT("Headache in the evening.")},
    {5, 9, TEXT("Dr. Moreau: everything fine.\r\nNext check-up in a year.")},
    {7, 2, TEXT("Earlier than expected, and heavy.")},
    {8, 12, TEXT("Two weeks at the sea. Thermometer forgotten once or twice.")},
    {10, 18, TEXT("Started running again, 3 km.")},
    {12, 5, TEXT("Caf\u00E9 with Ana; felt well all day.")},
    {14, 24, TEXT("A cold, slight fever.")},
    {14, 25, TEXT("Still in bed.")},
    {17, 1, TEXT("Cramps until noon, then better.")},
    {18, 8, TEXT("Half marathon!")},
    {19, 10, TEXT("Dr. Moreau: blood test, iron a little low.\r\nTablets, one a day.")},
    {21, 22, TEXT("Tired. Moved house today.")},
    {23, 4, TEXT("Iron is fine again.")},
    {25, 28, TEXT("Late this time. The exam?")},
    {25, 31, TEXT("Exam passed.")},
    {26, 1, TEXT("There it is. Hot-water bottle.")},
    {26, 5, TEXT("Over already.")},
    {26, 9, TEXT("Swimming in the lake, 18 degrees.")},
    {26, 12, TEXT("Feeling very well today.")},
};

// Temperatures and their spread, in hundredths of a degree Fahrenheit. The program's own entry has
// steps of a tenth.
constexpr std::int32_t BeforeOvulation = 9720;
constexpr std::int32_t OnOvulation = 9700;
constexpr std::int32_t DayAfterOvulation = 9750;
constexpr std::int32_t LaterDays = 9790;
constexpr std::int32_t DayBeforeNextCycle = 9760;
constexpr std::int32_t Spread = 20;  // up or down
constexpr std::int32_t EntryStep = 10;
// On average one morning in this many has no temperature.
constexpr std::uint32_t ForgottenMornings = 11;

/// Hashes its arguments to a number that looks random and is the same on every system. `purpose`
/// (0..7) separates the uses on one day.
std::uint32_t Scatter(std::int32_t cycle, std::int32_t day, std::uint32_t purpose) {
    std::uint32_t bits = static_cast<std::uint32_t>(cycle) * 64 + static_cast<std::uint32_t>(day);
    bits = bits * 8 + purpose + 1;
    bits *= 2654435761U;
    bits ^= bits >> 15;
    bits *= 2246822519U;
    return bits ^ bits >> 13;
}

/// The day's temperature, or `NoTemperature` for a forgotten morning. A computed value that happens
/// to be `NoTemperature` leaves the day without a record, too.
std::int32_t TemperatureOn(std::int32_t cycle, std::int32_t day) {
    if (Scatter(cycle, day, 0) % ForgottenMornings == 0) {
        return NoTemperature;
    }
    const SampleCycle& facts = Cycles[cycle];
    const std::int32_t sinceOvulation = day - facts.ovulationDay;
    std::int32_t value = BeforeOvulation;
    if (day == facts.length) {
        value = DayBeforeNextCycle;
    } else if (sinceOvulation > 1) {
        value = LaterDays;
    } else if (sinceOvulation == 1) {
        value = DayAfterOvulation;
    } else if (sinceOvulation == 0) {
        value = OnOvulation;
    }
    constexpr std::uint32_t Steps = 2 * Spread / EntryStep + 1;
    value += static_cast<std::int32_t>(Scatter(cycle, day, 1) % Steps) * EntryStep - Spread;
    return value;
}

/// The day's note flags: cramps on some of the first two days of a period that begins with level 3,
/// PMS on some of the last three days of a cycle.
std::int32_t MarksOn(std::int32_t cycle, std::int32_t day) {
    const SampleCycle& facts = Cycles[cycle];
    std::int32_t marks = 0;
    if (day <= 2 && facts.levels[0] == '3' && Scatter(cycle, day, 2) % 3 != 0) {
        marks |= NoteFlagCramps;
    }
    if (day > facts.length - 3 && Scatter(cycle, day, 3) % 5 < 2) {
        marks |= NoteFlagPms;
    }
    return marks;
}

void FillDay(DiaryEdit& edit, DateKey key, std::int32_t cycle, std::int32_t day) {
    const std::string_view levels = Cycles[cycle].levels;
    if (day <= static_cast<std::int32_t>(levels.size())) {
        edit.SetBleeding(key, levels[static_cast<std::size_t>(day - 1)] - '0');
    }
    edit.SetTemperature(key, TemperatureOn(cycle, day));
    edit.SetNoteFlags(key, MarksOn(cycle, day));
    for (const SampleNote& note : Notes) {
        if (note.cycle == cycle && note.day == day) {
            edit.SetNoteText(key, note.text);
        }
    }
}

}  // namespace

int FillSampleDiary(UserData& data, const SYSTEMTIME& today) {
    std::int32_t daysBack = TodaysCycleDay - 1;
    for (std::int32_t cycle = 0; cycle < OpenCycle; ++cycle) {
        daysBack += Cycles[cycle].length;
    }
    SYSTEMTIME date{};
    if (AddDays(today, -daysBack, date) == 0) {
        return 0;
    }
    DiaryEdit edit(data);
    edit.DeleteAll();
    for (std::int32_t cycle = 0; cycle <= OpenCycle; ++cycle) {
        const std::int32_t days = cycle == OpenCycle ? TodaysCycleDay : Cycles[cycle].length;
        for (std::int32_t day = 1; day <= days; ++day) {
            FillDay(edit, ToDateKey(date), cycle, day);
            AddDays(date, 1, date);
        }
    }
    return edit.Store() ? 1 : 0;
}

}  // namespace lunara
