#pragma once

// Entering a whole past period at once: the four values that are chosen (start, end, length, how
// heavy) with the rules that keep them consistent, and the entry of its days into the data set.

#include <array>
#include <cstdint>

#include "diary/user_data.h"

namespace lunara {

/// Why a period was not, or not wholly, entered, left in the thread's last error: the ids of the
/// strings that the user sees.
enum PeriodEntryError : DWORD {
    PeriodEntryExists = 57350,
    PeriodEntryDateRefused = 57351,
    PeriodEntryValueRefused = 57352,
};

inline constexpr std::int32_t ShortestPeriod = 2;  // days
inline constexpr std::int32_t LongestPeriod = 7;   // days
inline constexpr std::int32_t DefaultPeriodLength = 5;

inline constexpr std::int32_t BleedingNormal = 0;
inline constexpr std::int32_t BleedingHeavy = 1;

/// The bleeding level of day `day` (0-based) of a period of `length` days: falling off towards its
/// end.
std::int32_t BleedingLevelOfDay(std::int32_t day, std::int32_t length, std::int32_t mode);

/// Records a level for each of the `length` days from `start` on and leaves the data set's current
/// date on the last of them. Returns 1, or 0 with a `PeriodEntryError`: `PeriodEntryExists`, with
/// nothing changed, when a day has a bleeding record or lies after today; one of the others when an
/// observer refused, with the days before it entered.
int AddPeriod(UserData& data, const SYSTEMTIME& start, std::int32_t length, std::int32_t mode);

class PeriodEntry;

/// Is asked before each change of a `PeriodEntry` and told after it. A can-change operation returns
/// false to refuse.
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

/// The chosen values. Every change is offered to all listeners first; one refusal is enough to
/// leave it. The end date is start + length: the first day after the period, not its last day of
/// bleeding.
class PeriodEntry {
  public:
    static constexpr int MaxListeners = 10;

    /// Ends today: start today - 5, length 5, Normal.
    PeriodEntry();
    PeriodEntry(const PeriodEntry&) = delete;
    PeriodEntry& operator=(const PeriodEntry&) = delete;
    ~PeriodEntry() = default;

    /// 0 when ten are there; a listener that is there already stays where it is (1).
    int AddListener(PeriodEntryListener& listener);
    /// The others keep their order; 0 when it is not there.
    int RemoveListener(PeriodEntryListener& listener);

    // 1 when applied or equal to the present value, 0 when refused. An equal value (for dates: the
    // same day) is not offered to anybody unless `force` is set.
    int SetStartDate(const SYSTEMTIME& date, bool force);
    int SetEndDate(const SYSTEMTIME& date, bool force);
    int SetPeriodLength(std::int32_t days, bool force);
    /// Has no listeners; refuses what is neither Normal nor Heavy.
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

/// The rules: a period has 2 to 7 days and its end is not after today; a change of one value moves
/// the others along. What is shown follows in the three operations that a derived class implements.
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
    /// After a change of start or length: both dates are to be shown.
    virtual void ShowDates(const PeriodEntry& /*entry*/) {}
    /// After a change of end or length: the length is to be shown.
    virtual void ShowPeriodLength(const PeriodEntry& /*entry*/) {}
    /// After every accepted change.
    virtual void AllowAdding() {}
};

}  // namespace lunara
