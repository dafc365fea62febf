#include "app/sign_in.h"

#include "dialogs/change_password_dialog.h"
#include "dialogs/file_boxes.h"
#include "platform/text.h"
#include "resources/ids.h"
#include "storage/backup_files.h"
#include "storage/data_file.h"
#include "window/messages.h"

namespace lunara {
namespace {

/// One try with what the dialog holds. On failure says why and asks for the password again.
bool TryToLoad(LoginDialog& dialog, UserData& data) {
    if (RecoverInterruptedRestore(dialog.userName) == 0) {
        ShowRestoreCutOff(dialog.Handle());
        return false;
    }
    const int loaded = data.Load(dialog.userName, dialog.password);
    DWORD error = ::GetLastError();
    if (loaded != 0) {
        return true;
    }
    if (error == 0) {
        // A file that ends inside its header leaves no error, and OK would seem to do nothing.
        error = DataFileCorrupt;
    }
    ShowMessage(dialog.Handle(), error, CaptionWarning, MB_ICONEXCLAMATION);
    dialog.password[0] = 0;
    dialog.LoadAndFocus(IDC_PASSWORD);
    return false;
}

/// Whether the old password was typed right; if not, says so and asks for it again.
bool CheckOldPassword(ChangePasswordDialog& dialog, HeldPassword& password) {
    password.Unmask();
    const bool equal = password.Equals(dialog.oldPassword);
    password.Mask();
    if (equal) {
        return true;
    }
    ShowText(dialog.Handle(), TEXT("Old password does not match!"), CaptionWarning,
             MB_ICONEXCLAMATION);
    dialog.oldPassword[0] = 0;
    dialog.LoadAndFocus(IDC_OLD_PASSWORD);
    return false;
}

void KeepPassword(HeldPassword& held, const WCHAR* password) {
    held.Wipe();
    held.Set(password);
    held.Mask();
}

}  // namespace

int Login(Window& main, SignedInUser user) {
    LoginDialog dialog(&main);
    if (user.userName[0] != 0) {
        CopyText(dialog.userName, NameCapacity, user.userName);
    }
    if (RunDialog(main, dialog, IDD_LOGIN,
                  [&dialog, &user] { return TryToLoad(dialog, user.data); }) == 0) {
        return 0;
    }
    CopyText(user.userName, NameCapacity, dialog.userName);
    KeepPassword(user.password, dialog.password);
    return 1;
}

int EnsurePassword(Window& main, SignedInUser user) {
    if (user.password.IsHeld()) {
        return 1;
    }
    LoginDialog dialog(&main);
    dialog.nameIsFixed = true;
    CopyText(dialog.userName, NameCapacity, user.userName);
    // What is on disk tells whether the password is the right one; what is in memory stays as it
    // is.
    const auto opens = [&dialog] {
        UserData onDisk;
        return TryToLoad(dialog, onDisk);
    };
    if (RunDialog(main, dialog, IDD_LOGIN, opens) == 0) {
        return 0;
    }
    KeepPassword(user.password, dialog.password);
    return 1;
}

int ChangePassword(Window& main, SignedInUser user) {
    if (EnsurePassword(main, user) == 0) {
        return 0;
    }
    ChangePasswordDialog dialog(&main);
    if (RunDialog(main, dialog, IDD_CHANGE_PASSWORD,
                  [&dialog, &user] { return CheckOldPassword(dialog, user.password); }) == 0) {
        return 0;
    }
    KeepPassword(user.password, dialog.newPassword);
    user.data.MarkAllDirty();
    return 1;
}

}  // namespace lunara
