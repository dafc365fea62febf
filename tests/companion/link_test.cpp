// Exports to a path that is a symbolic link. Not built for Windows: the C++ library of that build
// cannot create symbolic links.

#include "tests/companion/fixture.h"
#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

class SymbolicLink : public CompanionTest {};

constexpr DateKey Day = MakeDateKey(2006, 1, 2);

TEST_F(SymbolicLink, IsWrittenThrough) {
    PutInDiary("Bleeding.dat", DayFile({{Day, 3}}));
    std::filesystem::create_directories(root / "elsewhere");
    std::filesystem::create_symlink("second.csv", root / "first.csv");
    std::filesystem::create_symlink(root / "elsewhere" / "out.csv", root / "second.csv");
    for (int i = 0; i < 2; ++i) {  // onto a missing file, then onto an existing one
        const Outcome outcome = RunCli({"export", Diary(), "--csv", Utf8(root / "first.csv")});
        EXPECT_EQ(outcome.code, ExitDone) << outcome.err;
        EXPECT_TRUE(std::filesystem::is_symlink(root / "first.csv"));
        EXPECT_TRUE(std::filesystem::is_symlink(root / "second.csv"));
        EXPECT_EQ(ReadBytes(root / "elsewhere" / "out.csv"),
                  std::string(Header) + "2006-01-02,3,,,,\r\n");
    }
    std::filesystem::create_symlink(InDiary("Notes.dat"), root / "third.csv");
    EXPECT_EQ(RunCli({"export", Diary(), "--csv", Utf8(root / "third.csv")}).code, ExitData);
    EXPECT_FALSE(std::filesystem::exists(InDiary("Notes.dat")));
}

}  // namespace
}  // namespace lunara::test
