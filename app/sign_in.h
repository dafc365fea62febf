#pragma once

// Signing in and changing the password. There is no list of users: a name and a password together
// open a diary, and a name without files starts an empty diary.

#include "app/held_password.h"
#include "dialogs/login_dialog.h"
#include "diary/user_data.h"
#include "window/modal_loop.h"

namespace lunara {

/// References to the main window's diary, user name (a buffer of NameCapacity UTF-16 units) and
/// password.
struct SignedInUser {
    UserData& data;
    WCHAR* userName;
    HeldPassword& password;
};

/// Shows the sign-in until name and password open a diary. The name field is preset with
/// `user.userName`, or with "Unknown" if that is empty. Returns 1 with the diary loaded, the name
/// stored and the password held; 0 when the user gives up.
int Login(Window& main, SignedInUser user);

/// Makes sure that the password is held. If it was wiped, asks for it, with the name read-only,
/// until the user enters one that opens the user's files on disk. Returns 1, or 0 when the user
/// gives up. The diary in memory does not change.
int EnsurePassword(Window& main, SignedInUser user);

/// Asks for the old and the new password, after `EnsurePassword`. Returns 1 when the new one is
/// held; every collection is then dirty, so that the next save enciphers all files with it. Returns
/// 0 when the user gives up.
int ChangePassword(Window& main, SignedInUser user);

}  // namespace lunara
