#pragma once

// What every end-to-end test starts from: a program folder of its own, no settings, a known date.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/e2e/driver.h"
#include "tests/e2e/machine.h"

namespace lunara::e2e {

inline constexpr Day Today{2006, 3, 5};
inline constexpr WCHAR Password[] = L"moonlight 4";

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
