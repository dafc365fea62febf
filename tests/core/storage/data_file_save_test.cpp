// Saving one file: of a diary, as the program does it, and by itself. The saves of several files
// are in data_file_set_test.cpp.

#include "storage/data_file.h"

#include <gtest/gtest.h>

#include "diary/user_data.h"
#include "storage/replacement_file.h"
#include "tests/core/storage/file_support.h"

namespace lunara::test {
namespace {

/// The system's calls, which record their steps and of which one may fail.
class FailingCalls : public FileCalls {
  public:
    enum class Way { WithError, WithoutError, HalfWritten };

    FailingCalls() { UseFileCalls(this); }
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;
    ~FailingCalls() override { UseFileCalls(nullptr); }

    HANDLE Create(const WCHAR* path) override {
        return Fails("create") ? INVALID_HANDLE_VALUE : Opened(FileCalls::Create(path));
    }
    BOOL Write(HANDLE file, const void* bytes, DWORD count, DWORD& written) override {
        const bool isHalf = way == Way::HalfWritten;
        if (!Fails("write")) {
            return FileCalls::Write(file, bytes, count, written);
        }
        static_cast<void>(FileCalls::Write(file, bytes, count / 2, written));
        return isHalf ? TRUE : FALSE;
    }
    BOOL Flush(HANDLE file) override { return Fails("flush") ? FALSE : FileCalls::Flush(file); }
    BOOL Close(HANDLE file) override {
        --open;
        const BOOL closed = FileCalls::Close(file);
        return Fails("close") ? FALSE : closed;
    }
    BOOL Replace(const WCHAR* from, const WCHAR* to) override {
        return Fails("replace") ? FALSE : FileCalls::Replace(from, to);
    }
    BOOL Remove(const WCHAR* path) override {
        const BOOL removed = FileCalls::Remove(path);
        ::SetLastError(ERROR_FILE_NOT_FOUND);  // tidying up must not hide the failure before it
        return removed;
    }

    /// Index of the step that fails; negative: none.
    int failAt = -1;
    Way way = Way::WithError;

    std::vector<std::string> steps;
    int open = 0;

  private:
    HANDLE Opened(HANDLE file) {
        ++open;
        return file;
    }

    bool Fails(const char* step) {
        const bool isThis = static_cast<int>(steps.size()) == failAt;
        steps.emplace_back(step);
        if (!isThis) {
            ::SetLastError(ERROR_ACCESS_DENIED);  // a successful call may leave any last error
        } else if (way == Way::WithError) {
            ::SetLastError(ERROR_DISK_FULL);
        }
        return isThis;
    }
};

class SaveTest : public ::testing::Test {
  protected:
    SaveTest() {
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
    DayValueList& days = data.bleeding;    // dirty at first
    NotePageList& pages = data.notePages;  // clean at first
};

TEST_F(SaveTest, CleanListLeavesTheFileAlone) {
    WriteBytes(file, oldBytes);
    WriteBytes(pagesFile, oldBytes);
    days.dirty = false;
    FailingCalls calls;
    EXPECT_EQ(Save(TEXT("secret")), 1);
    EXPECT_TRUE(calls.steps.empty());
    EXPECT_EQ(ReadBytes(file), oldBytes);
    EXPECT_EQ(ReadBytes(pagesFile), oldBytes);
}

TEST_F(SaveTest, EmptyListDeletesTheFileAndWhatACrashLeftBesideIt) {
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

TEST_F(SaveTest, StepsAreTakenInTheOrderThatKeepsOneOfTheFiles) {
    FailingCalls calls;
    ASSERT_EQ(Save(TEXT("")), 1);
    EXPECT_EQ(calls.steps,
              (std::vector<std::string>{"create", "write", "write", "flush", "close", "replace"}));
    EXPECT_EQ(calls.open, 0);
    EXPECT_EQ(scratch.Names(), std::vector<std::string>{"Bleeding.dat"});
}

TEST_F(SaveTest, UnsortedListIsSortedFirst) {
    days.Set(MakeDateKey(1650, 1, 1), 7);
    ASSERT_TRUE(days.IsUnsorted());
    ASSERT_EQ(Save(TEXT("secret")), 1);
    EXPECT_FALSE(days.IsUnsorted());
    DayValueList loaded;
    ASSERT_EQ(LoadDayValues(loaded, Wide(file).c_str(), TEXT("secret")), 1);
    ASSERT_EQ(loaded.Count(), 10'001);
    EXPECT_EQ(loaded.At(0).date, MakeDateKey(1650, 1, 1));
}

TEST_F(SaveTest, ListInMemoryStaysPlain) {
    const DayValue before = days.At(0);
    const NotePage pageBefore = pages.At(0);
    pages.dirty = true;
    ASSERT_EQ(Save(TEXT("secret")), 1);
    EXPECT_EQ(std::memcmp(&days.At(0), &before, sizeof(before)), 0);
    EXPECT_EQ(std::memcmp(&pages.At(0), &pageBefore, sizeof(pageBefore)), 0);
}

TEST_F(SaveTest, LargeListsComeBackWhole) {
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

TEST_F(SaveTest, FileOfAnEarlierCrashIsWrittenOver) {
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
        FailingCalls::Way way;
        DWORD error;
    } ways[] = {
        {FailingCalls::Way::WithError, ERROR_DISK_FULL},
        {FailingCalls::Way::WithoutError, ERROR_WRITE_FAULT},
        {FailingCalls::Way::HalfWritten, ERROR_WRITE_FAULT},
    };
    for (const auto& [way, error] : ways) {
        int step = 0;
        for (int result = 0; result == 0; ++step) {
            WriteBytes(file, oldBytes);
            FailingCalls calls;
            calls.failAt = step;
            calls.way = way;
            ::SetLastError(ERROR_SUCCESS);
            const auto [saved, isDirty] = save();
            result = saved;
            const DWORD lastError = ::GetLastError();
            const std::string label = "step " + std::to_string(step) + ' ' + calls.steps.back();
            EXPECT_EQ(calls.open, 0) << label;
            EXPECT_EQ(scratch.Names(), std::vector<std::string>{file.filename().string()}) << label;
            EXPECT_EQ(isDirty, saved == 0) << label;
            if (saved == 0) {
                EXPECT_EQ(lastError, error) << label;
                EXPECT_EQ(ReadBytes(file), oldBytes) << label;
            } else {
                EXPECT_NE(ReadBytes(file), oldBytes);
                EXPECT_EQ(step, static_cast<int>(calls.steps.size())) << "a failure went unnoticed";
            }
        }
        EXPECT_GE(step, 6) << "create, two writes, flush, close, replace";
    }
}

TEST_F(SaveTest, FailureOfAnyStepKeepsTheOldFileAndTheDirtyFlag) {
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

TEST_F(SaveTest, EncipheredRecordsAreNotWrittenOneByOne) {
    days.dirty = false;
    pages.dirty = true;
    FailingCalls calls;
    ASSERT_EQ(Save(TEXT("secret")), 1);
    EXPECT_LE(calls.steps.size(), 10U);
}

TEST_F(SaveTest, FolderInTheFilesPlaceFailsAndStays) {
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

TEST_F(SaveTest, SingleFileHoldsTheBytesOfTheDiarysFile) {
    const std::filesystem::path single = scratch.File("single");
    for (const WCHAR* password : {TEXT(""), TEXT("secret")}) {
        data.bleeding.dirty = data.notePages.dirty = true;
        ASSERT_EQ(Save(password), 1);
        data.bleeding.dirty = data.notePages.dirty = true;
        ASSERT_EQ(SaveDayValues(days, Wide(single).c_str(), password), 1);
        EXPECT_FALSE(days.dirty);
        EXPECT_EQ(ReadBytes(single), ReadBytes(file));
        ASSERT_EQ(SaveNotePages(pages, Wide(single).c_str(), password), 1);
        EXPECT_FALSE(pages.dirty);
        EXPECT_EQ(ReadBytes(single), ReadBytes(pagesFile));
    }
}

TEST_F(SaveTest, SingleFileIsLeftAloneByACleanListAndDeletedByAnEmptyOne) {
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

TEST_F(SaveTest, SingleFileSurvivesTheFailureOfAnyStep) {
    ExpectEveryStepsFailureKeepsTheOldFile(scratch, file, oldBytes, [&] {
        const int saved = SaveDayValues(days, Wide(file).c_str(), TEXT("secret"));
        return std::pair(saved, std::exchange(days.dirty, true));
    });
}

TEST_F(SaveTest, SingleFileInAMissingFolderFailsAndStaysDirty) {
    const std::filesystem::path missing = scratch.File("none") / "Bleeding.dat";
    ::SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(SaveDayValues(days, Wide(missing).c_str(), TEXT("")), 0);
    EXPECT_NE(::GetLastError(), ERROR_SUCCESS);
    EXPECT_TRUE(days.dirty);
}

TEST(SiblingPathTest, IsNoLongerThanADataFilesPath) {
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
