// The dumps in docs/file-format.md against what the program writes and reads.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "diary/user_data.h"
#include "storage/data_file.h"
#include "tests/core/storage/file_support.h"
#include "tests/support/user_data_access.h"

namespace lunara::test {
namespace {

/// The bytes of each dump of the document, in its order. Fails when an offset is not the number of
/// bytes before its line.
std::vector<Bytes> DumpsOfTheDocument() {
    std::ifstream document(std::filesystem::path(LUNARA_TEST_DATA) / ".." / ".." / "docs" /
                           "file-format.md");
    EXPECT_TRUE(document);
    std::vector<Bytes> dumps;
    bool isInDump = false;
    for (std::string line; std::getline(document, line);) {
        if (line.rfind("```", 0) == 0) {
            isInDump = line.rfind("```hexdump", 0) == 0;
            if (isInDump) {
                dumps.emplace_back();
            }
        } else if (isInDump) {
            EXPECT_EQ(std::stoul(line.substr(0, 8), nullptr, 16), dumps.back().size()) << line;
            // Up to eight bytes, "XX " each; the remark starts behind them.
            std::istringstream bytes(line.substr(10, std::size_t{8} * 3));
            for (std::string byte; bytes >> byte;) {
                dumps.back().push_back(static_cast<unsigned char>(std::stoul(byte, nullptr, 16)));
            }
        }
    }
    return dumps;
}

TEST(FileFormatDocument, DumpsAreWhatTheProgramWrites) {
    const std::vector<Bytes> dumps = DumpsOfTheDocument();
    ASSERT_EQ(dumps.size(), 3U);
    const ScratchFolder scratch;
    const WideString folder = Wide(scratch.Root());
    UserData data;
    UserDataTestAccess::Bleeding(data).Set(MakeDateKey(2006, 2, 28), 2);
    UserDataTestAccess::Bleeding(data).Set(MakeDateKey(2006, 3, 1), 1);
    UserDataTestAccess::NotePages(data).AppendText(MakeDateKey(2006, 3, 1), TEXT("Headache"), 8);
    data.MarkAllDirty();
    ASSERT_EQ(data.SaveFolder(folder.c_str(), TEXT("")), 1);
    EXPECT_EQ(ReadBytes(scratch.File("Bleeding.dat")), dumps[0]);
    EXPECT_EQ(ReadBytes(scratch.File("NotePages.dat")), dumps[2]);
    data.MarkAllDirty();
    ASSERT_EQ(data.SaveFolder(folder.c_str(), TEXT("secret")), 1);
    EXPECT_EQ(ReadBytes(scratch.File("Bleeding.dat")), dumps[1]);
}

TEST(FileFormatDocument, DumpsAreRead) {
    const std::vector<Bytes> dumps = DumpsOfTheDocument();
    ASSERT_EQ(dumps.size(), 3U);
    const ScratchFolder scratch;
    const auto file = scratch.File("Dumped.dat");
    DayValueList days;
    NotePageList pages{10};
    for (const auto& [dump, password] :
         {std::pair{dumps[0], TEXT("")}, std::pair{dumps[1], TEXT("secret")}}) {
        WriteBytes(file, dump);
        ASSERT_EQ(LoadDayValues(days, Wide(file).c_str(), password), 1);
        ASSERT_EQ(days.Count(), 2);
        EXPECT_EQ(days.At(0).date, MakeDateKey(2006, 2, 28));
        EXPECT_EQ(days.At(1).value, 1);
    }
    WriteBytes(file, dumps[2]);
    ASSERT_EQ(LoadNotePages(pages, Wide(file).c_str(), TEXT("")), 1);
    const std::unique_ptr<WCHAR[]> text(pages.CopyText(MakeDateKey(2006, 3, 1)));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(ToUtf8(text.get()), "Headache");
}

}  // namespace
}  // namespace lunara::test
