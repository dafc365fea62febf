// Full-screen dialogs. The device lets a dialog cover its screen and shows its title in the top
// bar. On a desktop the dialog covers the client area of the main window, draws a title strip of
// its own and follows the window. The window is disabled while a dialog is up, so its caption
// cannot be dragged; the title strip takes the caption's place, and dragging it moves the window.

#include "platform/pocketpc/full_screen_dialog.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "platform/gdi.h"
#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/dialog_layout.h"
#include "platform/pocketpc/placement.h"
#include "platform/process.h"
#include "platform/subclass.h"

namespace {

using lunara::AddSubclass;
using lunara::CallPrevious;
using lunara::Font;
using lunara::LayOutSheet;
using lunara::PlaceOnSheet;
using lunara::PutAt;
using lunara::RemoveSubclass;
using lunara::SheetLayout;

constexpr COLORREF TitleColor = RGB(0x5B, 0x2C, 0x6F);
constexpr COLORREF RuleColor = RGB(0xC8, 0xB8, 0xD0);
constexpr int TitleTextCapacity = 128;

struct FullScreenState {
    HWND dialog = nullptr;
    HWND owner = nullptr;
    SIZE designed{};  // client size of the template
    struct Control {
        HWND window;
        RECT designed;
    };
    std::vector<Control> controls;
    LOGFONTW face{};
    double fontScale = 0;
    Font font;
    Font titleFont;
    bool placing = false;
};

/// The full-screen dialogs that exist, in the order of their making; one may stand over another.
std::vector<std::unique_ptr<FullScreenState>>& FullScreenDialogs() {
    static std::vector<std::unique_ptr<FullScreenState>> dialogs;
    return dialogs;
}

/// Null for any other window, and for a dialog that has handled WM_DESTROY.
FullScreenState* StateOf(HWND dialog) {
    for (const auto& state : FullScreenDialogs()) {
        if (state->dialog == dialog) {
            return state.get();
        }
    }
    return nullptr;
}

RECT ClientOnScreen(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    return client;
}

// ---- Layout ----

void ScaleFonts(FullScreenState& state, double scale) {
    if (state.fontScale == scale) {
        return;
    }
    LOGFONTW face = state.face;
    face.lfHeight = static_cast<LONG>(std::lround(static_cast<double>(face.lfHeight) * scale));
    Font font(::CreateFontIndirectW(&face));
    const BOOL redraw = ::IsWindowVisible(state.dialog);
    for (const FullScreenState::Control& control : state.controls) {
        ::SendMessageW(control.window, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), redraw);
    }
    state.font = std::move(font);
    state.fontScale = scale;
}

void PlaceControls(FullScreenState& state) {
    RECT client{};
    ::GetClientRect(state.dialog, &client);
    const SheetLayout layout = LayOutSheet(state.designed, SIZE{client.right, client.bottom});
    ScaleFonts(state, layout.scale);
    for (const FullScreenState::Control& control : state.controls) {
        PutAt(control.window, PlaceOnSheet(control.designed, layout));
    }
    if (::IsWindowVisible(state.dialog) != FALSE) {
        ::InvalidateRect(state.dialog, nullptr, TRUE);
    }
}

/// Lays the dialog over its owner's client area.
void Place(FullScreenState& state) {
    if (::IsIconic(state.owner) != FALSE) {
        return;  // its client area is nowhere; the dialog is hidden with it
    }
    const RECT area = ClientOnScreen(state.owner);
    RECT present{};
    ::GetWindowRect(state.dialog, &present);
    if (::EqualRect(&present, &area) != FALSE) {
        return;
    }
    state.placing = true;
    ::SetWindowPos(state.dialog, nullptr, area.left, area.top, area.right - area.left,
                   area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    state.placing = false;
}

/// The dialog was dragged by its title strip: the owner goes along.
void OwnerFollows(const FullScreenState& state) {
    if (::IsIconic(state.owner) != FALSE) {
        return;
    }
    const RECT area = ClientOnScreen(state.owner);
    RECT dialog{};
    ::GetWindowRect(state.dialog, &dialog);
    RECT frame{};
    ::GetWindowRect(state.owner, &frame);
    if (dialog.left != area.left || dialog.top != area.top) {
        ::SetWindowPos(state.owner, nullptr, frame.left + dialog.left - area.left,
                       frame.top + dialog.top - area.top, 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

// ---- Painting ----

void EraseWithTitle(const FullScreenState& state, HDC dc) {
    RECT client{};
    ::GetClientRect(state.dialog, &client);
    ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));

    std::array<WCHAR, TitleTextCapacity> title{};
    ::GetWindowTextW(state.dialog, title.data(), TitleTextCapacity);
    RECT strip{lunara::SheetMarginPx, 0, client.right - lunara::SheetMarginPx,
               lunara::TitleStripPx - 1};
    const lunara::SelectScope font(dc, state.titleFont.Get());
    const lunara::BackgroundModeScope mode(dc, TRANSPARENT);
    const lunara::TextColorScope color(dc, TitleColor);
    ::DrawTextW(dc, title.data(), -1, &strip,
                DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);

    const RECT rule{0, lunara::TitleStripPx - 1, client.right, lunara::TitleStripPx};
    const lunara::Brush ruleBrush(::CreateSolidBrush(RuleColor));
    ::FillRect(dc, &rule, ruleBrush.Get());
}

LRESULT WhiteBackground(HDC dc) {
    ::SetBkColor(dc, RGB(255, 255, 255));
    return reinterpret_cast<LRESULT>(::GetStockObject(WHITE_BRUSH));
}

// ---- Messages ----

/// The subclass procedure of a window that full-screen dialogs cover.
LRESULT CALLBACK OwnerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CallPrevious(&OwnerProc, window, message, wParam, lParam);
    if (message == WM_WINDOWPOSCHANGED) {
        // By index: placing a dialog sends it messages, and its answer may be to end.
        for (std::size_t index = 0; index < FullScreenDialogs().size(); ++index) {
            if (FullScreenDialogs()[index]->owner == window) {
                Place(*FullScreenDialogs()[index]);
            }
        }
    }
    return result;
}

bool IsCovered(HWND owner) {
    return std::any_of(FullScreenDialogs().begin(), FullScreenDialogs().end(),
                       [owner](const auto& state) { return state->owner == owner; });
}

LRESULT HitTest(const FullScreenState& state, LPARAM point, LRESULT inner) {
    POINT at{static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))};
    ::ScreenToClient(state.dialog, &at);
    return inner == HTCLIENT && at.y < lunara::TitleStripPx ? HTCAPTION : inner;
}

LRESULT CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Ends what CoverOwner began: the dialog is an ordinary window again.
void Release(HWND dialog) {
    const auto found =
        std::find_if(FullScreenDialogs().begin(), FullScreenDialogs().end(),
                     [dialog](const auto& state) { return state->dialog == dialog; });
    const std::unique_ptr<FullScreenState> state = std::move(*found);
    FullScreenDialogs().erase(found);
    RemoveSubclass(dialog, &DialogProc);
    if (!IsCovered(state->owner)) {
        RemoveSubclass(state->owner, &OwnerProc);
    }
    for (const FullScreenState::Control& control : state->controls) {
        // The fonts go with the state.
        ::SendMessageW(control.window, WM_SETFONT, 0, FALSE);
    }
}

/// What the sheet adds to the dialog's own answer.
LRESULT AfterDialog(FullScreenState& state, UINT message, WPARAM wParam, LPARAM lParam,
                    LRESULT answer) {
    switch (message) {
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            // The text colour is the dialog's.
            return WhiteBackground(reinterpret_cast<HDC>(wParam));
        case WM_NCHITTEST:
            return HitTest(state, lParam, answer);
        case WM_SIZE:
            PlaceControls(state);
            break;
        case WM_WINDOWPOSCHANGED:
            if (!state.placing) {
                OwnerFollows(state);
            }
            break;
        case WM_SETTEXT:
            ::InvalidateRect(state.dialog, nullptr, TRUE);
            break;
        default:
            break;
    }
    return answer;
}

/// The subclass procedure of a full-screen dialog.
LRESULT CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND) {
        EraseWithTitle(*StateOf(window), reinterpret_cast<HDC>(wParam));
        return 1;
    }
    // The dialog handles each message first: some of those that the sheet acts on mean something to
    // the dialog, too.
    const LRESULT answer = CallPrevious(&DialogProc, window, message, wParam, lParam);
    FullScreenState* state = StateOf(window);
    if (state == nullptr) {
        return answer;  // the message destroyed the dialog
    }
    if (message == WM_DESTROY) {
        Release(window);
        return answer;
    }
    return AfterDialog(*state, message, wParam, lParam, answer);
}

// ---- Taking a dialog over ----

/// The rectangle by which a control is laid out, on the screen. A combo box is set to the height of
/// its opened list, but its window is only as high as the closed field; laid out by the window, the
/// list would have no height.
RECT DesignedPlace(HWND control) {
    RECT place{};
    ::GetWindowRect(control, &place);
    // The result is not looked at: Wine returns 0 although it fills the rectangle in. A control of
    // another kind leaves the rectangle as it is.
    RECT opened = place;
    ::SendMessageW(control, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&opened));
    place.bottom = std::max(place.bottom, opened.bottom);
    return place;
}

void RememberDesign(FullScreenState& state) {
    RECT client{};
    ::GetClientRect(state.dialog, &client);
    state.designed = SIZE{client.right, client.bottom};
    for (HWND child = ::GetWindow(state.dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        RECT place = DesignedPlace(child);
        ::MapWindowPoints(nullptr, state.dialog, reinterpret_cast<POINT*>(&place), 2);
        state.controls.push_back({child, place});
    }
    auto font = reinterpret_cast<HGDIOBJ>(::SendMessageW(state.dialog, WM_GETFONT, 0, 0));
    if (font == nullptr) {
        font = ::GetStockObject(DEFAULT_GUI_FONT);
    }
    ::GetObjectW(font, sizeof(state.face), &state.face);
    LOGFONTW title = state.face;
    title.lfHeight = static_cast<LONG>(std::lround(static_cast<double>(title.lfHeight) * 1.25));
    title.lfWeight = FW_BOLD;
    state.titleFont = Font(::CreateFontIndirectW(&title));
}

/// Removes caption and border: the title strip shows the title, and the sheet fills the whole
/// client area of the owner.
void TakeFrameAway(HWND dialog) {
    constexpr LONG_PTR Frame = WS_CAPTION | WS_THICKFRAME | DS_MODALFRAME;
    constexpr LONG_PTR ExFrame = WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE;
    const LONG_PTR style = ::GetWindowLongPtrW(dialog, GWL_STYLE);
    const LONG_PTR exStyle = ::GetWindowLongPtrW(dialog, GWL_EXSTYLE);
    if ((style & Frame) == 0 && (exStyle & ExFrame) == 0) {
        return;  // the templates of the program ask for none
    }
    ::SetWindowLongPtrW(dialog, GWL_STYLE, style & ~Frame);
    ::SetWindowLongPtrW(dialog, GWL_EXSTYLE, exStyle & ~ExFrame);
    ::SetWindowPos(dialog, nullptr, 0, 0, 0, 0,
                   SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND OwnerOf(HWND dialog) {
    const HWND owner = ::GetWindow(dialog, GW_OWNER);
    return owner != nullptr ? owner : lunara::MainWindowHandle();
}

/// Shows the owner if it is hidden: the sign-in runs before the main window was ever shown. Does
/// not activate it, because the dialog is active already.
void ShowOwner(const FullScreenState& state) {
    if (::IsWindowVisible(state.owner) == FALSE) {
        // The dialog covers its client area, so its painting can wait.
        ::SetWindowPos(state.owner, nullptr, 0, 0, 0, 0,
                       SWP_SHOWWINDOW | SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER |
                           SWP_DEFERERASE);
    }
}

}  // namespace

void lunara::CoverOwner(HWND dialog) {
    const HWND owner = OwnerOf(dialog);
    if (owner == nullptr || StateOf(dialog) != nullptr) {
        return;
    }
    auto state = std::make_unique<FullScreenState>();
    state->dialog = dialog;
    state->owner = owner;
    RememberDesign(*state);
    TakeFrameAway(dialog);
    FullScreenState& placed = *FullScreenDialogs().emplace_back(std::move(state));
    AddSubclass(dialog, &DialogProc);
    AddSubclass(owner, &OwnerProc);  // null for a second dialog over the same owner
    Place(placed);
    if (placed.fontScale == 0) {
        PlaceControls(placed);  // the dialog had its size already, so that no WM_SIZE came
    }
}

BOOL SHInitDialog(SHINITDLGINFO* info) {
    if (info == nullptr || (info->dwMask & SHIDIM_FLAGS) == 0 || ::IsWindow(info->hDlg) == FALSE) {
        return FALSE;
    }
    if ((info->dwFlags & SHIDIF_SIPDOWN) != 0) {
        SHSipPreference(info->hDlg, SIP_DOWN);
    }
    if ((info->dwFlags & SHIDIF_SIZEDLGFULLSCREEN) != 0) {
        lunara::CoverOwner(info->hDlg);
        if (const FullScreenState* state = StateOf(info->hDlg); state != nullptr) {
            ShowOwner(*state);
        }
    }
    return TRUE;
}
