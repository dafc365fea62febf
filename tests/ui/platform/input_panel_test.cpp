// The input panel: a desktop has none, but keeps the panel's flags for the program to read back.

#include "platform/pocketpc/aygshell.h"
#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

class InputPanel : public UiTest {
  protected:
    static SIPINFO Info() {
        SIPINFO info{};
        info.cbSize = sizeof(info);
        EXPECT_TRUE(SHSipInfo(SPI_GETSIPINFO, 0, &info, 0));
        return info;
    }
};

TEST_F(InputPanel, FlagsThatAreSetAreReadBack) {
    SIPINFO info = Info();
    const DWORD before = info.fdwFlags;
    info.fdwFlags = before | SIPF_DISABLECOMPLETION;
    EXPECT_TRUE(SHSipInfo(SPI_SETSIPINFO, 0, &info, 0));
    EXPECT_EQ(Info().fdwFlags, before | SIPF_DISABLECOMPLETION);
    info.fdwFlags = before;
    EXPECT_TRUE(SHSipInfo(SPI_SETSIPINFO, 0, &info, 0));
}

TEST_F(InputPanel, IsRaisedAndLowered) {
    ScriptedWindow window;
    ASSERT_EQ(window.Make(), 1);
    const struct {
        const char* label;
        SIPSTATE state;
        bool up;
    } rows[] = {{"up", SIP_UP, true},       {"unchanged", SIP_UNCHANGED, true},
                {"down", SIP_DOWN, false},  {"unchanged", SIP_UNCHANGED, false},
                {"up again", SIP_UP, true}, {"forced down", SIP_FORCEDOWN, false}};
    for (const auto& row : rows) {
        LUNARA_ROW(row);
        EXPECT_TRUE(SHSipPreference(window.Handle(), row.state));
        EXPECT_EQ((Info().fdwFlags & SIPF_ON) != 0, row.up);
    }
    EXPECT_FALSE(SHSipPreference(nullptr, SIP_UP));
}

TEST_F(InputPanel, RefusesARecordOfAnotherSizeAndAnUnknownAction) {
    SIPINFO info{};
    EXPECT_FALSE(SHSipInfo(SPI_GETSIPINFO, 0, &info, 0)) << "size not set";
    EXPECT_FALSE(SHSipInfo(SPI_GETSIPINFO, 0, nullptr, 0));
    info.cbSize = sizeof(info);
    EXPECT_FALSE(SHSipInfo(999, 0, &info, 0));
}

}  // namespace
}  // namespace lunara::test
