#include "dialogs/notes_dialog.h"

#include "platform/clock.h"
#include "platform/pocketpc/aygshell.h"
#include "platform/text.h"
#include "platform/window_theme.h"
#include "records/dates.h"
#include "resources/ids.h"
#include "window/data_exchange.h"

namespace lunara {
namespace {

constexpr COLORREF CrampsColor = 0x4040FF;  // red 255, green 64, blue 64
constexpr COLORREF PmsColor = 190;          // red 190
constexpr std::size_t DateEntryLength = 4;

}  // namespace

NotesDialog::NotesDialog(Window* owner) : Dialog(IDD_NOTES, owner), date(LocalNow()) {}

void NotesDialog::DoDataExchange(DataExchange& exchange) {
    ExchangeText(exchange, IDC_NOTE_TEXT, text.data(), NoteTextCapacity);
    // Typing stops at the longest text that a note can store.
    LimitText(exchange, text.data(), MaxNoteUnits);
    ExchangeCheck(exchange, IDC_CRAMPS, cramps);
    ExchangeCheck(exchange, IDC_PMS, pms);
}

BOOL NotesDialog::OnInitDialog() {
    const BOOL answer = Dialog::OnInitDialog();
    DropVisualStyle(::GetDlgItem(Handle(), IDC_CRAMPS));
    DropVisualStyle(::GetDlgItem(Handle(), IDC_PMS));
    ShowDate();
    return answer;
}

void NotesDialog::ShowDate() {
    std::array<WCHAR, 8> day{};
    FormatText(day.data(), day.size(), TEXT(" %02d"), static_cast<int>(date.wDay));
    // Such as "Mon Jan, 01".
    const WideString header = WideString(WeekdayNameWithBlank(date.wDayOfWeek), DateEntryLength)
                                  .append(MonthNameWithComma(date.wMonth), DateEntryLength)
                                  .append(day.data());
    ::SetDlgItemTextW(Handle(), IDC_NOTE_DATE, header.c_str());
}

LRESULT NotesDialog::OnColorStatic(HDC dc, HWND control) {
    // Default first: the dialog manager sets a text colour, too, which must not replace ours.
    const LRESULT brush = Default();
    switch (::GetDlgCtrlID(control)) {
        case IDC_CRAMPS:
            ::SetTextColor(dc, CrampsColor);
            break;
        case IDC_PMS:
            ::SetTextColor(dc, PmsColor);
            break;
        default:
            break;
    }
    return brush;
}

bool NotesDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (SHInputDialog(Handle(), message, wParam) != FALSE) {
        return true;
    }
    LRESULT answer = 0;
    // clang-format off
    switch (message) {
        case WM_CTLCOLORSTATIC: answer = OnColorStatic(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)); break;
        case WM_SETTINGCHANGE: SHHandleWMSettingChange(Handle(), wParam, lParam, &activation); break;
        default: return Dialog::OnMessage(message, wParam, lParam, result);
    }
    // clang-format on
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
