// Full-screen dialogs. The device lets them cover its screen and shows their title in its top bar.
// On a desktop they cover the client area of the program's window, carry a title strip of their
// own, and go where the window goes. The window is disabled meanwhile and cannot be dragged, so the
// strip takes its caption's place: dragging the strip moves the window.

#include "platform/pocketpc/full_screen_dialog.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/dialog_layout.h"
#include "platform/pocketpc/placement.h"
#include "platform/pocketpc/top_level_window.h"
#include "platform/subclass.h"

namespace {

using lunara::AddWindowHook;
using lunara::HookedMessage;
using lunara::LayOutSheet;
using lunara::PlaceOnSheet;
using lunara::PutAt;
using lunara::RemoveWindowHook;
using lunara::SheetLayout;

constexpr COLORREF TitleColor = RGB(0x5B, 0x2C, 0x6F);
constexpr COLORREF RuleColor = RGB(0xC8, 0xB8, 0xD0);
constexpr int TitleTextCapacity = 128;

struct FontDeleter {
    using pointer = HFONT;
    void operator()(HFONT font) const { ::DeleteObject(font); }
};
using OwnedFont = std::unique_ptr<HFONT, FontDeleter>;

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
    OwnedFont font;
    OwnedFont titleFont;
    bool placing = false;
};

/// The dialogs that are laid out so; one may stand over another.
std::vector<std::unique_ptr<FullScreenState>>& FullScreenDialogs() {
    static std::vector<std::unique_ptr<FullScreenState>> dialogs;
    return dialogs;
}

/// Null for another window, also for a dialog whose end has begun.
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
    OwnedFont font(::CreateFontIndirectW(&face));
    const BOOL redraw = ::IsWindowVisible(state.dialog);
    for (const FullScreenState::Control& control : state.controls) {
        ::SendMessageW(control.window, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), redraw);
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
    const HGDIOBJ previousFont = ::SelectObject(dc, state.titleFont.get());
    const int previousMode = ::SetBkMode(dc, TRANSPARENT);
    const COLORREF previousColor = ::SetTextColor(dc, TitleColor);
    ::DrawTextW(dc, title.data(), -1, &strip,
                DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    ::SetTextColor(dc, previousColor);
    ::SetBkMode(dc, previousMode);
    ::SelectObject(dc, previousFont);

    RECT rule{0, lunara::TitleStripPx - 1, client.right, lunara::TitleStripPx};
    const COLORREF previousBrush = ::SetDCBrushColor(dc, RuleColor);
    ::FillRect(dc, &rule, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
    ::SetDCBrushColor(dc, previousBrush);
}

LRESULT WhiteBackground(HDC dc) {
    ::SetBkColor(dc, RGB(255, 255, 255));
    return reinterpret_cast<LRESULT>(::GetStockObject(WHITE_BRUSH));
}

// ---- Messages ----

/// `reference`: the dialog's handle.
LRESULT HookOwner(const HookedMessage& call, void* reference) {
    const LRESULT result = call.PassOn();
    if (call.message == WM_WINDOWPOSCHANGED) {
        // The dialog may have ended meanwhile.
        if (FullScreenState* state = StateOf(static_cast<HWND>(reference)); state != nullptr) {
            Place(*state);
        }
    }
    return result;
}

LRESULT HitTest(const FullScreenState& state, LPARAM point, LRESULT inner) {
    POINT at{static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))};
    ::ScreenToClient(state.dialog, &at);
    return inner == HTCLIENT && at.y < lunara::TitleStripPx ? HTCAPTION : inner;
}

LRESULT HookDialog(const HookedMessage& call, void* reference);

/// From here on the dialog is an ordinary one.
void Release(HWND dialog) {
    const auto found =
        std::find_if(FullScreenDialogs().begin(), FullScreenDialogs().end(),
                     [dialog](const auto& state) { return state->dialog == dialog; });
    const std::unique_ptr<FullScreenState> state = std::move(*found);
    FullScreenDialogs().erase(found);
    RemoveWindowHook(dialog, &HookDialog, dialog);
    RemoveWindowHook(state->owner, &HookOwner, dialog);
    for (const FullScreenState::Control& control : state->controls) {
        ::SendMessageW(control.window, WM_SETFONT, 0, FALSE);
    }
}

LRESULT HookDialog(const HookedMessage& call, void* /*reference*/) {
    // Asked first in any case: some of the messages below also mean something to the dialog.
    if (call.message == WM_DESTROY) {
        Release(call.window);
        return call.PassOn();
    }
    if (call.message == WM_ERASEBKGND) {
        EraseWithTitle(*StateOf(call.window), reinterpret_cast<HDC>(call.wParam));
        return 1;
    }
    const LRESULT inner = call.PassOn();
    FullScreenState* state = StateOf(call.window);
    if (state == nullptr) {
        return inner;  // the message ended the dialog
    }
    switch (call.message) {
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            // The text colour is the dialog's.
            return WhiteBackground(reinterpret_cast<HDC>(call.wParam));
        case WM_NCHITTEST:
            return HitTest(*state, call.lParam, inner);
        case WM_SIZE:
            PlaceControls(*state);
            break;
        case WM_WINDOWPOSCHANGED:
            if (!state->placing) {
                OwnerFollows(*state);
            }
            break;
        case WM_SETTEXT:
            ::InvalidateRect(call.window, nullptr, TRUE);
            break;
        default:
            break;
    }
    return inner;
}

// ---- Taking a dialog over ----

/// Where a control is to go. The height that is set of a combo box is that of its opened list,
/// while its window is as high as the closed field: laid out by that, the list would open to
/// nothing.
RECT DesignedPlace(HWND control) {
    RECT place{};
    ::GetWindowRect(control, &place);
    // Not every system answers that it has filled it in; a control of another kind leaves it alone.
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
    state.titleFont.reset(::CreateFontIndirectW(&title));
}

/// The strip shows the title instead of a caption, and nothing stands between sheet and frame.
void TakeFrameAway(HWND dialog) {
    constexpr LONG_PTR Frame = WS_CAPTION | WS_THICKFRAME | DS_MODALFRAME;
    constexpr LONG_PTR ExFrame = WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE;
    const LONG_PTR style = ::GetWindowLongPtrW(dialog, GWL_STYLE);
    const LONG_PTR exStyle = ::GetWindowLongPtrW(dialog, GWL_EXSTYLE);
    if ((style & Frame) == 0 && (exStyle & ExFrame) == 0) {
        return;  // as with the program's own dialogs
    }
    ::SetWindowLongPtrW(dialog, GWL_STYLE, style & ~Frame);
    ::SetWindowLongPtrW(dialog, GWL_EXSTYLE, exStyle & ~ExFrame);
    ::SetWindowPos(dialog, nullptr, 0, 0, 0, 0,
                   SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND OwnerOf(HWND dialog) {
    const HWND owner = ::GetWindow(dialog, GW_OWNER);
    return owner != nullptr ? owner : lunara::TopLevelWindow();
}

/// A sign-in runs before the program's window was shown, but has to stand somewhere. The window is
/// not activated, since the dialog is active already.
void ShowOwner(const FullScreenState& state) {
    if (::IsWindowVisible(state.owner) == FALSE) {
        // The dialog covers all but its frame, so to draw it can wait.
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
    AddWindowHook(dialog, &HookDialog, dialog);
    AddWindowHook(owner, &HookOwner, dialog);
    Place(placed);
    if (placed.fontScale == 0) {
        PlaceControls(placed);  // it had its size already
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
