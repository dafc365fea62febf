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
                   // For Tab, Enter and Escape; a device without a keyboard does not need it.
                   ::IsDialogMessageW(dialog.Handle(), &message) == FALSE) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
        if (dialog.Handle() == nullptr) {
            return 0;  // destroyed with the main window: no message can end this loop any more
        }
    }
    // This loop took WM_QUIT out of the queue; the outer loop must end on it, too.
    ::PostQuitMessage(static_cast<int>(message.wParam));
    return 0;
}

}  // namespace

int RunDialog(Window& main, Dialog& dialog, UINT templateId, const std::function<bool()>& accept,
              const std::function<void()>& cancelled) {
    const HWND owner = main.Handle();
    // False when `owner` is disabled already, by a dialog that is still open: ending the session,
    // for example, can bring the sign-in up over any dialog.
    const bool isOutermost = ::EnableWindow(owner, FALSE) == FALSE;
    int result = 0;
    if (Dialog::CreateModeless(dialog, templateId, &main)) {
        ::SendMessageW(owner, WM_ENTERDIALOG, 0, 0);
        ::ShowWindow(dialog.Handle(), SW_SHOW);
        SHSipPreference(dialog.Handle(), SIP_UP);
        result = RunLoop(dialog, accept, cancelled);
        // Activate the owner before destroying the dialog. If the active window is destroyed while
        // its owner is disabled, a desktop activates another program's window. Activation takes the
        // focus from a password field, which raises the input panel; hence SIP_FORCEDOWN after it.
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
