#include "platform/clock.h"

#include <optional>

#ifndef _WIN32
#include <chrono>
#include <ctime>
#endif

namespace lunara {
namespace {

std::optional<SYSTEMTIME>& FixedNow() {
    static std::optional<SYSTEMTIME> now;
    return now;
}

std::optional<DWORD>& FixedTicks() {
    static std::optional<DWORD> ticks;
    return ticks;
}

#ifdef _WIN32

SYSTEMTIME SystemNow() {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    return now;
}

DWORD SystemTicks() {
    // Truncated on purpose: the hourly limit of the warning box is defined on the 32-bit count and
    // its wrap-around.
    return static_cast<DWORD>(::GetTickCount64());
}

#else

SYSTEMTIME SystemNow() {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto fraction = now.time_since_epoch() % std::chrono::seconds(1);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    SYSTEMTIME result{};
    result.wYear = static_cast<WORD>(local.tm_year + 1900);
    result.wMonth = static_cast<WORD>(local.tm_mon + 1);
    result.wDayOfWeek = static_cast<WORD>(local.tm_wday);
    result.wDay = static_cast<WORD>(local.tm_mday);
    result.wHour = static_cast<WORD>(local.tm_hour);
    result.wMinute = static_cast<WORD>(local.tm_min);
    result.wSecond = static_cast<WORD>(local.tm_sec);
    result.wMilliseconds =
        static_cast<WORD>(std::chrono::duration_cast<std::chrono::milliseconds>(fraction).count());
    return result;
}

DWORD SystemTicks() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<DWORD>(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

#endif

}  // namespace

SYSTEMTIME LocalNow() { return FixedNow() ? *FixedNow() : SystemNow(); }

DWORD TickCount() { return FixedTicks() ? *FixedTicks() : SystemTicks(); }

void SetLocalNow(SYSTEMTIME now) {
    FILETIME fileTime{};
    ::SystemTimeToFileTime(&now, &fileTime);
    ::FileTimeToSystemTime(&fileTime, &now);
    FixedNow() = now;
}

void SetTickCount(DWORD ticks) { FixedTicks() = ticks; }

void ReleaseClock() {
    FixedNow().reset();
    FixedTicks().reset();
}

}  // namespace lunara
