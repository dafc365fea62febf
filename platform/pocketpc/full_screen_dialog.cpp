// Full-screen dialogs. On the device a dialog covers the screen, with its title in the shell's top
// bar. On a desktop it covers the client area of its owner, draws a title strip of its own, and
// follows the owner when that moves. The owner is disabled while the dialog is up, so its caption
// cannot be dragged. The title strip acts as a caption instead: dragging it moves the owner.

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

/// A full-screen dialog, from CoverOwner to WM_DESTROY.
struct FullScreenState {
    HWND dialog = nullptr;
    HWND owner = nullptr;
    SIZE designed{};  // client size of the template, px
    struct Control {
        HWND window;
        RECT designed;  // place in the template's client area, px
    };
    std::vector<Control> controls;
    LOGFONTW face{};       // the template's font
    double fontScale = 0;  // of `font`; 0 before the first layout
    Font font;
    Font titleFont;
    bool placing = false;  // Place is moving the dialog, so OwnerFollows must not run
};

/// All full-screen dialogs, oldest first; one may lie over another.
std::vector<std::unique_ptr<FullScreenState>>& FullScreenDialogs() {
    static std::vector<std::unique_ptr<FullScreenState>> dialogs;
    return dialogs;
}

/// The state of a full-screen dialog; null for any other window, and for a dialog after WM_DESTROY.
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
        return;  // a minimised owner has no client area on the screen and hides the dialog
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

/// Moves the owner under the dialog after the user dragged the dialog by its title strip.
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
        // By index, not by iterator: Place sends messages to the dialog, which may end at one.
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

/// Undoes CoverOwner: removes the subclasses and frees the state.
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
        // The controls must not keep fonts that are deleted with `state`.
        ::SendMessageW(control.window, WM_SETFONT, 0, FALSE);
    }
}

/// Acts on a message that the dialog has handled with result `answer`. Returns the result to use.
LRESULT AfterDialog(FullScreenState& state, UINT message, WPARAM wParam, LPARAM lParam,
                    LRESULT answer) {
    switch (message) {
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            // The background only: the text colour was set by the dialog.
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
    // The dialog handles each message first, because it may act on those that AfterDialog handles.
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

/// The rectangle to lay a control out by, in screen coordinates: its window, and for a combo box
/// the window with the dropped list. A combo box is given its height with the list, but its window
/// is only as high as the closed field; laid out by that, the list would have no height.
RECT DesignedPlace(HWND control) {
    RECT place{};
    ::GetWindowRect(control, &place);
    // The result is ignored: Wine returns 0 although it fills in the rectangle. A control of
    // another kind leaves the rectangle alone.
    RECT opened = place;
    ::SendMessageW(control, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&opened));
    place.bottom = std::max(place.bottom, opened.bottom);
    return place;
}

/// Stores the sizes, places and font of the template, before anything is scaled.
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

/// Removes caption and border. The title strip shows the title, and the dialog's client area must
/// be as large as the owner's.
void TakeFrameAway(HWND dialog) {
    constexpr LONG_PTR Frame = WS_CAPTION | WS_THICKFRAME | DS_MODALFRAME;
    constexpr LONG_PTR ExFrame = WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE;
    const LONG_PTR style = ::GetWindowLongPtrW(dialog, GWL_STYLE);
    const LONG_PTR exStyle = ::GetWindowLongPtrW(dialog, GWL_EXSTYLE);
    if ((style & Frame) == 0 && (exStyle & ExFrame) == 0) {
        return;  // as in all templates of the program
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

/// Shows a hidden owner: the sign-in runs before the main window is first shown. Does not activate
/// the owner, because the dialog is active.
void ShowOwner(const FullScreenState& state) {
    if (::IsWindowVisible(state.owner) == FALSE) {
        // SWP_DEFERERASE: the dialog covers the client area, so painting it can wait.
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
    AddSubclass(owner, &OwnerProc);  // does nothing for a second dialog over the same owner
    Place(placed);
    if (placed.fontScale == 0) {
        PlaceControls(placed);  // Place did not change the size, so there was no WM_SIZE
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
