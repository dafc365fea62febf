// How long it takes from starting Lunara to the first painted diary (her name is given and OK
// pressed as soon as the sign-in dialog stands there), beside the start of a program with one bare
// window, and of one with Lunara's windows and nothing behind them.
//
// All are started from outside, turn by turn, and watched until a pixel of their window has the
// colour that only their own painting gives it. They are watched by class, not by title, because to
// ask for the titles of all windows keeps Wine's server from answering the program that starts.
//
// Once with a pause before each start, as she finds her machine, and once without: then the end of
// the program before takes time from both.

#include <functional>
#include <string>

#include "benchmarks/spread.h"

namespace {

using lunara::bench::NowMs;

constexpr int Runs = 31;
constexpr DWORD PauseMs = 150;  // what a program leaves to be done at its end takes a fifth of that
constexpr DWORD LongestWaitMs = 20'000;
constexpr COLORREF BareColor = RGB(192, 192, 192);  // what grey_window.h paints

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

/// A pixel of the window as it is on the screen: what another program's device context holds need
/// not be.
COLORREF PixelOf(HWND window, int x, int y) {
    POINT point{x, y};
    ::ClientToScreen(window, &point);
    const HDC screen = ::GetDC(nullptr);
    const COLORREF color = ::GetPixel(screen, point.x, point.y);
    ::ReleaseDC(nullptr, screen);
    return color;
}

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

/// The colour of the month band: the calendar's left column, which nothing but its painting fills.
bool IsPainted(HWND calendar) {
    const COLORREF color = PixelOf(calendar, 3, 5);
    return color != CLR_INVALID && color != RGB(255, 255, 255) && color != RGB(0, 0, 0) &&
           color != ::GetSysColor(COLOR_BTNFACE);
}

/// `mainClass`: the class of the window in which the diary is to come up.
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

/// A program folder of its own with the sample diary in it; its Lunara.exe, or "" when it failed.
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
    // The diary is what is measured, whatever view was shown last.
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
    std::function<double()> start;  // the time it took, in ms; negative when it did not come up
    std::vector<double> times;
};

/// The first case is what the others are compared with. False when a program did not come up.
bool Compare(std::vector<Case> cases, DWORD pauseMs) {
    for (int run = -1; run < Runs; ++run) {  // the first turn warms the caches and does not count
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
