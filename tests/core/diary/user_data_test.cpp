#include "diary/user_data.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "cycle/predictor.h"
#include "storage/data_file.h"
#include "tests/support/dates.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/user_data_access.h"

namespace {

/// How many more calls of realloc succeed; negative for all.
int growthsLeft = -1;

}  // namespace

// The linker gives calls of realloc to __wrap_realloc, and the system's function the name
// __real_realloc (-Wl,--wrap=realloc).
extern "C" void* RealRealloc(void* block, std::size_t bytes) __asm__("__real_realloc");
extern "C" void* WrappedRealloc(void* block, std::size_t bytes) __asm__("__wrap_realloc");
extern "C" void* WrappedRealloc(void* block, std::size_t bytes) {
    if (growthsLeft == 0) {
        return nullptr;
    }
    growthsLeft -= growthsLeft > 0 ? 1 : 0;
    return RealRealloc(block, bytes);
}

namespace lunara::test {
namespace {

/// Appends every call to a log, which several observers may share, behind the observer's name. Can
/// refuse changes.
class RecordingObserver : public DataObserver {
  public:
    RecordingObserver(std::string ownName, std::vector<std::string>& log)
        : name(std::move(ownName)), calls(log) {}

    int CanChangeDate(UserData&, const SYSTEMTIME& current, const SYSTEMTIME& wanted) override {
        return Ask("date", current.wDay, wanted.wDay);
    }
    void DateChanged(UserData&, const SYSTEMTIME& old, const SYSTEMTIME& current) override {
        Tell("date", std::to_string(old.wDay) + ">" + std::to_string(current.wDay));
    }
    int CanChangeTemperature(UserData&, std::int32_t old, std::int32_t wanted) override {
        return Ask("temperature", old, wanted);
    }
    void TemperatureChanged(UserData&, std::int32_t value) override {
        Tell("temperature", std::to_string(value));
    }
    int CanChangeBleeding(UserData&, std::int32_t old, std::int32_t wanted) override {
        return Ask("bleeding", old, wanted);
    }
    void BleedingChanged(UserData&, std::int32_t value) override {
        Tell("bleeding", std::to_string(value));
    }
    int CanChangeNoteFlags(UserData&, std::int32_t old, std::int32_t wanted) override {
        return Ask("flags", old, wanted);
    }
    void NoteFlagsChanged(UserData&, std::int32_t flags) override {
        Tell("flags", std::to_string(flags));
    }
    int CanChangeNoteText(UserData&, const WCHAR* old, const WCHAR* wanted) override {
        calls.push_back(name + " may text " + (old ? ToUtf8(old) : "null") + ">" +
                        (wanted ? ToUtf8(wanted) : "null"));
        return refuses ? 0 : 1;
    }
    void NoteTextChanged(UserData&, const WCHAR* text) override {
        Tell("text", text ? ToUtf8(text) : "null");
    }

    bool refuses = false;

  private:
    int Ask(const std::string& what, int old, int wanted) {
        calls.push_back(name + " may " + what + " " + std::to_string(old) + ">" +
                        std::to_string(wanted));
        return refuses ? 0 : 1;
    }
    void Tell(const std::string& what, const std::string& value) {
        calls.push_back(name + " did " + what + " " + value);
    }

    std::string name;
    std::vector<std::string>& calls;
};

using Calls = std::vector<std::string>;

class UserDataTest : public testing::Test {
  protected:
    ClockScope clock{Day(2006, 3, 15)};
    UserData data;
    Calls calls;
    RecordingObserver first{"a", calls};
    RecordingObserver second{"b", calls};

    void SetUp() override { UpdatePrediction(data, 0); }
};

TEST_F(UserDataTest, StartsEmptyAtToday) {
    SYSTEMTIME date{};
    data.GetCurrentDate(date);
    EXPECT_EQ(ToDateKey(date), MakeDateKey(2006, 3, 15));
    EXPECT_EQ(date.wHour, 12);
    EXPECT_FALSE(data.IsLoaded());
    EXPECT_EQ(data.GetTemperature(), NoTemperature);
    EXPECT_EQ(data.GetBleeding(), 0);
    EXPECT_EQ(data.GetNoteFlags(), 0);
    EXPECT_EQ(data.GetNoteText(), nullptr);
    EXPECT_EQ(UserData().Prediction().lastWarningTick, 0xFFC91180U);  // an hour before tick 0
    EXPECT_FALSE(UserData().Prediction().predictionUpToDate);
}

TEST_F(UserDataTest, ObserversAreAskedAndToldInTheOrderOfAttaching) {
    data.AttachObserver(second);
    data.AttachObserver(first);
    EXPECT_EQ(data.SetBleeding(2), 1);
    EXPECT_EQ(calls, (Calls{"b may bleeding 0>2", "a may bleeding 0>2", "b did bleeding 2",
                            "a did bleeding 2"}));
}

TEST_F(UserDataTest, AllObserversAreAskedAfterARefusalAndNothingChanges) {
    data.AttachObserver(first);
    data.AttachObserver(second);
    first.refuses = true;
    SYSTEMTIME other = Day(2006, 3, 10);
    EXPECT_EQ(data.SetBleeding(2), 0);
    EXPECT_EQ(data.SetTemperature(9800), 0);
    EXPECT_EQ(data.SetNoteFlags(3), 0);
    EXPECT_EQ(data.SetNoteText(TEXT("x")), 0);
    EXPECT_EQ(data.SetCurrentDate(other), 0);
    EXPECT_EQ(calls, (Calls{"a may bleeding 0>2", "b may bleeding 0>2",
                            "a may temperature 9750>9800", "b may temperature 9750>9800",
                            "a may flags 0>3", "b may flags 0>3", "a may text null>x",
                            "b may text null>x", "a may date 15>10", "b may date 15>10"}));
    EXPECT_EQ(data.GetBleeding(), 0);
    EXPECT_EQ(data.GetTemperature(), NoTemperature);
    EXPECT_EQ(data.GetNoteFlags(), 0);
    EXPECT_EQ(data.NotePages().Count(), 0);
    EXPECT_FALSE(data.Bleeding().dirty || data.Temperature().dirty || data.NoteFlags().dirty ||
                 data.NotePages().dirty);
    EXPECT_TRUE(data.Prediction().predictionUpToDate);
}

TEST_F(UserDataTest, TenObserversFitAndNoneTwice) {
    std::vector<std::unique_ptr<RecordingObserver>> many;
    for (int i = 0; i < UserData::MaxObservers; ++i) {
        many.push_back(std::make_unique<RecordingObserver>(std::to_string(i), calls));
        EXPECT_EQ(data.AttachObserver(*many.back()), 1);
    }
    EXPECT_EQ(data.AttachObserver(first), 0);
    EXPECT_EQ(data.AttachObserver(*many[3]), 0);
    EXPECT_EQ(data.DetachObserver(*many[3]), 1);
    EXPECT_EQ(data.DetachObserver(*many[3]), 0);
    EXPECT_EQ(data.AttachObserver(first), 1);
    data.SetBleeding(1);
    ASSERT_EQ(calls.size(), 20U);
    EXPECT_EQ(calls[2], "2 may bleeding 0>1");
    EXPECT_EQ(calls[3], "4 may bleeding 0>1");
    EXPECT_EQ(calls[9], "a may bleeding 0>1");
}

TEST_F(UserDataTest, SettingTheSameTemperatureTellsObserversButSetsNoFlag) {
    data.SetTemperature(9810);
    test::ClearDirty(data);
    UpdatePrediction(data, 0);
    data.AttachObserver(first);
    EXPECT_EQ(data.SetTemperature(9810), 1);
    EXPECT_EQ(calls, (Calls{"a may temperature 9810>9810", "a did temperature 9810"}));
    EXPECT_FALSE(data.Temperature().dirty);
    EXPECT_TRUE(data.Prediction().predictionUpToDate);
}

TEST_F(UserDataTest, BleedingZeroOnADayWithoutRecordChangesNothing) {
    EXPECT_EQ(data.SetBleeding(0), 1);
    EXPECT_EQ(data.Bleeding().Count(), 0);
    EXPECT_FALSE(data.Bleeding().dirty);
    EXPECT_TRUE(data.Prediction().predictionUpToDate);
}

TEST_F(UserDataTest, EveryChangeMarksItsCollectionAndThePrediction) {
    data.SetBleeding(2);
    EXPECT_TRUE(data.Bleeding().dirty);
    EXPECT_FALSE(data.Prediction().predictionUpToDate);
    EXPECT_FALSE(data.Temperature().dirty || data.NoteFlags().dirty || data.NotePages().dirty);
    UpdatePrediction(data, 0);
    data.SetTemperature(9700);
    EXPECT_TRUE(data.Temperature().dirty);
    EXPECT_FALSE(data.Prediction().predictionUpToDate);
    UpdatePrediction(data, 0);
    data.SetNoteFlags(NoteFlagCramps);
    EXPECT_TRUE(data.NoteFlags().dirty);
    EXPECT_FALSE(data.Prediction().predictionUpToDate);
    UpdatePrediction(data, 0);
    data.SetNoteText(TEXT("x"));
    EXPECT_TRUE(data.NotePages().dirty);
    EXPECT_FALSE(data.Prediction().predictionUpToDate);
}

TEST_F(UserDataTest, TheNoneValueDeletesTheDaysRecord) {
    data.SetTemperature(9810);
    test::ClearDirty(data);
    UpdatePrediction(data, 0);
    data.SetTemperature(NoTemperature);
    EXPECT_EQ(data.Temperature().Count(), 0);
    EXPECT_TRUE(data.Temperature().dirty);
    EXPECT_FALSE(data.Prediction().predictionUpToDate);
}

TEST_F(UserDataTest, AnotherValueReplacesTheRecord) {
    data.SetBleeding(1);
    test::ClearDirty(data);
    data.SetBleeding(3);
    EXPECT_EQ(data.Bleeding().Count(), 1);
    EXPECT_EQ(data.GetBleeding(), 3);
    EXPECT_TRUE(data.Bleeding().dirty);
}

TEST_F(UserDataTest, TomorrowReadsAsFutureEvenWithARecord) {
    const SYSTEMTIME tomorrow = Day(2006, 3, 16);
    test::RecordTemperature(data, ToDateKey(tomorrow), 9800);
    test::RecordBleeding(data, ToDateKey(tomorrow), 2);
    EXPECT_EQ(data.GetTemperature(&tomorrow), FutureTemperature);
    EXPECT_EQ(data.GetBleeding(&tomorrow), FutureBleeding);
    const SYSTEMTIME today = Day(2006, 3, 15);
    EXPECT_EQ(data.GetTemperature(&today), NoTemperature);
}

TEST_F(UserDataTest, NotesHaveNoFutureGuard) {
    const SYSTEMTIME tomorrow = Day(2006, 3, 16);
    EXPECT_EQ(data.SetNoteFlags(NoteFlagPms, &tomorrow), 1);
    EXPECT_EQ(data.SetNoteText(TEXT("appointment"), &tomorrow), 1);
    EXPECT_EQ(data.GetNoteFlags(&tomorrow), NoteFlagPms);
    const std::unique_ptr<WCHAR[]> text(data.GetNoteText(&tomorrow));
    EXPECT_EQ(ToUtf8(text.get()), "appointment");
    EXPECT_EQ(data.GetNoteFlags(), 0);
}

TEST_F(UserDataTest, EmptyTextDeletesTheNote) {
    data.SetNoteText(TEXT("x"));
    test::ClearDirty(data);
    UpdatePrediction(data, 0);
    data.AttachObserver(first);
    EXPECT_EQ(data.SetNoteText(TEXT("")), 1);
    EXPECT_EQ(data.NotePages().Count(), 0);
    EXPECT_TRUE(data.NotePages().dirty);
    EXPECT_FALSE(data.Prediction().predictionUpToDate);
    EXPECT_EQ(calls, (Calls{"a may text x>", "a did text "}));
}

TEST_F(UserDataTest, NoTextOnADayWithoutNoteChangesNothing) {
    data.AttachObserver(first);
    EXPECT_EQ(data.SetNoteText(nullptr), 1);
    EXPECT_FALSE(data.NotePages().dirty);
    EXPECT_TRUE(data.Prediction().predictionUpToDate);
    EXPECT_EQ(calls, (Calls{"a may text null>null", "a did text null"}));
}

TEST_F(UserDataTest, TheSameTextAgainMovesItsPagesToTheEnd) {
    const SYSTEMTIME other = Day(2006, 3, 10);
    data.SetNoteText(TEXT("x"));
    data.SetNoteText(TEXT("y"), &other);
    data.SetNoteText(TEXT("x"));
    ASSERT_EQ(data.NotePages().Count(), 2);
    EXPECT_EQ(data.NotePages().At(0).date, ToDateKey(other));
}

TEST_F(UserDataTest, SameDayWithAnotherTimeKeepsTheOldTimeAndAsksNobody) {
    data.AttachObserver(first);
    SYSTEMTIME evening = Day(2006, 3, 15);
    evening.wHour = 20;
    EXPECT_EQ(data.SetCurrentDate(evening), 1);
    EXPECT_TRUE(calls.empty());
    SYSTEMTIME date{};
    data.GetCurrentDate(date);
    EXPECT_EQ(date.wHour, 12);
}

TEST_F(UserDataTest, ANewDayIsTakenWithItsTime) {
    data.AttachObserver(first);
    SYSTEMTIME evening = Day(2006, 3, 14);
    evening.wHour = 20;
    EXPECT_EQ(data.SetCurrentDate(evening), 1);
    EXPECT_EQ(calls, (Calls{"a may date 15>14", "a did date 15>14"}));
    SYSTEMTIME date{};
    data.GetCurrentDate(date);
    EXPECT_EQ(date.wHour, 20);
    EXPECT_EQ(data.MoveCurrentDate(-14), 1);
    data.GetCurrentDate(date);
    EXPECT_EQ(ToDateKey(date), MakeDateKey(2006, 2, 28));
    EXPECT_EQ(date.wHour, 20);
}

TEST_F(UserDataTest, MoveBeyondTheCalendarIsRefused) {
    const SYSTEMTIME day = Day(2006, 3, 14);
    ASSERT_EQ(data.SetCurrentDate(day), 1);
    EXPECT_EQ(data.MoveCurrentDate(-200'000), 0);
    SYSTEMTIME date{};
    data.GetCurrentDate(date);
    EXPECT_EQ(ToDateKey(date), ToDateKey(day));
}

TEST_F(UserDataTest, WeightsFromOneHundredthOnAreStored) {
    const float values[] = {0.01F, 0.00999F, 1.0F, 0.0F};
    DayValueList list;
    UserData::StoreDayWeights(values, 4, Day(2006, 2, 27), list);
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(list.At(0).date, MakeDateKey(2006, 2, 27));
    EXPECT_EQ(list.At(1).date, MakeDateKey(2006, 3, 1));
    EXPECT_EQ(list.At(1).value, 0x3F800000);
    EXPECT_TRUE(list.dirty);
}

// ---- Without memory ----

/// No realloc succeeds until the end of the scope.
class NoMemoryScope {
  public:
    NoMemoryScope() { growthsLeft = 0; }
    NoMemoryScope(const NoMemoryScope&) = delete;
    NoMemoryScope& operator=(const NoMemoryScope&) = delete;
    ~NoMemoryScope() { growthsLeft = -1; }
};

TEST_F(UserDataTest, NoteThatCannotBeStoredLeavesTheOldOne) {
    ASSERT_EQ(data.SetNoteText(TEXT("old")), 1);
    test::ClearDirty(data);
    const WideString longText(5000, 'n');
    data.AttachObserver(first);
    {
        const NoMemoryScope noMemory;
        EXPECT_EQ(data.SetNoteText(longText.c_str()), 0);
    }
    EXPECT_EQ(calls.size(), 1U);  // the question, and no notification
    EXPECT_FALSE(data.NotePages().dirty);
    EXPECT_EQ(data.NotePages().Count(), 1);
    const std::unique_ptr<WCHAR[]> text(data.GetNoteText());
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(ToUtf8(text.get()), "old");
}

TEST_F(UserDataTest, ValueThatCannotBeStoredChangesNothing) {
    {
        const NoMemoryScope noMemory;
        EXPECT_EQ(data.SetBleeding(2), 0);
    }
    EXPECT_FALSE(data.Bleeding().dirty);
    EXPECT_EQ(data.GetBleeding(), 0);
}

TEST_F(UserDataTest, BatchThatCannotBeStoredChangesNothingAndCanBeTriedAgain) {
    const DateKey today = MakeDateKey(2006, 3, 15);
    ASSERT_EQ(data.SetBleeding(2), 1);
    test::ClearDirty(data);
    UpdatePrediction(data, 0);
    DiaryEdit edit(data);
    edit.SetBleeding(today, 3);
    edit.SetNoteText(today, TEXT("new"));
    {
        const NoMemoryScope noMemory;
        EXPECT_FALSE(edit.Store());
    }
    EXPECT_EQ(data.GetBleeding(), 2);
    EXPECT_FALSE(data.IsDirty());
    EXPECT_TRUE(data.Prediction().predictionUpToDate);
    EXPECT_TRUE(edit.Store());
    EXPECT_EQ(data.GetBleeding(), 3);
    EXPECT_EQ(data.NotePages().Count(), 1);
}

// ---- Folders ----

class UserDataFolder : public UserDataTest {
  protected:
    std::vector<std::string> Files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    ScratchFolder scratch;
    const std::filesystem::path folder = scratch.File("diary");  // does not exist at first
    const WideString path = Wide(folder);
};

TEST_F(UserDataFolder, ANewUserLoadsEmptyWithTheMissingFileNoted) {
    ::SetLastError(0);
    EXPECT_EQ(data.LoadFolder(path.c_str(), TEXT("")), 1);
    EXPECT_EQ(::GetLastError(), DWORD{DataFileMissing});
    EXPECT_TRUE(data.IsLoaded());
    EXPECT_FALSE(data.Prediction().predictionUpToDate);
}

TEST_F(UserDataFolder, SaveCreatesTheFolderAndItsParents) {
    data.SetBleeding(2);
    const WideString nested = path + TEXT("\\one\\two");
    ASSERT_EQ(data.SaveFolder(nested.c_str(), TEXT("")), 1);
    EXPECT_TRUE(std::filesystem::exists(folder / "one" / "two" / "Bleeding.dat"));
}

TEST_F(UserDataFolder, SavesWhatChangedAndLoadsItBack) {
    data.SetBleeding(2);
    data.SetNoteText(TEXT("a note"));
    ASSERT_EQ(data.SaveFolder(path.c_str(), TEXT("secret")), 1);
    EXPECT_EQ(Files(), (std::vector<std::string>{"Bleeding.dat", "NotePages.dat"}));
    EXPECT_FALSE(data.Bleeding().dirty || data.NotePages().dirty);
    UserData other;
    ASSERT_EQ(other.LoadFolder(path.c_str(), TEXT("secret")), 1);
    EXPECT_EQ(other.GetBleeding(), 2);
    const std::unique_ptr<WCHAR[]> text(other.GetNoteText());
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(ToUtf8(text.get()), "a note");
}

TEST_F(UserDataFolder, SaveWithNothingChangedTouchesNoFile) {
    data.SetBleeding(2);
    ASSERT_EQ(data.SaveFolder(path.c_str(), TEXT("")), 1);
    std::filesystem::remove(folder / "Bleeding.dat");
    ASSERT_EQ(data.SaveFolder(path.c_str(), TEXT("")), 1);
    EXPECT_TRUE(Files().empty());
}

TEST_F(UserDataFolder, LoadStopsAtTheFirstBadFileAndKeepsWhatCameBefore) {
    data.SetTemperature(9800);
    data.SetBleeding(2);
    data.SetNoteFlags(1);
    ASSERT_EQ(data.SaveFolder(path.c_str(), TEXT("")), 1);
    std::filesystem::resize_file(folder / "Bleeding.dat", 4 + 5);
    UserData other;
    EXPECT_EQ(other.LoadFolder(path.c_str(), TEXT("")), 0);
    EXPECT_EQ(::GetLastError(), DWORD{DataFileCorrupt});
    EXPECT_FALSE(other.IsLoaded());
    EXPECT_EQ(other.Temperature().Count(), 1);
    EXPECT_EQ(other.Bleeding().Count(), 0);
    EXPECT_EQ(other.NoteFlags().Count(), 0);
}

TEST_F(UserDataFolder, OneFileIsLoadedByItself) {
    data.SetTemperature(9800);
    data.SetBleeding(2);
    data.SetNoteFlags(1);
    data.SetNoteText(TEXT("x"));
    ASSERT_EQ(data.SaveFolder(path.c_str(), TEXT("")), 1);
    for (const DataFile file : AllDataFiles) {
        UserData other;
        UpdatePrediction(other, 0);
        WideString name;
        ASSERT_TRUE(DataFilePath(path.c_str(), file, name));
        EXPECT_EQ(other.LoadFile(file, name.c_str(), TEXT("")), 1);
        for (const DataFile each : AllDataFiles) {
            EXPECT_EQ(other.Count(each), each == file ? 1 : 0);
        }
        EXPECT_FALSE(other.IsLoaded());
        EXPECT_FALSE(other.IsDirty());
        EXPECT_FALSE(other.Prediction().predictionUpToDate);
    }
}

TEST_F(UserDataFolder, UnloadEmptiesEverythingAndTheFlags) {
    data.SetTemperature(9800);
    data.SetBleeding(2);
    data.SetNoteFlags(1);
    data.SetNoteText(TEXT("x"));
    ASSERT_EQ(data.SaveFolder(path.c_str(), TEXT("")), 1);
    ASSERT_EQ(data.LoadFolder(path.c_str(), TEXT("")), 1);
    data.MarkAllDirty();
    data.Unload();
    EXPECT_FALSE(data.IsLoaded());
    EXPECT_EQ(data.Temperature().Count() + data.Bleeding().Count() + data.NoteFlags().Count() +
                  data.NotePages().Count(),
              0);
    EXPECT_FALSE(data.Bleeding().dirty || data.Temperature().dirty || data.NoteFlags().dirty ||
                 data.NotePages().dirty);
}

TEST_F(UserDataFolder, APathThatDoesNotFitIsRefusedRatherThanCut) {
    const WideString longFolder = path + TEXT("\\") + WideString(PathCapacity - path.size(), 'x');
    EXPECT_EQ(data.LoadFolder(longFolder.c_str(), TEXT("")), 0);
    EXPECT_EQ(::GetLastError(), DWORD{DataFileMissing});
    EXPECT_FALSE(data.IsLoaded());
}

TEST_F(UserDataFolder, AFailedSaveKeepsTheDirtyFlag) {
    data.SetBleeding(2);
    std::filesystem::create_directories(folder);
    std::filesystem::create_directory(folder / "Bleeding.dat");
    EXPECT_EQ(data.SaveFolder(path.c_str(), TEXT("")), 0);
    EXPECT_TRUE(data.Bleeding().dirty);
}

}  // namespace
}  // namespace lunara::test
