#include "app/help.h"

#include <array>

#include "platform/text.h"

namespace lunara {
namespace {

constexpr WCHAR HelpViewer[] = TEXT("PegHelp.exe");

HelpRecorder* currentRecorder = nullptr;

}  // namespace

void StartHelp(const WCHAR* anchor) {
    if (currentRecorder != nullptr) {
        currentRecorder->Start(HelpViewer, anchor);
        return;
    }
    // A copy, because CreateProcessW may modify the command line.
    std::array<WCHAR, PathCapacity> commandLine{};
    CopyText(commandLine.data(), commandLine.size(), anchor);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (::CreateProcessW(HelpViewer, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                         nullptr, &startup, &process) != FALSE) {
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
}

void SetHelpRecorder(HelpRecorder* recorder) { currentRecorder = recorder; }

}  // namespace lunara
