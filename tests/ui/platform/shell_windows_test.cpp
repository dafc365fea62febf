// The shell's calls about windows: bringing the running program forward, setting changes.

#include <cstdint>

#include "platform/pocketpc/aygshell.h"
#include "resources/ids.h"
#include "tests/ui/ui_test.h"
#include "window/dialog.h"

namespace lunara::test {
namespace {

/// An owner window with a modeless dialog in front of it.
class ShellWindows : public UiTest {
  protected:
    void SetUp() override {
        UiTest::SetUp();
        ASSERT_EQ(owner.Create(0, nullptr, TEXT("Owner"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 50,
                               500, 650, nullptr, nullptr),
                  1);
        ASSERT_TRUE(Dialog::CreateModeless(dialog, IDD_LOGIN, &owner));
        ::ShowWindow(dialog.Handle(), SW_SHOW);
    }
    void TearDown() override {
        ::DestroyWindow(dialog.Handle());
        ::DestroyWindow(owner.Handle());
        UiTest::TearDown();
    }

    ScriptedWindow owner;
    Dialog dialog{IDD_LOGIN, &owner};
};

TEST_F(ShellWindows, AHandleWithTheLowestBitSetRestoresTheWindowAndActivatesItsDialog) {
    ::EnableWindow(owner.Handle(), FALSE);
    ::ShowWindow(owner.Handle(), SW_MINIMIZE);
    const auto marked =
        reinterpret_cast<HWND>(reinterpret_cast<std::uintptr_t>(owner.Handle()) | 1U);
    SHSetForegroundWindow(marked);
    EXPECT_FALSE(::IsIconic(owner.Handle()));
    EXPECT_EQ(::GetForegroundWindow(), dialog.Handle());
    ::EnableWindow(owner.Handle(), TRUE);
}

TEST_F(ShellWindows, ASettingChangeNeedsARecordOfTheRightSize) {
    SHACTIVATEINFO info{};
    EXPECT_FALSE(SHHandleWMSettingChange(owner.Handle(), 0, 0, &info));
    info.cbSize = sizeof(info);
    EXPECT_TRUE(SHHandleWMSettingChange(owner.Handle(), 0, 0, &info));
    EXPECT_FALSE(SHHandleWMSettingChange(owner.Handle(), 0, 0, nullptr));
}

}  // namespace
}  // namespace lunara::test
