#include "views/diary_row.h"

#include <gtest/gtest.h>

#include <bit>
#include <string>

#include "cycle/day_status.h"
#include "diary/user_data.h"
#include "platform/text.h"
#include "tests/support/dates.h"
#include "tests/support/user_data_access.h"
#include "views/color_blend.h"

namespace lunara::test {
namespace {

constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Blue = RGB(0, 0, 255);
constexpr COLORREF Orange = RGB(255, 128, 0);
constexpr COLORREF Green = RGB(0, 255, 0);

struct MaskCase {
    const char* label;
    std::uint32_t showFlags;
    std::uint32_t mask;
};

TEST(DiaryStatusMask, FollowsTheItemsShown) {
    const MaskCase cases[] = {
        {"nothing", 0, 0x01E00000},
        {"notes", 1, 0x01E00000},
        {"bleeding", 2, 0x01E001FF},
        {"period", 4, 0x01E001FF},
        {"bleeding and period", 6, 0x01E001FF},
        // Lacks bits 0 to 10, and among them past ovulation and its first day (9, 10).
        {"ovulation alone", 8, 0x01E07800},
        {"ovulation and notes", 9, 0x01E07800},
        {"ovulation and period", 12, 0x01E07FFF},
        {"ovulation and bleeding", 10, 0x01E07FFF},
        {"ovulation, bleeding and period", 14, 0x01E07FFF},
        {"pregnancy", 16, 0x01FF1000},
        {"pregnancy and period", 20, 0x01FF11FF},
        // Bit 12 belongs to both items: their masks are ORed, not added.
        {"pregnancy and ovulation", 24, 0x01FF7800},
        {"everything", 31, 0x01FF7FFF},
    };
    for (const MaskCase& c : cases) {
        EXPECT_EQ(DiaryStatusMask(c.showFlags), c.mask) << c.label;
    }
}

TEST(DiaryItemAt, CountsTheItemsShownFromNotesUpwards) {
    EXPECT_EQ(DiaryItemAt(31, 0), DiaryShowNotes);
    EXPECT_EQ(DiaryItemAt(31, 4), DiaryShowPregnancy);
    EXPECT_EQ(DiaryItemAt(2 | 8 | 16, 0), DiaryShowBleeding);
    EXPECT_EQ(DiaryItemAt(2 | 8 | 16, 1), DiaryShowOvulation);
    EXPECT_EQ(DiaryItemAt(2 | 8 | 16, 2), DiaryShowPregnancy);
    EXPECT_EQ(DiaryItemAt(2 | 8 | 16, 3), 0U);
    EXPECT_EQ(DiaryItemAt(0, 0), 0U);
    EXPECT_EQ(DiaryItemAt(31, -1), 0U);
}

TEST(CountDiaryItems, IgnoresBitsThatAreNoItems) {
    EXPECT_EQ(CountDiaryItems(0), 0);
    EXPECT_EQ(CountDiaryItems(31), 5);
    EXPECT_EQ(CountDiaryItems(0xFFFFFFE0 | 18), 2);
}

class DiaryRowTest : public testing::Test {
  protected:
    static void Store(DayValueList& list, const SYSTEMTIME& day, float value) {
        list.Set(ToDateKey(day), std::bit_cast<std::int32_t>(value));
    }
    DiaryCell Cell(DiaryShowFlag item, const SYSTEMTIME& day) {
        return FillDiaryCell(data, item, day, today);
    }

    const SYSTEMTIME today = Day(2026, 3, 15);
    const SYSTEMTIME yesterday = Day(2026, 3, 14);
    const SYSTEMTIME tomorrow = Day(2026, 3, 16);
    ClockScope clock{Day(2026, 3, 15)};
    UserData data;
};

TEST_F(DiaryRowTest, DayWithoutAnythingIsWhite) {
    for (const DiaryShowFlag item : {DiaryShowNotes, DiaryShowBleeding, DiaryShowPeriod,
                                     DiaryShowOvulation, DiaryShowPregnancy}) {
        const DiaryCell cell = Cell(item, tomorrow);
        EXPECT_EQ(cell.color, White) << item;
        EXPECT_EQ(cell.bitmap, NoPicture) << item;
        EXPECT_EQ(cell.overlay, NoPicture) << item;
    }
}

TEST_F(DiaryRowTest, NoteCellShowsMarksAndText) {
    data.SetNoteFlags(NoteFlagCramps, &today);
    EXPECT_EQ(Cell(DiaryShowNotes, today).color, RGB(255, 128, 128));
    data.SetNoteFlags(NoteFlagPms, &today);
    EXPECT_EQ(Cell(DiaryShowNotes, today).color, RGB(255, 64, 64));
    data.SetNoteFlags(NoteFlagCramps | NoteFlagPms, &today);
    EXPECT_EQ(Cell(DiaryShowNotes, today).color, RGB(255, 0, 0));
    EXPECT_EQ(Cell(DiaryShowNotes, today).overlay, NoPicture);
    data.SetNoteText(TEXT("slept badly"), &today);
    EXPECT_EQ(Cell(DiaryShowNotes, today).overlay, PictureNote);
    EXPECT_EQ(Cell(DiaryShowNotes, yesterday).overlay, NoPicture);
}

// Only bits 0 and 1 of the stored flags have a meaning.
TEST_F(DiaryRowTest, NoteCellLooksAtItsTwoBitsOnly) {
    data.SetNoteFlags(4 | NoteFlagCramps, &today);
    EXPECT_EQ(Cell(DiaryShowNotes, today).color, RGB(255, 128, 128));
}

TEST_F(DiaryRowTest, BleedingIsShadedByLevelAndCarriesItsPicture) {
    for (int level = 1; level <= 3; ++level) {
        Store(UserDataTestAccess::Prediction(data).bleedingLevels, yesterday,
              static_cast<float>(level));
        const DiaryCell cell = Cell(DiaryShowBleeding, yesterday);
        EXPECT_EQ(cell.color, BlendColor(Blue, White, static_cast<float>(level) * 0.33333334F))
            << level;
        EXPECT_EQ(cell.bitmap, PictureRecorded) << level;
        EXPECT_EQ(cell.overlay, NoPicture) << level;
    }
    EXPECT_EQ(Cell(DiaryShowBleeding, yesterday).color, Blue);
}

struct MarkCase {
    const char* label;
    int daysFromToday;
    bool todayIsBleeding;
    bool isDiscarded;
    DiaryPicture overlay;
};

TEST_F(DiaryRowTest, DateMarksTellExpectedAndDiscardedDays) {
    const MarkCase cases[] = {
        {"past", -1, false, false, NoPicture},
        {"past, discarded", -1, false, true, PictureDiscarded},
        {"today, recorded", 0, true, false, NoPicture},
        {"today, expected", 0, false, false, PictureForecast},
        {"today is never marked discarded", 0, true, true, NoPicture},
        {"future", 1, true, false, PictureForecast},
        {"future is never marked discarded", 1, false, true, PictureForecast},
    };
    for (const MarkCase& c : cases) {
        UserData fresh;
        SYSTEMTIME day{};
        AddDays(today, c.daysFromToday, day);
        UserDataTestAccess::Prediction(fresh).todayIsBleeding = c.todayIsBleeding;
        if (c.isDiscarded) {
            UserDataTestAccess::Prediction(fresh).discardedDays.Set(ToDateKey(day), 1);
        }
        Store(UserDataTestAccess::Prediction(fresh).bleedingLevels, day, 1.0F);
        Store(UserDataTestAccess::Prediction(fresh).periodProbabilities, day, 0.5F);
        for (const DiaryShowFlag item : {DiaryShowBleeding, DiaryShowPeriod}) {
            const DiaryCell cell = FillDiaryCell(fresh, item, day, today);
            EXPECT_EQ(cell.overlay, c.overlay) << c.label << ", item " << item;
        }
    }
}

TEST_F(DiaryRowTest, PeriodIsShadedByProbabilityWithoutAPicture) {
    Store(UserDataTestAccess::Prediction(data).periodProbabilities, yesterday, 0.25F);
    const DiaryCell cell = Cell(DiaryShowPeriod, yesterday);
    EXPECT_EQ(cell.color, BlendColor(Blue, White, 0.25F));
    EXPECT_EQ(cell.bitmap, NoPicture);
}

TEST_F(DiaryRowTest, OvulationAndPregnancyAreExpectedAfterTheLastPeriodStart) {
    Store(UserDataTestAccess::Prediction(data).ovulationProbabilities, yesterday, 0.5F);
    Store(UserDataTestAccess::Prediction(data).pregnancyProbabilities, yesterday, 1.0F);
    UserDataTestAccess::Prediction(data).lastValidPeriodStart = yesterday;
    EXPECT_EQ(Cell(DiaryShowOvulation, yesterday).color, BlendColor(Orange, White, 0.5F));
    EXPECT_EQ(Cell(DiaryShowPregnancy, yesterday).color, Green);
    EXPECT_EQ(Cell(DiaryShowOvulation, yesterday).overlay, NoPicture);
    EXPECT_EQ(Cell(DiaryShowPregnancy, yesterday).overlay, NoPicture);
    UserDataTestAccess::Prediction(data).lastValidPeriodStart = Day(2026, 3, 13);
    EXPECT_EQ(Cell(DiaryShowOvulation, yesterday).overlay, PictureForecast);
    EXPECT_EQ(Cell(DiaryShowPregnancy, yesterday).overlay, PictureForecast);
}

TEST_F(DiaryRowTest, TextIsTheDateAndTheStatus) {
    SetDayFlags(UserDataTestAccess::Prediction(data), DAY_CYCLE_START, 0, ToDateKey(yesterday));
    const DiaryRow row = FillDiaryRow(data, AllDiaryItems, yesterday, today);
    EXPECT_EQ(ToUtf8(row.text.data()), "Mar, 14\nCycle start. ");
}

TEST_F(DiaryRowTest, DayWithoutStatusShowsNoDateEither) {
    EXPECT_EQ(ToUtf8(FillDiaryRow(data, AllDiaryItems, yesterday, today).text.data()), "");
    // Cycle start belongs to bleeding and period, neither of which is shown here.
    SetDayFlags(UserDataTestAccess::Prediction(data), DAY_CYCLE_START, 0, ToDateKey(yesterday));
    EXPECT_EQ(ToUtf8(FillDiaryRow(data, DiaryShowOvulation, yesterday, today).text.data()), "");
}

TEST_F(DiaryRowTest, LongTextsAreCutToTheRow) {
    // The status of 125 UTF-16 units fits the row's 127 alone, but not behind the date.
    SetDayFlags(UserDataTestAccess::Prediction(data),
                DAY_PERIOD_END | DAY_OVULATION_POSSIBLE_LAST | DAY_PREGNANCY_POSSIBLE_FIRST |
                    DAY_PREGNANCY_POSSIBLE_LAST | DAY_PREGNANCY_HIGHLY_PROBABLE,
                0, ToDateKey(yesterday));
    const std::string row = ToUtf8(FillDiaryRow(data, AllDiaryItems, yesterday, today).text.data());
    EXPECT_EQ(row.size(), 127U);
    EXPECT_EQ(row.substr(row.find('\n')),
              "\nPeriod end. Last day ovulation possible. 1st day pregnancy possible. "
              "Last day pregnancy possible. Pregnancy highly prob");
}

TEST_F(DiaryRowTest, StatusThatDoesNotFitByItselfIsLeftOut) {
    SetDayFlags(UserDataTestAccess::Prediction(data),
                0x01FFFFFF & ~std::uint32_t{DAY_CYCLE_LENGTHS}, 0, ToDateKey(yesterday));
    EXPECT_EQ(ToUtf8(FillDiaryRow(data, AllDiaryItems, yesterday, today).text.data()), "");
}

TEST_F(DiaryRowTest, CellsFollowTheItemsShown) {
    data.SetNoteText(TEXT("x"), &today);
    Store(UserDataTestAccess::Prediction(data).pregnancyProbabilities, today, 1.0F);
    const DiaryRow row = FillDiaryRow(data, DiaryShowNotes | DiaryShowPregnancy, today, today);
    EXPECT_EQ(row.cells[0].overlay, PictureNote);
    EXPECT_EQ(row.cells[1].color, Green);
}

}  // namespace
}  // namespace lunara::test
