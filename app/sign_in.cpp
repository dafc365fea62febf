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

/// Loads the diary with the name and password in `dialog`. On failure says why, clears the password
/// field and focuses it.
bool TryToLoad(LoginDialog& dialog, UserData& data) {
    if (MendCutOffRestore(dialog.userName) == 0) {
        ShowRestoreCutOff(dialog.Handle());
        return false;
    }
    const int loaded = data.Load(dialog.userName, dialog.password);
    DWORD error = ::GetLastError();
    if (loaded != 0) {
        return true;
    }
    if (error == 0) {
        // A file that ends inside its header fails with error 0, which has no text. Report it as
        // corrupt, so that OK does not seem to do nothing.
        error = DataFileCorrupt;
    }
    ShowMessage(dialog.Handle(), error, CaptionWarning, MB_ICONEXCLAMATION);
    dialog.password[0] = 0;
    dialog.LoadAndFocus(IDC_PASSWORD);
    return false;
}

/// Whether the old password in `dialog` is the held one. If not, says so, clears the field and
/// focuses it.
bool CheckOldPassword(ChangePasswordDialog& dialog, HeldPassword& password) {
    {
        const ClearPasswordScope clear(password);
        if (password.Equals(dialog.oldPassword)) {
            return true;
        }
    }
    ShowText(dialog.Handle(), TEXT("Old password does not match!"), CaptionWarning,
             MB_ICONEXCLAMATION);
    dialog.oldPassword[0] = 0;
    dialog.LoadAndFocus(IDC_OLD_PASSWORD);
    return false;
}

/// Replaces the held password, and leaves it masked.
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
    // The password is right if it opens the files on disk. Load them into a data set of their own,
    // because the one in memory may have unsaved entries.
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
