#include "views/diary_view.h"

#include <algorithm>
#include <memory>

#include "dialogs/notes_dialog.h"
#include "diary/user_data.h"
#include "platform/clock.h"
#include "platform/pocketpc/placement.h"
#include "platform/text.h"
#include "records/dates.h"
#include "views/month_colors.h"
#include "views/view_children.h"
#include "window/settings.h"

namespace lunara {
namespace {

constexpr WCHAR ShowFlagsSetting[] = TEXT("DiaryView_ShowFlags");
constexpr WCHAR HelpAnchor[] = TEXT("Lunara.htm#_Calendar_diary");
constexpr std::int32_t DaysShown = 20;
constexpr std::int32_t DaysBeforeCurrent = 10;

/// The width of a two-digit day number beside cells of `cellSize` px.
LONG NumberWidth(HDC dc, LONG cellSize) {
    const Font font = MakeStripFont(dc, cellSize, 0);
    const SelectScope selected(dc, font.Get());
    SIZE size{};
    ::GetTextExtentPoint32W(dc, TEXT("00"), 2, &size);
    return size.cx;
}

}  // namespace

DiaryView::DiaryView(UserData& userData) : data(userData), scroll(calendar) {}

DiaryView::~DiaryView() { data.DetachObserver(*this); }

// ---- Items shown ----

std::uint32_t DiaryView::SetShowNotes(bool isShown) {
    return SetShown(DiaryShowNotes, isShown, &DiaryListener::NotesShownChanged);
}

std::uint32_t DiaryView::SetShowBleeding(bool isShown) {
    return SetShown(DiaryShowBleeding, isShown, &DiaryListener::BleedingShownChanged);
}

std::uint32_t DiaryView::SetShowPeriod(bool isShown) {
    return SetShown(DiaryShowPeriod, isShown, &DiaryListener::PeriodShownChanged);
}

std::uint32_t DiaryView::SetShowOvulation(bool isShown) {
    return SetShown(DiaryShowOvulation, isShown, &DiaryListener::OvulationShownChanged);
}

std::uint32_t DiaryView::SetShowPregnancy(bool isShown) {
    return SetShown(DiaryShowPregnancy, isShown, &DiaryListener::PregnancyShownChanged);
}

std::uint32_t DiaryView::SetShown(DiaryShowFlag item, bool isShown, ListenerCall changed) {
    const bool wasShown = (showFlags & item) != 0;
    if (isShown == wasShown) {
        return showFlags;
    }
    const std::uint32_t wanted = isShown ? showFlags | item : showFlags & ~item;
    if (wanted == 0) {
        return 0;
    }
    showFlags = wanted;
    ShowMeasures();
    // By index: a listener may attach another one from inside its handler.
    for (std::size_t index = 0; index < listeners.size(); ++index) {
        (listeners[index]->*changed)(isShown);
    }
    return showFlags;
}

void DiaryView::AttachListener(DiaryListener& listener) { listeners.push_back(&listener); }

void DiaryView::DetachListener(DiaryListener& listener) {
    listeners.erase(std::remove(listeners.begin(), listeners.end(), &listener), listeners.end());
}

void DiaryView::ReadShowFlags() {
    const Settings settings;
    DWORD stored = 0;
    // A stored value without any item is ignored: the program never writes one, and the diary would
    // be empty.
    if (settings.ReadDword(ShowFlagsSetting, stored) && (stored & AllDiaryItems) != 0) {
        showFlags = stored & AllDiaryItems;
    }
}

void DiaryView::WriteShowFlags() const {
    Settings settings;
    settings.WriteDword(ShowFlagsSetting, showFlags);
}

// ---- Dates and scrolling ----

SYSTEMTIME DiaryView::GetCurrentDate() const {
    SYSTEMTIME date{};
    data.GetCurrentDate(date);
    return date;
}

void DiaryView::SetCurrentDate(const SYSTEMTIME& date) {
    if (data.SetCurrentDate(date) != 0) {
        // DateChanged is not called when `date` is the current date already, but the diary may have
        // been scrolled away from it.
        BringIntoView(GetCurrentDate());
    }
}

void DiaryView::BringIntoView(const SYSTEMTIME& date) {
    if (Handle() == nullptr || calendar.IsDateShown(date)) {
        return;
    }
    SetStart(StartToShow(date, scroll.Start(), Rows()));
}

std::int32_t DiaryView::Rows() const {
    RECT client{};
    ::GetClientRect(agenda.Handle(), &client);
    return RowsToFill(Height(client), rowHeight);
}

bool DiaryView::HasWholeRow(const SYSTEMTIME& date) const {
    RECT client{};
    ::GetClientRect(agenda.Handle(), &client);
    const std::int32_t row = DaysBetween(date, scroll.Start());
    return row >= 0 && (row + 1) * LONG{rowHeight} <= Height(client);
}

void DiaryView::SetStart(const SYSTEMTIME& newStart) {
    if (scroll.MoveTo(newStart)) {
        agenda.Invalidate(false);
    }
}

void DiaryView::ResetScroll() {
    scroll.Reset(data);
    SYSTEMTIME start{};
    AddDays(GetCurrentDate(), -DaysBeforeCurrent, start);
    SetStart(start);
}

void DiaryView::Refresh() {
    if (Handle() != nullptr) {
        calendar.Invalidate(false);
        agenda.Invalidate(false);
    }
}

void DiaryView::Reload() {
    if (Handle() != nullptr) {
        ResetScroll();
        Refresh();
    }
}

void DiaryView::DateChanged(UserData&, const SYSTEMTIME&, const SYSTEMTIME& current) {
    BringIntoView(current);
}

void DiaryView::BleedingChanged(UserData&, std::int32_t) { agenda.Invalidate(false); }

void DiaryView::NoteFlagsChanged(UserData&, std::int32_t) { agenda.Invalidate(false); }

void DiaryView::NoteTextChanged(UserData&, const WCHAR*) { agenda.Invalidate(false); }

// ---- Creation and layout ----

DiaryLayout DiaryView::ClientLayout() const {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    const MeasuringDc dc;
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc.Dc(), &metrics);
    const std::int32_t days = FittingDayCount(Height(client), DaysShown);
    const LONG cellSize = days < 1 ? 0 : Height(client) / days;
    return LayOutDiary(client, ::GetSystemMetrics(SM_CXVSCROLL),
                       CalendarWidth(metrics.tmHeight, cellSize,
                                     cellSize < 1 ? 0 : NumberWidth(dc.Dc(), cellSize)));
}

bool DiaryView::CreateChildren() {
    const DiaryLayout layout = ClientLayout();
    scroll.SetBar(CreateSystemControl(TEXT("scrollbar"), 0, SBS_VERT, layout.scrollBar, Handle(),
                                      ScrollBarId));
    return scroll.Bar() != nullptr &&
           CreateControl(calendar, nullptr, CCS_VERTICAL, layout.calendar, Handle(), CalendarId) &&
           CreateControl(agenda, nullptr, 0, layout.agenda, Handle(), AgendaId);
}

void DiaryView::FitCells() {
    ::SendMessageW(calendar.Handle(), CCM_SETDAYCOUNT, DaysShown, 0);
    CalendarHitTest top{};
    ::SendMessageW(calendar.Handle(), CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&top));
    rowHeight = Height(top.cell);
}

void DiaryView::ShowMeasures() {
    // Item cells are square: their width is the height of a row.
    if (agenda.Handle() != nullptr) {
        ::SendMessageW(agenda.Handle(), AGM_SETMEASURES,
                       static_cast<WPARAM>(CountDiaryItems(showFlags)), rowHeight);
    }
}

LRESULT DiaryView::OnCreate() {
    if (!CreateChildren()) {
        return -1;
    }
    data.AttachObserver(*this);
    FitCells();
    ReadShowFlags();
    ShowMeasures();
    ResetScroll();
    forecastMark = LoadBitmapResource(PictureForecast);
    recordedMark = LoadBitmapResource(PictureRecorded);
    discardedMark = LoadBitmapResource(PictureDiscarded);
    noteMark = LoadBitmapResource(PictureNote);
    return 0;
}

void DiaryView::OnSize() {
    if (agenda.Handle() == nullptr) {
        return;
    }
    const bool wasShown = HasWholeRow(GetCurrentDate());
    const DiaryLayout layout = ClientLayout();
    PutAt(scroll.Bar(), layout.scrollBar);
    PutAt(calendar.Handle(), layout.calendar);
    PutAt(agenda.Handle(), layout.agenda);
    FitCells();
    ShowMeasures();
    if (wasShown && !HasWholeRow(GetCurrentDate())) {
        SetStart(StartToShow(GetCurrentDate(), scroll.Start(), Rows()));
    }
}

void DiaryView::OnDestroy() {
    WriteShowFlags();
    data.DetachObserver(*this);
    forecastMark.Reset();
    recordedMark.Reset();
    discardedMark.Reset();
    noteMark.Reset();
    scroll.SetBar(nullptr);
}

void DiaryView::OnPaint() {
    const PaintScope paint(Handle());
    RECT client{};
    ::GetClientRect(Handle(), &client);
    std::array<WCHAR, 64> title{};
    const int length = ::GetWindowTextW(Handle(), title.data(), static_cast<int>(title.size()));
    ::DrawTextW(paint.Dc(), title.data(), length, &client, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

void DiaryView::OnEraseBackground(HDC dc) const {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
}

// ---- Rows and taps ----

HBITMAP DiaryView::Picture(DiaryPicture id) const {
    switch (id) {
        case PictureForecast:
            return forecastMark.Get();
        case PictureRecorded:
            return recordedMark.Get();
        case PictureDiscarded:
            return discardedMark.Get();
        case PictureNote:
            return noteMark.Get();
        case NoPicture:
            break;
    }
    return nullptr;
}

void DiaryView::OnGetRow(AgendaRowRequest& request) {
    request.rowHeight = static_cast<std::int32_t>(rowHeight);
    SYSTEMTIME day{};
    AddDays(scroll.Start(), request.rowIndex, day);
    const DiaryRow row = FillDiaryRow(data, showFlags, day, LocalNow());
    const auto count =
        std::min<std::size_t>(row.cells.size(), static_cast<std::size_t>(request.lineCount));
    for (std::size_t k = 0; k < count; ++k) {
        const DiaryCell& cell = row.cells[k];
        request.Items()[k] = {cell.color, Picture(cell.bitmap), Picture(cell.overlay)};
    }
    CopyText(request.text, AgendaTextCapacity, row.text.data());
}

void DiaryView::OnTap(POINT point) {
    AgendaHitTest item{point, 0};
    const LRESULT area =
        ::SendMessageW(agenda.Handle(), AGM_HITTEST, 0, reinterpret_cast<LPARAM>(&item));
    if (area != AgendaItemCell) {
        return;
    }
    // Agenda rows line up with calendar cells, so the calendar's hit test gives the day for the y
    // of a point in the agenda.
    CalendarHitTest day{};
    day.pt = point;
    ::SendMessageW(calendar.Handle(), CCM_HITTEST, 0, reinterpret_cast<LPARAM>(&day));
    if (DiaryItemAt(showFlags, item.line) == DiaryShowNotes) {
        EditNote(day.date);
    }
}

void DiaryView::EditNote(const SYSTEMTIME& date) {
    NotesDialog dialog;
    dialog.date = date;
    const std::int32_t flags = data.GetNoteFlags(&date);
    dialog.cramps = flags & NoteFlagCramps;
    dialog.pms = (flags & NoteFlagPms) / NoteFlagPms;
    bool isWhole = true;
    if (const std::unique_ptr<WCHAR[]> text(data.GetNoteText(&date)); text) {
        CopyText(dialog.text.data(), dialog.text.size(), text.get());
        isWhole = WideView(text.get()).size() < dialog.text.size();
    }
    const INT_PTR endCode = dialog.DoModal();
    if (endCode == IDOK) {
        data.SetNoteFlags(dialog.cramps | dialog.pms * NoteFlagPms, &date);
    }
    // Stores the text after Cancel as well: the field still holds what was read, so the note stays
    // as it is. Not so a note longer than the dialog holds: storing the part read would cut it off.
    if (endCode == IDOK || (endCode == IDCANCEL && isWhole)) {
        data.SetNoteText(dialog.text.data(), &date);
    }
}

void DiaryView::OnHelp() {
    for (std::size_t index = 0; index < listeners.size(); ++index) {
        listeners[index]->HelpRequested(HelpAnchor);
    }
}

bool DiaryView::OnNotify(NMHDR& record, LRESULT& answer) {
    if (record.idFrom == AgendaId && record.code == AGN_GETROW) {
        OnGetRow(reinterpret_cast<AgendaRowRequest&>(record));
        answer = 1;
        return true;
    }
    if (record.idFrom == AgendaId && record.code == AGN_TAP) {
        OnTap(reinterpret_cast<AgendaTap&>(record).pt);
        answer = 0;
        return true;
    }
    if (record.idFrom == CalendarId && record.code == CCN_GETMONTHCOLOR) {
        auto& request = reinterpret_cast<CalendarMonthColor&>(record);
        request.color = MonthColor(request.date.wMonth);
        answer = 1;
        return true;
    }
    return false;
}

int DiaryView::PreCreateWindow(CREATESTRUCTW& parameters) {
    // Keeps the children out of erasing and painting, or they would flicker.
    parameters.style |= static_cast<LONG>(WS_CLIPCHILDREN);
    return Window::PreCreateWindow(parameters);
}

bool DiaryView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT answer = 0;
    // clang-format off
    switch (message) {
        case WM_CREATE: answer = OnCreate(); break;
        case WM_DESTROY: OnDestroy(); break;
        case WM_PAINT: OnPaint(); break;
        case WM_ERASEBKGND: OnEraseBackground(reinterpret_cast<HDC>(wParam)); answer = 1; break;
        case WM_SIZE: OnSize(); break;
        case WM_VSCROLL: SetStart(scroll.AskedStart(LOWORD(wParam))); break;
        case WM_HELP: OnHelp(); break;
        case WM_NOTIFY:
            if (!OnNotify(*reinterpret_cast<NMHDR*>(lParam), answer)) {
                return Window::OnMessage(message, wParam, lParam, result);
            }
            break;
        default: return Window::OnMessage(message, wParam, lParam, result);
    }
    // clang-format on
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
