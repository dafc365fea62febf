#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "diary/user_data.h"

namespace lunara::test {

/// What one run of the companion left.
struct Outcome {
    int code = -1;
    std::string out;
    std::string err;
};

/// Runs a command line inside this process.
Outcome RunCli(const std::vector<std::string>& arguments, const std::string& input = "");

/// UTF-8 of a path, as it stands on a command line.
std::string Utf8(const std::filesystem::path& path);

std::string ReadBytes(const std::filesystem::path& path);
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);

/// A data file's bytes without a password: header and records.
std::string DayFile(std::initializer_list<DayValue> records);
std::string PageFile(std::initializer_list<NotePage> pages);

/// A note's page; `text` of at most 34 ASCII characters.
NotePage Page(DateKey date, const std::string& text);

/// Tests with an empty folder of their own, removed afterwards.
class CompanionTest : public ::testing::Test {
  protected:
    CompanionTest();
    ~CompanionTest() override;
    CompanionTest(const CompanionTest&) = delete;
    CompanionTest& operator=(const CompanionTest&) = delete;

    /// The diary's folder, which is not there yet.
    std::string Diary() const { return Utf8(root / "diary"); }
    std::filesystem::path InDiary(const std::string& name) const { return root / "diary" / name; }

    /// Writes a file beside the diary's folder and returns its name for a command line.
    std::string Beside(const std::string& name, const std::string& bytes) const;

    /// Puts a file into the diary's folder, which is created.
    void PutInDiary(const std::string& name, const std::string& bytes) const;

    Outcome Import(const std::string& csv) const;
    /// The diary as CSV; a failure fails the test.
    std::string Export() const;

    /// Every file under the test's folder with its bytes, and every folder.
    std::map<std::string, std::string> Snapshot() const;

    std::filesystem::path root;
};

/// A folder's and a file's name, joined as the companion shows them.
std::string Shown(const std::string& folder, const std::string& name);

inline constexpr char Header[] = "date,bleeding,temperature_f,cramps,pms,note\r\n";

}  // namespace lunara::test
