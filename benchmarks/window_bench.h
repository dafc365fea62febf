#pragma once

// Set-up shared by the benchmarks of painting: a fixed date, the size of the program's window, a
// view in a bare frame, and the bare fill and copy that every repaint is compared with.

#include "benchmarks/spread.h"
#include "platform/clock.h"
#include "platform/gdi.h"
#include "records/dates.h"
#include "window/settings.h"
#include "window/window.h"

namespace lunara::bench {

inline constexpr int WidthPx = 480;
inline constexpr int HeightPx = 640;
inline constexpr int Rounds = 400;
inline constexpr double RepaintTargetMs = 8.0;

/// Makes runs repeatable: fixes today to 15 March 2026, which is returned, and keeps the machine's
/// settings out.
inline SYSTEMTIME SetSurroundings() {
    SetAppInstance(::GetModuleHandleW(nullptr));
    SYSTEMTIME today{};
    FromDateKey(MakeDateKey(2026, 3, 15), today);
    SetLocalNow(today);
    SetSettingsLocation({nullptr, nullptr, TEXT("")});
    return today;
}

/// Creates `frame` and the `view` that fills it, and paints both; false when one cannot be created.
inline bool ShowView(Window& frame, Window& view, DWORD viewStyle = 0) {
    if (frame.Create(0, nullptr, TEXT("Benchmark"), WS_POPUP | WS_VISIBLE, 0, 0, WidthPx, HeightPx,
                     nullptr, nullptr) == 0 ||
        view.Create(0, nullptr, TEXT("View"), WS_CHILD | WS_VISIBLE | viewStyle, 0, 0, WidthPx,
                    HeightPx, frame.Handle(), nullptr) == 0) {
        std::fprintf(stderr, "no window could be made\n");
        return false;
    }
    ::RedrawWindow(view.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    ::GdiFlush();
    return true;
}

/// Times filling a memory bitmap of the window's size and copying it to `window`.
inline Spread MeasureBare(HWND window) {
    const WindowDcScope screen(window);
    const MemoryDc memory(::CreateCompatibleDC(screen.Dc()));
    const Bitmap bitmap(::CreateCompatibleBitmap(screen.Dc(), WidthPx, HeightPx));
    const SelectScope selected(memory.Get(), bitmap.Get());
    const RECT all = {0, 0, WidthPx, HeightPx};
    return Measure(Rounds, [&] {
        ::FillRect(memory.Get(), &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        ::BitBlt(screen.Dc(), 0, 0, WidthPx, HeightPx, memory.Get(), 0, 0, SRCCOPY);
        ::GdiFlush();
    });
}

/// Prints and returns whether the median is at most `targetMs`.
inline bool Keeps(const char* name, const Spread& spread, const Spread& bare, double targetMs) {
    const bool isKept = spread.median <= targetMs;
    std::printf("%s: %.1f times the bare fill and copy; at most %.0f ms allowed: %s\n", name,
                spread.median / bare.median, targetMs, isKept ? "kept" : "EXCEEDED");
    return isKept;
}

}  // namespace lunara::bench
