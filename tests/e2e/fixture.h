#pragma once

// What every end-to-end test starts from: a program folder of its own, no settings, a known date.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/e2e/driver.h"
#include "tests/e2e/machine.h"

namespace lunara::e2e {

inline constexpr Day Today{2006, 3, 5};
inline constexpr WCHAR Password[] = L"moonlight 4";
/// The first line of every diary that the companion writes, and all of an empty one.
inline const std::string CsvHeader = "date,bleeding,temperature_f,cramps,pms,note\r\n";

inline std::wstring CurrentTestName() {
    const ::testing::TestInfo& test = *::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test.test_suite_name()) + "." + test.name();
    std::replace(name.begin(), name.end(), '/',
                 '-');  // of tests with parameters; it names a folder
    return {name.begin(), name.end()};
}

class EndToEnd : public ::testing::Test {
  protected:
    EndToEnd() : folder(CurrentTestName()) {}

    void SetUp() override {
        ForgetSettings();
        ASSERT_TRUE(SetToday(Today));
    }

    /// The companion's example diary, put in place for a user. Its first start shows the diary.
    void MakeSampleDiary(const std::wstring& user, const std::wstring& password = Password) {
        const auto made = folder.RunCompanion(
            L"sample \"" + folder.UserFolder(user) + L"\" --today " + IsoDate(Today), password);
        ASSERT_EQ(made.exitCode, 0u) << made.output;
        WriteNumber(L"CurrentView", ViewDiary);
    }

    /// The companion makes a diary of these records, each as its CSV has it, without the header.
    ::testing::AssertionResult Import(const std::wstring& dataFolder, const std::string& records,
                                      const std::wstring& password = Password) {
        const std::wstring file = folder.Path() + L"records.csv";
        if (!WriteFile(file, CsvHeader + records)) {
            return ::testing::AssertionFailure() << "no " << ToUtf8(file);
        }
        const auto imported = folder.RunCompanion(
            L"import \"" + dataFolder + L"\" --csv \"" + file + L"\"", password);
        return (imported.exitCode == 0 ? ::testing::AssertionSuccess()
                                       : ::testing::AssertionFailure())
               << imported.output;
    }

    /// Whether the companion can read the user's diary with this password.
    ::testing::AssertionResult Opens(const std::wstring& user, const std::wstring& password) {
        return FolderOpens(folder.UserFolder(user), password);
    }
    ::testing::AssertionResult FolderOpens(const std::wstring& dataFolder,
                                           const std::wstring& password) {
        const auto checked = folder.RunCompanion(L"check \"" + dataFolder + L"\"", password);
        return (checked.exitCode == 0 ? ::testing::AssertionSuccess()
                                      : ::testing::AssertionFailure())
               << "exit code " << checked.exitCode << "\n"
               << checked.output;
    }

    /// The user's records as CSV.
    std::string Export(const std::wstring& user, const std::wstring& password = Password) {
        return ExportFolder(folder.UserFolder(user), password);
    }
    std::string ExportFolder(const std::wstring& dataFolder,
                             const std::wstring& password = Password) {
        return folder.RunCompanion(L"export \"" + dataFolder + L"\" --csv -", password).output;
    }

    /// Every data file of the user, contents and all, one after the other.
    std::string FilesOf(const std::wstring& user) { return DataFilesIn(folder.UserFolder(user)); }
    static std::string DataFilesIn(const std::wstring& dataFolder) {
        std::string all;
        for (const WCHAR* name :
             {L"Bleeding.dat", L"Temperature.dat", L"Notes.dat", L"NotePages.dat"}) {
            all += ToUtf8(name) + ":" + ReadFile(dataFolder + L"\\" + name) + "\n";
        }
        return all;
    }

    ProgramFolder folder;
};

}  // namespace lunara::e2e
