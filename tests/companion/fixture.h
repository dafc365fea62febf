#pragma once

// What the tests of the companion share: running a command line inside the test's process, a folder
// for its diary, and data files written byte by byte.

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "diary/user_data.h"
#include "tests/support/scratch_folder.h"

namespace lunara::test {

/// The exit code and the output of one run of the companion.
struct Outcome {
    int code = -1;
    std::string out;
    std::string err;
};

/// Runs a command line inside this process. `arguments` are those behind the program's name;
/// `input` is what it reads from standard input.
Outcome RunCli(const std::vector<std::string>& arguments, const std::string& input = "");

/// The path in UTF-8, as it stands on a command line.
std::string Utf8(const std::filesystem::path& path);

/// The file's bytes, "" without such a file.
std::string ReadBytes(const std::filesystem::path& path);
/// Makes a file of these bytes, in place of one of that name.
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);

/// The bytes of a data file without a password: the header, then the records as given.
std::string DayFile(std::initializer_list<DayValue> records);
std::string PageFile(std::initializer_list<NotePage> pages);

/// One page of a note. `text` has at most 34 ASCII characters.
NotePage Page(DateKey date, const std::string& text);

/// Base of the fixtures: an empty folder for one test, with the diary in a folder inside it.
class CompanionTest : public testing::Test {
  protected:
    /// The diary's folder, which does not exist at first.
    std::string Diary() const { return Utf8(root / "diary"); }
    std::filesystem::path InDiary(const std::string& name) const { return root / "diary" / name; }

    /// Writes a file beside the diary's folder and returns its path for a command line.
    std::string Beside(const std::string& name, const std::string& bytes) const;

    /// Writes a file into the diary's folder, which is created when missing.
    void PutInDiary(const std::string& name, const std::string& bytes) const;

    /// Imports `csv` into the diary.
    Outcome ImportCsv(const std::string& csv) const;
    /// The diary as CSV. An export that fails fails the test.
    std::string ExportCsv() const;

    /// The paths of all files and folders below the test's folder, in UTF-8, each file with its
    /// bytes and each folder with "folder".
    std::map<std::string, std::string> Snapshot() const;

  private:
    ScratchFolder scratch;

  protected:
    /// The test's folder.
    const std::filesystem::path root = scratch.Root();
};

/// The path of a file in a folder, joined as the companion's messages join it.
std::string Shown(const std::string& folder, const std::string& name);

/// The first line of an exported diary.
inline constexpr char Header[] = "date,bleeding,temperature_f,cramps,pms,note\r\n";

}  // namespace lunara::test
