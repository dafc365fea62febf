#pragma once

// The dialog "Menstrual Period History": enters past periods by start date, end date or length, and
// how heavy they were. Modeless, for `RunDialog`. It posts WM_DIALOG_OK for "Add" and
// WM_DIALOG_CANCEL for "Close" to itself; the caller of `RunDialog` adds the period.

#include "diary/period_entry.h"
#include "window/dialog.h"

namespace lunara {

class HistoryDialog : public Dialog, private PeriodRules {
  public:
    explicit HistoryDialog(Window* owner = nullptr);
    HistoryDialog(const HistoryDialog&) = delete;
    HistoryDialog& operator=(const HistoryDialog&) = delete;
    ~HistoryDialog() override = default;

    /// The chosen values. May be changed at any time, also before the dialog is created; the
    /// controls follow, except for `PeriodEntry::SetBleeding` (use `SetBleeding` below).
    PeriodEntry& Entry() { return entry; }

    /// Stores `mode`, BleedingNormal or BleedingHeavy, shows it, and enables "Add". Returns 1, or 0
    /// for any other value. A `mode` that is stored already is shown again only if `force`.
    int SetBleeding(std::int32_t mode, bool force);

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    void OnDatePicked(int picker, const SYSTEMTIME& date);
    void OnSpin(HWND spin);
    void ShowDate(int picker, const SYSTEMTIME& date) const;
    /// Gives spin control `spin` the range [lowest, highest] and makes its field `edit` read-only.
    void SetUpSpin(int spin, int edit, int lowest, int highest) const;

    // PeriodRules
    void ShowDates(const PeriodEntry& changed) override;
    void ShowPeriodLength(const PeriodEntry& changed) override;
    void AllowAdding() override;

    PeriodEntry entry;
};

}  // namespace lunara
