#pragma once

// Entering a whole past period at once. `PeriodEntry` holds the four chosen values (start, end,
// length, how heavy), `PeriodRules` keeps them consistent, and `AddPeriod` records the days in the
// data set. The dialog that shows the values derives from `PeriodRules`; nothing here knows
// windows.

#include <array>
#include <cstdint>

#include "diary/user_data.h"

namespace lunara {

/// Why `AddPeriod` stopped, left in the thread's last error. Each is the id of the string that the
/// user sees.
enum PeriodEntryError : DWORD {
    PeriodEntryExists = 57350,
    PeriodEntryDateRefused = 57351,
    PeriodEntryValueRefused = 57352,
};

/// Days of a period before the user chooses.
inline constexpr std::int32_t DefaultPeriodLength = 5;

/// How heavy a period is; the order is that of the dialog's spin control.
inline constexpr std::int32_t BleedingNormal = 0;
inline constexpr std::int32_t BleedingHeavy = 1;

/// The bleeding level, 1 to `HeaviestBleeding`, of day `day` (0-based) of a period of `length`
/// days. It falls towards the end: 2 then 1 in two halves, or 3, 2, 1 in three thirds when the
/// period is `BleedingHeavy`.
std::int32_t BleedingLevelOfDay(std::int32_t day, std::int32_t length, std::int32_t mode);

/// Records a level for each of the `length` days from `start` on and leaves the data set's current
/// date on the last of them. Returns 1, or 0 with a `PeriodEntryError`: `PeriodEntryExists`, with
/// nothing changed, when a day has a bleeding record already or lies after today;
/// `PeriodEntryDateRefused` or `PeriodEntryValueRefused` when an observer refused, or there was no
/// memory, with the days before it entered.
int AddPeriod(UserData& data, const SYSTEMTIME& start, std::int32_t length, std::int32_t mode);

class PeriodEntry;

/// A listener that is asked before each change of a `PeriodEntry` and told after it. A can-change
/// operation returns false to refuse.
class PeriodEntryListener {
  public:
    PeriodEntryListener() = default;
    PeriodEntryListener(const PeriodEntryListener&) = delete;
    PeriodEntryListener& operator=(const PeriodEntryListener&) = delete;
    virtual ~PeriodEntryListener() = default;

    virtual bool CanChangeStartDate(PeriodEntry& entry, const SYSTEMTIME& old,
                                    const SYSTEMTIME& wanted) = 0;
    virtual void StartDateChanged(PeriodEntry& entry, const SYSTEMTIME& old,
                                  const SYSTEMTIME& current) = 0;
    virtual bool CanChangeEndDate(PeriodEntry& entry, const SYSTEMTIME& old,
                                  const SYSTEMTIME& wanted) = 0;
    virtual void EndDateChanged(PeriodEntry& entry, const SYSTEMTIME& old,
                                const SYSTEMTIME& current) = 0;
    virtual bool CanChangePeriodLength(PeriodEntry& entry, std::int32_t old,
                                       std::int32_t wanted) = 0;
    virtual void PeriodLengthChanged(PeriodEntry& entry, std::int32_t old,
                                     std::int32_t current) = 0;
};

/// The four chosen values. Each change is offered to all listeners first, and a single refusal
/// cancels it. The end date is start + length: the first day after the period, not its last day of
/// bleeding. It does not check anything itself; `PeriodRules` does.
class PeriodEntry {
  public:
    static constexpr int MaxListeners = 10;

    /// A normal period of `DefaultPeriodLength` days that ends today.
    PeriodEntry();
    PeriodEntry(const PeriodEntry&) = delete;
    PeriodEntry& operator=(const PeriodEntry&) = delete;
    ~PeriodEntry() = default;

    /// Listeners are asked and told in the order of adding. 1 also for a listener that is present
    /// already and keeps its place; 0 when `MaxListeners` are. A listener must outlive the entry or
    /// be removed.
    int AddListener(PeriodEntryListener& listener);
    /// 0 when it is not present; the others keep their order. Completes the listener list's
    /// operations; the program itself does not call it, its dialog being listener and owner in one.
    int RemoveListener(PeriodEntryListener& listener);

    // 1 when applied or equal to the present value, 0 when refused. An equal value (for dates: the
    // same day) is offered to no listener unless `force` is set.
    int SetStartDate(const SYSTEMTIME& date, bool force);
    int SetEndDate(const SYSTEMTIME& date, bool force);
    int SetPeriodLength(std::int32_t days, bool force);
    /// Sets how heavy the period is, without asking the listeners; 0 for any mode but
    /// `BleedingNormal` and `BleedingHeavy`.
    int SetBleeding(std::int32_t mode);

    const SYSTEMTIME& GetStartDate() const { return startDate; }
    const SYSTEMTIME& GetEndDate() const { return endDate; }
    std::int32_t GetPeriodLength() const { return periodLength; }
    std::int32_t GetBleeding() const { return bleeding; }

  private:
    template <typename Ask, typename Apply, typename Tell>
    int Change(Ask ask, Apply apply, Tell tell);

    SYSTEMTIME startDate;
    SYSTEMTIME endDate;
    std::int32_t periodLength = DefaultPeriodLength;
    std::int32_t bleeding = BleedingNormal;
    std::array<PeriodEntryListener*, MaxListeners> listeners{};
    int listenerCount = 0;
};

/// The rules of a `PeriodEntry`: a period has `ShortestPeriod` to `LongestPeriod` days and does not
/// end after today. A new start or length moves the end, a new end changes the length. A derived
/// class shows the values by overriding the three operations at the end.
class PeriodRules : public PeriodEntryListener {
  public:
    bool CanChangeStartDate(PeriodEntry& entry, const SYSTEMTIME& old,
                            const SYSTEMTIME& wanted) override;
    void StartDateChanged(PeriodEntry& entry, const SYSTEMTIME& old,
                          const SYSTEMTIME& current) override;
    bool CanChangeEndDate(PeriodEntry& entry, const SYSTEMTIME& old,
                          const SYSTEMTIME& wanted) override;
    void EndDateChanged(PeriodEntry& entry, const SYSTEMTIME& old,
                        const SYSTEMTIME& current) override;
    bool CanChangePeriodLength(PeriodEntry& entry, std::int32_t old, std::int32_t wanted) override;
    void PeriodLengthChanged(PeriodEntry& entry, std::int32_t old, std::int32_t current) override;

  protected:
    /// Called after a change of start or length, to show both dates.
    virtual void ShowDates(const PeriodEntry& /*entry*/) {}
    /// Called after a change of end or length, to show the length.
    virtual void ShowPeriodLength(const PeriodEntry& /*entry*/) {}
    /// Called after every accepted change: a period that differs from the last one may be added.
    virtual void AllowAdding() {}
};

}  // namespace lunara
