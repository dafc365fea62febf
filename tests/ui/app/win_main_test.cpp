// WinMain: a second start brings the running instance forward instead of opening another window.

#include <string>

#include "platform/app_folder.h"
#include "platform/text.h"
#include "tests/ui/app/main_window_test_base.h"

namespace lunara::test {
namespace {

class SecondStart : public MainWindowTest {
  protected:
    /// Runs the built program while this test's window stands for the running instance. Returns its
    /// exit code, or ~0 when it could not be started.
    static DWORD RunProgram() {
        WCHAR folder[PathCapacity] = {};
        GetAppFolder(folder, PathCapacity);
        const std::wstring program = std::wstring(folder) + L"..\\..\\Lunara.exe";
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION process{};
        if (!::CreateProcessW(program.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                              nullptr, &startup, &process)) {
            ADD_FAILURE() << "cannot start the program";
            return ~DWORD{0};
        }
        EXPECT_TRUE(PumpUntil(
            [&process] { return ::WaitForSingleObject(process.hProcess, 0) == WAIT_OBJECT_0; }));
        DWORD code = ~DWORD{0};
        ::GetExitCodeProcess(process.hProcess, &code);
        ::TerminateProcess(process.hProcess, 1);  // in case it runs on
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
        return code;
    }
};

TEST_F(SecondStart, BringsTheRunningInstanceForwardAndEnds) {
    ASSERT_EQ(SignIn(), 1);
    ::ShowWindow(main->Handle(), SW_MINIMIZE);
    ASSERT_TRUE(::IsIconic(main->Handle()));
    EXPECT_EQ(RunProgram(), 0U);
    EXPECT_FALSE(::IsIconic(main->Handle()));
    EXPECT_EQ(::GetForegroundWindow(), main->Handle());
}

}  // namespace
}  // namespace lunara::test
