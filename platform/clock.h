#pragma once

// The only place that asks the system for the time, so that tests and the companion's --today can
// set it.

#include "platform/win32.h"

namespace lunara {

/// The current local date and time, day of week included.
SYSTEMTIME LocalNow();

/// Milliseconds since the system started; wraps after 49.7 days.
DWORD TickCount();

/// Fixes `LocalNow` at `now` until `ReleaseClock`. `now` must be a real date; its day of week is
/// computed.
void SetLocalNow(SYSTEMTIME now);

/// Fixes `TickCount` at `ticks` until `ReleaseClock`.
void SetTickCount(DWORD ticks);

/// Lets `LocalNow` and `TickCount` follow the system again.
void ReleaseClock();

}  // namespace lunara
