#include "window/modal_loop.h"

#include "platform/pocketpc/aygshell.h"
#include "resources/ids.h"

namespace lunara {
namespace {

int RunLoop(const Dialog& dialog, const std::function<bool()>& accept,
            const std::function<void()>& cancelled) {
    const HACCEL accelerators =
        ::LoadAcceleratorsW(AppInstance(), MAKEINTRESOURCEW(IDR_ACCELERATORS));
    MSG message{};
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_DIALOG_OK) {
            if (accept()) {
                return 1;
            }
        } else if (message.message == WM_DIALOG_CANCEL) {
            if (cancelled) {
                cancelled();
            }
            return 0;
        } else if (::TranslateAcceleratorW(message.hwnd, accelerators, &message) == 0 &&
                   // A desktop has a keyboard: Tab, Enter and Escape work as in any dialog.
                   ::IsDialogMessageW(dialog.Handle(), &message) == FALSE) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
        if (dialog.Handle() == nullptr) {
            return 0;  // gone with the main window: nothing would ever end this loop
        }
    }
    // The program is to end, and the loop outside has to hear of it, too.
    ::PostQuitMessage(static_cast<int>(message.wParam));
    return 0;
}

}  // namespace

int RunDialog(Window& main, Dialog& dialog, UINT templateId, const std::function<bool()>& accept,
              const std::function<void()>& cancelled) {
    const HWND owner = main.Handle();
    // Not the outermost: when the session ends, the sign-in comes up over another dialog.
    const bool isOutermost = ::EnableWindow(owner, FALSE) == FALSE;
    int result = 0;
    if (Dialog::CreateModeless(dialog, templateId, &main)) {
        ::SendMessageW(owner, WM_ENTERDIALOG, 0, 0);
        ::ShowWindow(dialog.Handle(), SW_SHOW);
        SHSipPreference(dialog.Handle(), SIP_UP);
        result = RunLoop(dialog, accept, cancelled);
        // The owner is activated before the dialog goes: a desktop activates another program's
        // window when the active window is destroyed while its owner is still disabled. The edit
        // field that loses the focus by it raises the input panel once more.
        ::SetActiveWindow(owner);
        SHSipPreference(dialog.Handle(), SIP_FORCEDOWN);
        ::DestroyWindow(dialog.Handle());
    }
    if (isOutermost) {
        ::SendMessageW(owner, WM_EXITDIALOG, 0, 0);
        ::EnableWindow(owner, TRUE);
        ::SetFocus(owner);
    }
    return result;
}

}  // namespace lunara
