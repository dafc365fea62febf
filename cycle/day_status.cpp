#include "cycle/day_status.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <vector>

#include "platform/text.h"

namespace lunara {
namespace {

constexpr UINT FirstStatusString = 5;
constexpr int StatusBits = 32;
constexpr std::size_t StatusStringUnits = 32;
constexpr std::size_t StatusTextUnits = 1024;

/// Days since the last valid period start after which the alerts change.
constexpr std::int32_t LastDayForPrediction = 36;
constexpr std::int32_t LastDayForDoctor = 72;

constexpr std::uint32_t RecordedBleedingBits =
    DAY_BLEEDING | DAY_BLEEDING_FIRST | DAY_BLEEDING_END;
constexpr std::uint32_t PossibleBleedingBits =
    DAY_BLEEDING_POSSIBLE | DAY_BLEEDING_POSSIBLE_FIRST | DAY_BLEEDING_POSSIBLE_LAST;
constexpr int FromRecordedToPossible = 3;  // bit places between the two

/// Bits for a day, waiting to be set.
struct DayMark {
    DateKey date;
    std::uint32_t bits;
};

/// Marks of one kind in ascending date order. A mark later than any date ends them.
using DayMarks = std::vector<DayMark>;
constexpr DayMark NoMoreMarks = {std::numeric_limits<DateKey>::max(), 0};

/// A bit for days before today and one for today and later.
struct MarkBits {
    std::uint32_t past;
    std::uint32_t coming;
};

/// How the runs of a list of days are found and marked.
struct RunRule {
    std::int32_t largestGap;  // days between two days of one run
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
// Whether she conceived on a past day is not known either: the past is "possible", too.
constexpr RunRule PregnancyRuns = {1,
                                   {DAY_PREGNANCY_POSSIBLE, DAY_PREGNANCY_POSSIBLE},
                                   {DAY_PREGNANCY_POSSIBLE_FIRST, DAY_PREGNANCY_POSSIBLE_FIRST},
                                   {DAY_PREGNANCY_POSSIBLE_LAST, DAY_PREGNANCY_POSSIBLE_LAST}};

/// Whether `DaysBetween` of two days, the later key first, is at most `gap` (1 or 2). Most answers
/// need no conversion.
bool IsWithin(DateKey earlier, DateKey later, std::int32_t gap) {
    constexpr DateKey LastDayOfEveryMonth = 28;
    constexpr DateKey FirstSafeYear = 1602;  // in January 1601 day numbers are as small as a gap
    constexpr DateKey LastYear = 30'827;
    const DateKey day = later & 0xFF;
    const DateKey month = later >> 8 & 0xFF;
    const DateKey year = later >> 16;
    if (later == earlier + 1 && day > 1 && day <= LastDayOfEveryMonth) {
        return true;  // neighbours, or two days of a month that does not exist: both count as day 0
    }
    if (later >> 8 != earlier >> 8 && day > static_cast<DateKey>(gap) &&
        day <= LastDayOfEveryMonth && month - 1 < 12 && year >= FirstSafeYear && year <= LastYear) {
        return false;  // a real day with more than `gap` days of its month before it
    }
    return DayNumber(later) - DayNumber(earlier) <= gap;
}

/// The marks of the runs that the days of `list` form, whatever their values.
DayMarks MarkRuns(DayValueList& list, const RunRule& rule, DateKey today) {
    DayMarks marks;
    const auto bitOf = [today](const MarkBits& bits, DateKey date) {
        return date < today ? bits.past : bits.coming;
    };
    const auto close = [&](DateKey first, DateKey last) {
        if (first == last) {
            marks.push_back({first, bitOf(rule.single, first)});
        } else {
            marks.push_back({first, bitOf(rule.first, first)});
            marks.push_back({last, bitOf(rule.last, last)});
        }
    };
    list.Sort();
    if (list.Count() > 0) {
        DateKey first = list.At(0).date;
        DateKey last = first;
        for (const DayValue& day : list) {
            if (day.date != first && !IsWithin(last, day.date, rule.largestGap)) {
                close(first, last);
                first = day.date;
            }
            last = day.date;
        }
        close(first, last);
    }
    marks.push_back(NoMoreMarks);
    return marks;
}

/// Start and period end of the valid cycles.
DayMarks MarkCycles(const CycleRecordList& cycles) {
    DayMarks marks;
    for (const CycleRecord& cycle : cycles) {
        const DateKey end = KeyOfDayNumber(DayNumber(cycle.start) + cycle.periodLength - 1);
        marks.push_back({cycle.start, DAY_CYCLE_START | DAY_CYCLE_LENGTHS});
        marks.push_back({end, DAY_PERIOD_END});
    }
    marks.push_back(NoMoreMarks);
    return marks;
}

/// The bits of the mark that `mark` stands on, when it is the date's; then it moves on.
std::uint32_t TakeBits(const DayMark*& mark, DateKey date) {
    std::uint32_t bits = 0;
    while (mark->date == date && date != NoMoreMarks.date) {
        bits |= mark++->bits;
    }
    return bits;
}

/// Sets the marks of all days in one pass. What is marked first is replaced by what is marked later,
/// as far as later marks clear anything: only those of the cycles do, the bleeding bits.
void SetMarks(const std::array<DayMarks, 3>& runs, const DayMarks& cycleMarks,
              CyclePredictor& state) {
    std::array<const DayMark*, 3> run = {runs[0].data(), runs[1].data(), runs[2].data()};
    const DayMark* cycle = cycleMarks.data();
    std::size_t most = cycleMarks.size();
    for (const DayMarks& marks : runs) {
        most += marks.size();
    }
    state.dayFlags.Reserve(static_cast<std::int32_t>(most));
    std::int32_t lengthsIndex = 0;
    for (;;) {
        const DateKey date = std::min(std::min(run[0]->date, run[1]->date),
                                      std::min(run[2]->date, cycle->date));
        if (date == NoMoreMarks.date) {
            break;
        }
        std::uint32_t flags =
            TakeBits(run[0], date) | TakeBits(run[1], date) | TakeBits(run[2], date);
        const std::uint32_t cycleBits = TakeBits(cycle, date);
        if (cycleBits != 0) {
            flags = (flags & ~BleedingStatusBits) | cycleBits;
        }
        std::int32_t argIndex = 0;
        if ((cycleBits & DAY_CYCLE_LENGTHS) != 0) {
            argIndex = lengthsIndex;
            lengthsIndex += 2;
        }
        state.dayFlags.Set({date, flags, argIndex});
    }
}

/// Whether today bleeds is known, so that it is not just possible; or it is not, so that it is.
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

/// Period late or missing, by the longest cycle that she ever had.
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

/// The texts of the bits, one after the other.
WideString JoinStatusTexts(std::uint32_t bits) {
    WideString text;
    for (int i = 0; i < StatusBits; ++i) {
        std::array<WCHAR, StatusStringUnits> part{};
        if ((bits >> i & 1) != 0 &&
            ::LoadStringW(nullptr, FirstStatusString + static_cast<UINT>(i), part.data(),
                          static_cast<int>(part.size())) > 0) {
            text.append(part.data());
        }
    }
    return text;
}

/// The arguments from `first` on as FormatMessage takes them; those that are not there are 0.
std::array<DWORD_PTR, StatusBits> TakeArguments(const IndexList& list, std::int32_t first) {
    std::array<DWORD_PTR, StatusBits> arguments{};
    for (std::int32_t i = 0; i < StatusBits && first + i < list.Count(); ++i) {
        arguments[static_cast<std::size_t>(i)] = static_cast<DWORD_PTR>(list.At(first + i));
    }
    return arguments;
}

/// Text that is built in a bounded buffer; what does not fit is dropped.
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

void MarkDays(CyclePredictor& state, const SYSTEMTIME& today) {
    const DateKey todayKey = ToDateKey(today);
    for (const CycleRecord& cycle : state.validCycles) {
        state.dayFlagArgs.SetAt(state.dayFlagArgs.Count(), cycle.periodLength);
        state.dayFlagArgs.SetAt(state.dayFlagArgs.Count(), cycle.cycleLength);
    }
    SetMarks({MarkRuns(state.periodProbabilities, BleedingRuns, todayKey),
              MarkRuns(state.ovulationProbabilities, OvulationRuns, todayKey),
              MarkRuns(state.pregnancyProbabilities, PregnancyRuns, todayKey)},
             MarkCycles(state.validCycles), state);
    // The cycle marks go over these two, but never meet them: a valid cycle has ended, so that its
    // period lies at least two weeks back.
    AdjustToday(state, todayKey);
    AlertToday(state, today);
}

int GetDayStatusText(UserData& data, const SYSTEMTIME& date, WCHAR* text, int textSize,
                     std::uint32_t mask) {
    text[0] = 0;
    CyclePredictor& state = data.predictor;
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
    const DWORD length =
        ::FormatMessageW(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ARGUMENT_ARRAY, format.data(),
                         0, 0, text, static_cast<DWORD>(textSize),
                         state.dayFlagArgs.Count() == 0
                             ? nullptr
                             : reinterpret_cast<va_list*>(arguments.data()));
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
