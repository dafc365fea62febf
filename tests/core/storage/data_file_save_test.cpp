// Saving one file: of a diary, as the program does it, and by itself. The saves of several files
// are in data_file_set_test.cpp.

#include "storage/data_file.h"

#include <gtest/gtest.h>

#include "diary/user_data.h"
#include "storage/replacement_file.h"
#include "tests/core/storage/file_support.h"
#include "tests/support/failing_file_calls.h"
#include "tests/support/user_data_access.h"

namespace lunara::test {
namespace {

class DataFileSave : public testing::Test {
  protected:
    DataFileSave() {
        for (int i = 0; i < 10'000; ++i) {  // more than the scratch buffer holds
            const auto day = static_cast<unsigned>(i);
            days.Set(MakeDateKey(1700 + day / 336, 1 + day / 28 % 12, 1 + day % 28), i);
        }
        days.dirty = true;
        const WideString text(33, 'n');
        for (unsigned i = 0; i < 1000; ++i) {
            pages.AppendText(MakeDateKey(1700 + i / 28, 1, 1 + i % 28), text.c_str(), 33);
        }
    }

    /// Saves what is dirty, as the program does.
    int Save(const WCHAR* password) { return data.SaveFolder(folder.c_str(), password); }

    ScratchFolder scratch;
    WideString folder = Wide(scratch.Root());
    std::filesystem::path file = scratch.File("Bleeding.dat");
    std::filesystem::path pagesFile = scratch.File("NotePages.dat");
    Bytes oldBytes{'o', 'l', 'd'};
    UserData data;
    DayValueList& days = UserDataTestAccess::Bleeding(data);    // dirty at first
    NotePageList& pages = UserDataTestAccess::NotePages(data);  // clean at first
};

TEST_F(DataFileSave, CleanListLeavesTheFileAlone) {
    WriteBytes(file, oldBytes);
    WriteBytes(pagesFile, oldBytes);
    days.dirty = false;
    const FailingFileCalls calls;
    EXPECT_EQ(Save(TEXT("secret")), 1);
    EXPECT_EQ(calls.Count(), 0);
    EXPECT_EQ(ReadBytes(file), oldBytes);
    EXPECT_EQ(ReadBytes(pagesFile), oldBytes);
}

TEST_F(DataFileSave, EmptyListDeletesTheFileAndWhatACrashLeftBesideIt) {
    WriteBytes(file, oldBytes);
    WriteBytes(scratch.File("Bleeding.new"), oldBytes);
    days.Clear();
    days.dirty = true;
    EXPECT_EQ(Save(TEXT("")), 1);
    EXPECT_FALSE(days.dirty);
    EXPECT_TRUE(scratch.Names().empty());
    pages.Clear();
    pages.dirty = true;
    EXPECT_EQ(Save(TEXT("secret")), 1);  // no file to delete
    EXPECT_FALSE(pages.dirty);
}

TEST_F(DataFileSave, StepsAreTakenInTheOrderThatKeepsOneOfTheFiles) {
    const FailingFileCalls calls;
    ASSERT_EQ(Save(TEXT("")), 1);
    EXPECT_EQ(calls.Steps(),
              (std::vector<std::string>{"create Bleeding.new", "write Bleeding.new",
                                        "write Bleeding.new", "flush Bleeding.new",
                                        "close Bleeding.new", "replace Bleeding.new"}));
    EXPECT_EQ(calls.OpenFiles(), 0);
    EXPECT_EQ(scratch.Names(), std::vector<std::string>{"Bleeding.dat"});
}

TEST_F(DataFileSave, UnsortedListIsSortedFirst) {
    days.Set(MakeDateKey(1650, 1, 1), 7);
    ASSERT_TRUE(days.IsUnsorted());
    ASSERT_EQ(Save(TEXT("secret")), 1);
    EXPECT_FALSE(days.IsUnsorted());
    DayValueList loaded;
    ASSERT_EQ(LoadDayValues(loaded, Wide(file).c_str(), TEXT("secret")), 1);
    ASSERT_EQ(loaded.Count(), 10'001);
    EXPECT_EQ(loaded.At(0).date, MakeDateKey(1650, 1, 1));
}

TEST_F(DataFileSave, ListInMemoryStaysPlain) {
    const DayValue before = days.At(0);
    const NotePage pageBefore = pages.At(0);
    pages.dirty = true;
    ASSERT_EQ(Save(TEXT("secret")), 1);
    EXPECT_EQ(std::memcmp(&days.At(0), &before, sizeof(before)), 0);
    EXPECT_EQ(std::memcmp(&pages.At(0), &pageBefore, sizeof(pageBefore)), 0);
}

TEST_F(DataFileSave, LargeListsComeBackWhole) {
    for (const WCHAR* password : {TEXT(""), TEXT("secret")}) {
        days.dirty = true;
        pages.dirty = true;
        ASSERT_EQ(Save(password), 1);
        DayValueList loadedDays;
        NotePageList loadedPages{10};
        ASSERT_EQ(LoadDayValues(loadedDays, Wide(file).c_str(), password), 1);
        ASSERT_EQ(LoadNotePages(loadedPages, Wide(pagesFile).c_str(), password), 1);
        ASSERT_EQ(loadedDays.Count(), days.Count());
        ASSERT_EQ(loadedPages.Count(), pages.Count());
        EXPECT_EQ(std::memcmp(loadedDays.begin(), days.begin(), 10'000 * sizeof(DayValue)), 0);
        EXPECT_EQ(std::memcmp(loadedPages.begin(), pages.begin(), 1000 * sizeof(NotePage)), 0);
    }
}

TEST_F(DataFileSave, FileOfAnEarlierCrashIsWrittenOver) {
    WriteBytes(scratch.File("Bleeding.new"), Bytes(500'000, 0xEE));
    ASSERT_EQ(Save(TEXT("")), 1);
    EXPECT_EQ(ReadBytes(file).size(), 4U + 8 * 10'000);
    EXPECT_EQ(scratch.Names(), std::vector<std::string>{"Bleeding.dat"});
}

/// Saves again and again, each time with the next step failing, until no step is left to fail.
/// `save` returns the result and the dirty flag, which it sets again.
template <typename SaveIt>
void ExpectEveryStepsFailureKeepsTheOldFile(const ScratchFolder& scratch,
                                            const std::filesystem::path& file,
                                            const Bytes& oldBytes, SaveIt save) {
    const struct {
        const char* label = "";
        FileFault fault;
        DWORD error = ERROR_SUCCESS;
    } ways[] = {
        {"with an error", {.error = ERROR_DISK_FULL}, ERROR_DISK_FULL},
        {"without an error", {.error = ERROR_SUCCESS}, ERROR_WRITE_FAULT},
        {"half written",
         {.error = ERROR_SUCCESS, .write = StruckWrite::HalfAsSuccess},
         ERROR_WRITE_FAULT},
    };
    for (const auto& [way, fault, error] : ways) {
        int step = 0;
        for (int result = 0; result == 0; ++step) {
            WriteBytes(file, oldBytes);
            FileFault atStep = fault;
            atStep.at = step;
            const FailingFileCalls calls(atStep);
            ::SetLastError(ERROR_SUCCESS);
            const auto [saved, isDirty] = save();
            result = saved;
            const DWORD lastError = ::GetLastError();
            const std::string label =
                std::string(way) + ", step " + std::to_string(step) + ' ' + calls.Steps().back();
            EXPECT_EQ(calls.OpenFiles(), 0) << label;
            EXPECT_EQ(scratch.Names(), std::vector<std::string>{file.filename().string()}) << label;
            EXPECT_EQ(isDirty, saved == 0) << label;
            if (saved == 0) {
                EXPECT_EQ(lastError, error) << label;
                EXPECT_EQ(ReadBytes(file), oldBytes) << label;
            } else {
                EXPECT_NE(ReadBytes(file), oldBytes);
                EXPECT_EQ(step, calls.Count()) << "a failure went unnoticed";
            }
        }
        EXPECT_GE(step, 6) << "create, two writes, flush, close, replace";
    }
}

TEST_F(DataFileSave, FailureOfAnyStepKeepsTheOldFileAndTheDirtyFlag) {
    for (const WCHAR* password : {TEXT(""), TEXT("secret")}) {
        days.dirty = true;
        ExpectEveryStepsFailureKeepsTheOldFile(scratch, file, oldBytes, [&] {
            const int saved = Save(password);
            return std::pair(saved, std::exchange(days.dirty, true));
        });
        std::filesystem::remove(file);
        days.dirty = false;
        pages.dirty = true;
        ExpectEveryStepsFailureKeepsTheOldFile(scratch, pagesFile, oldBytes, [&] {
            const int saved = Save(password);
            return std::pair(saved, std::exchange(pages.dirty, true));
        });
        std::filesystem::remove(pagesFile);
        pages.dirty = false;
    }
}

TEST_F(DataFileSave, EncipheredRecordsAreNotWrittenOneByOne) {
    days.dirty = false;
    pages.dirty = true;
    const FailingFileCalls calls;
    ASSERT_EQ(Save(TEXT("secret")), 1);
    EXPECT_LE(calls.Count(), 10);
}

TEST_F(DataFileSave, FolderInTheFilesPlaceFailsAndStays) {
    std::filesystem::create_directory(file);
    WriteBytes(file / "kept", oldBytes);
    ::SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(Save(TEXT("")), 0);
    EXPECT_NE(::GetLastError(), ERROR_SUCCESS);
    EXPECT_TRUE(days.dirty);
    EXPECT_EQ(ReadBytes(file / "kept"), oldBytes);
    EXPECT_EQ(scratch.Names(), std::vector<std::string>{"Bleeding.dat"});
}

// ---- One file by itself ----

TEST_F(DataFileSave, SingleFileHoldsTheBytesOfTheDiarysFile) {
    const std::filesystem::path single = scratch.File("single");
    for (const WCHAR* password : {TEXT(""), TEXT("secret")}) {
        days.dirty = pages.dirty = true;
        ASSERT_EQ(Save(password), 1);
        days.dirty = pages.dirty = true;
        ASSERT_EQ(SaveDayValues(days, Wide(single).c_str(), password), 1);
        EXPECT_FALSE(days.dirty);
        EXPECT_EQ(ReadBytes(single), ReadBytes(file));
        ASSERT_EQ(SaveNotePages(pages, Wide(single).c_str(), password), 1);
        EXPECT_FALSE(pages.dirty);
        EXPECT_EQ(ReadBytes(single), ReadBytes(pagesFile));
    }
}

TEST_F(DataFileSave, SingleFileIsLeftAloneByACleanListAndDeletedByAnEmptyOne) {
    WriteBytes(file, oldBytes);
    WriteBytes(scratch.File("Bleeding.new"), oldBytes);
    EXPECT_EQ(SaveNotePages(pages, Wide(file).c_str(), TEXT("")), 1);
    EXPECT_EQ(ReadBytes(file), oldBytes);
    days.Clear();
    days.dirty = true;
    EXPECT_EQ(SaveDayValues(days, Wide(file).c_str(), TEXT("")), 1);
    EXPECT_FALSE(days.dirty);
    EXPECT_TRUE(scratch.Names().empty());
}

TEST_F(DataFileSave, SingleFileSurvivesTheFailureOfAnyStep) {
    ExpectEveryStepsFailureKeepsTheOldFile(scratch, file, oldBytes, [&] {
        const int saved = SaveDayValues(days, Wide(file).c_str(), TEXT("secret"));
        return std::pair(saved, std::exchange(days.dirty, true));
    });
}

TEST_F(DataFileSave, SingleFileInAMissingFolderFailsAndStaysDirty) {
    const std::filesystem::path missing = scratch.File("none") / "Bleeding.dat";
    ::SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(SaveDayValues(days, Wide(missing).c_str(), TEXT("")), 0);
    EXPECT_NE(::GetLastError(), ERROR_SUCCESS);
    EXPECT_TRUE(days.dirty);
}

TEST(SiblingPath, IsNoLongerThanADataFilesPath) {
    const struct {
        const WCHAR* path;
        const char* sibling;
    } cases[] = {
        {TEXT("C:\\a.b\\Bleeding.dat"), "C:\\a.b\\Bleeding.new"},
        {TEXT("Notes.dat"), "Notes.new"},
        {TEXT("diary"), "diary.new"},
        {TEXT("x.new"), "x.new.new"},
        {TEXT(".dat"), ".dat.new"},
    };
    for (const auto& [path, sibling] : cases) {
        EXPECT_EQ(ToUtf8(SiblingPath(path)), sibling);
    }
}

}  // namespace
}  // namespace lunara::test
