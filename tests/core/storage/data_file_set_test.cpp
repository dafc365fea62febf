#include "storage/data_file_set.h"

#include <algorithm>
#include <memory>

#include "diary/user_data.h"
#include "storage/data_file.h"
#include "tests/core/storage/file_support.h"
#include "tests/core/test_support.h"
#include "tests/user_data_access.h"

namespace lunara::test {
namespace {

/// Calls of the system that write down their steps, and fail at one of them or from one on.
class BrokenCalls : public FileCalls {
  public:
    enum class Way { OneStep, FromThereOn };

    BrokenCalls() : before(CurrentFileCalls()) { UseFileCalls(this); }
    BrokenCalls(const BrokenCalls&) = delete;
    BrokenCalls& operator=(const BrokenCalls&) = delete;
    ~BrokenCalls() override { UseFileCalls(&before); }

    HANDLE Create(const WCHAR* path) override {
        return Fails("create", path) ? INVALID_HANDLE_VALUE : FileCalls::Create(path);
    }
    BOOL Write(HANDLE file, const void* bytes, DWORD count, DWORD& written) override {
        if (!Fails("write")) {
            return FileCalls::Write(file, bytes, count, written);
        }
        FileCalls::Write(file, bytes, count / 2, written);
        return FALSE;
    }
    // Waiting for the disk so often would only take time here.
    BOOL Flush(HANDLE /*file*/) override { return Fails("flush") ? FALSE : TRUE; }
    BOOL Close(HANDLE file) override {
        const BOOL closed = FileCalls::Close(file);
        return Fails("close") ? FALSE : closed;
    }
    BOOL Replace(const WCHAR* from, const WCHAR* to) override {
        return Fails("replace", from) ? FALSE : FileCalls::Rename(from, to);
    }
    BOOL Rename(const WCHAR* from, const WCHAR* to) override {
        return Fails("rename", from) ? FALSE : FileCalls::Rename(from, to);
    }
    BOOL Link(const WCHAR* path, const WCHAR* name) override {
        if (Fails("link", path) || !hasLinks) {
            ::SetLastError(ERROR_ACCESS_DENIED);
            return FALSE;
        }
        return FileCalls::Link(path, name);
    }
    BOOL Remove(const WCHAR* path) override {
        return Fails("remove", path) ? FALSE : FileCalls::Remove(path);
    }

    /// The step that fails, from 0; none when negative.
    int failAt = -1;
    Way way = Way::OneStep;
    bool hasLinks = true;
    std::vector<std::string> steps;

  private:
    FileCalls& before;

    bool Fails(const std::string& step, WideView path = {}) {
        const int number = static_cast<int>(steps.size());
        const std::size_t separator = path.find_last_of(TEXT("\\/"));
        steps.push_back(path.empty() ? step : step + ' ' + ToUtf8(path.substr(separator + 1)));
        const bool fails =
            failAt >= 0 && (way == Way::OneStep ? number == failAt : number >= failAt);
        if (fails) {
            ::SetLastError(ERROR_DISK_FULL);
        }
        return fails;
    }
};

constexpr DateKey First = MakeDateKey(2006, 1, 2);
constexpr const WCHAR* OldPassword = TEXT("before");
constexpr const WCHAR* NewPassword = TEXT("afterwards");

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

/// Loads what is in the folder; "" when the password does not open it.
std::string Loaded(const WideString& folder, const WCHAR* password) {
    UserData data;
    return data.LoadFolder(folder.c_str(), password) != 0 ? Describe(data) : "";
}

/// Which files an earlier save left, and which are changed now.
struct Story {
    const char* label;
    bool isRemovedNow;  // the bleeding
    bool isAddedNow;    // the marks
};

constexpr Story Stories[] = {
    {"all four replaced", false, false},
    {"one deleted, one added", true, true},
};

class DataFileSetTest : public ::testing::TestWithParam<Story> {
  protected:
    DataFileSetTest() : folder(Wide(scratch.Root())) {}

    /// Saves the old diary and changes it and the password in memory.
    void Begin() {
        const BrokenCalls calls;
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

    /// Nothing in the folder but data files.
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

INSTANTIATE_TEST_SUITE_P(Changes, DataFileSetTest, ::testing::ValuesIn(Stories),
                         [](const auto& story) {
                             return story.param.isAddedNow ? "Mixed" : "All";
                         });

TEST_P(DataFileSetTest, PasswordChangeReachesEveryFile) {
    for (const bool hasLinks : {true, false}) {
        Begin();
        BrokenCalls calls;
        calls.hasLinks = hasLinks;
        ASSERT_EQ(Save(), 1);
        EXPECT_FALSE(data->IsDirty());
        EXPECT_TRUE(IsTidy());
        ExpectNewDiary(GetParam().label);
    }
}

TEST_P(DataFileSetTest, NothingIsPutInPlaceBeforeAllIsComplete) {
    Begin();
    BrokenCalls calls;
    ASSERT_EQ(Save(), 1);
    const auto isStep = [](const char* name) {
        return [name](const std::string& step) { return step.rfind(name, 0) == 0; };
    };
    const auto firstRename = std::find_if(calls.steps.begin(), calls.steps.end(), isStep("rename"));
    const auto files = GetParam().isRemovedNow ? 3 : 4;
    EXPECT_EQ(std::count_if(calls.steps.begin(), firstRename, isStep("flush")), files + 1);
    EXPECT_EQ(std::count_if(firstRename, calls.steps.end(), isStep("flush")), 0);
    EXPECT_EQ(std::count_if(firstRename, calls.steps.end(), isStep("create")), 0);
    EXPECT_EQ(std::count_if(calls.steps.begin(), calls.steps.end(), isStep("replace")), 1);
}

TEST_P(DataFileSetTest, FailureOfAnyStepLeavesAllFilesUnderTheOldPassword) {
    for (const bool hasLinks : {true, false}) {
        int failures = 0;
        bool wasBroken = true;
        for (int step = 0; wasBroken; ++step) {
            Begin();
            int saved = 0;
            DWORD error = 0;
            {
                BrokenCalls calls;
                calls.hasLinks = hasLinks;
                calls.failAt = step;
                saved = Save();
                error = ::GetLastError();
                wasBroken = static_cast<int>(calls.steps.size()) > step;
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
                EXPECT_EQ(Save(), 1) << label;  // once there is room again
            }
            ExpectNewDiary(label);
            EXPECT_TRUE(IsTidy()) << label;
        }
        EXPECT_GE(failures, 20);  // creating, writing, flushing, closing of each, and the renames
    }
}

TEST_P(DataFileSetTest, WhateverIsLeftWhenTheProgramStopsOneWholeDiaryOpens) {
    for (const bool hasLinks : {true, false}) {
        int stops[2] = {};
        bool wasBroken = true;
        for (int step = 0; wasBroken; ++step) {
            Begin();
            int saved = 0;
            {
                BrokenCalls calls;
                calls.hasLinks = hasLinks;
                calls.way = BrokenCalls::Way::FromThereOn;
                calls.failAt = step;
                saved = Save();
                wasBroken = static_cast<int>(calls.steps.size()) > step;
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

TEST_P(DataFileSetTest, SaveThatCouldNotBeUndoneIsUndoneByTheNextOne) {
    Begin();
    BrokenCalls calls;
    ASSERT_EQ(Save(), 1);
    const auto last = std::find(calls.steps.begin(), calls.steps.end(), "rename NotePages.new");
    ASSERT_NE(last, calls.steps.end());
    const auto lastRename = static_cast<int>(last - calls.steps.begin());
    Begin();
    calls.steps.clear();
    calls.way = BrokenCalls::Way::FromThereOn;
    calls.failAt = lastRename;
    EXPECT_EQ(Save(), 0);
    EXPECT_TRUE(AllDirty());
    EXPECT_TRUE(std::filesystem::exists(scratch.File("Save.set")));
    calls.failAt = -1;
    EXPECT_EQ(Save(), 1);
    EXPECT_TRUE(IsTidy());
    ExpectNewDiary(GetParam().label);
}

TEST_P(DataFileSetTest, FileThatCannotBeWrittenIsNamed) {
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
        BrokenCalls calls;
        ASSERT_EQ(Save(), 1);
        steps = calls.steps;
    }
    for (const auto& [step, file] : cases) {
        const auto found = std::find(steps.begin(), steps.end(), step);
        ASSERT_NE(found, steps.end()) << step;
        Begin();
        BrokenCalls calls;
        calls.failAt = static_cast<int>(found - steps.begin());
        EXPECT_EQ(Save(), 0) << step;
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_DISK_FULL}) << step;
        const SaveFailure& failure = data->LastFailure();
        EXPECT_EQ(ToUtf8(failure.path), ToUtf8(folder) + '\\' + file) << step;
        EXPECT_EQ(failure.file ? ToUtf8(DataFileName(*failure.file)) : "Save.set", file) << step;
    }
}

TEST_P(DataFileSetTest, FileWhosePathDoesNotFitIsNamedAndNothingIsWritten) {
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

TEST(DataFilePathTest, HoldsAllButTheTerminatorOfAPath) {
    const std::size_t nameLength = WideView(TEXT("\\Temperature.dat")).size();
    const WideString longest(PathCapacity - 1 - nameLength, 'x');
    WideString path;
    EXPECT_TRUE(DataFilePath(longest.c_str(), DataFile::Temperature, path));
    EXPECT_EQ(ToUtf8(path), ToUtf8(longest) + "\\Temperature.dat");
    EXPECT_FALSE(DataFilePath((longest + TEXT("x")).c_str(), DataFile::Temperature, path));
}

class DataFileRecordTest : public ::testing::Test {
  protected:
    DataFileRecordTest() : folder(Wide(scratch.Root())) {
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

TEST_F(DataFileRecordTest, RecordThatIsNotWholeWasNeverInForce) {
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

TEST_F(DataFileRecordTest, RecordWithoutOldFilesChangesNothing) {
    WriteBytes(scratch.File("Save.set"), {'L', 'U', 'S', '1', 'r', 'd', 'r', 'd'});
    EXPECT_EQ(Loaded(folder, TEXT("")), diary);
}

TEST_F(DataFileRecordTest, OldFileThatCannotBePutBackRefusesLoadingAndSaving) {
    WriteBytes(scratch.File("Save.set"), {'L', 'U', 'S', '1', '.', 'r', '.', '.'});
    WriteBytes(scratch.File("Bleeding.old"), ReadBytes(scratch.File("Bleeding.dat")));
    UserData data;
    {
        BrokenCalls calls;
        calls.failAt = 0;
        EXPECT_EQ(data.LoadFolder(folder.c_str(), TEXT("")), 0);
        EXPECT_EQ(::GetLastError(), DWORD{DataFileCorrupt});
        EXPECT_FALSE(data.IsLoaded());
    }
    {
        BrokenCalls calls;
        calls.failAt = 0;
        data.MarkAllDirty();
        EXPECT_EQ(data.SaveFolder(folder.c_str(), TEXT("")), 0);
        EXPECT_EQ(data.LastFailure().path, folder);
        EXPECT_EQ(data.LastFailure().file, std::nullopt);
        EXPECT_TRUE(data.IsDirty());
    }
    EXPECT_EQ(Loaded(folder, TEXT("")), diary);
}

TEST_F(DataFileRecordTest, TwoFilesAreTogetherOnlyWithARecord) {
    UserData data;
    RecordBleeding(data, First, 2);
    RecordTemperature(data, First, 9900);
    BrokenCalls calls;
    ASSERT_EQ(data.SaveFolder(folder.c_str(), TEXT("")), 1);
    EXPECT_EQ(std::count(calls.steps.begin(), calls.steps.end(), "create Save.set"), 1);
}

TEST_F(DataFileRecordTest, SingleFileIsSavedWithoutARecord) {
    UserData data;
    RecordBleeding(data, First, 2);
    BrokenCalls calls;
    ASSERT_EQ(data.SaveFolder(folder.c_str(), TEXT("")), 1);
    EXPECT_EQ(calls.steps, (std::vector<std::string>{"create Bleeding.new", "write", "write",
                                                     "flush", "close", "replace Bleeding.new"}));
}

}  // namespace
}  // namespace lunara::test
