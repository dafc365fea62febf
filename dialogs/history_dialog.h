#pragma once

// The dialog "Menstrual Period History": choosing a past period by start date, end date or length,
// and how heavy it was. It is modeless: it posts WM_DIALOG_OK for "Add" and WM_DIALOG_CANCEL for
// "Close" to itself, and the loop of its owner acts on them and adds the period.

#include "diary/period_entry.h"
#include "window/dialog.h"

namespace lunara {

class HistoryDialog : public Dialog, private PeriodRules {
  public:
    explicit HistoryDialog(Window* owner = nullptr);
    HistoryDialog(const HistoryDialog&) = delete;
    HistoryDialog& operator=(const HistoryDialog&) = delete;
    ~HistoryDialog() override = default;

    /// The chosen values. May be preset before the dialog is made and changed at any time.
    PeriodEntry& Entry() { return entry; }

    /// Stores Normal or Heavy and shows it; 0 for any other value. An equal value is shown again
    /// only with `force`.
    int SetBleeding(std::int32_t mode, bool force);

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    void OnDatePicked(int picker, const SYSTEMTIME& date);
    void OnSpin(HWND spin);
    void ShowDate(int picker, const SYSTEMTIME& date) const;
    void SetUpSpin(int spin, int edit, int lowest, int highest) const;

    // PeriodRules
    void ShowDates(const PeriodEntry& changed) override;
    void ShowPeriodLength(const PeriodEntry& changed) override;
    void AllowAdding() override;

    PeriodEntry entry;
};

}  // namespace lunara
