#include "storage/data_file_set.h"

#include <algorithm>
#include <memory>

#include "diary/user_data.h"
#include "storage/data_file.h"
#include "tests/core/storage/file_support.h"
#include "tests/support/dates.h"
#include "tests/support/failing_file_calls.h"
#include "tests/support/user_data_access.h"

namespace lunara::test {
namespace {

constexpr DateKey First = MakeDateKey(2006, 1, 2);
constexpr const WCHAR* OldPassword = TEXT("before");
constexpr const WCHAR* NewPassword = TEXT("afterwards");

/// A file system without second names for files: every Link fails.
FileFault NoLinks() {
    return {.kinds = LinkCall, .times = FromThereOn, .error = ERROR_ACCESS_DENIED};
}

/// A diary as text, for comparison.
std::string Describe(const UserData& data) {
    std::string text;
    for (const DayValueList* list : {&data.Temperature(), &data.Bleeding(), &data.NoteFlags()}) {
        for (const DayValue& record : *list) {
            text += std::to_string(record.date & 0xFF) + '=' + std::to_string(record.value) + ' ';
        }
        text += "| ";
    }
    for (const NotePage& page : data.NotePages()) {
        text += std::to_string(page.date & 0xFF) + '=' + ToUtf8({page.text, 1}) + ' ';
    }
    return text;
}

/// The diary in the folder, as `Describe` writes it; "" when it does not open with the password.
std::string Loaded(const WideString& folder, const WCHAR* password) {
    UserData data;
    return data.LoadFolder(folder.c_str(), password) != 0 ? Describe(data) : "";
}

/// What the save under test does to the files of the save before it. All other files are replaced.
struct Story {
    const char* label;
    bool isRemovedNow;  // Bleeding.dat is deleted
    bool isAddedNow;    // Notes.dat is new
};

constexpr Story Stories[] = {
    {"all four replaced", false, false},
    {"one deleted, one added", true, true},
};

class DataFileSet : public testing::TestWithParam<Story> {
  protected:
    DataFileSet() : folder(Wide(scratch.Root())) {}

    /// Saves the old diary under the old password and then changes it in memory.
    void Begin() {
        const FailingFileCalls calls;
        std::filesystem::remove_all(scratch.Root());
        data = std::make_unique<UserData>();
        const WideString text(40, 'n');
        DiaryEdit first(*data);
        for (DateKey day = First; day < First + 5; ++day) {
            first.SetTemperature(day, 9800);
            first.SetBleeding(day, 1);
            if (!GetParam().isAddedNow) {
                first.SetNoteFlags(day, 1);
            }
            first.SetNoteText(day, text);
        }
        ASSERT_TRUE(first.Store());
        ASSERT_EQ(data->SaveFolder(folder.c_str(), OldPassword), 1);
        oldDiary = Describe(*data);
        DiaryEdit second(*data);
        second.SetTemperature(First, 9900);
        for (DateKey day = First; GetParam().isRemovedNow && day < First + 5; ++day) {
            second.SetBleeding(day, NoBleeding);
        }
        second.SetNoteFlags(First, 2);
        second.SetNoteText(First + 20, text);
        ASSERT_TRUE(second.Store());
        data->MarkAllDirty();
        newDiary = Describe(*data);
    }

    int Save() { return data->SaveFolder(folder.c_str(), NewPassword); }

    bool AllDirty() const {
        return std::all_of(std::begin(AllDataFiles), std::end(AllDataFiles),
                           [this](DataFile which) { return data->IsDirty(which); });
    }

    /// Whether the folder holds nothing but data files.
    bool IsTidy() const {
        const std::vector<std::string> names = scratch.Names();
        return std::all_of(names.begin(), names.end(),
                           [](const std::string& name) { return name.ends_with(".dat"); });
    }

    void ExpectOldDiary(const std::string& label) {
        EXPECT_EQ(Loaded(folder, OldPassword), oldDiary) << label;
        EXPECT_EQ(Loaded(folder, NewPassword), "") << label;
    }
    void ExpectNewDiary(const std::string& label) {
        EXPECT_EQ(Loaded(folder, NewPassword), newDiary) << label;
        EXPECT_EQ(Loaded(folder, OldPassword), "") << label;
    }

    ScratchFolder scratch;
    WideString folder;
    std::unique_ptr<UserData> data;
    std::string oldDiary;
    std::string newDiary;
};

INSTANTIATE_TEST_SUITE_P(Changes, DataFileSet, ::testing::ValuesIn(Stories), [](const auto& story) {
    return story.param.isAddedNow ? "Mixed" : "All";
});

TEST_P(DataFileSet, PasswordChangeReachesEveryFile) {
    for (const bool hasLinks : {true, false}) {
        Begin();
        FailingFileCalls calls;
        if (!hasLinks) {
            calls.Fail(NoLinks());
        }
        ASSERT_EQ(Save(), 1);
        EXPECT_FALSE(data->IsDirty());
        EXPECT_TRUE(IsTidy());
        ExpectNewDiary(GetParam().label);
    }
}

TEST_P(DataFileSet, NothingIsPutInPlaceBeforeAllIsComplete) {
    Begin();
    const FailingFileCalls calls;
    ASSERT_EQ(Save(), 1);
    const std::vector<std::string> steps = calls.Steps();
    const auto isStep = [](const char* name) {
        return [name](const std::string& step) { return step.rfind(name, 0) == 0; };
    };
    const auto firstRename = std::find_if(steps.begin(), steps.end(), isStep("rename"));
    const auto files = GetParam().isRemovedNow ? 3 : 4;
    EXPECT_EQ(std::count_if(steps.begin(), firstRename, isStep("flush")), files + 1);
    EXPECT_EQ(std::count_if(firstRename, steps.end(), isStep("flush")), 0);
    EXPECT_EQ(std::count_if(firstRename, steps.end(), isStep("create")), 0);
    EXPECT_EQ(std::count_if(steps.begin(), steps.end(), isStep("replace")), 1);
}

TEST_P(DataFileSet, FailureOfAnyStepLeavesAllFilesUnderTheOldPassword) {
    for (const bool hasLinks : {true, false}) {
        int failures = 0;
        bool wasBroken = true;
        for (int step = 0; wasBroken; ++step) {
            Begin();
            int saved = 0;
            DWORD error = 0;
            {
                FailingFileCalls calls;
                if (!hasLinks) {
                    calls.Fail(NoLinks());
                }
                calls.Fail({.at = step});
                saved = Save();
                error = ::GetLastError();
                wasBroken = calls.Count() > step;
                SCOPED_TRACE("step " + std::to_string(step));
                if (saved == 0) {
                    ++failures;
                    EXPECT_EQ(error, DWORD{ERROR_DISK_FULL});
                    EXPECT_TRUE(AllDirty());
                    EXPECT_FALSE(data->LastFailure().path.empty());
                } else {
                    EXPECT_FALSE(data->IsDirty());
                }
            }
            const std::string label = "step " + std::to_string(step);
            if (saved == 0) {
                ExpectOldDiary(label);
                EXPECT_TRUE(IsTidy()) << label;
                EXPECT_EQ(Save(), 1) << label;  // the failure is over
            }
            ExpectNewDiary(label);
            EXPECT_TRUE(IsTidy()) << label;
        }
        EXPECT_GE(failures, 20);  // create, write, flush and close each file, and rename them
    }
}

TEST_P(DataFileSet, WhateverIsLeftWhenTheProgramStopsOneWholeDiaryOpens) {
    for (const bool hasLinks : {true, false}) {
        int stops[2] = {};
        bool wasBroken = true;
        for (int step = 0; wasBroken; ++step) {
            Begin();
            int saved = 0;
            {
                FailingFileCalls calls;
                if (!hasLinks) {
                    calls.Fail(NoLinks());
                }
                calls.Fail({.at = step, .times = FromThereOn});
                saved = Save();
                wasBroken = calls.Count() > step;
            }
            ++stops[saved];
            const std::string label = "step " + std::to_string(step);
            if (saved == 0) {
                ExpectOldDiary(label);
            } else {
                ExpectNewDiary(label);
            }
        }
        EXPECT_GE(stops[0], 20);
        EXPECT_GE(stops[1], 2);
    }
}

TEST_P(DataFileSet, SaveThatCouldNotBeMendedIsMendedByTheNextOne) {
    Begin();
    FailingFileCalls calls;
    ASSERT_EQ(Save(), 1);
    const int lastRename = IndexOfStep(calls.Steps(), "rename NotePages.new");
    ASSERT_GE(lastRename, 0);
    Begin();
    calls.Fail({.at = lastRename, .times = FromThereOn});
    EXPECT_EQ(Save(), 0);
    EXPECT_TRUE(AllDirty());
    EXPECT_TRUE(std::filesystem::exists(scratch.File("Save.set")));
    calls.Mend();
    EXPECT_EQ(Save(), 1);
    EXPECT_TRUE(IsTidy());
    ExpectNewDiary(GetParam().label);
}

TEST_P(DataFileSet, FileThatCannotBeWrittenIsNamed) {
    const struct {
        const char* step;
        const char* file;
    } cases[] = {
        {"create Temperature.new", "Temperature.dat"}, {"create Notes.new", "Notes.dat"},
        {"create NotePages.new", "NotePages.dat"},     {"create Save.set", "Save.set"},
        {"rename Temperature.new", "Temperature.dat"}, {"rename Notes.new", "Notes.dat"},
        {"rename NotePages.new", "NotePages.dat"},     {"replace Save.set", "Save.set"},
    };
    Begin();
    std::vector<std::string> steps;
    {
        const FailingFileCalls calls;
        ASSERT_EQ(Save(), 1);
        steps = calls.Steps();
    }
    for (const auto& [step, file] : cases) {
        const int index = IndexOfStep(steps, step);
        ASSERT_GE(index, 0) << step;
        Begin();
        const FailingFileCalls calls({.at = index});
        EXPECT_EQ(Save(), 0) << step;
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_DISK_FULL}) << step;
        const SaveFailure& failure = data->LastFailure();
        EXPECT_EQ(ToUtf8(failure.path), ToUtf8(folder) + '\\' + file) << step;
        EXPECT_EQ(failure.file ? ToUtf8(DataFileName(*failure.file)) : "Save.set", file) << step;
    }
}

TEST_P(DataFileSet, FileWhosePathDoesNotFitIsNamedAndNothingIsWritten) {
    Begin();
    // Bleeding.dat would fit, Temperature.dat does not.
    constexpr std::size_t FolderLength = PathCapacity - 15;
    WideString longFolder = folder + TEXT("/");
    longFolder.append(FolderLength - longFolder.size(), 'x');
    EXPECT_EQ(data->SaveFolder(longFolder.c_str(), NewPassword), 0);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILENAME_EXCED_RANGE});
    EXPECT_EQ(ToUtf8(data->LastFailure().path), ToUtf8(longFolder) + "\\Temperature.dat");
    EXPECT_EQ(data->LastFailure().file, DataFile::Temperature);
    EXPECT_TRUE(AllDirty());
    EXPECT_TRUE(std::filesystem::is_empty(longFolder));
}

TEST(DataFilePath, HoldsAllButTheTerminatorOfAPath) {
    const std::size_t nameLength = WideView(TEXT("\\Temperature.dat")).size();
    const WideString longest(PathCapacity - 1 - nameLength, 'x');
    WideString path;
    EXPECT_TRUE(DataFilePath(longest.c_str(), DataFile::Temperature, path));
    EXPECT_EQ(ToUtf8(path), ToUtf8(longest) + "\\Temperature.dat");
    EXPECT_FALSE(DataFilePath((longest + TEXT("x")).c_str(), DataFile::Temperature, path));
}

class DataFileSetRecord : public testing::Test {
  protected:
    DataFileSetRecord() : folder(Wide(scratch.Root())) {
        UserData data;
        RecordTemperature(data, First, 9800);
        RecordBleeding(data, First, 1);
        data.MarkAllDirty();
        EXPECT_EQ(data.SaveFolder(folder.c_str(), TEXT("")), 1);
        diary = Describe(data);
    }

    ScratchFolder scratch;
    WideString folder;
    std::string diary;
};

TEST_F(DataFileSetRecord, RecordThatIsNotWholeWasNeverInForce) {
    const Bytes wholeRecord{'L', 'U', 'S', '1', 'r', 'r', '.', '.'};
    for (std::size_t length = 0; length < wholeRecord.size(); ++length) {
        WriteBytes(scratch.File("Save.set"),
                   Bytes(wholeRecord.begin(), wholeRecord.begin() + static_cast<int>(length)));
        WriteBytes(scratch.File("Bleeding.old"), {'o'});
        EXPECT_EQ(Loaded(folder, TEXT("")), diary) << length;
        EXPECT_FALSE(std::filesystem::exists(scratch.File("Save.set"))) << length;
    }
    WriteBytes(scratch.File("Save.set"), Bytes(8, 0));
    EXPECT_EQ(Loaded(folder, TEXT("")), diary);
}

TEST_F(DataFileSetRecord, RecordWithoutOldFilesChangesNothing) {
    WriteBytes(scratch.File("Save.set"), {'L', 'U', 'S', '1', 'r', 'd', 'r', 'd'});
    EXPECT_EQ(Loaded(folder, TEXT("")), diary);
}

TEST_F(DataFileSetRecord, FolderThatCannotBeMendedRefusesLoadingAndSaving) {
    WriteBytes(scratch.File("Save.set"), {'L', 'U', 'S', '1', '.', 'r', '.', '.'});
    WriteBytes(scratch.File("Bleeding.old"), ReadBytes(scratch.File("Bleeding.dat")));
    UserData data;
    {
        const FailingFileCalls calls({.at = 0});
        EXPECT_EQ(data.LoadFolder(folder.c_str(), TEXT("")), 0);
        EXPECT_EQ(::GetLastError(), DWORD{DataFileCorrupt});
        EXPECT_FALSE(data.IsLoaded());
    }
    {
        const FailingFileCalls calls({.at = 0});
        data.MarkAllDirty();
        EXPECT_EQ(data.SaveFolder(folder.c_str(), TEXT("")), 0);
        EXPECT_EQ(data.LastFailure().path, folder);
        EXPECT_EQ(data.LastFailure().file, std::nullopt);
        EXPECT_TRUE(data.IsDirty());
    }
    EXPECT_EQ(Loaded(folder, TEXT("")), diary);
}

TEST_F(DataFileSetRecord, TwoFilesAreTogetherOnlyWithARecord) {
    UserData data;
    RecordBleeding(data, First, 2);
    RecordTemperature(data, First, 9900);
    const FailingFileCalls calls;
    ASSERT_EQ(data.SaveFolder(folder.c_str(), TEXT("")), 1);
    const std::vector<std::string> steps = calls.Steps();
    EXPECT_EQ(std::count(steps.begin(), steps.end(), "create Save.set"), 1);
}

TEST_F(DataFileSetRecord, SingleFileIsSavedWithoutARecord) {
    UserData data;
    RecordBleeding(data, First, 2);
    const FailingFileCalls calls;
    ASSERT_EQ(data.SaveFolder(folder.c_str(), TEXT("")), 1);
    EXPECT_EQ(calls.Steps(),
              (std::vector<std::string>{"create Bleeding.new", "write Bleeding.new",
                                        "write Bleeding.new", "flush Bleeding.new",
                                        "close Bleeding.new", "replace Bleeding.new"}));
}

}  // namespace
}  // namespace lunara::test
