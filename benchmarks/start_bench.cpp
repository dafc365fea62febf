// Measures the time from starting Lunara to its first painted diary (the name is filled in and OK
// pressed as soon as the sign-in dialog is visible). The peers are the start of a program with one
// bare window, and of one with Lunara's windows and nothing behind them.
//
// All are started from outside, turn by turn, and watched until a pixel of their window has the
// colour that only their own painting gives it. Windows are searched by class and not by title
// where possible: asking for the titles of all windows keeps Wine's server from answering the
// program that is starting.
//
// Measured once with a pause before each start, as on an idle machine, and once without, where the
// rest of the previous program's end takes time from the next start.

#include <functional>
#include <string>

#include "benchmarks/spread.h"

namespace {

using lunara::bench::NowMs;

constexpr int Runs = 31;
constexpr DWORD PauseMs = 150;  // five times what the system does after the end of a program
constexpr DWORD LongestWaitMs = 20'000;
// A fresh Wine prefix still starts its services and reads its fonts when the first window of a
// program opens, which takes minutes on a busy machine.
constexpr DWORD LongestFirstWaitMs = 300'000;
constexpr COLORREF BareColor = RGB(192, 192, 192);  // painted by grey_window.h

/// Polls the condition every millisecond; false when it does not hold within `limitMs`.
bool WaitUntil(const std::function<bool()>& condition, DWORD limitMs) {
    const double start = NowMs();
    while (!condition()) {
        if (NowMs() - start > limitMs) {
            return false;
        }
        ::Sleep(1);
    }
    return true;
}

/// A program that was started. Its end is the caller's duty.
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
    /// Closes the window and waits for the end of the process, which is terminated when it does not
    /// come or when there is no window to close (null).
    void End(HWND window) {
        if (window != nullptr) {
            ::PostMessageW(window, WM_CLOSE, 0, 0);
        }
        if (::WaitForSingleObject(process.hProcess, window == nullptr ? 0 : LongestWaitMs) !=
            WAIT_OBJECT_0) {
            ::TerminateProcess(process.hProcess, 1);
        }
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
};

/// A pixel of the window, read from the screen: another process's device context may hold pixels
/// that are not on the screen yet. `x` and `y` are client coordinates.
COLORREF PixelOf(HWND window, int x, int y) {
    POINT point{x, y};
    ::ClientToScreen(window, &point);
    const HDC screen = ::GetDC(nullptr);
    const COLORREF color = ::GetPixel(screen, point.x, point.y);
    ::ReleaseDC(nullptr, screen);
    return color;
}

/// Time until the bare window is painted, in ms; negative when that takes longer than `limitMs`.
double StartBareWindow(const std::wstring& program, DWORD limitMs) {
    const double begin = NowMs();
    Running running;
    if (!running.Start(program)) {
        return -1;
    }
    HWND window = nullptr;
    const bool painted = WaitUntil(
        [&] {
            window = ::FindWindowW(L"LunaraBareWindow", nullptr);
            return window != nullptr && PixelOf(window, 100, 100) == BareColor;
        },
        limitMs);
    const double elapsed = NowMs() - begin;
    running.End(window);
    return painted ? elapsed : -1;
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

/// Whether the month band, the calendar's left column, has its colour, which nothing but the
/// calendar's own painting gives it.
bool IsPainted(HWND calendar) {
    const COLORREF color = PixelOf(calendar, 3, 5);
    return color != CLR_INVALID && color != RGB(255, 255, 255) && color != RGB(0, 0, 0) &&
           color != ::GetSysColor(COLOR_BTNFACE);
}

/// Time until the diary is painted, in ms; negative when a step of it takes longer than `limitMs`.
/// `mainClass` is the class of the main window.
double StartWithSignIn(const std::wstring& program, const wchar_t* mainClass, DWORD limitMs) {
    const double begin = NowMs();
    Running running;
    if (!running.Start(program)) {
        return -1;
    }
    HWND dialog = nullptr;
    HWND calendar = nullptr;
    bool painted = WaitUntil([&] { return (dialog = FindSignIn()) != nullptr; }, limitMs);
    if (painted) {
        ::SendDlgItemMessageW(dialog, 1002, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"Sample"));
        ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        painted =
            WaitUntil([&] { return (calendar = FindCalendar(mainClass)) != nullptr; }, limitMs) &&
            WaitUntil([&] { return IsPainted(calendar); }, limitMs);
    }
    const double elapsed = NowMs() - begin;
    running.End(calendar == nullptr ? nullptr : ::GetAncestor(calendar, GA_ROOT));
    return painted ? elapsed : -1;
}

/// Runs a program; false when it does not end with exit code 0 in time.
bool RunToEnd(const std::wstring& commandLine) {
    std::wstring line = commandLine;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                         &process) == 0) {
        return false;
    }
    ::WaitForSingleObject(process.hProcess, LongestFirstWaitMs);
    DWORD code = 1;
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return code == 0;
}

/// Makes the program folder `name` with a copy of the program `source` and the sample diary in it.
/// Returns the path of the copy; "" on failure.
std::wstring PrepareProgram(const std::wstring& build, const wchar_t* name,
                            const std::wstring& source) {
    const std::wstring folder = build + L"\\benchmarks\\" + name;
    ::CreateDirectoryW(folder.c_str(), nullptr);
    std::wstring program = folder + L"\\Lunara.exe";
    if (::CopyFileW(source.c_str(), program.c_str(), FALSE) == 0) {
        return {};
    }
    const std::wstring diary = folder + L"\\Sample";
    if (::GetFileAttributesW((diary + L"\\Bleeding.dat").c_str()) == INVALID_FILE_ATTRIBUTES &&
        !RunToEnd(L"\"" + build + L"\\lunara-cli.exe\" sample \"" + diary + L"\"")) {
        return {};
    }
    // The diary must come up, whichever view was shown last.
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
    /// The time of one start, in ms; negative when the program did not come up within that limit.
    std::function<double(DWORD limitMs)> start;
    std::vector<double> times;  // of the measured starts, ms
};

/// The time of one start; negative, and a line on the standard output, when there was none.
double StartOnce(const Case& each, DWORD limitMs) {
    const double time = each.start(limitMs);
    if (time < 0) {
        std::printf("start_bench: did not come up: %s\n", each.name);
    }
    return time;
}

/// Starts and ends each program once, unmeasured: makes a fresh prefix ready and warms the caches.
/// False when a program did not come up.
bool WarmUp(const std::vector<Case>& cases) {
    return std::all_of(cases.begin(), cases.end(),
                       [](const Case& each) { return StartOnce(each, LongestFirstWaitMs) >= 0; });
}

/// Measures the cases turn by turn and reports them. The first case is the reference of the ratios.
/// False when a program did not come up.
bool Compare(std::vector<Case> cases, DWORD pauseMs) {
    for (int run = 0; run < Runs; ++run) {
        for (Case& each : cases) {
            ::Sleep(pauseMs);
            const double time = StartOnce(each, LongestWaitMs);
            if (time < 0) {
                return false;
            }
            each.times.push_back(time);
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

/// Usage: start_bench [EARLIER.exe]
///   EARLIER.exe  a Lunara.exe of another build, which takes its turns beside this one
int main(int argc, char** argv) {
    wchar_t self[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::wstring build(self);
    build.erase(build.find_last_of(L'\\'));
    const std::wstring bare = build + L"\\bare_window.exe";
    const std::wstring sameWindows = build + L"\\same_windows.exe";
    build.erase(build.find_last_of(L'\\'));
    const std::wstring program = PrepareProgram(build, L"start", build + L"\\Lunara.exe");
    if (program.empty()) {
        std::puts("start_bench: the program folder could not be prepared");
        return 1;
    }

    std::vector<Case> cases = {
        {"bare window", [&](DWORD limitMs) { return StartBareWindow(bare, limitMs); }, {}},
        {"Lunara's windows alone",
         [&](DWORD limitMs) { return StartWithSignIn(sameWindows, L"LunaraSameWindows", limitMs); },
         {}},
        {"Lunara, first painted diary",
         [&](DWORD limitMs) { return StartWithSignIn(program, L"wfcWnd_1_0", limitMs); },
         {}}};
    std::wstring earlier;
    if (argc > 1) {
        const std::string path(argv[1]);
        earlier = PrepareProgram(build, L"start-earlier", std::wstring(path.begin(), path.end()));
        if (earlier.empty()) {
            std::puts("start_bench: the earlier program could not be copied");
            return 1;
        }
        cases.push_back(
            {"earlier Lunara",
             [&](DWORD limitMs) { return StartWithSignIn(earlier, L"wfcWnd_1_0", limitMs); },
             {}});
    }
    if (!WarmUp(cases)) {
        return 1;
    }
    for (const DWORD pause : {PauseMs, DWORD{0}}) {
        if (!Compare(cases, pause)) {
            return 1;
        }
    }
    return 0;
}
