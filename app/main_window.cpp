#include "app/main_window.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "app/backup.h"
#include "app/commands.h"
#include "app/help.h"
#include "app/prediction_warning.h"
#include "app/saving.h"
#include "cycle/predictor.h"
#include "dialogs/history_dialog.h"
#include "platform/clock.h"
#include "platform/gdi.h"
#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/common_controls.h"
#include "platform/pocketpc/owner_name.h"
#include "platform/pocketpc/placement.h"
#include "platform/pocketpc/top_level_window.h"
#include "platform/text.h"
#include "records/dates.h"
#include "window/messages.h"
#include "window/settings.h"

namespace lunara {
namespace {

constexpr WCHAR CurrentViewValue[] = TEXT("CurrentView");
constexpr WCHAR LastUserValue[] = TEXT("LastUser");
constexpr WCHAR HelpAnchor[] = TEXT("Lunara.htm#Lunara_help");
constexpr int TitleCapacity = 128;

/// Brings `view` to the top and hides `other`. The views cover each other completely, but a covered
/// view would still be painted at every change.
void BringUp(HWND view, HWND other) {
    ::BringWindowToTop(view);
    // SWP_DEFERERASE erases the background together with painting, not in a step of its own.
    ::SetWindowPos(
        view, nullptr, 0, 0, 0, 0,
        SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_DEFERERASE);
    ::ShowWindow(other, SW_HIDE);
}

UINT LiveGdiObjectsQuery() {
    static const UINT message = ::RegisterWindowMessageW(LiveGdiObjectsMessage);
    return message;
}

}  // namespace

MainWindow::MainWindow() : graphView(data), diaryView(data), startDate(LocalNow()) {
    activation.cbSize = sizeof(activation);
    data.SetWarningSink(this);
    diaryView.AttachListener(*this);
    graphView.AttachListener(*this);
}

MainWindow::~MainWindow() {
    graphView.DetachListener(*this);
    diaryView.DetachListener(*this);
    data.SetWarningSink(nullptr);
}

int MainWindow::CreateMain() {
    std::array<WCHAR, TitleCapacity> title{};
    ::LoadStringW(AppInstance(), IDS_APP_TITLE, title.data(), TitleCapacity);
    return Create(0, FrameworkClassName, title.data(), WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                  CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr);
}

int MainWindow::PreCreateWindow(CREATESTRUCTW& parameters) {
    PrepareTopLevelWindow(parameters);
    return RegisterFrameworkClass() != 0 ? Window::PreCreateWindow(parameters) : 0;
}

// ---- Creation and end ----

LRESULT MainWindow::OnCreate() {
    if (!SetUp()) {
        // Not every system sends WM_DESTROY to the children of a window that fails WM_CREATE. The
        // bar must be detached from its object, or the next CreateMain of this object fails.
        ::DestroyWindow(menuBar.Handle());
        return -1;
    }
    // Neither branch sets `currentView`. A value from the registry that is neither view shows the
    // graph, and is written back unchanged unless the user chooses a view. Deliberate.
    if (currentView == ViewDiary) {
        graphView.SetCurrentDate(diaryView.GetCurrentDate());
        ShowDiaryView();
    } else {
        diaryView.SetCurrentDate(graphView.GetCurrentDate());
        ShowGraphView();
    }
    ::SetTimer(Handle(), DayTimerId, DayTimerPeriodMs, nullptr);
    return 0;
}

bool MainWindow::SetUp() {
    EquipTopLevelWindow(Handle(), AppInstance(), IDI_LUNARA);
    INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    ::InitCommonControlsEx(&controls);
    if (!CreateBar()) {
        return false;
    }
    ReadSettings();
    return Login(*this, User()) != 0 && CreateViews();
}

void MainWindow::OnDestroy() {
    // Free the texts of posted warnings that will never be dispatched.
    MSG message{};
    while (::PeekMessageW(&message, Handle(), WM_PREDICTION_WARNING, WM_PREDICTION_WARNING,
                          PM_REMOVE) != FALSE) {
        delete[] reinterpret_cast<WCHAR*>(message.lParam);
    }
    if (!data.IsLoaded()) {
        return;
    }
    ::KillTimer(Handle(), DayTimerId);
    WriteSettings();
    SaveBeforeExit();
    password.Wipe();
    data.Unload();
    ::PostQuitMessage(0);
}

void MainWindow::SaveBeforeExit() {
    // Without a held password nothing is unsaved, or the user chose not to save (see MayEnd).
    if (password.IsHeld()) {
        SaveWithHeldPassword(User());
    }
}

bool MainWindow::MayEnd() {
    // Ask for the password if a backup wiped it and entries were made since: they must not be
    // enciphered with the random noise that a wiped password holds.
    if (!data.IsLoaded() || !data.IsDirty() || EnsurePassword(*this, User()) != 0) {
        return true;
    }
    return ShowText(Handle(), TEXT("Leave without saving your last entries?"), CaptionWarning,
                    MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

bool MainWindow::OnClose() {
    if (!data.IsLoaded()) {
        EndSignIn();
        return true;
    }
    return !MayEnd();
}

/// Ends the program while the sign-in is up. WM_QUIT ends the sign-in's message loop, after it each
/// outer loop. Destroying the window instead would leave the sign-in's loop without a message that
/// ends it.
void MainWindow::EndSignIn() { ::PostQuitMessage(0); }

bool MainWindow::OnQueryEndSession() {
    // Ask for the password now: at WM_ENDSESSION the user may be gone.
    askedAtSessionEnd = true;
    return !data.IsLoaded() || MayEnd();
}

void MainWindow::OnEndSession(bool ending) {
    const bool asked = std::exchange(askedAtSessionEnd, false);
    if (!ending) {
        return;
    }
    if (!data.IsLoaded()) {
        EndSignIn();
        return;
    }
    if (!asked) {
        MayEnd();  // the session ends whatever the user answers
    }
    ::DestroyWindow(Handle());
}

void MainWindow::ReadSettings() {
    const Settings settings;
    if (!settings.IsOpen()) {
        // Two different defaults, on purpose: no key shows the diary, a key without the value shows
        // the graph.
        return;
    }
    DWORD view = ViewGraph;
    settings.ReadDword(CurrentViewValue, view);
    currentView = view;
    std::array<WCHAR, SettingTextCapacity> name{};
    if (settings.ReadString(LastUserValue, name.data(), SettingTextCapacity)) {
        CopyText(userName, NameCapacity, name.data());
    } else {
        CopyText(userName, NameCapacity, OwnerName());
    }
}

void MainWindow::WriteSettings() {
    Settings settings;
    settings.WriteDword(CurrentViewValue, currentView);
    settings.WriteString(LastUserValue, userName);
}

// ---- Messages ----

void MainWindow::OnPaint() {
    const PaintScope paint(Handle());
    RECT client{};
    ::GetClientRect(Handle(), &client);
    std::array<WCHAR, TitleCapacity> title{};
    ::GetWindowTextW(Handle(), title.data(), TitleCapacity);
    ::DrawTextW(paint.Dc(), title.data(), -1, &client, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

void MainWindow::OnEraseBackground(HDC dc) {
    RECT client{};
    ::GetClientRect(Handle(), &client);
    ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
}

void MainWindow::OnSize() {
    if (::IsIconic(Handle()) != FALSE) {
        return;
    }
    const RECT area = ViewArea();
    for (const HWND view : {graphView.Handle(), diaryView.Handle()}) {
        if (view != nullptr) {
            PutAt(view, area);
        }
    }
}

void MainWindow::OnHelp(WPARAM wParam, LPARAM lParam) {
    switch (currentView) {
        case ViewDiary:
            ::SendMessageW(diaryView.Handle(), WM_HELP, wParam, lParam);
            break;
        case ViewGraph:
            ::SendMessageW(graphView.Handle(), WM_HELP, wParam, lParam);
            break;
        default:
            Help();
            break;
    }
}

void MainWindow::OnTimer(UINT_PTR timer) {
    // `startDate` is never moved forward: from the first midnight on, the views are refreshed every
    // minute. UpdatePrediction returns at once unless the day or a record has changed.
    if (timer == DayTimerId && DaysBetween(LocalNow(), startDate) != 0) {
        UpdatePrediction(data, 0);
        RefreshViews();
    }
}

bool MainWindow::OnCommand(UINT id) {
    const Command* command = CommandTable::Find(id);
    if (command == nullptr) {
        return false;
    }
    (this->*command->run)();
    return true;
}

// ---- Commands ----

void MainWindow::Exit() {
    const HWND self = Handle();
    ::SendMessageW(self, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(self));
    ::SendMessageW(self, WM_CLOSE, 0, 0);
}

void MainWindow::About() {
    const DialogScope scope(*this);
    Dialog about(IDD_ABOUT, this);
    about.DoModal();
}

void MainWindow::ViewDiaryCommand() {
    HideButtons();
    ShowDiaryView();
    currentView = ViewDiary;
}

void MainWindow::ViewGraphCommand() {
    HideButtons();
    ShowGraphView();
    currentView = ViewGraph;
}

void MainWindow::ToggleNotes() { ToggleInDiary(IDM_SHOW_NOTES, &DiaryView::SetShowNotes); }

void MainWindow::ToggleBleeding() {
    if (currentView == ViewDiary) {
        ToggleInDiary(IDM_SHOW_BLEEDING, &DiaryView::SetShowBleeding);
    } else if (currentView == ViewGraph) {
        ToggleInGraph(IDM_SHOW_BLEEDING, &GraphView::SetShowBleeding);
    }
}

void MainWindow::TogglePeriod() { ToggleInDiary(IDM_SHOW_PERIOD, &DiaryView::SetShowPeriod); }

void MainWindow::ToggleOvulation() {
    ToggleInDiary(IDM_SHOW_OVULATION, &DiaryView::SetShowOvulation);
}

void MainWindow::TogglePregnancy() {
    ToggleInDiary(IDM_SHOW_PREGNANCY, &DiaryView::SetShowPregnancy);
}

void MainWindow::ToggleTemperature() {
    ToggleInGraph(IDM_SHOW_TEMPERATURE, &GraphView::SetShowTemperature);
}

void MainWindow::ChangePasswordCommand() { ChangePassword(*this, User()); }

void MainWindow::HistoryCommand() {
    HistoryDialog dialog(this);
    SYSTEMTIME current{};
    data.GetCurrentDate(current);
    dialog.Entry().SetStartDate(current, false);
    dialog.Entry().SetPeriodLength(DefaultPeriodLength, false);
    dialog.SetBleeding(BleedingNormal, false);
    const auto add = [this, &dialog] {
        const PeriodEntry& entry = dialog.Entry();
        if (AddPeriod(data, entry.GetStartDate(), entry.GetPeriodLength(), entry.GetBleeding()) ==
            0) {
            const DWORD error = ::GetLastError();
            ShowMessage(dialog.Handle(), error, CaptionWarning, MB_ICONEXCLAMATION);
        }
        return false;  // keeps the dialog open for further periods
    };
    RunDialog(*this, dialog, IDD_HISTORY, add, [this] {
        UpdatePrediction(data, 1);
        RefreshViews();
    });
}

void MainWindow::BackupCommand() { Backup(*this, User()); }

void MainWindow::RestoreCommand() {
    if (Restore(*this, User()) == 0) {
        return;
    }
    UpdatePrediction(data, currentView == ViewDiary ? 1 : 0);
    diaryView.Reload();
    graphView.Reload();
}

void MainWindow::RefreshViews() {
    diaryView.Refresh();
    graphView.Refresh();
}

void MainWindow::Help() { StartHelp(HelpAnchor); }

// ---- Views ----

RECT MainWindow::ViewArea() const {
    RECT area{};
    ::GetClientRect(Handle(), &area);
    RECT bar{};
    ::GetWindowRect(menuBar.Handle(), &bar);
    area.bottom = std::max<LONG>(0, area.bottom - (bar.bottom - bar.top));
    return area;
}

bool MainWindow::CreateViews() {
    // WS_CLIPSIBLINGS, because both views fill the same area. No WS_VISIBLE: BringUp shows one of
    // them when both are complete, so that nothing is painted before that.
    constexpr DWORD Style = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
    const RECT area = ViewArea();
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    return diaryView.Create(0, nullptr, TEXT("Diary view"), Style, area.left, area.top, width,
                            height, Handle(), nullptr) != 0 &&
           graphView.Create(0, nullptr, TEXT("Graph view"), Style, area.left, area.top, width,
                            height, Handle(), nullptr) != 0;
}

void MainWindow::ShowDiaryView() {
    UpdatePrediction(data, 1);
    diaryView.SetCurrentDate(graphView.GetCurrentDate());
    BringUp(diaryView.Handle(), graphView.Handle());
    diaryView.Refresh();
    CheckView(IDM_VIEW_DIARY, IDM_VIEW_GRAPH);
    SetUpButtons(ViewDiary, diaryView.GetShowFlags());
}

void MainWindow::ShowGraphView() {
    graphView.SetCurrentDate(diaryView.GetCurrentDate());
    BringUp(graphView.Handle(), diaryView.Handle());
    CheckView(IDM_VIEW_GRAPH, IDM_VIEW_DIARY);
    SetUpButtons(ViewGraph, graphView.GetShowFlags());
}

void MainWindow::ToggleInDiary(UINT command, std::uint32_t (DiaryView::*setter)(bool)) {
    const std::uint32_t flag = CommandTable::Find(command)->diaryFlag;
    (diaryView.*setter)((diaryView.GetShowFlags() & flag) == 0);
    // The toolbar has toggled the tapped button already. Set it to what the view really shows,
    // because the view may have refused the change.
    CheckButton(command, (diaryView.GetShowFlags() & flag) != 0);
}

void MainWindow::ToggleInGraph(UINT command, void (GraphView::*setter)(bool)) {
    const std::uint32_t flag = CommandTable::Find(command)->graphFlag;
    (graphView.*setter)((graphView.GetShowFlags() & flag) == 0);
    CheckButton(command, (graphView.GetShowFlags() & flag) != 0);
}

// ---- What the core reports ----

void MainWindow::PostPredictionWarning(const WCHAR* text) {
    const std::size_t size = WideView(text).size() + 1;
    auto copy = std::make_unique<WCHAR[]>(size);
    CopyText(copy.get(), size, text);
    if (::PostMessageW(Handle(), WM_PREDICTION_WARNING, MB_OK,
                       reinterpret_cast<LPARAM>(copy.get())) != FALSE) {
        static_cast<void>(copy.release());  // the handler frees it
    }
}

// ---- Message switch ----

bool MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT answer = 0;
    // clang-format off
    switch (message) {
        case WM_CREATE: answer = OnCreate(); break;
        case WM_DESTROY: OnDestroy(); break;
        case WM_PAINT: OnPaint(); break;
        case WM_ERASEBKGND: OnEraseBackground(reinterpret_cast<HDC>(wParam)); answer = 1; break;
        case WM_SIZE: OnSize(); break;
        case WM_SETTINGCHANGE: SHHandleWMSettingChange(Handle(), wParam, lParam, &activation); break;
        case WM_HELP: OnHelp(wParam, lParam); break;
        case WM_TIMER: OnTimer(wParam); break;
        case WM_CLOSE: if (!OnClose()) { return false; } break;
        case WM_QUERYENDSESSION: answer = OnQueryEndSession() ? TRUE : FALSE; break;
        case WM_ENDSESSION: OnEndSession(wParam != FALSE); break;
        case WM_ENTERDIALOG: HideButtons(); break;
        case WM_EXITDIALOG: ShowButtons(); break;
        case WM_PREDICTION_WARNING:
            ShowPredictionWarning(data, reinterpret_cast<WCHAR*>(lParam), static_cast<UINT>(wParam));
            break;
        case WM_COMMAND: if (!OnCommand(LOWORD(wParam))) { return false; } break;
        default:
            // Not a case: RegisterWindowMessageW assigns the number at run time.
            if (message != LiveGdiObjectsQuery()) {
                return false;
            }
            answer = 1 + LiveGdiObjects();
            break;
    }
    // clang-format on
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
