#include "records/collections.h"

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <vector>

#include "platform/text.h"
#include "tests/support/dates.h"

namespace lunara::test {
namespace {

constexpr DateKey FirstDay = MakeDateKey(2006, 1, 1);

std::vector<DateKey> Dates(const DayValueList& list) {
    std::vector<DateKey> dates;
    for (const DayValue& record : list) {
        dates.push_back(record.date);
    }
    return dates;
}

void Fill(DayValueList& list, std::int32_t count) {
    for (std::int32_t i = 0; i < count; ++i) {
        ASSERT_EQ(list.Set(KeyOfDayNumber(DayNumber(FirstDay) + i), i + 1), 1);
    }
}

TEST(DayValueList, FindInAnEmptyListIsMissing) {
    DayValueList list;
    EXPECT_EQ(list.Find(FirstDay), -1);
    EXPECT_FALSE(list.IsUnsorted());
}

TEST(DayValueList, EarlierDateSetLaterWaitsForTheNextFind) {
    DayValueList list;
    list.Set(MakeDateKey(2006, 1, 5), 1);
    list.Set(MakeDateKey(2006, 1, 3), 2);
    EXPECT_TRUE(list.IsUnsorted());
    EXPECT_EQ(list.At(0).date, MakeDateKey(2006, 1, 5));
    EXPECT_EQ(list.Find(MakeDateKey(2006, 1, 5)), 1);
    EXPECT_FALSE(list.IsUnsorted());
    EXPECT_EQ(list.At(0).date, MakeDateKey(2006, 1, 3));
}

TEST(DayValueList, AppendMarksUnsortedEvenInOrder) {
    DayValueList list;
    list.Set(MakeDateKey(2006, 1, 3), 2);
    EXPECT_TRUE(list.IsUnsorted());
    list.Sort();
    EXPECT_FALSE(list.IsUnsorted());
    list.Set(MakeDateKey(2006, 1, 4), 2);
    EXPECT_TRUE(list.IsUnsorted());
}

TEST(DayValueList, SetOfAnExistingDateReplacesWhereItStands) {
    DayValueList list;
    list.Set(MakeDateKey(2006, 1, 5), 1);
    list.Set(MakeDateKey(2006, 1, 3), 2);
    list.Sort();
    list.Set(MakeDateKey(2006, 1, 5), 7);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_FALSE(list.IsUnsorted());
    EXPECT_EQ(list.At(1).value, 7);
}

TEST(DayValueList, SetLeavesDirtyToItsCaller) {
    DayValueList list;
    list.Set(FirstDay, 1);
    EXPECT_FALSE(list.dirty);
}

TEST(DayValueList, GrowsByTen) {
    DayValueList list;
    Fill(list, 10);
    EXPECT_EQ(list.Capacity(), 10);
    Fill(list, 11);
    EXPECT_EQ(list.Capacity(), 20);
    EXPECT_EQ(list.Count(), 11);
}

TEST(DayValueList, ShrinksOnlyWhenFifteenAreFree) {
    DayValueList list;
    Fill(list, 17);
    ASSERT_EQ(list.Reserve(30), 1);
    EXPECT_EQ(list.Remove(list.At(0).date), 1);
    EXPECT_EQ(list.Capacity(), 30);  // 14 records free
    EXPECT_EQ(list.Remove(list.At(0).date), 1);
    EXPECT_EQ(list.Capacity(), 20);
    EXPECT_EQ(list.Count(), 15);
    EXPECT_EQ(list.At(14).value, 17);
}

TEST(DayValueList, RemoveOfAnAbsentDateChangesNothing) {
    DayValueList list;
    Fill(list, 3);
    EXPECT_EQ(list.Remove(MakeDateKey(2005, 1, 1)), 0);
    EXPECT_EQ(list.Count(), 3);
}

TEST(DayValueList, RemoveAtSetsDirtyOnlyWhenItRemoved) {
    DayValueList list;
    Fill(list, 3);
    EXPECT_EQ(list.RemoveAt(3), 0);
    EXPECT_EQ(list.RemoveAt(-1), 0);
    EXPECT_FALSE(list.dirty);
    EXPECT_EQ(list.RemoveAt(1), 1);
    EXPECT_TRUE(list.dirty);
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(list.At(1).value, 3);
}

TEST(DayValueList, ReserveKeepsRecordsAndRefusesFewer) {
    DayValueList list;
    Fill(list, 12);
    EXPECT_EQ(list.Reserve(12), 1);
    EXPECT_EQ(list.Capacity(), 12);
    EXPECT_EQ(list.Reserve(11), 0);
    EXPECT_EQ(list.Count(), 12);
    EXPECT_EQ(list.At(11).value, 12);
}

TEST(DayValueList, ClearEmptiesEverything) {
    DayValueList list;
    Fill(list, 12);
    list.dirty = true;
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Capacity(), 0);
    EXPECT_FALSE(list.IsUnsorted());
    EXPECT_FALSE(list.dirty);
    EXPECT_EQ(list.begin(), nullptr);
}

TEST(DayValueList, ComparesDatesAsSignedNumbers) {
    DayValueList list;
    list.Set(0x7FFFFFFF, 1);
    list.Set(0x80000000, 2);
    EXPECT_EQ(list.Find(0x80000000), 0);
    EXPECT_EQ(list.Find(0x7FFFFFFF), 1);
}

TEST(DayValueList, LooksUpInAConstListToo) {
    DayValueList list;
    list.Set(MakeDateKey(2006, 1, 5), 1);
    list.Set(MakeDateKey(2006, 1, 3), 2);
    const DayValueList& readOnly = list;
    EXPECT_EQ(readOnly.Find(MakeDateKey(2006, 1, 5)), 1);
    EXPECT_FALSE(readOnly.IsUnsorted());
    EXPECT_EQ(readOnly.At(0).value, 2);
}

TEST(DayValueList, SwapExchangesRecordsAndTheirOrderButNotDirty) {
    DayValueList first;
    Fill(first, 11);
    first.Sort();
    first.dirty = true;
    DayValueList second;
    second.Set(MakeDateKey(2006, 1, 5), 1);
    second.Set(MakeDateKey(2006, 1, 3), 2);
    first.Swap(second);
    EXPECT_EQ(second.Count(), 11);
    EXPECT_EQ(second.Capacity(), 20);
    EXPECT_FALSE(second.IsUnsorted());
    EXPECT_FALSE(second.dirty);
    EXPECT_EQ(first.Count(), 2);
    EXPECT_EQ(first.Capacity(), 10);
    EXPECT_TRUE(first.IsUnsorted());
    EXPECT_TRUE(first.dirty);
    EXPECT_EQ(first.Find(MakeDateKey(2006, 1, 5)), 1);
    EXPECT_EQ(first.Set(MakeDateKey(2006, 1, 6), 3), 1);
    EXPECT_EQ(first.Count(), 3);
}

// Set and Sort take shortcuts for records that arrive in date order. None may show: any sequence of
// operations leaves what a map, and a vector in order of entry, would hold.
TEST(DayValueList, BehavesLikeAMapUnderRandomUse) {
    std::mt19937 random(20060102);
    for (int round = 0; round < 200; ++round) {
        DayValueList list;
        std::map<DateKey, std::int32_t> expected;
        std::vector<DateKey> order;
        const int operations = 1 + static_cast<int>(random() % 120);
        DateKey ascending = FirstDay;
        for (int i = 0; i < operations; ++i) {
            const bool ascend = random() % 3 != 0;
            const DateKey key =
                ascend ? ++ascending : FirstDay - 40 + static_cast<DateKey>(random() % 80);
            const auto value = static_cast<std::int32_t>(random());
            switch (random() % 8) {
                case 0: {
                    list.Remove(key);
                    expected.erase(key);
                    order.clear();
                    for (const auto& entry : expected) {
                        order.push_back(entry.first);
                    }
                    break;
                }
                case 1:
                    list.Sort();
                    std::sort(order.begin(), order.end());
                    break;
                default:
                    list.Set(key, value);
                    if (!expected.contains(key)) {
                        order.push_back(key);
                    }
                    expected[key] = value;
                    break;
            }
            ASSERT_EQ(Dates(list), order) << "round " << round << ", operation " << i;
        }
        for (const auto& [key, value] : expected) {
            const std::int32_t index = list.Find(key);
            ASSERT_GE(index, 0);
            ASSERT_EQ(list.At(index).value, value);
        }
        ASSERT_EQ(list.Count(), static_cast<std::int32_t>(expected.size()));
    }
}

TEST(DayTripleList, KeepsBothWords) {
    DayTripleList list;
    list.Set(DayFlagsEntry{MakeDateKey(2006, 1, 2), 3, 4});
    list.Set(DayFlagsEntry{MakeDateKey(2006, 1, 1), 5, 6});
    ASSERT_EQ(list.Find(MakeDateKey(2006, 1, 2)), 1);
    EXPECT_EQ(list.At(1).flags, 3U);
    EXPECT_EQ(list.At(1).argIndex, 4);
}

TEST(SteppedList, GrowsToTheNextMultipleOfItsStepAboveTheIndex) {
    IndexList list(10);
    EXPECT_EQ(list.SetAt(0, 5), 1);
    EXPECT_EQ(list.Capacity(), 10);
    EXPECT_EQ(list.SetAt(10, 7), 11);
    EXPECT_EQ(list.Capacity(), 20);
    EXPECT_EQ(list.Count(), 11);
    EXPECT_EQ(list.At(9), 0);  // never set, so zero
    EXPECT_EQ(list.At(0), 5);
}

TEST(SteppedList, GetAtPastTheEndGrowsAndReadsZero) {
    IndexList list(10);
    std::int32_t word = 77;
    EXPECT_EQ(list.GetAt(12, word), 13);
    EXPECT_EQ(word, 0);
    EXPECT_EQ(list.Count(), 13);
    EXPECT_EQ(list.Capacity(), 20);
}

TEST(SteppedList, RefusesNegativeIndices) {
    IndexList list(10);
    std::int32_t word = 77;
    EXPECT_EQ(list.GetAt(-1, word), 0);
    EXPECT_EQ(list.SetAt(-1, word), 0);
    EXPECT_EQ(list.Count(), 0);
}

TEST(SteppedList, RefusesAnIndexBeyondItsLargestCapacity) {
    CycleRecordList list(10);
    EXPECT_EQ(list.SetAt(0x7FFFFFFF, CycleRecord{}), 0);
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Capacity(), 0);
}

TEST(SteppedList, RemoveAtDropsAStepOnceItIsFree) {
    IndexList list(10);
    for (std::int32_t i = 0; i < 12; ++i) {
        list.SetAt(i, i);
    }
    list.RemoveAt(0);
    EXPECT_EQ(list.Capacity(), 20);
    list.RemoveAt(0);
    EXPECT_EQ(list.Count(), 10);
    EXPECT_EQ(list.Capacity(), 10);
    EXPECT_EQ(list.At(0), 2);
    EXPECT_EQ(list.At(9), 11);
    list.RemoveAt(10);
    list.RemoveAt(-1);
    EXPECT_EQ(list.Count(), 10);
}

TEST(SteppedList, SetSizeRoundsUpAndClearsTheNewRecords) {
    CycleRecordList list(10);
    list.SetAt(0, CycleRecord{5, 28, FirstDay});
    list.SetAt(1, CycleRecord{4, 29, FirstDay});
    ASSERT_EQ(list.SetSize(1), 1);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list.Capacity(), 10);
    ASSERT_EQ(list.SetSize(11), 1);
    EXPECT_EQ(list.Capacity(), 20);
    EXPECT_EQ(list.At(0).cycleLength, 28);
    EXPECT_EQ(list.At(1).cycleLength, 0);
    ASSERT_EQ(list.SetSize(0), 1);
    EXPECT_EQ(list.Capacity(), 0);
}

// ---- Notes as pages ----

WideString TextOf(std::size_t length) {
    WideString text;
    for (std::size_t i = 0; i < length; ++i) {
        text.push_back(static_cast<WCHAR>('a' + i % 26));
    }
    return text;
}

WideString Fetch(const NotePageList& pages, DateKey key) {
    const std::unique_ptr<WCHAR[]> text(pages.CopyText(key));
    return text ? WideString(text.get()) : WideString(TEXT("(none)"));
}

struct PagedNote {
    const char* label;
    std::int32_t units;
    std::int32_t pages;
};

TEST(NotePageList, LastPageAlwaysHoldsATerminator) {
    constexpr PagedNote Notes[] = {
        {"one unit", 1, 1},         {"a page less one", 33, 1},
        {"a whole page", 34, 2},    {"two pages less one", 67, 2},
        {"two whole pages", 68, 3}, {"the longest of the dialog", 127, 4},
    };
    for (const PagedNote& note : Notes) {
        SCOPED_TRACE(note.label);
        NotePageList pages(10);
        const WideString text = TextOf(static_cast<std::size_t>(note.units));
        ASSERT_EQ(pages.AppendText(FirstDay, text.c_str(), note.units), 1);
        EXPECT_EQ(pages.Count(), note.pages);
        EXPECT_EQ(Fetch(pages, FirstDay), text);
        const NotePage& last = pages.At(note.pages - 1);
        EXPECT_EQ(last.text[NotePageUnits - 1], 0);
    }
}

TEST(NotePageList, FetchStopsAtTheNextDaysPages) {
    NotePageList pages(10);
    pages.AppendText(FirstDay, TextOf(40).c_str(), 40);
    pages.AppendText(FirstDay + 1, TEXT("next"), 4);
    EXPECT_EQ(Fetch(pages, FirstDay), TextOf(40));
    EXPECT_EQ(Fetch(pages, FirstDay + 1), TEXT("next"));
    EXPECT_EQ(Fetch(pages, FirstDay + 2), TEXT("(none)"));
}

TEST(NotePageList, LastUnitReadsAsTerminatorEvenInAFullPage) {
    NotePageList pages(10);
    NotePage page{};
    page.date = FirstDay;
    std::fill(std::begin(page.text), std::end(page.text), WCHAR{'x'});
    pages.SetAt(0, page);
    EXPECT_EQ(Fetch(pages, FirstDay).size(), 33U);
}

TEST(NotePageList, RemoveTakesOnlyThatDaysPages) {
    NotePageList pages(10);
    pages.AppendText(FirstDay, TEXT("first"), 5);
    pages.AppendText(FirstDay + 1, TextOf(70).c_str(), 70);
    pages.AppendText(FirstDay + 2, TEXT("third"), 5);
    EXPECT_EQ(pages.RemoveText(FirstDay + 1), 3);
    EXPECT_EQ(pages.RemoveText(FirstDay + 1), 0);
    EXPECT_EQ(pages.Count(), 2);
    EXPECT_EQ(Fetch(pages, FirstDay), TEXT("first"));
    EXPECT_EQ(Fetch(pages, FirstDay + 2), TEXT("third"));
}

TEST(NotePageList, StayInOrderOfEntry) {
    NotePageList pages(10);
    pages.AppendText(FirstDay + 5, TEXT("later"), 5);
    pages.AppendText(FirstDay, TEXT("earlier"), 7);
    NotePage page{};
    EXPECT_EQ(pages.FindFirst(FirstDay, page), 1);
    EXPECT_EQ(page.date, FirstDay);
    EXPECT_EQ(pages.FindFirst(FirstDay + 1, page), -1);
}

}  // namespace
}  // namespace lunara::test
