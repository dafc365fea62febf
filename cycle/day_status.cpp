#include "cycle/day_status.h"

#include <algorithm>
#include <array>
#include <limits>

#include "cycle/day_step.h"
#include "cycle/distribution.h"
#include "platform/text.h"

namespace lunara {
namespace {

constexpr UINT FirstStatusString = 5;
constexpr int StatusBits = 32;
constexpr std::size_t StatusStringUnits = 32;
constexpr std::size_t StatusTextUnits = 1024;

/// Last day of each alert, in days since the last valid period start. "Pregnancy highly probable."
/// ends on the first one, "Go see a doctor." on the second.
constexpr std::int32_t LastDayForPrediction = LongestCycle;
constexpr std::int32_t LastDayForDoctor = 72;

constexpr std::uint32_t RecordedBleedingBits = DAY_BLEEDING | DAY_BLEEDING_FIRST | DAY_BLEEDING_END;
constexpr std::uint32_t PossibleBleedingBits =
    DAY_BLEEDING_POSSIBLE | DAY_BLEEDING_POSSIBLE_FIRST | DAY_BLEEDING_POSSIBLE_LAST;
constexpr std::int32_t ArgumentsPerCycle = 2;

constexpr int FromRecordedToPossible = 3;  // shift from a recorded bleeding bit to its possible one

/// Status bits to set on one day.
struct DayMark {
    DateKey date;
    std::uint32_t bits;
};

/// Sentinel that ends a sequence of marks; its date is later than any other.
constexpr DayMark NoMoreMarks = {std::numeric_limits<DateKey>::max(), 0};

/// The bit to set before today, and the one to set from today on.
struct MarkBits {
    std::uint32_t past;
    std::uint32_t coming;
};

/// How to find the runs of a list, and which bits to set on the day of a one-day run and on the
/// first and the last day of a longer one. Days between those two get no bit.
struct RunRule {
    DateKey largestGap;  // largest distance between neighbouring days of a run, days
    MarkBits single, first, last;
};

constexpr RunRule BleedingRuns = {2,
                                  {DAY_BLEEDING, DAY_BLEEDING_POSSIBLE},
                                  {DAY_BLEEDING_FIRST, DAY_BLEEDING_POSSIBLE_FIRST},
                                  {DAY_BLEEDING_END, DAY_BLEEDING_POSSIBLE_LAST}};
constexpr RunRule OvulationRuns = {1,
                                   {DAY_OVULATION, DAY_OVULATION_POSSIBLE},
                                   {DAY_OVULATION_FIRST, DAY_OVULATION_POSSIBLE_FIRST},
                                   {DAY_OVULATION_END, DAY_OVULATION_POSSIBLE_LAST}};
// A conception is never recorded, so past days are marked as only possible, too.
constexpr RunRule PregnancyRuns = {1,
                                   {DAY_PREGNANCY_POSSIBLE, DAY_PREGNANCY_POSSIBLE},
                                   {DAY_PREGNANCY_POSSIBLE_FIRST, DAY_PREGNANCY_POSSIBLE_FIRST},
                                   {DAY_PREGNANCY_POSSIBLE_LAST, DAY_PREGNANCY_POSSIBLE_LAST}};

/// Yields the marks of a list of runs in date order.
class RunMarks {
  public:
    RunMarks(const DayRuns& runs, const RunRule& runRule, DateKey todayKey)
        : rule(runRule), today(todayKey), next(runs.data()), end(next + runs.size()) {
        Advance();
    }

    DateKey Date() const { return mark.date; }

    /// Returns the bits of the current mark and advances when that mark is for `date`; else returns
    /// 0.
    std::uint32_t Take(DateKey date) {
        if (mark.date != date) {
            return 0;
        }
        const std::uint32_t bits = mark.bits;
        Advance();
        return bits;
    }

  private:
    std::uint32_t BitOf(const MarkBits& bits, DateKey date) const {
        return date < today ? bits.past : bits.coming;
    }

    void Advance() {
        if (hasLast) {
            mark = {next->last, BitOf(rule.last, next->last)};
            hasLast = false;
            ++next;
        } else if (next == end) {
            mark = NoMoreMarks;
        } else {
            hasLast = next->last != next->first;
            mark = {next->first, BitOf(hasLast ? rule.first : rule.single, next->first)};
            next += hasLast ? 0 : 1;
        }
    }

    const RunRule& rule;
    DateKey today;
    const DayRun* next;
    const DayRun* end;
    bool hasLast = false;  // `mark` is the first day of *next; its last day comes next
    DayMark mark = NoMoreMarks;
};

/// Yields the marks of the valid cycles in date order: the start, and the last day of the period.
class CycleMarks {
  public:
    explicit CycleMarks(const CycleRecordList& cycles) : next(cycles.begin()), end(cycles.end()) {
        Advance();
    }

    DateKey Date() const { return mark.date; }

    std::uint32_t Take(DateKey date) {
        std::uint32_t bits = 0;
        while (mark.date == date) {  // a one-day period starts and ends on the same day
            bits |= mark.bits;
            Advance();
        }
        return bits;
    }

  private:
    void Advance() {
        if (hasEnd) {
            mark = {DaysAfter(next->start)[next->periodLength - 1], DAY_PERIOD_END};
            hasEnd = false;
            ++next;
        } else if (next == end) {
            mark = NoMoreMarks;
        } else {
            mark = {next->start, DAY_CYCLE_START | DAY_CYCLE_LENGTHS};
            hasEnd = true;
        }
    }

    const CycleRecord* next;
    const CycleRecord* end;
    bool hasEnd = false;
    DayMark mark = NoMoreMarks;
};

/// Fills `state.dayFlags` by merging the four mark sequences in date order. A cycle mark replaces
/// the bleeding bits of its day; all other bits of a day are combined. Without memory `dayFlags`
/// stays empty.
void SetMarks(CyclePredictor& state, const PastRuns& runs, DateKey today) {
    RunMarks bleeding(runs.bleeding, BleedingRuns, today);
    RunMarks ovulation(runs.ovulation, OvulationRuns, today);
    RunMarks pregnancy(runs.pregnancy, PregnancyRuns, today);
    CycleMarks cycles(state.validCycles);
    const std::size_t most =
        2 * (runs.bleeding.size() + runs.ovulation.size() + runs.pregnancy.size()) +
        2 * static_cast<std::size_t>(state.validCycles.Count());
    DayFlagsEntry* entries = state.dayFlags.BeginFill(static_cast<std::int32_t>(most));
    if (entries == nullptr) {
        return;
    }
    DayFlagsEntry* entry = entries;
    std::int32_t lengthsIndex = 0;
    for (;;) {
        const DateKey date = std::min(std::min(bleeding.Date(), ovulation.Date()),
                                      std::min(pregnancy.Date(), cycles.Date()));
        if (date == NoMoreMarks.date) {
            break;
        }
        *entry = {date, bleeding.Take(date) | ovulation.Take(date) | pregnancy.Take(date), 0};
        const std::uint32_t cycleBits = cycles.Take(date);
        if (cycleBits != 0) {
            entry->flags = (entry->flags & ~BleedingStatusBits) | cycleBits;
        }
        if ((cycleBits & DAY_CYCLE_LENGTHS) != 0) {
            entry->argIndex = lengthsIndex;
            lengthsIndex += ArgumentsPerCycle;
        }
        ++entry;
    }
    state.dayFlags.EndFill(static_cast<std::int32_t>(entry - entries));
}

/// Turns today's possible-bleeding bits into recorded ones when today has a bleeding record,
/// because the runs mark today as possible, like every coming day. Without a record it turns
/// recorded bits into possible ones.
void AdjustToday(CyclePredictor& state, DateKey today) {
    const std::int32_t index = state.dayFlags.Find(today);
    if (index < 0) {
        return;
    }
    DayFlagsEntry entry = state.dayFlags.At(index);
    if (state.todayIsBleeding) {
        entry.flags |= (entry.flags & PossibleBleedingBits) >> FromRecordedToPossible;
        entry.flags &= ~PossibleBleedingBits;
    } else {
        entry.flags |= (entry.flags & RecordedBleedingBits) << FromRecordedToPossible;
        entry.flags &= ~RecordedBleedingBits;
    }
    state.dayFlags.ReplaceAt(index, entry);
}

/// Flags today when the period is late. Counted in days since the last valid period start: from
/// more than the longest valid cycle up to 36, "pregnancy highly probable"; 37 to 72, "may be
/// pregnant, see a doctor". Sets nothing outside these ranges or without a valid cycle.
void AlertToday(CyclePredictor& state, const SYSTEMTIME& today) {
    std::int32_t longest = 0;
    for (const CycleRecord& cycle : state.validCycles) {
        longest = std::max(longest, cycle.cycleLength);
    }
    const std::int32_t passed = DaysBetween(today, state.lastValidPeriodStart);
    if (longest == 0 || passed > LastDayForDoctor) {
        return;
    }
    if (passed > LastDayForPrediction) {
        SetDayFlags(state, DAY_MAY_BE_PREGNANT | DAY_SEE_DOCTOR, 0, ToDateKey(today));
    } else if (passed > longest) {
        SetDayFlags(state, DAY_PREGNANCY_HIGHLY_PROBABLE, 0, ToDateKey(today));
    }
}

/// Concatenates the texts of the bits, lowest bit first.
WideString JoinStatusTexts(std::uint32_t bits) {
    WideString text;
    for (int i = 0; i < StatusBits; ++i) {
        std::array<WCHAR, StatusStringUnits> part{};
        if ((bits >> i & 1) != 0 && ::LoadStringW(nullptr, FirstStatusString + static_cast<UINT>(i),
                                                  part.data(), static_cast<int>(part.size())) > 0) {
            text.append(part.data());
        }
    }
    return text;
}

/// Copies the arguments from `first` on into the array that FormatMessage takes. Zeros fill the
/// rest, so that a text with more placeholders than arguments reads no stray memory.
std::array<DWORD_PTR, StatusBits> TakeArguments(const IndexList& list, std::int32_t first) {
    std::array<DWORD_PTR, StatusBits> arguments{};
    for (std::int32_t i = 0; i < StatusBits && first + i < list.Count(); ++i) {
        arguments[static_cast<std::size_t>(i)] = static_cast<DWORD_PTR>(list.At(first + i));
    }
    return arguments;
}

/// Builds a text in a buffer of fixed size and drops the units that do not fit.
class BoundedText {
  public:
    BoundedText(WCHAR* buffer, int size) : target(buffer), room(size - 1) {}

    void Put(WCHAR unit) {
        if (length < room) {
            target[length++] = unit;
        }
    }

    void PutNumber(int number) {
        std::array<WCHAR, 12> digits{};
        FormatText(digits.data(), digits.size(), TEXT("%d"), number);
        for (const WCHAR* digit = digits.data(); *digit != 0; ++digit) {
            Put(*digit);
        }
    }

    void Finish() { target[length] = 0; }

  private:
    WCHAR* target;
    int room;
    int length = 0;
};

}  // namespace

void SetDayFlags(CyclePredictor& state, std::uint32_t setBits, std::uint32_t clearBits,
                 DateKey date, std::initializer_list<std::int32_t> arguments) {
    const std::int32_t index = state.dayFlags.Find(date);
    DayFlagsEntry entry = {date, 0, 0};
    if (index >= 0) {
        entry = state.dayFlags.At(index);
    }
    if (arguments.size() > 0) {
        entry.argIndex = state.dayFlagArgs.Count();
        for (const std::int32_t argument : arguments) {
            state.dayFlagArgs.SetAt(state.dayFlagArgs.Count(), argument);
        }
    }
    entry.flags = (entry.flags & ~clearBits) | setBits;
    state.dayFlags.Set(entry);
}

void MarkDays(CyclePredictor& state, const SYSTEMTIME& today, PastRuns runs) {
    const DateKey todayKey = ToDateKey(today);
    const DateKey predicted = ToDateKey(state.lastValidPeriodStart);
    CompleteRuns(state.periodProbabilities, BleedingRuns.largestGap, predicted, runs.bleeding);
    CompleteRuns(state.ovulationProbabilities, OvulationRuns.largestGap, predicted, runs.ovulation);
    CompleteRuns(state.pregnancyProbabilities, PregnancyRuns.largestGap, predicted, runs.pregnancy);
    state.dayFlagArgs.SetSize(ArgumentsPerCycle * state.validCycles.Count());
    for (std::int32_t i = 0; i < state.validCycles.Count(); ++i) {
        state.dayFlagArgs.SetAt(ArgumentsPerCycle * i, state.validCycles.At(i).periodLength);
        state.dayFlagArgs.SetAt(ArgumentsPerCycle * i + 1, state.validCycles.At(i).cycleLength);
    }
    SetMarks(state, runs, todayKey);
    // AdjustToday and AlertToday write today's flags after the cycle marks, so a cycle mark of
    // today could not replace their bits. There is none: a valid cycle has ended, and its period
    // lies at least two weeks back.
    AdjustToday(state, todayKey);
    AlertToday(state, today);
}

int GetDayStatusText(const UserData& data, const SYSTEMTIME& date, WCHAR* text, int textSize,
                     std::uint32_t mask) {
    text[0] = 0;
    const CyclePredictor& state = data.Prediction();
    const std::int32_t index = state.dayFlags.Find(ToDateKey(date));
    if (index < 0) {
        return 0;
    }
    const DayFlagsEntry& entry = state.dayFlags.At(index);
    const WideString joined = JoinStatusTexts(entry.flags & mask);
    if (joined.empty()) {
        return 0;
    }
    std::array<DWORD_PTR, StatusBits> arguments = TakeArguments(state.dayFlagArgs, entry.argIndex);
    std::array<WCHAR, StatusTextUnits> format{};
    NumberPlaceholders(joined.c_str(), format.data(), static_cast<int>(format.size()));
    const DWORD length = ::FormatMessageW(
        FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY, format.data(), 0, 0, text,
        static_cast<DWORD>(textSize),
        state.dayFlagArgs.Count() == 0 ? nullptr : reinterpret_cast<va_list*>(arguments.data()));
    if (length == 0) {
        text[0] = 0;
    }
    return length == 0 ? 0 : 1;
}

bool NumberPlaceholders(const WCHAR* source, WCHAR* target, int capacity) {
    constexpr WideView ConversionEnds = TEXT("cCdiouxXeEfgGnpsS");
    BoundedText output(target, capacity);
    int inserts = 0;
    for (const WCHAR* next = source; *next != 0; ++next) {
        output.Put(*next);
        if (*next != '%') {
            continue;
        }
        if (next[1] == '%') {
            output.Put(*++next);
            continue;
        }
        output.PutNumber(++inserts);
        output.Put('!');
        do {
            ++next;
            if (*next == 0) {
                CopyText(target, static_cast<std::size_t>(capacity), source);
                return false;
            }
            output.Put(*next);
        } while (ConversionEnds.find(*next) == WideView::npos);
        output.Put('!');
    }
    output.Finish();
    return true;
}

}  // namespace lunara
