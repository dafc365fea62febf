#include "window/dialog.h"

#include "platform/gdi.h"
#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/full_screen_dialog.h"
#include "platform/process.h"

namespace lunara {
namespace {

Dialog* pendingDialog = nullptr;  // set before creation, taken at WM_INITDIALOG

constexpr INT_PTR EndCodeFailed = -1;
constexpr INT_PTR EndCodeOk = IDOK;
constexpr INT_PTR EndCodeCancel = IDCANCEL;

/// The dialog procedure of every dialog. At WM_INITDIALOG it binds the pending `Dialog` and
/// subclasses the window, whose messages reach the object through the subclass from then on.
///
/// A WM_INITDIALOG that the object passes on to the dialog manager comes back here. No dialog is
/// pending then, and the message must not be dispatched again: that would recurse without end.
INT_PTR CALLBACK SharedDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_INITDIALOG || pendingDialog == nullptr) {
        return 0;
    }
    pendingDialog->Subclass(window);
    pendingDialog = nullptr;
    return FrameworkWindowProc(window, message, wParam, lParam);
}

/// The template in the program's resources, null when there is none with that id.
const DLGTEMPLATE* FindTemplate(UINT templateId) {
    const HINSTANCE instance = AppInstance();
    const HRSRC resource = ::FindResourceW(instance, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    if (resource == nullptr) {
        return nullptr;
    }
    const HGLOBAL loaded = ::LoadResource(instance, resource);
    return loaded == nullptr ? nullptr : static_cast<const DLGTEMPLATE*>(::LockResource(loaded));
}

HWND OwnerHandle(const Window* parent) {
    return parent == nullptr ? MainWindowHandle() : parent->Handle();
}

BOOL CALLBACK SetShellFont(HWND window, LPARAM) {
    ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(ShellFont()), FALSE);
    return TRUE;
}

/// Describes the font that `window` draws text with; a window without WM_SETFONT uses the system
/// font.
LOGFONTW FontOf(HWND window) {
    auto font = reinterpret_cast<HGDIOBJ>(::SendMessageW(window, WM_GETFONT, 0, 0));
    if (font == nullptr) {
        font = ::GetStockObject(SYSTEM_FONT);
    }
    LOGFONTW face{};
    ::GetObjectW(font, sizeof(face), &face);
    return face;
}

/// Gives the controls of a dialog that is not full-screen the shell font, unless the template names
/// that font already. (A full-screen dialog scales the template's font with its sheet instead.) The
/// dialog itself keeps the template's font: it draws no text, and the dialog manager converts
/// dialog units by that font.
void UseShellFont(HWND dialog) {
    const LOGFONTW own = FontOf(dialog);
    LOGFONTW shell{};
    ::GetObjectW(ShellFont(), sizeof(shell), &shell);
    if (own.lfHeight != shell.lfHeight || own.lfWeight != shell.lfWeight ||
        ::lstrcmpiW(own.lfFaceName, shell.lfFaceName) != 0) {
        ::EnumChildWindows(dialog, &SetShellFont, 0);
    }
}

}  // namespace

Dialog::Dialog(UINT shapeId, Window* owner) : parent(owner), templateId(shapeId) {}

INT_PTR Dialog::DoModal() {
    const DLGTEMPLATE* shape = FindTemplate(templateId);
    if (shape == nullptr) {
        return EndCodeFailed;
    }
    pendingDialog = this;
    const INT_PTR endCode =
        ::DialogBoxIndirectParamW(AppInstance(), shape, OwnerHandle(parent), &SharedDialogProc, 0);
    pendingDialog = nullptr;
    return endCode;
}

BOOL Dialog::OnInitDialog() {
    if (fullScreen) {
        CoverOwner(Handle());
    } else {
        UseShellFont(Handle());
    }
    if (UpdateData(false) == 0) {
        ::EndDialog(Handle(), EndCodeFailed);
    } else if (fullScreen) {
        ::SetForegroundWindow(Handle());
        SHINITDLGINFO info{};
        info.dwMask = SHIDIM_FLAGS;
        info.hDlg = Handle();
        info.dwFlags = SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN | SHIDIF_SIPDOWN;
        SHInitDialog(&info);
    }
    return TRUE;
}

void Dialog::OnOK() {
    UpdateData(true);
    ::EndDialog(Handle(), EndCodeOk);
}

void Dialog::OnCancel() { ::EndDialog(Handle(), EndCodeCancel); }

bool Dialog::CreateModeless(Dialog& dialog, UINT shapeId, Window* owner) {
    const DLGTEMPLATE* shape = FindTemplate(shapeId);
    if (shape == nullptr) {
        return false;
    }
    pendingDialog = &dialog;
    const HWND created = ::CreateDialogIndirectParamW(AppInstance(), shape, OwnerHandle(owner),
                                                      &SharedDialogProc, 0);
    pendingDialog = nullptr;
    return created != nullptr;
}

bool Dialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT answer = 0;
    switch (message) {
        case WM_INITDIALOG:
            answer = OnInitDialog();
            break;
        case WM_COMMAND:
            switch (LOWORD(wParam)) {
                case IDOK:
                    OnOK();
                    break;
                case IDCANCEL:
                    OnCancel();
                    break;
                default:
                    return false;
            }
            break;
        default:
            return Window::OnMessage(message, wParam, lParam, result);
    }
    if (result != nullptr) {
        *result = answer;
    }
    return true;
}

}  // namespace lunara
