#pragma once

// The base of the end-to-end tests. Each begins with a program folder of its own, without settings,
// on the same date.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/driver/machine.h"
#include "tests/driver/program.h"

namespace lunara::test {

inline constexpr WCHAR Password[] = L"moonlight 4";
/// The first line of every CSV file of the companion; the whole file for an empty diary.
inline const std::string CsvHeader = "date,bleeding,temperature_f,cramps,pms,note\r\n";

/// "Suite.Test" of the running test, usable as the name of a folder.
inline std::wstring CurrentTestName() {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test.test_suite_name()) + "." + test.name();
    std::replace(name.begin(), name.end(), '/', '-');  // in the names of parameterised tests
    return {name.begin(), name.end()};
}

class EndToEnd : public testing::Test {
  protected:
    EndToEnd() : folder(CurrentTestName()) {}

    void SetUp() override {
        ForgetSettings();
        ASSERT_TRUE(SetToday(Today));
    }

    /// Gives the user the companion's example diary, and has the next start show the diary view.
    void MakeSampleDiary(const std::wstring& user, const std::wstring& password = Password) {
        ASSERT_TRUE(folder.MakeSampleDiary(folder.UserFolder(user), password, Today));
        WriteNumber(L"CurrentView", ViewDiary);
    }

    /// Has the companion make a diary of these CSV records, given without the header.
    testing::AssertionResult Import(const std::wstring& dataFolder, const std::string& records,
                                    const std::wstring& password = Password) {
        const std::wstring file = folder.Path() + L"records.csv";
        if (!WriteFile(file, CsvHeader + records)) {
            return testing::AssertionFailure() << "no " << ToUtf8(file);
        }
        const auto imported = folder.RunCompanion(
            L"import \"" + dataFolder + L"\" --csv \"" + file + L"\"", password);
        return (imported.exitCode == 0 ? testing::AssertionSuccess() : testing::AssertionFailure())
               << imported.output;
    }

    /// Whether the companion can read a diary with this password.
    testing::AssertionResult Opens(const std::wstring& user, const std::wstring& password) {
        return FolderOpens(folder.UserFolder(user), password);
    }
    testing::AssertionResult FolderOpens(const std::wstring& dataFolder,
                                         const std::wstring& password) {
        const auto checked = folder.RunCompanion(L"check \"" + dataFolder + L"\"", password);
        return (checked.exitCode == 0 ? testing::AssertionSuccess() : testing::AssertionFailure())
               << "exit code " << checked.exitCode << "\n"
               << checked.output;
    }

    /// A diary as the companion exports it to CSV.
    std::string Export(const std::wstring& user, const std::wstring& password = Password) {
        return ExportFolder(folder.UserFolder(user), password);
    }
    std::string ExportFolder(const std::wstring& dataFolder,
                             const std::wstring& password = Password) {
        return folder.RunCompanion(L"export \"" + dataFolder + L"\" --csv -", password).output;
    }

    /// Names and contents of all data files, concatenated: equal exactly when the files are.
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

}  // namespace lunara::test
