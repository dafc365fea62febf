#pragma once

// The one place that asks the system for the time. Tests and the companion's --today set it.

#include "platform/win32.h"

namespace lunara {

/// The local date and time of the moment, day of week included.
SYSTEMTIME LocalNow();

/// Milliseconds since the system started; wraps after 49.7 days.
DWORD TickCount();

/// From here on `LocalNow` answers `now` (its day of week is filled in here) until `ReleaseClock`.
/// `now` must be a real date.
void SetLocalNow(SYSTEMTIME now);

/// From here on `TickCount` answers `ticks` until `ReleaseClock`.
void SetTickCount(DWORD ticks);

/// Both answers come from the system again.
void ReleaseClock();

}  // namespace lunara
