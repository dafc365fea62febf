#include "diary/diary_edit.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "cycle/predictor.h"
#include "tests/support/dates.h"
#include "tests/support/user_data_access.h"

namespace lunara {
namespace {

using test::ClockScope;
using test::Day;

constexpr DateKey First = MakeDateKey(2006, 3, 1);

class DiaryEditTest : public ::testing::Test {
  protected:
    void SetUp() override {
        DiaryEdit edit(data);
        for (DateKey day = First; day < First + 5; ++day) {
            edit.SetTemperature(day, 9800);
            edit.SetBleeding(day, 2);
            edit.SetNoteFlags(day, NoteFlagPms);
            edit.SetNoteText(day, TEXT("old"));
        }
        ASSERT_TRUE(edit.Store());
        Settle();
    }

    /// As after a save and a prediction.
    void Settle() {
        test::ClearDirty(data);
        UpdatePrediction(data, 0);
    }

    /// The names of the dirty collections, and "prediction" when it is out of date.
    std::vector<std::string> Changed() const {
        std::vector<std::string> names;
        for (const DataFile file : AllDataFiles) {
            if (data.IsDirty(file)) {
                names.push_back(ToUtf8(DataFileName(file)));
            }
        }
        if (!data.Prediction().predictionUpToDate) {
            names.emplace_back("prediction");
        }
        return names;
    }

    std::string NoteOf(DateKey day) const {
        const std::unique_ptr<WCHAR[]> text(data.NotePages().CopyText(day));
        return text ? ToUtf8(text.get()) : "(none)";
    }

    static std::int32_t ValueOf(const DayValueList& list, DateKey day) {
        const std::int32_t index = list.Find(day);
        return index < 0 ? -99 : list.At(index).value;
    }

    ClockScope clock{Day(2006, 3, 15)};
    UserData data;
};

using Names = std::vector<std::string>;

TEST_F(DiaryEditTest, NothingChangesBeforeStore) {
    {
        DiaryEdit edit(data);
        edit.SetBleeding(First, 3);
        edit.DeleteAll();
    }
    EXPECT_EQ(ValueOf(data.Bleeding(), First), 2);
    EXPECT_EQ(Changed(), Names{});
}

TEST_F(DiaryEditTest, EachCollectionThatChangedIsDirtyAndThePredictionOutOfDate) {
    struct Case {
        const char* label;
        void (*change)(DiaryEdit& edit);
        const char* file;
    };
    const Case cases[] = {
        {"another value", [](DiaryEdit& edit) { edit.SetTemperature(First, 9900); },
         "Temperature.dat"},
        {"a new day", [](DiaryEdit& edit) { edit.SetBleeding(First + 9, 1); }, "Bleeding.dat"},
        {"a day before all", [](DiaryEdit& edit) { edit.SetBleeding(First - 1, 1); },
         "Bleeding.dat"},
        {"a deleted value", [](DiaryEdit& edit) { edit.SetNoteFlags(First + 2, NoNoteFlags); },
         "Notes.dat"},
        {"another text", [](DiaryEdit& edit) { edit.SetNoteText(First + 1, TEXT("new")); },
         "NotePages.dat"},
        {"a deleted text", [](DiaryEdit& edit) { edit.SetNoteText(First + 1, TEXT("")); },
         "NotePages.dat"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.label);
        DiaryEdit edit(data);
        row.change(edit);
        ASSERT_TRUE(edit.Store());
        EXPECT_EQ(Changed(), (Names{row.file, "prediction"}));
        Settle();
    }
}

TEST_F(DiaryEditTest, WhatIsStoredAlreadyChangesNothing) {
    DiaryEdit edit(data);
    edit.SetTemperature(First, 9800);
    edit.SetTemperature(First + 20, NoTemperature);
    edit.SetBleeding(First, 3);
    edit.SetBleeding(First, 2);  // the last word counts
    edit.SetBleeding(First + 20, NoBleeding);
    edit.SetNoteFlags(First, NoteFlagPms);
    edit.SetNoteText(First, TEXT("old"));
    edit.SetNoteText(First + 20, TEXT(""));
    ASSERT_TRUE(edit.Store());
    EXPECT_EQ(Changed(), Names{});
    DiaryEdit empty(data);
    ASSERT_TRUE(empty.Store());
    EXPECT_EQ(Changed(), Names{});
    EXPECT_EQ(data.Bleeding().Count(), 5);
}

TEST_F(DiaryEditTest, ThePredictionIsComputedFromTheNewRecords) {
    DiaryEdit edit(data);
    edit.DeleteAll();
    const std::int32_t start = DayNumber(MakeDateKey(2005, 11, 1));
    for (std::int32_t cycle = 4; cycle >= 0; --cycle) {  // not in date order
        for (std::int32_t day = 0; day < 4; ++day) {
            edit.SetBleeding(KeyOfDayNumber(start + cycle * 28 + day), 2);
        }
    }
    ASSERT_TRUE(edit.Store());
    UpdatePrediction(data, 0);
    EXPECT_EQ(data.Prediction().validCycles.Count(), 4);
    EXPECT_EQ(ToDateKey(data.LastValidPeriodStart()), KeyOfDayNumber(start + 4 * 28));
    SYSTEMTIME next{};
    FromDateKey(KeyOfDayNumber(start + 5 * 28), next);
    EXPECT_EQ(GetPeriodProbability(data, next), 1.0F);
}

TEST_F(DiaryEditTest, RecordsComeOutInDateOrderWithTheListsOwnCapacity) {
    DiaryEdit edit(data);
    for (DateKey day = 28; day > 0; --day) {
        edit.SetBleeding(MakeDateKey(2006, 2, day), static_cast<std::int32_t>(day));
    }
    edit.SetBleeding(First + 1, NoBleeding);
    ASSERT_TRUE(edit.Store());
    const DayValueList& list = data.Bleeding();
    ASSERT_EQ(list.Count(), 32);
    EXPECT_EQ(list.Capacity(), 40);
    EXPECT_FALSE(list.IsUnsorted());
    for (std::int32_t i = 1; i < list.Count(); ++i) {
        EXPECT_LT(list.At(i - 1).date, list.At(i).date);
    }
    EXPECT_EQ(list.At(0).value, 1);
    EXPECT_EQ(ValueOf(list, First + 1), -99);
    EXPECT_EQ(ValueOf(list, First + 2), 2);
}

TEST_F(DiaryEditTest, RecordsInOrderOfEntryAreMergedLikeSortedOnes) {
    UserDataTestAccess::Bleeding(data).Set(First - 3, 1);
    ASSERT_TRUE(data.Bleeding().IsUnsorted());
    DiaryEdit edit(data);
    edit.SetBleeding(First - 3, 3);
    edit.SetBleeding(First - 4, 1);
    ASSERT_TRUE(edit.Store());
    ASSERT_EQ(data.Bleeding().Count(), 7);
    EXPECT_EQ(data.Bleeding().At(0).date, First - 4);
    EXPECT_EQ(data.Bleeding().At(1).value, 3);
}

// A file can hold a record of the none-value; only the days that the batch names lose theirs.
TEST_F(DiaryEditTest, StoredNoneValuesOfOtherDaysStay) {
    UserDataTestAccess::Bleeding(data).Set(First + 10, NoBleeding);
    UserDataTestAccess::Bleeding(data).Set(First + 11, NoBleeding);
    DiaryEdit edit(data);
    edit.SetBleeding(First + 11, NoBleeding);
    ASSERT_TRUE(edit.Store());
    EXPECT_EQ(ValueOf(data.Bleeding(), First + 10), 0);
    EXPECT_EQ(ValueOf(data.Bleeding(), First + 11), -99);
    EXPECT_EQ(Changed(), (Names{"Bleeding.dat", "prediction"}));
}

TEST_F(DiaryEditTest, KeysAreOrderedAsSignedNumbers) {
    DiaryEdit edit(data);
    edit.SetBleeding(0x7FFF'FFFF, 1);
    edit.SetBleeding(0x8000'0000, 1);
    edit.SetBleeding(0, 1);
    ASSERT_TRUE(edit.Store());
    EXPECT_EQ(data.Bleeding().Find(0x8000'0000), 0);
    EXPECT_EQ(data.Bleeding().Find(0), 1);
    EXPECT_EQ(data.Bleeding().Find(First), 2);
    EXPECT_EQ(data.Bleeding().Find(0x7FFF'FFFF), 7);
}

TEST_F(DiaryEditTest, ChangedNotesMoveToTheEndInDateOrderAndOthersStay) {
    const WideString longText(70, 'n');
    DiaryEdit edit(data);
    edit.SetNoteText(First + 3, longText);
    edit.SetNoteText(First + 1, TEXT("new"));
    edit.SetNoteText(First, TEXT("old"));
    edit.SetNoteText(First + 4, TEXT(""));
    ASSERT_TRUE(edit.Store());
    std::vector<DateKey> days;
    for (const NotePage& page : data.NotePages()) {
        days.push_back(page.date);
    }
    EXPECT_EQ(days,
              (std::vector<DateKey>{First, First + 2, First + 1, First + 3, First + 3, First + 3}));
    EXPECT_EQ(NoteOf(First + 1), "new");
    EXPECT_EQ(NoteOf(First + 3), std::string(70, 'n'));
    EXPECT_EQ(NoteOf(First + 4), "(none)");
}

// A file may hold such pages. They would come back as a note of no text.
TEST_F(DiaryEditTest, EmptyTextDeletesPagesWithoutText) {
    UserDataTestAccess::NotePages(data).AppendText(First + 9, TEXT(""), 0);
    DiaryEdit edit(data);
    edit.SetNoteText(First + 9, TEXT(""));
    ASSERT_TRUE(edit.Store());
    EXPECT_EQ(data.NotePages().Count(), 5);
    EXPECT_TRUE(data.IsDirty(DataFile::NotePages));
}

TEST_F(DiaryEditTest, TextEndsAtItsFirstZeroUnit) {
    DiaryEdit edit(data);
    edit.SetNoteText(First, WideView(TEXT("a\0b"), 3));
    edit.SetNoteText(First + 1, WideView(TEXT("\0b"), 2));
    ASSERT_TRUE(edit.Store());
    EXPECT_EQ(NoteOf(First), "a");
    EXPECT_EQ(NoteOf(First + 1), "(none)");
}

TEST_F(DiaryEditTest, FlagsReadAsTheBatchLeavesThem) {
    DiaryEdit edit(data);
    EXPECT_EQ(edit.GetNoteFlags(First), NoteFlagPms);
    EXPECT_EQ(edit.GetNoteFlags(First + 9), NoNoteFlags);
    edit.SetNoteFlags(First, edit.GetNoteFlags(First) | NoteFlagCramps);
    EXPECT_EQ(edit.GetNoteFlags(First), NoteFlagPms | NoteFlagCramps);
    edit.DeleteAll();
    EXPECT_EQ(edit.GetNoteFlags(First), NoNoteFlags);
}

TEST_F(DiaryEditTest, DeletingAllLeavesOnlyWhatIsSetAfterwards) {
    DiaryEdit edit(data);
    edit.SetTemperature(First + 30, 9900);
    edit.DeleteAll();
    edit.SetBleeding(First, 1);
    ASSERT_TRUE(edit.Store());
    EXPECT_EQ(data.Temperature().Count(), 0);
    EXPECT_EQ(data.NoteFlags().Count(), 0);
    EXPECT_EQ(data.NotePages().Count(), 0);
    ASSERT_EQ(data.Bleeding().Count(), 1);
    EXPECT_EQ(data.Bleeding().At(0).value, 1);
    EXPECT_EQ(Changed(), (Names{"Temperature.dat", "Bleeding.dat", "Notes.dat", "NotePages.dat",
                                "prediction"}));
}

TEST_F(DiaryEditTest, TheSameWholeContentChangesNothing) {
    DiaryEdit edit(data);
    edit.DeleteAll();
    for (DateKey day = First; day < First + 5; ++day) {
        edit.SetTemperature(day, 9800);
        edit.SetBleeding(day, 2);
        edit.SetNoteFlags(day, NoteFlagPms);
        edit.SetNoteText(day, TEXT("old"));
    }
    ASSERT_TRUE(edit.Store());
    EXPECT_EQ(Changed(), Names{});
}

TEST_F(DiaryEditTest, StoreEmptiesTheBatch) {
    DiaryEdit edit(data);
    edit.DeleteAll();
    edit.SetBleeding(First, 3);
    ASSERT_TRUE(edit.Store());
    data.SetNoteFlags(NoteFlagCramps);
    Settle();
    ASSERT_TRUE(edit.Store());
    EXPECT_EQ(Changed(), Names{});
    EXPECT_EQ(data.NoteFlags().Count(), 1);
}

TEST_F(DiaryEditTest, ObserversAreNeitherAskedNorTold) {
    class Refuser : public DataObserver {
      public:
        int CanChangeBleeding(UserData&, std::int32_t, std::int32_t) override { return ++calls, 0; }
        void BleedingChanged(UserData&, std::int32_t) override { ++calls; }

        int calls = 0;
    };
    Refuser refuser;
    data.AttachObserver(refuser);
    DiaryEdit edit(data);
    edit.SetBleeding(First, 3);
    EXPECT_TRUE(edit.Store());
    EXPECT_EQ(refuser.calls, 0);
    EXPECT_EQ(ValueOf(data.Bleeding(), First), 3);
}

// Twenty thousand days in the worst order: a batch must not cost a search or a sort per day.
TEST_F(DiaryEditTest, ALongImportInAnyOrderIsOneMerge) {
    constexpr std::int32_t Days = 20'000;
    const std::int32_t first = DayNumber(MakeDateKey(1950, 1, 1));
    DiaryEdit edit(data);
    for (std::int32_t i = Days; i-- > 0;) {
        const DateKey day = KeyOfDayNumber(first + (i * 7'919) % Days);
        edit.SetTemperature(day, 9500 + i % 200);
        edit.SetNoteText(day, TEXT("n"));
    }
    ASSERT_TRUE(edit.Store());
    EXPECT_EQ(data.NotePages().Count(), Days + 5);
    std::int32_t recorded = 0;
    for (std::int32_t i = 0; i < Days; ++i) {
        const DateKey day = KeyOfDayNumber(first + (i * 7'919) % Days);
        const std::int32_t value = 9500 + i % 200;
        ASSERT_EQ(ValueOf(data.Temperature(), day), value);
        ++recorded;
    }
    EXPECT_EQ(data.Temperature().Count(), recorded + 5);
}

}  // namespace
}  // namespace lunara
