#include "diary/period_entry.h"

#include <algorithm>

#include "platform/clock.h"

namespace lunara {
namespace {

bool IsAfterToday(const SYSTEMTIME& date) { return IsDateAfter(date, LocalNow()) != 0; }

SYSTEMTIME DaysLater(const SYSTEMTIME& date, std::int32_t days) {
    SYSTEMTIME later{};
    AddDays(date, days, later);
    return later;
}

int Fail(PeriodEntryError error) {
    ::SetLastError(error);
    return 0;
}

}  // namespace

std::int32_t BleedingLevelOfDay(std::int32_t day, std::int32_t length, std::int32_t mode) {
    if (mode == BleedingHeavy) {
        if (day <= length / 3) {
            return 3;
        }
        return day <= 2 * length / 3 ? 2 : 1;
    }
    return day <= length / 2 ? 2 : 1;
}

int AddPeriod(UserData& data, const SYSTEMTIME& start, std::int32_t length, std::int32_t mode) {
    for (std::int32_t i = 0; i < length; ++i) {
        const SYSTEMTIME day = DaysLater(start, i);
        if (data.GetBleeding(&day) != NoBleeding) {  // or `FutureBleeding`
            return Fail(PeriodEntryExists);
        }
    }
    for (std::int32_t i = 0; i < length; ++i) {
        if (data.SetCurrentDate(DaysLater(start, i)) == 0) {
            return Fail(PeriodEntryDateRefused);
        }
        if (data.SetBleeding(BleedingLevelOfDay(i, length, mode)) == 0) {
            return Fail(PeriodEntryValueRefused);
        }
    }
    return 1;
}

// ---- PeriodEntry ----

PeriodEntry::PeriodEntry()
    : startDate(DaysLater(LocalNow(), -DefaultPeriodLength)), endDate(LocalNow()) {}

int PeriodEntry::AddListener(PeriodEntryListener& listener) {
    PeriodEntryListener** last = listeners.data() + listenerCount;
    if (std::find(listeners.data(), last, &listener) != last) {
        return 1;
    }
    if (listenerCount == MaxListeners) {
        return 0;
    }
    listeners[static_cast<std::size_t>(listenerCount++)] = &listener;
    return 1;
}

int PeriodEntry::RemoveListener(PeriodEntryListener& listener) {
    PeriodEntryListener** last = listeners.data() + listenerCount;
    PeriodEntryListener** match = std::find(listeners.data(), last, &listener);
    if (match == last) {
        return 0;
    }
    std::copy(match + 1, last, match);
    listeners[static_cast<std::size_t>(--listenerCount)] = nullptr;
    return 1;
}

template <typename Ask, typename Apply, typename Tell>
int PeriodEntry::Change(Ask ask, Apply apply, Tell tell) {
    int allowed = 1;
    for (int i = 0; i < listenerCount; ++i) {
        if (!ask(*listeners[static_cast<std::size_t>(i)])) {
            allowed = 0;
        }
    }
    if (allowed == 0) {
        return 0;
    }
    apply();
    for (int i = 0; i < listenerCount; ++i) {
        tell(*listeners[static_cast<std::size_t>(i)]);
    }
    return 1;
}

int PeriodEntry::SetStartDate(const SYSTEMTIME& date, bool force) {
    const SYSTEMTIME old = startDate;
    const SYSTEMTIME wanted = date;
    if (!force && IsSameDay(old, wanted) != 0) {
        return 1;
    }
    return Change(
        [&](PeriodEntryListener& next) { return next.CanChangeStartDate(*this, old, wanted); },
        [&] { startDate = wanted; },
        [&](PeriodEntryListener& next) { next.StartDateChanged(*this, old, wanted); });
}

int PeriodEntry::SetEndDate(const SYSTEMTIME& date, bool force) {
    const SYSTEMTIME old = endDate;
    const SYSTEMTIME wanted = date;
    if (!force && IsSameDay(old, wanted) != 0) {
        return 1;
    }
    return Change(
        [&](PeriodEntryListener& next) { return next.CanChangeEndDate(*this, old, wanted); },
        [&] { endDate = wanted; },
        [&](PeriodEntryListener& next) { next.EndDateChanged(*this, old, wanted); });
}

int PeriodEntry::SetPeriodLength(std::int32_t days, bool force) {
    const std::int32_t old = periodLength;
    if (!force && old == days) {
        return 1;
    }
    return Change(
        [&](PeriodEntryListener& next) { return next.CanChangePeriodLength(*this, old, days); },
        [&] { periodLength = days; },
        [&](PeriodEntryListener& next) { next.PeriodLengthChanged(*this, old, days); });
}

int PeriodEntry::SetBleeding(std::int32_t mode) {
    if (mode != BleedingNormal && mode != BleedingHeavy) {
        return 0;
    }
    bleeding = mode;
    return 1;
}

// ---- PeriodRules ----

bool PeriodRules::CanChangeStartDate(PeriodEntry& entry, const SYSTEMTIME& /*old*/,
                                     const SYSTEMTIME& wanted) {
    return !IsAfterToday(DaysLater(wanted, entry.GetPeriodLength()));
}

void PeriodRules::StartDateChanged(PeriodEntry& entry, const SYSTEMTIME& /*old*/,
                                   const SYSTEMTIME& current) {
    entry.SetEndDate(DaysLater(current, entry.GetPeriodLength()), false);
    ShowDates(entry);
    AllowAdding();
}

bool PeriodRules::CanChangeEndDate(PeriodEntry& entry, const SYSTEMTIME& /*old*/,
                                   const SYSTEMTIME& wanted) {
    const std::int32_t days = DaysBetween(wanted, entry.GetStartDate());
    return days >= ShortestPeriod && days <= LongestPeriod && !IsAfterToday(wanted);
}

void PeriodRules::EndDateChanged(PeriodEntry& entry, const SYSTEMTIME& /*old*/,
                                 const SYSTEMTIME& current) {
    entry.SetPeriodLength(DaysBetween(current, entry.GetStartDate()), false);
    ShowPeriodLength(entry);
    AllowAdding();
}

bool PeriodRules::CanChangePeriodLength(PeriodEntry& entry, std::int32_t /*old*/,
                                        std::int32_t wanted) {
    return wanted >= ShortestPeriod && wanted <= LongestPeriod &&
           !IsAfterToday(DaysLater(entry.GetStartDate(), wanted));
}

void PeriodRules::PeriodLengthChanged(PeriodEntry& entry, std::int32_t /*old*/,
                                      std::int32_t current) {
    entry.SetEndDate(DaysLater(entry.GetStartDate(), current), false);
    ShowDates(entry);
    ShowPeriodLength(entry);
    AllowAdding();
}

}  // namespace lunara
