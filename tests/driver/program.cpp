#include "tests/driver/program.h"

#include <commctrl.h>

#include <cstddef>
#include <cstring>

#include "tests/driver/failure.h"
#include "tests/driver/input.h"
#include "tests/driver/wait.h"
#include "tests/driver/window_search.h"

namespace lunara::test {
namespace {

/// The record of AGN_GETROW, with which the agenda asks its parent for a row: a copy of the layout
/// of AgendaRowRequest (views/agenda_ctrl.h) and the items behind it.
struct RowRequest {
    NMHDR header;
    std::int32_t index;
    std::int32_t height;
    std::array<WCHAR, 128> text;
    std::int32_t count;
    std::array<Row::Cell, 5> cells;
};

constexpr UINT CalendarHitTest = WM_USER + 3;

constexpr WCHAR DialogClass[] = L"#32770";
constexpr DWORD FocusPatienceMs = 5000;  // a dialog of a background program never gets the focus

}  // namespace

Program::~Program() {
    Kill();
    visitor.reset();
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

bool Program::Fail(const std::wstring& what) {
    const HWND dialog = FindAnyDialog();
    std::wstring text = what;
    if (!IsRunning()) {
        text += L" (the program has ended)";
    }
    if (dialog != nullptr) {
        text += L"; there is \"" + TextOf(dialog) + L"\": " + BoxText(dialog);
    }
    ReportFailure(ToUtf8(text));
    Keep(L"failed");
    return false;
}

// ---- The process ----

bool Program::Start(WORD showCommand) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = showCommand;
    std::wstring command = L"\"" + folder.Program() + L"\"";
    if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                         folder.Path().c_str(), &startup, &process) == 0) {
        return Fail(L"the program does not start");
    }
    return true;
}

bool Program::IsRunning() const {
    return process.hProcess != nullptr &&
           ::WaitForSingleObject(process.hProcess, 0) == WAIT_TIMEOUT;
}

bool Program::WaitForEnd() {
    if (::WaitForSingleObject(process.hProcess, PatienceMs) != WAIT_OBJECT_0) {
        return Fail(L"the program does not end");
    }
    return true;
}

DWORD Program::ExitCode() const {
    DWORD code = 0;
    ::GetExitCodeProcess(process.hProcess, &code);
    return code;
}

void Program::Kill() {
    if (IsRunning()) {
        ::TerminateProcess(process.hProcess, 99);
        ::WaitForSingleObject(process.hProcess, PatienceMs);
    }
}

// ---- Windows ----

HWND Program::FindMain() const {
    return FindTopLevel(process.dwProcessId, MainClass, MainTitle, false);
}

HWND Program::FindDialog(const WCHAR* title) const {
    return FindTopLevel(process.dwProcessId, DialogClass, title, true);
}

HWND Program::FindAnyDialog() const { return FindDialog(nullptr); }

HWND Program::WaitForDialog(const WCHAR* title) {
    HWND dialog = nullptr;
    const bool came = WaitFor([&] {
        dialog = FindDialog(title);
        return dialog != nullptr || !IsRunning();
    });
    if (!came || dialog == nullptr) {
        Fail(std::wstring(L"no dialog \"") + title + L"\"");
        return nullptr;
    }
    // Taking the focus is the last step of a dialog's creation; a click before it is lost.
    WaitFor([dialog] { return HasFocus(dialog); }, FocusPatienceMs);
    return dialog;
}

bool Program::WaitForNoDialog(const WCHAR* title) {
    if (!WaitFor([&] { return FindDialog(title) == nullptr; })) {
        return Fail(std::wstring(L"the dialog \"") + title + L"\" stays");
    }
    return true;
}

HWND Program::FindView(const WCHAR* title) const {
    return FindChild(main, process.dwProcessId, MainClass, title);
}

bool Program::IsOnTop(HWND view) const {
    HWND window = ::GetWindow(main, GW_CHILD);
    while (window != nullptr && window != Diary() && window != Graph()) {
        window = ::GetWindow(window, GW_HWNDNEXT);
    }
    return view != nullptr && window == view;
}

HWND Program::MenuBar() const {
    return FindChild(main, process.dwProcessId, TOOLBARCLASSNAMEW, nullptr);
}

// ---- Input ----

std::wstring Program::TextOf(HWND window) {
    std::array<WCHAR, 1024> text{};
    DWORD_PTR length = 0;
    ::SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                          SMTO_NORMAL, PatienceMs, &length);
    return {text.data(), length};
}

void Program::SetTextOf(HWND window, const std::wstring& text) {
    ::SendMessageTimeoutW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()),
                          SMTO_NORMAL, PatienceMs, nullptr);
}

std::wstring Program::BoxText(HWND box) {
    std::wstring text;
    for (HWND child = ::GetWindow(box, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (HasClass(child, L"static")) {
            text += TextOf(child);
        }
    }
    return text;
}

bool Program::WaitUntilUncovered(HWND window, POINT client, POINT& screen) {
    if (!WaitFor([&] {
            screen = client;
            ::ClientToScreen(window, &screen);
            const HWND above = ::WindowFromPoint(screen);
            if (above == main && ::IsWindowEnabled(main) == 0) {
                // After a dialog and its owner were dragged together, Wine's z-order may have the
                // owner on top although the screen shows the dialog.
                ::SetWindowPos(::GetAncestor(window, GA_ROOT), HWND_TOP, 0, 0, 0, 0,
                               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
            }
            return above == window;
        })) {
        std::array<WCHAR, 64> above{};
        ::GetClassNameW(::WindowFromPoint(screen), above.data(), static_cast<int>(above.size()));
        return Fail(std::wstring(L"what is to be clicked is covered by a ") + above.data());
    }
    return true;
}

bool Program::ClickAt(HWND window, POINT client) {
    POINT screen{};
    return WaitUntilUncovered(window, client, screen) && PutPointer(screen) && ClickScreen(screen);
}

bool Program::PutPointer(POINT screen) {
    // The display moves its own pointer after ours and reports that as a mouse move some time
    // later. Between press and release such a move would take the click away from the window, so
    // that the position has to be right several times in a row.
    constexpr int Alike = 4;
    INPUT move = MouseInput(0, screen);
    int alike = 0;
    if (!WaitFor([&] {
            POINT pointer{};
            if (::GetCursorPos(&pointer) == 0 || pointer.x != screen.x || pointer.y != screen.y) {
                ::SendInput(1, &move, sizeof move);
                alike = 0;
                return false;
            }
            return ++alike == Alike;
        })) {
        return Fail(L"the pointer does not stay where it is put");
    }
    return true;
}

bool Program::ClickScreen(POINT screen) {
    std::array<INPUT, 2> inputs = {MouseInput(MOUSEEVENTF_LEFTDOWN, screen),
                                   MouseInput(MOUSEEVENTF_LEFTUP, screen)};
    return ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) ==
           inputs.size();
}

bool Program::Drag(HWND window, POINT from, POINT to, const std::function<void()>& held) {
    POINT start{};
    if (!WaitUntilUncovered(window, from, start)) {
        return false;
    }
    ::ClientToScreen(window, &to);
    const auto send = [](INPUT input) { return ::SendInput(1, &input, sizeof input) == 1; };
    // The display moves its own pointer after ours and reports that as a mouse move some time
    // later. Settling after each step keeps a late report from coming between the last move and the
    // release, where it would drag the window back to the start.
    if (!send(MouseInput(MOUSEEVENTF_LEFTDOWN, start)) || !Settle() || !send(MouseInput(0, to)) ||
        !Settle()) {
        return false;
    }
    held();
    return send(MouseInput(MOUSEEVENTF_LEFTUP, to));
}

POINT Program::ThumbCentre() const {
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    SendRecord(ScrollBar(), SBM_GETSCROLLBARINFO, 0, &info, sizeof info);
    RECT bar{};
    ::GetClientRect(ScrollBar(), &bar);
    return {bar.right / 2, (info.xyThumbTop + info.xyThumbBottom) / 2};
}

bool Program::Click(HWND window) {
    RECT client{};
    if (window == nullptr || ::GetClientRect(window, &client) == 0) {
        return Fail(L"nothing to click");
    }
    return ClickAt(window, {client.right / 2, client.bottom / 2});
}

void Program::Press(WORD key, bool control) {
    std::vector<INPUT> inputs;
    if (control) {
        inputs.push_back(KeyInput(VK_CONTROL, 0, 0));
    }
    inputs.push_back(KeyInput(key, 0, 0));
    inputs.push_back(KeyInput(key, 0, KEYEVENTF_KEYUP));
    if (control) {
        inputs.push_back(KeyInput(VK_CONTROL, 0, KEYEVENTF_KEYUP));
    }
    ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void Program::Type(const std::wstring& text) {
    for (const WCHAR unit : text) {
        std::array<INPUT, 2> inputs = {KeyInput(0, unit, KEYEVENTF_UNICODE),
                                       KeyInput(0, unit, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP)};
        ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    }
}

bool Program::Leave(HWND dialog, int button) {
    // A click before the display has put the dialog in place may reach the window below it.
    constexpr int Attempts = 10;
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        if (!Click(::GetDlgItem(dialog, button))) {
            return false;
        }
        if (WaitFor([&] { return ::IsWindow(dialog) == 0; }, PatienceMs / Attempts)) {
            return true;
        }
    }
    return Fail(L"the dialog \"" + TextOf(dialog) + L"\" does not close");
}

void Program::Send(UINT command) {
    ::SendMessageTimeoutW(main, WM_COMMAND, command, 0, SMTO_NORMAL, PatienceMs, nullptr);
}

void Program::Post(UINT command) { ::PostMessageW(main, WM_COMMAND, command, 0); }

bool Program::Settle() {
    // The system generates WM_PAINT only when the queue holds no posted message and no input. An
    // invalidated window is therefore a fence: once it has painted itself, everything queued before
    // has been handled. The fence must be visible, because a hidden window is never asked to paint,
    // and no other code may paint it out of turn: a view's scroll bar draws itself without
    // WM_PAINT, and a dialog's label does not change. Menu bar, fields and chart do not qualify:
    // they update themselves and their parents at once.
    const HWND dialog = FindAnyDialog();
    const HWND front = dialog != nullptr ? dialog : main;
    const HWND leaf = dialog != nullptr
                          ? ::FindWindowExW(dialog, nullptr, L"static", nullptr)
                          : ::GetDlgItem(IsOnTop(Graph()) ? Graph() : Diary(), ControlScrollBar);
    const HWND fence = leaf != nullptr ? leaf : front;
    ::RedrawWindow(fence, nullptr, nullptr, RDW_INVALIDATE);
    // Then wait for the other windows: until they have painted they look, and may act, as before.
    if (!WaitFor([&] { return !NeedsPaint(fence) || !IsRunning(); }) ||
        !WaitFor([&] { return !HasUnpainted(front) || !IsRunning(); })) {
        return Fail(L"the program does not answer");
    }
    return IsRunning();
}

// ---- Whole steps ----

bool Program::EnterUser(const std::wstring& user, const std::wstring& password) {
    const HWND dialog = WaitForDialog(L"Login user");
    if (dialog == nullptr) {
        return false;
    }
    main = FindMain();
    if (!WaitFor([&] { return ::GetDlgItem(dialog, ControlOk) != nullptr; })) {
        return Fail(L"the sign-in has no OK");
    }
    const HWND name = ::GetDlgItem(dialog, ControlUserName);
    const HWND secret = ::GetDlgItem(dialog, ControlPassword);
    if (TextOf(name) != user) {
        SetTextOf(name, L"");
        Click(name);
        Type(user);
    }
    SetTextOf(secret, L"");
    Click(secret);
    Type(password);
    if (!WaitFor([&] {
            return TextOf(name) == user && ::SendMessageW(secret, WM_GETTEXTLENGTH, 0, 0) ==
                                               static_cast<LRESULT>(password.size());
        })) {
        return Fail(L"the sign-in does not take what is typed: \"" + TextOf(name) + L"\"");
    }
    return Click(::GetDlgItem(dialog, ControlOk));
}

bool Program::WaitForViews() {
    if (!WaitFor([&] {
            main = FindMain();
            return !IsRunning() || (Diary() != nullptr && Graph() != nullptr);
        }) ||
        !IsRunning()) {
        return Fail(L"no views");
    }
    // Two fences. The message loop handles the first, and only runs once the window is complete;
    // whatever the creation has posted is handled before the second, which PutWarningAway sets.
    return Settle() && PutWarningAway();
}

bool Program::PutWarningAway() {
    if (!Settle()) {
        return false;
    }
    warning.clear();
    const HWND box = FindDialog(L"Warning");
    if (box == nullptr) {
        return true;
    }
    warning = BoxText(box);
    Press(VK_RETURN);
    return WaitForNoDialog(L"Warning") && Settle();
}

bool Program::SignIn(const std::wstring& user, const std::wstring& password) {
    return EnterUser(user, password) && WaitForNoDialog(L"Login user") && WaitForViews();
}

bool Program::StartAndSignIn(const std::wstring& user, const std::wstring& password) {
    return Start() && SignIn(user, password);
}

bool Program::Exit() {
    Post(CommandExit);
    return WaitForEnd() && ExitCode() == 0;
}

// ---- What it shows ----

Visitor& Program::Inside() const {
    if (!visitor) {
        // Once it has answered, the process is about to wait for its next message, which is when a
        // visitor may enter.
        ::SendMessageTimeoutW(main, WM_NULL, 0, 0, SMTO_NORMAL, PatienceMs, nullptr);
        visitor = std::make_unique<Visitor>(process.hProcess);
    }
    return *visitor;
}

bool Program::Call(const char* function, const std::array<std::uint64_t, 4>& arguments,
                   std::uint64_t& result) const {
    return Inside().Call(function, arguments, result);
}

bool Program::SendRecord(HWND window, UINT message, WPARAM wParam, void* record, std::size_t size,
                         LRESULT* result) const {
    RemoteBlock block(process.hProcess, size);
    LRESULT answer = 0;
    if (!block.Write(record, size) ||
        !Inside().Send(window, message, wParam, reinterpret_cast<LPARAM>(block.Address()),
                       answer)) {
        return false;
    }
    if (result != nullptr) {
        *result = answer;
    }
    return block.Read(record, size);
}

Row Program::AskRow(int index, int cells) {
    RowRequest request{};
    request.header.hwndFrom = Agenda();
    request.header.idFrom = ControlAgenda;
    request.header.code = 1;
    request.index = index;
    request.count = cells;
    Row row{};
    if (!SendRecord(Diary(), WM_NOTIFY, ControlAgenda, &request, sizeof request, &row.answered)) {
        Fail(L"the diary cannot be asked for a row");
        return row;
    }
    row.height = request.height;
    request.text.back() = 0;
    row.text = request.text.data();
    row.cells.assign(request.cells.begin(), request.cells.begin() + cells);
    return row;
}

SCROLLINFO Program::Scroll() const {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    ::GetScrollInfo(ScrollBar(), SB_CTL, &info);
    return info;
}

CalendarHit Program::FirstCell(HWND calendar) const {
    CalendarHit hit{};
    SendRecord(calendar, CalendarHitTest, 0, &hit, sizeof hit);
    return hit;
}

Day Program::FirstDay() const { return ToDay(FirstCell(Calendar()).date); }

Picture Program::Look(HWND window) {
    RECT area{};
    ::GetClientRect(window, &area);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return Picture::OfScreen(area);
}

void Program::Keep(const WCHAR* name) {
    RECT area{};
    ::GetWindowRect(::GetDesktopWindow(), &area);
    std::array<WCHAR, 16> number{};
    ::wsprintfW(number.data(), L"%02d-", ++kept);
    Picture::OfScreen(area).SaveAs(folder.Pictures() + number.data() + name + L".bmp");
}

int Program::LiveGdiObjects() const {
    return static_cast<int>(
               ::SendMessageW(main, ::RegisterWindowMessageW(LiveGdiObjectsMessage), 0, 0)) -
           1;
}

}  // namespace lunara::test
