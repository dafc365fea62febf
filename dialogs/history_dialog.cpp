#include "dialogs/history_dialog.h"

#include <array>

#include "platform/pocketpc/common_controls.h"
#include "platform/text.h"
#include "resources/ids.h"

namespace lunara {
namespace {

constexpr WCHAR NormalText[] = TEXT("Normal");
constexpr WCHAR HeavyText[] = TEXT("Heavy");

}  // namespace

HistoryDialog::HistoryDialog(Window* owner) : Dialog(IDD_HISTORY, owner) {
    entry.AddListener(*this);
}

BOOL HistoryDialog::OnInitDialog() {
    const BOOL result = Dialog::OnInitDialog();
    ShowDates(entry);
    SetUpSpin(IDC_PERIOD_LENGTH_SPIN, IDC_PERIOD_LENGTH, ShortestPeriod, LongestPeriod);
    ShowPeriodLength(entry);
    SetUpSpin(IDC_BLEEDING_SPIN, IDC_BLEEDING, BleedingNormal, BleedingHeavy);
    SetBleeding(entry.GetBleeding(), true);
    return result;
}

void HistoryDialog::SetUpSpin(int spin, int edit, int lowest, int highest) const {
    ::SendDlgItemMessageW(Handle(), spin, UDM_SETRANGE, 0, MAKELPARAM(highest, lowest));
    ::SendDlgItemMessageW(Handle(), edit, EM_SETREADONLY, TRUE, 0);
}

void HistoryDialog::OnOK() {
    // Disable "Add" until the next accepted change (AllowAdding), so that a double tap does not add
    // the same period twice. Move the focus first: a disabled button must not keep it.
    ::SetFocus(::GetDlgItem(Handle(), IDC_START_DATE));
    ::EnableWindow(::GetDlgItem(Handle(), IDOK), FALSE);
    ::PostMessageW(Handle(), WM_DIALOG_OK, 0, 0);
}

void HistoryDialog::OnCancel() { ::PostMessageW(Handle(), WM_DIALOG_CANCEL, 0, 0); }

int HistoryDialog::SetBleeding(std::int32_t mode, bool force) {
    if (!force && mode == entry.GetBleeding()) {
        return 1;
    }
    if (entry.SetBleeding(mode) == 0) {
        return 0;
    }
    if (Handle() != nullptr) {
        ::SetDlgItemTextW(Handle(), IDC_BLEEDING, mode == BleedingHeavy ? HeavyText : NormalText);
        ::SendDlgItemMessageW(Handle(), IDC_BLEEDING_SPIN, UDM_SETPOS, 0, mode);
        AllowAdding();
    }
    return 1;
}

void HistoryDialog::OnDatePicked(int picker, const SYSTEMTIME& date) {
    SYSTEMTIME day = date;
    AddDays(date, 0, day);  // sets wDayOfWeek, which IsSameDay compares, too
    if (picker == IDC_START_DATE) {
        if (entry.SetStartDate(day, false) == 0) {
            ShowDate(picker, entry.GetStartDate());
        }
    } else if (entry.SetEndDate(day, false) == 0) {
        ShowDate(picker, entry.GetEndDate());
    }
}

void HistoryDialog::OnSpin(HWND spin) {
    const auto position = static_cast<short>(LOWORD(::SendMessageW(spin, UDM_GETPOS, 0, 0)));
    if (spin == ::GetDlgItem(Handle(), IDC_PERIOD_LENGTH_SPIN)) {
        if (entry.SetPeriodLength(position, false) == 0) {
            ShowPeriodLength(entry);
        }
    } else if (spin == ::GetDlgItem(Handle(), IDC_BLEEDING_SPIN)) {
        SetBleeding(position, false);
    }
}

void HistoryDialog::ShowDate(int picker, const SYSTEMTIME& date) const {
    ::SendDlgItemMessageW(Handle(), picker, DTM_SETSYSTEMTIME, GDT_VALID,
                          reinterpret_cast<LPARAM>(&date));
}

void HistoryDialog::ShowDates(const PeriodEntry& changed) {
    if (Handle() != nullptr) {
        ShowDate(IDC_START_DATE, changed.GetStartDate());
        ShowDate(IDC_END_DATE, changed.GetEndDate());
    }
}

void HistoryDialog::ShowPeriodLength(const PeriodEntry& changed) {
    if (Handle() == nullptr) {
        return;
    }
    std::array<WCHAR, 16> text{};
    FormatText(text.data(), text.size(), TEXT("%d"), int{changed.GetPeriodLength()});
    ::SetDlgItemTextW(Handle(), IDC_PERIOD_LENGTH, text.data());
    ::SendDlgItemMessageW(Handle(), IDC_PERIOD_LENGTH_SPIN, UDM_SETPOS, 0,
                          changed.GetPeriodLength());
}

void HistoryDialog::AllowAdding() {
    if (Handle() != nullptr) {
        ::EnableWindow(::GetDlgItem(Handle(), IDOK), TRUE);
    }
}

bool HistoryDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    switch (message) {
        case WM_NOTIFY: {
            const auto* change = reinterpret_cast<const NMDATETIMECHANGE*>(lParam);
            if (change->nmhdr.code != DTN_DATETIMECHANGE) {
                return false;
            }
            if (change->dwFlags == GDT_VALID) {
                OnDatePicked(static_cast<int>(change->nmhdr.idFrom), change->st);
            }
            break;
        }
        case WM_VSCROLL:
            OnSpin(reinterpret_cast<HWND>(lParam));
            break;
        default:
            return Dialog::OnMessage(message, wParam, lParam, result);
    }
    if (result != nullptr) {
        *result = 0;
    }
    return true;
}

}  // namespace lunara
