#include "records/dates.h"

#include <array>
#include <limits>

#include "platform/text.h"
#include "tests/support/dates.h"

namespace lunara::test {
namespace {

constexpr std::int32_t DaysTo2501 = 328'718;      // days from 1 January 1601 to 1 January 2501
constexpr std::int32_t DaysTo30828 = 10'674'942;  // where the platform's conversions end

TEST(DateKey, HoldsYearMonthAndDay) {
    EXPECT_EQ(ToDateKey(RawDate(2006, 12, 3, 31)), 0x07D60C1FU);
    SYSTEMTIME date{};
    ASSERT_EQ(FromDateKey(0x07D60C1F, date), 1);
    EXPECT_EQ(date.wDayOfWeek, 0);
    EXPECT_EQ(date.wYear, 2006);
    EXPECT_EQ(date.wMonth, 12);
    EXPECT_EQ(date.wDay, 31);
    EXPECT_EQ(date.wHour + date.wMinute + date.wSecond + date.wMilliseconds, 0);
}

TEST(DateKey, ClearsTheTimeOfDay) {
    SYSTEMTIME date{};
    date.wHour = 13;
    date.wMilliseconds = 999;
    ASSERT_EQ(FromDateKey(MakeDateKey(2006, 1, 2), date), 1);
    EXPECT_EQ(date.wHour, 0);
    EXPECT_EQ(date.wMilliseconds, 0);
    EXPECT_EQ(date.wDayOfWeek, 1);
}

struct ImpossibleKey {
    const char* label;
    DateKey key;
};

TEST(DateKey, WithoutARealDayDoesNotConvert) {
    constexpr std::array<ImpossibleKey, 9> Keys = {{
        {"zero", 0},
        {"day 0", MakeDateKey(2006, 1, 0)},
        {"month 0", MakeDateKey(2006, 0, 1)},
        {"month 13", MakeDateKey(2006, 13, 1)},
        {"31 February", MakeDateKey(2006, 2, 31)},
        {"29 February of a common year", MakeDateKey(2006, 2, 29)},
        {"29 February 2100", MakeDateKey(2100, 2, 29)},
        {"year 1600", MakeDateKey(1600, 12, 31)},
        {"year 65535", MakeDateKey(65535, 1, 1)},
    }};
    for (const ImpossibleKey& impossible : Keys) {
        SCOPED_TRACE(impossible.label);
        SYSTEMTIME date{};
        EXPECT_EQ(FromDateKey(impossible.key, date), 0);
        EXPECT_EQ(ToDateKey(date), impossible.key);  // year, month and day stay readable
        EXPECT_EQ(DayNumber(impossible.key), 0);
    }
}

TEST(DayNumbers, RunWithoutGapsOverEveryDayOfThePlatform) {
    DateKey previous = 0;
    for (std::int32_t number = 0; number < DaysTo30828; ++number) {
        const DateKey key = KeyOfDayNumber(number);
        if (key <= previous || DayNumber(key) != number) {
            FAIL() << "day number " << number << ", key " << key;
        }
        previous = key;
    }
    EXPECT_EQ(previous, MakeDateKey(30827, 12, 31));
}

TEST(DayNumbers, AgreeWithThePlatformOnEverySupportedDay) {
    const SYSTEMTIME first = Day(1601, 1, 1);
    SYSTEMTIME date{};
    for (std::int32_t number = 0; number < DaysTo2501; ++number) {
        ASSERT_EQ(FromDateKey(KeyOfDayNumber(number), date), 1) << number;
        ASSERT_EQ(DaysBetween(date, first), number);
        ASSERT_EQ(date.wDayOfWeek, (number + 1) % 7) << number;
    }
    EXPECT_EQ(ToDateKey(date), MakeDateKey(2500, 12, 31));
}

TEST(AddDays, WalksEverySupportedDayBothWays) {
    SYSTEMTIME forward = Day(1601, 1, 1);
    SYSTEMTIME backward = Day(2500, 12, 31);
    for (std::int32_t number = 0; number < DaysTo2501; ++number) {
        ASSERT_EQ(ToDateKey(forward), KeyOfDayNumber(number));
        ASSERT_EQ(ToDateKey(backward), KeyOfDayNumber(DaysTo2501 - 1 - number));
        ASSERT_EQ(AddDays(forward, 1, forward), 1);
        ASSERT_EQ(AddDays(backward, -1, backward), number + 1 < DaysTo2501 ? 1 : 0);
    }
}

TEST(AddDays, CrossesTheYearBackwardsAndKeepsTheTime) {
    SYSTEMTIME date = Day(2006, 1, 1);
    date.wHour = 9;
    date.wMinute = 5;
    date.wSecond = 7;
    date.wMilliseconds = 3;
    SYSTEMTIME result{};
    ASSERT_EQ(AddDays(date, -1, result), 1);
    EXPECT_EQ(ToDateKey(result), MakeDateKey(2005, 12, 31));
    EXPECT_EQ(result.wDayOfWeek, 6);
    EXPECT_EQ(result.wHour, 9);
    EXPECT_EQ(result.wMinute, 5);
    EXPECT_EQ(result.wSecond, 7);
    EXPECT_EQ(result.wMilliseconds, 3);
}

TEST(AddDays, FromNoDateCountsFromTheFirstDay) {
    const SYSTEMTIME none{};
    SYSTEMTIME result{};
    ASSERT_EQ(AddDays(none, 31, result), 1);
    EXPECT_EQ(ToDateKey(result), MakeDateKey(1601, 2, 1));
}

TEST(AddDays, BeforeTheFirstDayFailsWithAnEmptyResult) {
    SYSTEMTIME result = Day(2006, 1, 1);
    EXPECT_EQ(AddDays(Day(1601, 1, 1), -1, result), 0);
    EXPECT_EQ(ToDateKey(result), 0U);
}

TEST(AddDays, EndsWithThePlatformsLastDay) {
    SYSTEMTIME last = Day(30'827, 12, 31);
    last.wHour = 23;
    SYSTEMTIME result = last;
    EXPECT_EQ(AddDays(last, 0, result), 1);
    EXPECT_EQ(result.wHour, 23);
    EXPECT_EQ(AddDays(last, 1, result), 0);
    EXPECT_EQ(ToDateKey(result), 0U);
    EXPECT_EQ(AddDays(last, -10'674'941, result), 1);
    EXPECT_EQ(ToDateKey(result), MakeDateKey(1601, 1, 1));
    EXPECT_EQ(AddDays(last, -10'674'942, result), 0);
}

TEST(AddDays, FailsForCountsFarBeyondTheCalendar) {
    // In units of 100 ns several of these counts lie next to 2^63 or a multiple of 2^64, where
    // arithmetic that wraps would land near the start again.
    for (const std::int32_t count :
         {std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min(),
          10'675'199, 10'675'200, 21'350'398, 21'350'399, -21'350'398, -21'350'399, 42'700'797,
          1'000'000'000, -1'000'000'000}) {
        SYSTEMTIME result = Day(2006, 1, 1);
        EXPECT_EQ(AddDays(Day(2006, 1, 1), count, result), 0) << count;
        EXPECT_EQ(ToDateKey(result), 0U) << count;
    }
}

TEST(IsRealDay, AgreesWithTheDayNumbersOfAllKeys) {
    for (unsigned year = 1600; year <= 1602 + 400; ++year) {
        for (unsigned month = 0; month <= 13; ++month) {
            for (unsigned day = 0; day <= 32; ++day) {
                const DateKey key = MakeDateKey(year, month, day);
                ASSERT_EQ(IsRealDay(key), KeyOfDayNumber(DayNumber(key)) == key) << key;
            }
        }
    }
    EXPECT_TRUE(IsRealDay(MakeDateKey(30'827, 12, 31)));
    EXPECT_FALSE(IsRealDay(MakeDateKey(30'828, 1, 1)));
}

struct RealDayCase {
    unsigned year;
    unsigned month;
    unsigned day;
    bool isReal;
};

TEST(IsRealDay, KnowsLeapDaysAndTheEndsOfMonths) {
    constexpr RealDayCase Days[] = {
        {1601, 1, 1, true},   {2500, 12, 31, true}, {2004, 2, 29, true},  {2006, 2, 28, true},
        {2006, 2, 29, false}, {2100, 2, 29, false}, {2000, 2, 29, true},  {2004, 2, 30, false},
        {2006, 2, 31, false}, {2006, 4, 30, true},  {2006, 4, 31, false}, {2006, 12, 31, true},
    };
    for (const RealDayCase& day : Days) {
        const DateKey key = MakeDateKey(day.year, day.month, day.day);
        EXPECT_EQ(IsRealDay(key), day.isReal) << std::hex << key;
    }
}

TEST(DaysBetween, IgnoresTheTimeOfDay) {
    SYSTEMTIME late = Day(2006, 3, 5);
    late.wHour = 23;
    late.wMinute = 59;
    EXPECT_EQ(DaysBetween(late, Day(2006, 3, 5)), 0);
    EXPECT_EQ(DaysBetween(Day(2006, 3, 5), late), 0);
}

TEST(DaysBetween, CountsTheLeapDay) {
    EXPECT_EQ(DaysBetween(Day(2004, 3, 1), Day(2004, 2, 28)), 2);
    EXPECT_EQ(DaysBetween(Day(2006, 3, 1), Day(2006, 2, 28)), 1);
}

TEST(DaysBetween, IsNegativeForAnEarlierDate) {
    EXPECT_EQ(DaysBetween(Day(2005, 12, 25), Day(2006, 1, 1)), -7);
}

TEST(DaysBetween, CountsWhatDoesNotConvertAsTheFirstDay) {
    EXPECT_EQ(DaysBetween(Day(1601, 1, 11), SYSTEMTIME{}), 10);
    EXPECT_EQ(DaysBetween(RawDate(2006, 2, 0, 31), SYSTEMTIME{}), 0);
    EXPECT_EQ(DaysBetween(Day(2006, 1, 1), SYSTEMTIME{}), DayNumber(MakeDateKey(2006, 1, 1)));
}

TEST(IsSameDay, ComparesTheDayOfWeekToo) {
    EXPECT_EQ(IsSameDay(RawDate(2006, 1, 1, 2), RawDate(2006, 1, 0, 2)), 0);
    EXPECT_EQ(IsSameDay(RawDate(2006, 1, 1, 2), RawDate(2006, 1, 1, 2)), 1);
}

TEST(IsSameDay, IgnoresTheTimeOfDay) {
    SYSTEMTIME late = Day(2006, 1, 2);
    late.wHour = 23;
    EXPECT_EQ(IsSameDay(late, Day(2006, 1, 2)), 1);
}

struct Ordering {
    const char* label;
    SYSTEMTIME a;
    SYSTEMTIME b;
    int after;
    int before;
};

TEST(DateOrder, IsDecidedByTheFirstFieldThatDiffers) {
    const std::array<Ordering, 5> cases = {{
        {"year", RawDate(2006, 1, 0, 1), RawDate(2005, 12, 0, 31), 1, 0},
        {"month", RawDate(2006, 2, 0, 1), RawDate(2006, 1, 0, 31), 1, 0},
        {"day", RawDate(2006, 1, 0, 2), RawDate(2006, 1, 6, 1), 1, 0},
        {"day of week does not count", RawDate(2006, 1, 1, 2), RawDate(2006, 1, 0, 2), 0, 0},
        {"year above all", RawDate(2005, 12, 0, 31), RawDate(2006, 1, 0, 1), 0, 1},
    }};
    for (const Ordering& ordering : cases) {
        SCOPED_TRACE(ordering.label);
        EXPECT_EQ(IsDateAfter(ordering.a, ordering.b), ordering.after);
        EXPECT_EQ(IsDateBefore(ordering.a, ordering.b), ordering.before);
        EXPECT_EQ(IsDateAfter(ordering.b, ordering.a), ordering.before);
        EXPECT_EQ(IsDateBefore(ordering.b, ordering.a), ordering.after);
    }
}

SYSTEMTIME SecondOfJanuary() {
    SYSTEMTIME date = Day(2006, 1, 2);
    date.wHour = 9;
    date.wMinute = 5;
    date.wSecond = 7;
    return date;
}

TEST(FormatDateTime, PrintsEveryPart) {
    std::array<WCHAR, 32> text{};
    FormatDateTime(SecondOfJanuary(), text.data(), 32);
    EXPECT_EQ(ToUtf8(text.data()), "Mon Jan 02 09:05:07 2006");
}

TEST(FormatDateTime, IsCutAndTerminatedAtTheGivenLength) {
    std::array<WCHAR, 12> text{};
    text.fill('#');
    FormatDateTime(SecondOfJanuary(), text.data(), 11);
    EXPECT_EQ(ToUtf8(text.data()), "Mon Jan 02");
    EXPECT_EQ(text[11], '#');
}

TEST(IsRecordDate, HoldsAnyDayOfAnyMonthFrom1601To2500) {
    for (const DateKey key :
         {MakeDateKey(1601, 1, 1), MakeDateKey(2006, 2, 31), MakeDateKey(2500, 12, 31)}) {
        EXPECT_TRUE(IsRecordDate(key)) << key;
    }
    for (const DateKey key :
         {DateKey{0}, MakeDateKey(1600, 12, 31), MakeDateKey(2501, 1, 1), MakeDateKey(2006, 0, 1),
          MakeDateKey(2006, 13, 1), MakeDateKey(2006, 1, 0), MakeDateKey(2006, 1, 32)}) {
        EXPECT_FALSE(IsRecordDate(key)) << key;
    }
}

TEST(FormatMonthDay, KeepsTheCommaOfTheMonth) {
    std::array<WCHAR, 16> text{};
    FormatMonthDay(Day(2006, 3, 5), text.data(), 16);
    EXPECT_EQ(ToUtf8(text.data()), "Mar, 05");
}

TEST(FormatDateStamp, CanNameAFile) {
    std::array<WCHAR, DateStampCapacity> text{};
    FormatDateStamp(SecondOfJanuary(), text.data());
    EXPECT_EQ(ToUtf8(text.data()), "02-Jan-2006 09-05");
}

TEST(FormatDateStamp, FitsItsCapacityWhateverTheFields) {
    SYSTEMTIME date = RawDate(65535, 65535, 65535, 65535);
    date.wHour = 65535;
    date.wMinute = 65535;
    std::array<WCHAR, DateStampCapacity> text{};
    FormatDateStamp(date, text.data());
    EXPECT_EQ(ToUtf8(text.data()), "65535-   -65535 65535-65535");
}

}  // namespace
}  // namespace lunara::test
