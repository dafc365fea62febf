#include "tests/support/failing_file_calls.h"

#include <gtest/gtest.h>

#include "tests/support/scratch_folder.h"

namespace lunara::test {
namespace {

using Steps = std::vector<std::string>;

class FailingFileCallsTest : public testing::Test {
  protected:
    WideString Path(const char* name) const { return Wide(scratch.File(name)); }

    /// Writes four bytes through the calls in use; the steps' answers as letters, "." for a success
    /// and "x" for a failure: create, write, flush, close.
    std::string WriteFour(const char* name) const {
        FileCalls& calls = CurrentFileCalls();
        std::string answers;
        const auto note = [&answers](bool done) { answers.push_back(done ? '.' : 'x'); };
        const HANDLE file = calls.Create(Path(name).c_str());
        note(file != INVALID_HANDLE_VALUE);
        if (file != INVALID_HANDLE_VALUE) {
            DWORD written = 0;
            note(calls.Write(file, "four", 4, written) != FALSE && written == 4);
            note(calls.Flush(file) != FALSE);
            note(calls.Close(file) != FALSE);
        }
        return answers;
    }

    ScratchFolder scratch;
};

TEST_F(FailingFileCallsTest, ListsEveryCallWithItsFile) {
    const FailingFileCalls calls;
    EXPECT_EQ(WriteFour("a.new"), "....");
    EXPECT_NE(CurrentFileCalls().Replace(Path("a.new").c_str(), Path("a").c_str()), FALSE);
    EXPECT_NE(CurrentFileCalls().Remove(Path("a").c_str()), FALSE);
    EXPECT_EQ(calls.Steps(), (Steps{"create a.new", "write a.new", "flush a.new", "close a.new",
                                    "replace a.new", "remove a"}));
    EXPECT_EQ(calls.Count(WriteCall | RemoveCall), 2);
    EXPECT_EQ(calls.OpenFiles(), 0);
}

TEST_F(FailingFileCallsTest, StrikesAsOftenAsTheFaultSays) {
    const struct {
        const char* label = "";
        FileFault fault;
        const char* answers = "";  // of three files
    } cases[] = {
        {"one call of any kind", {.at = 2}, "..x. .... ...."},
        {"two calls", {.at = 3, .times = 2}, "...x x ...."},
        {"every call from one on", {.at = 5, .times = FromThereOn}, ".... .xxx x"},
        {"second write", {.kinds = WriteCall, .at = 1}, ".... .x.. ...."},
        {"one file",
         {.kinds = FlushCall, .pathEnd = TEXT("b"), .times = FromThereOn},
         ".... ..x. ...."},
        {"spreading from one file",
         {.kinds = FlushCall,
          .pathEnd = TEXT("b"),
          .times = FromThereOn,
          .spreadsToAllFiles = true},
         ".... ..x. ..x."},
    };
    for (const auto& [label, fault, answers] : cases) {
        const FailingFileCalls calls(fault);
        std::string written = WriteFour("a");
        written.append(1, ' ').append(WriteFour("b"));
        written.append(1, ' ').append(WriteFour("c"));
        EXPECT_EQ(written, answers) << label;
        EXPECT_EQ(calls.OpenFiles(), 0) << label;
    }
}

TEST_F(FailingFileCallsTest, StruckWriteLeavesWhatTheFaultSays) {
    const struct {
        StruckWrite write;
        BOOL answer;
        DWORD written;
    } cases[] = {{StruckWrite::HalfThenFails, FALSE, 2},
                 {StruckWrite::HalfAsSuccess, TRUE, 2},
                 {StruckWrite::NothingAndFails, FALSE, 0}};
    for (const auto& [write, answer, count] : cases) {
        FailingFileCalls calls({.kinds = WriteCall, .write = write});
        const HANDLE file = calls.Create(Path("a").c_str());
        DWORD written = 0;
        EXPECT_EQ(calls.Write(file, "four", 4, written), answer);
        EXPECT_EQ(written, count);
        calls.Close(file);
        EXPECT_EQ(std::filesystem::file_size(scratch.File("a")), count);
    }
}

TEST_F(FailingFileCallsTest, FailureLeavesTheErrorOfItsFaultAndSuccessAnUnrelatedOne) {
    FailingFileCalls calls({.at = 1, .error = ERROR_WRITE_FAULT});
    calls.Remove(Path("missing").c_str());
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    calls.Remove(Path("missing").c_str());
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_WRITE_FAULT});
    calls.Close(calls.Create(Path("a").c_str()));
    calls.Remove(Path("a").c_str());
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_ACCESS_DENIED});
}

TEST_F(FailingFileCallsTest, HookRunsBetweenTheHalfWriteAndItsFailure) {
    std::size_t size = 99;
    int runs = 0;
    FailingFileCalls calls({.kinds = WriteCall | RemoveCall, .times = 2, .hook = [&] {
                                size = std::filesystem::file_size(scratch.File("a"));
                                ++runs;
                            }});
    EXPECT_EQ(WriteFour("a"), ".x..");
    EXPECT_EQ(size, 2U);
    EXPECT_EQ(calls.Remove(Path("a").c_str()), FALSE);
    EXPECT_TRUE(std::filesystem::exists(scratch.File("a")));
    EXPECT_EQ(runs, 2);
}

TEST_F(FailingFileCallsTest, FaultCountsFromItsSettingUntilItIsMended) {
    FailingFileCalls calls;
    EXPECT_EQ(WriteFour("a"), "....");
    EXPECT_EQ(calls.Failures(), 0);
    calls.Fail({.at = 1, .times = FromThereOn});
    EXPECT_EQ(WriteFour("a"), ".xxx");
    EXPECT_EQ(calls.Failures(), 3);
    calls.Mend();
    EXPECT_EQ(WriteFour("a"), "....");
    EXPECT_EQ(calls.Failures(), 3);
}

TEST_F(FailingFileCallsTest, GivesBackTheCallsThatWereInUse) {
    FileCalls& before = CurrentFileCalls();
    {
        const FailingFileCalls outer({.kinds = WriteCall, .times = FromThereOn});
        {
            const FailingFileCalls inner;
            EXPECT_EQ(WriteFour("a"), "....");
        }
        EXPECT_EQ(outer.Count(), 0);
        EXPECT_EQ(WriteFour("a"), ".x..");
    }
    EXPECT_EQ(&CurrentFileCalls(), &before);
}

}  // namespace
}  // namespace lunara::test
