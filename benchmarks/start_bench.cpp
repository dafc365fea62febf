// Times a start of Lunara, from creating the process to the first painted diary; the sign-in dialog
// is answered with a name and OK as soon as it is visible. The peers in the same run are a program
// with one bare window, and one with Lunara's windows and nothing behind them.
//
// The programs are started from outside, in turn, and polled until a pixel of their window has a
// colour that only their own painting gives it. Windows are found by class, not by title alone:
// asking every window for its title keeps Wine's server from answering the program that starts.
//
// Runs twice: with a pause before each start, like a user's idle machine, and without one, where
// the previous program is still ending and takes time from every case.

#include <functional>
#include <string>

#include "benchmarks/spread.h"

namespace {

using lunara::bench::NowMs;

constexpr int Runs = 31;
constexpr DWORD PauseMs = 150;  // the clean-up after a program's end takes a fifth of this
constexpr DWORD LongestWaitMs = 20'000;
constexpr COLORREF BareColor = RGB(192, 192, 192);  // the grey of grey_window.h

/// Polls `condition` every ms; false when it still fails after LongestWaitMs.
bool WaitUntil(const std::function<bool()>& condition) {
    const double start = NowMs();
    while (!condition()) {
        if (NowMs() - start > LongestWaitMs) {
            return false;
        }
        ::Sleep(1);
    }
    return true;
}

/// A program that was started; End closes its window and waits for the process.
struct Running {
    PROCESS_INFORMATION process{};

    bool Start(const std::wstring& program) {
        std::wstring line = L"\"" + program + L"\"";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        const std::wstring folder = program.substr(0, program.find_last_of(L'\\'));
        return ::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                folder.c_str(), &start, &process) != 0;
    }
    void End(HWND window) {
        ::PostMessageW(window, WM_CLOSE, 0, 0);
        if (::WaitForSingleObject(process.hProcess, LongestWaitMs) != WAIT_OBJECT_0) {
            ::TerminateProcess(process.hProcess, 1);
        }
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
};

/// The colour of a pixel of the window, in client coordinates. Read from the screen: the device
/// context of another program's window need not hold what is visible.
COLORREF PixelOf(HWND window, int x, int y) {
    POINT point{x, y};
    ::ClientToScreen(window, &point);
    const HDC screen = ::GetDC(nullptr);
    const COLORREF color = ::GetPixel(screen, point.x, point.y);
    ::ReleaseDC(nullptr, screen);
    return color;
}

/// ms from starting the program to its painted window; -1 when it does not come up.
double StartBareWindow(const std::wstring& program) {
    const double begin = NowMs();
    Running running;
    HWND window = nullptr;
    if (!running.Start(program) || !WaitUntil([&] {
            window = ::FindWindowW(L"LunaraBareWindow", nullptr);
            return window != nullptr && PixelOf(window, 100, 100) == BareColor;
        })) {
        return -1;
    }
    const double elapsed = NowMs() - begin;
    running.End(window);
    return elapsed;
}

HWND FindSignIn() {
    HWND dialog = ::FindWindowW(L"#32770", L"Login user");
    return dialog != nullptr && ::IsWindowVisible(dialog) ? dialog : nullptr;
}

HWND FindCalendar(const wchar_t* mainClass) {
    const HWND main = ::FindWindowW(mainClass, L"Lunara");
    const HWND diary =
        main == nullptr ? nullptr : ::FindWindowExW(main, nullptr, nullptr, L"Diary view");
    return diary == nullptr ? nullptr : ::GetDlgItem(diary, 3002);
}

/// Whether the calendar's left column has the colour of a month, which only its own painting gives
/// it.
bool IsPainted(HWND calendar) {
    const COLORREF color = PixelOf(calendar, 3, 5);
    return color != CLR_INVALID && color != RGB(255, 255, 255) && color != RGB(0, 0, 0) &&
           color != ::GetSysColor(COLOR_BTNFACE);
}

/// ms from starting the program, through its sign-in, to its painted diary; -1 when it does not
/// come up. `mainClass` is the class of its main window.
double StartWithSignIn(const std::wstring& program, const wchar_t* mainClass) {
    const double begin = NowMs();
    Running running;
    HWND dialog = nullptr;
    HWND calendar = nullptr;
    if (!running.Start(program) || !WaitUntil([&] { return (dialog = FindSignIn()) != nullptr; })) {
        return -1;
    }
    ::SendDlgItemMessageW(dialog, 1002, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"Sample"));
    ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    const bool painted =
        WaitUntil([&] { return (calendar = FindCalendar(mainClass)) != nullptr; }) &&
        WaitUntil([&] { return IsPainted(calendar); });
    const double elapsed = NowMs() - begin;
    running.End(::GetAncestor(calendar, GA_ROOT));
    return painted ? elapsed : -1;
}

/// Runs a command and waits for it; whether it exited with 0.
bool RunToEnd(const std::wstring& commandLine) {
    std::wstring line = commandLine;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                         &process) == 0) {
        return false;
    }
    ::WaitForSingleObject(process.hProcess, LongestWaitMs);
    DWORD code = 1;
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return code == 0;
}

/// Makes a program folder with a copy of Lunara.exe and the sample diary. Returns the copy's path;
/// "" on failure.
std::wstring PrepareProgram(const std::wstring& build) {
    const std::wstring folder = build + L"\\benchmarks\\start";
    ::CreateDirectoryW(folder.c_str(), nullptr);
    std::wstring program = folder + L"\\Lunara.exe";
    if (::CopyFileW((build + L"\\Lunara.exe").c_str(), program.c_str(), FALSE) == 0) {
        return {};
    }
    const std::wstring diary = folder + L"\\Sample";
    if (::GetFileAttributesW((diary + L"\\Bleeding.dat").c_str()) == INVALID_FILE_ATTRIBUTES &&
        !RunToEnd(L"\"" + build + L"\\lunara-cli.exe\" sample \"" + diary + L"\"")) {
        return {};
    }
    // Makes the diary the first view shown, whatever view was shown last.
    HKEY key = nullptr;
    if (::RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Apps\\Lunara", 0, nullptr, 0, KEY_WRITE,
                          nullptr, &key, nullptr) == ERROR_SUCCESS) {
        const DWORD diaryView = 3000;
        ::RegSetValueExW(key, L"CurrentView", 0, REG_DWORD,
                         reinterpret_cast<const BYTE*>(&diaryView), sizeof diaryView);
        ::RegCloseKey(key);
    }
    return program;
}

void Report(const char* name, std::vector<double> times, double reference) {
    std::sort(times.begin(), times.end());
    const double median = times[times.size() / 2];
    std::printf("%-28s median %7.1f ms, quartiles %7.1f .. %7.1f ms, ratio %.2f\n", name, median,
                times[times.size() / 4], times[times.size() * 3 / 4], median / reference);
}

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

struct Case {
    const char* name;
    std::function<double()> start;  // starts the program once; ms, negative on failure
    std::vector<double> times;
};

/// Times all cases in turn and prints them with their ratio to the first one. False when a program
/// did not come up.
bool Compare(std::vector<Case> cases, DWORD pauseMs) {
    for (int run = -1; run < Runs; ++run) {  // run -1 warms the caches
        for (Case& each : cases) {
            ::Sleep(pauseMs);
            const double time = each.start();
            if (time < 0) {
                std::printf("start_bench: did not come up: %s\n", each.name);
                return false;
            }
            if (run >= 0) {
                each.times.push_back(time);
            }
        }
    }
    std::printf("start to first painted window, %d runs each, turn by turn, %lu ms between them\n",
                Runs, pauseMs);
    const double reference = Median(cases.front().times);
    for (const Case& each : cases) {
        Report(each.name, each.times, reference);
    }
    return true;
}

}  // namespace

int main() {
    wchar_t self[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::wstring build(self);
    build.erase(build.find_last_of(L'\\'));
    const std::wstring bare = build + L"\\bare_window.exe";
    const std::wstring sameWindows = build + L"\\same_windows.exe";
    build.erase(build.find_last_of(L'\\'));
    const std::wstring program = PrepareProgram(build);
    if (program.empty()) {
        std::puts("start_bench: the program folder could not be prepared");
        return 1;
    }

    for (const DWORD pause : {PauseMs, DWORD{0}}) {
        if (!Compare({{"bare window", [&] { return StartBareWindow(bare); }, {}},
                      {"Lunara's windows alone",
                       [&] { return StartWithSignIn(sameWindows, L"LunaraSameWindows"); },
                       {}},
                      {"Lunara, first painted diary",
                       [&] { return StartWithSignIn(program, L"wfcWnd_1_0"); },
                       {}}},
                     pause)) {
            return 1;
        }
    }
    return 0;
}
