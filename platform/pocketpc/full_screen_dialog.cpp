// Full-screen dialogs. The device lets them cover its screen and shows their title in its top bar.
// On a desktop they cover the client area of the program's window, carry a title strip of their
// own, and go where the window goes. The window is disabled meanwhile and cannot be dragged, so the
// strip takes its caption's place: dragging the strip moves the window.

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/common_controls.h"
#include "platform/pocketpc/dialog_layout.h"
#include "platform/pocketpc/top_level_window.h"

namespace {

using lunara::LayOutSheet;
using lunara::PlaceOnSheet;
using lunara::SheetLayout;

constexpr WCHAR StateProperty[] = TEXT("Lunara.FullScreenDialog");
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
    WNDPROC previous = nullptr;
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

FullScreenState* StateOf(HWND dialog) {
    return static_cast<FullScreenState*>(::GetPropW(dialog, StateProperty));
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
    for (const FullScreenState::Control& control : state.controls) {
        ::SendMessageW(control.window, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
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
        const RECT place = PlaceOnSheet(control.designed, layout);
        ::SetWindowPos(control.window, nullptr, place.left, place.top, place.right - place.left,
                       place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    ::InvalidateRect(state.dialog, nullptr, TRUE);
}

/// Lays the dialog over its owner's client area.
void Place(FullScreenState& state) {
    if (::IsIconic(state.owner) != FALSE) {
        return;  // its client area is nowhere; the dialog is hidden with it
    }
    const RECT area = ClientOnScreen(state.owner);
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

LRESULT CALLBACK FollowProc(HWND owner, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                            DWORD_PTR reference) {
    const LRESULT result = ::DefSubclassProc(owner, message, wParam, lParam);
    if (message == WM_WINDOWPOSCHANGED) {
        // The state may be gone after the default processing, but then so is the property.
        if (FullScreenState* state = StateOf(reinterpret_cast<HWND>(reference)); state != nullptr) {
            Place(*state);
        }
    } else if (message == WM_NCDESTROY) {
        ::RemoveWindowSubclass(owner, &FollowProc, id);
    }
    return result;
}

LRESULT HitTest(const FullScreenState& state, LPARAM point, LRESULT inner) {
    POINT at{static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))};
    ::ScreenToClient(state.dialog, &at);
    return inner == HTCLIENT && at.y < lunara::TitleStripPx ? HTCAPTION : inner;
}

/// Gives the dialog back to the procedure that it had before, as the last one to have taken it.
WNDPROC Release(HWND dialog) {
    const std::unique_ptr<FullScreenState> state(StateOf(dialog));
    ::RemovePropW(dialog, StateProperty);
    ::SetWindowLongPtrW(dialog, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(state->previous));
    ::RemoveWindowSubclass(state->owner, &FollowProc, reinterpret_cast<UINT_PTR>(dialog));
    for (const FullScreenState::Control& control : state->controls) {
        ::SendMessageW(control.window, WM_SETFONT, 0, FALSE);
    }
    return state->previous;
}

LRESULT CALLBACK FullScreenProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    FullScreenState& state = *StateOf(dialog);
    // Asked first in any case: some of the messages below also mean something to the dialog.
    if (message == WM_DESTROY) {
        return ::CallWindowProcW(Release(dialog), dialog, message, wParam, lParam);
    }
    if (message == WM_ERASEBKGND) {
        EraseWithTitle(state, reinterpret_cast<HDC>(wParam));
        return 1;
    }
    const LRESULT inner = ::CallWindowProcW(state.previous, dialog, message, wParam, lParam);
    if (StateOf(dialog) == nullptr) {
        return inner;  // the message ended the dialog
    }
    switch (message) {
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            return WhiteBackground(
                reinterpret_cast<HDC>(wParam));  // the text colour is the dialog's
        case WM_NCHITTEST:
            return HitTest(state, lParam, inner);
        case WM_SIZE:
            PlaceControls(state);
            break;
        case WM_WINDOWPOSCHANGED:
            if (!state.placing) {
                OwnerFollows(state);
            }
            break;
        case WM_SETTEXT:
            ::InvalidateRect(dialog, nullptr, TRUE);
            break;
        default:
            break;
    }
    return inner;
}

// ---- Taking a dialog over ----

void RememberDesign(FullScreenState& state) {
    RECT client{};
    ::GetClientRect(state.dialog, &client);
    state.designed = SIZE{client.right, client.bottom};
    for (HWND child = ::GetWindow(state.dialog, GW_CHILD); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT)) {
        RECT place{};
        ::GetWindowRect(child, &place);
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
    const LONG_PTR style = ::GetWindowLongPtrW(dialog, GWL_STYLE);
    const LONG_PTR exStyle = ::GetWindowLongPtrW(dialog, GWL_EXSTYLE);
    ::SetWindowLongPtrW(dialog, GWL_STYLE,
                        style & ~LONG_PTR{WS_CAPTION | WS_THICKFRAME | DS_MODALFRAME});
    ::SetWindowLongPtrW(
        dialog, GWL_EXSTYLE,
        exStyle & ~LONG_PTR{WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE});
    ::SetWindowPos(dialog, nullptr, 0, 0, 0, 0,
                   SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MakeFullScreen(HWND dialog, HWND owner) {
    auto state = std::make_unique<FullScreenState>();
    state->dialog = dialog;
    state->owner = owner;
    RememberDesign(*state);
    TakeFrameAway(dialog);
    FullScreenState& placed = *state;
    if (::SetPropW(dialog, StateProperty, state.get()) == FALSE) {
        return;
    }
    state->previous = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(dialog, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&FullScreenProc)));
    static_cast<void>(state.release());  // freed when the dialog is destroyed
    ::SetWindowSubclass(owner, &FollowProc, reinterpret_cast<UINT_PTR>(dialog),
                        reinterpret_cast<DWORD_PTR>(dialog));
    if (::IsWindowVisible(owner) == FALSE) {
        // A sign-in runs before the program's window was shown, but has to stand somewhere.
        ::ShowWindow(owner, SW_SHOWNORMAL);
        ::UpdateWindow(owner);
    }
    Place(placed);
    PlaceControls(placed);
}

}  // namespace

BOOL SHInitDialog(SHINITDLGINFO* info) {
    if (info == nullptr || (info->dwMask & SHIDIM_FLAGS) == 0 || ::IsWindow(info->hDlg) == FALSE) {
        return FALSE;
    }
    if ((info->dwFlags & SHIDIF_SIPDOWN) != 0) {
        SHSipPreference(info->hDlg, SIP_DOWN);
    }
    if ((info->dwFlags & SHIDIF_SIZEDLGFULLSCREEN) != 0 && StateOf(info->hDlg) == nullptr) {
        HWND owner = ::GetWindow(info->hDlg, GW_OWNER);
        if (owner == nullptr) {
            owner = lunara::TopLevelWindow();
        }
        if (owner != nullptr) {
            MakeFullScreen(info->hDlg, owner);
        }
    }
    return TRUE;
}
