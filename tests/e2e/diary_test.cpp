// The diary shows what the companion predicts from the same files: in its answers to the agenda and
// on the screen.

#include "tests/driver/wait.h"
#include "tests/e2e/expectation.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

class Diary : public EndToEnd {
  protected:
    /// Regular cycles up to three weeks ago, then one day for each mark that the diary can show.
    void MakeMarkedDiary(const std::wstring& user) {
        std::string records;
        for (int cycle = 13; cycle >= 1; --cycle) {
            for (int day = 0; day < 5; ++day) {
                records += ToUtf8(IsoDate(AddDays(Today, -20 - 28 * (cycle - 1) + day))) +
                           (day < 2 ? ",3,,,,\r\n" : ",2,,,,\r\n");
            }
        }
        records += ToUtf8(IsoDate(AddDays(Today, -8))) + ",,,1,,\r\n";
        records += ToUtf8(IsoDate(AddDays(Today, -7))) + ",,,,1,\r\n";
        records += ToUtf8(IsoDate(AddDays(Today, -6))) + ",,,1,1,Both\r\n";
        records += ToUtf8(IsoDate(AddDays(Today, -3))) + ",2,,,,\r\n";  // too short to be a period
        records += ToUtf8(IsoDate(AddDays(Today, 2))) + ",,,,,To come\r\n";
        ASSERT_TRUE(Import(folder.UserFolder(user), records));
        WriteNumber(L"CurrentView", ViewDiary);
    }
};

TEST_F(Diary, ShowsTheCompanionsPrediction) {
    MakeSampleDiary(L"Anna");
    const Expectation expected(folder, L"Anna", Password, Today);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    program.Keep(L"diary");
    EXPECT_EQ(program.Warning(), expected.Warning());
    EXPECT_EQ(program.FirstDay(), AddDays(Today, -10));
    CompareDiary(program, folder, expected);
    EXPECT_TRUE(program.Exit());
}

TEST_F(Diary, ShowsEveryMark) {
    MakeMarkedDiary(L"Anna");
    const Expectation expected(folder, L"Anna", Password, Today);
    EXPECT_EQ(expected.RowOf(AddDays(Today, -3)).cells[1].overlay, 112u);
    EXPECT_EQ(expected.RowOf(AddDays(Today, 8)).cells[1].overlay, 106u);
    EXPECT_EQ(expected.RowOf(AddDays(Today, -6)).cells[0].overlay, 116u);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    program.Keep(L"marks");
    EXPECT_EQ(program.Warning(), expected.Warning());
    CompareDiary(program, folder, expected);
    EXPECT_TRUE(program.Exit());
}

TEST_F(Diary, ShowsDistantDaysAfterScrolling) {
    MakeSampleDiary(L"Anna");
    const Expectation expected(folder, L"Anna", Password, Today);
    Program program(folder);
    ASSERT_TRUE(program.StartAndSignIn(L"Anna", Password));
    for (int page = 1; page <= 8; ++page) {
        ::SendMessageW(program.Diary(), WM_VSCROLL, SB_PAGEDOWN, 0);
    }
    ASSERT_TRUE(program.Settle());
    EXPECT_EQ(program.FirstDay(), AddDays(Today, 70));
    ::UpdateWindow(program.Agenda());
    ASSERT_TRUE(program.Settle());
    program.Keep(L"future");
    CompareDiary(program, folder, expected);
    EXPECT_TRUE(program.Exit());
}

}  // namespace
}  // namespace lunara::test
