#include "tests/companion/fixture.h"

#include <fstream>
#include <sstream>

#include "platform/arguments.h"
#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

constexpr std::string_view FileHeader("LU\x01\x00", 4);

template <typename Record>
std::string FileOf(std::initializer_list<Record> records) {
    std::string bytes(FileHeader);
    for (const Record& record : records) {
        bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
    }
    return bytes;
}

}  // namespace

Outcome RunCli(const std::vector<std::string>& arguments, const std::string& input) {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    Outcome outcome;
    outcome.code = RunCompanion(arguments, {in, out, err});
    outcome.out = out.str();
    outcome.err = err.str();
    return outcome;
}

std::string Utf8(const std::filesystem::path& path) {
    const std::u8string bytes = path.u8string();
    return {bytes.begin(), bytes.end()};
}

std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

void WriteBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    ASSERT_TRUE(file.flush()) << path;
}

std::string DayFile(std::initializer_list<DayValue> records) { return FileOf(records); }

std::string PageFile(std::initializer_list<NotePage> pages) { return FileOf(pages); }

NotePage Page(DateKey date, const std::string& text) {
    NotePage page{};
    page.date = date;
    for (std::size_t i = 0; i < text.size(); ++i) {
        page.text[i] = static_cast<WCHAR>(text[i]);
    }
    return page;
}

std::string CompanionTest::Beside(const std::string& name, const std::string& bytes) const {
    WriteBytes(root / name, bytes);
    return Utf8(root / name);
}

void CompanionTest::PutInDiary(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(root / "diary");
    WriteBytes(InDiary(name), bytes);
}

Outcome CompanionTest::ImportCsv(const std::string& csv) const {
    return RunCli({"import", Diary(), "--csv", "-"}, csv);
}

std::string CompanionTest::ExportCsv() const {
    const Outcome outcome = RunCli({"export", Diary(), "--csv", "-"});
    EXPECT_EQ(outcome.code, ExitDone) << outcome.err;
    return outcome.out;
}

std::map<std::string, std::string> CompanionTest::Snapshot() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        files[Utf8(entry.path())] = entry.is_regular_file() ? ReadBytes(entry.path()) : "folder";
    }
    return files;
}

std::string Shown(const std::string& folder, const std::string& name) {
    return folder + PathSeparator + name;
}

}  // namespace lunara::test
