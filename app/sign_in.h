#pragma once

// Signing in and changing the password. There is no list of users: a name and a password together
// open a diary, and a new name begins a new one.

#include "app/held_password.h"
#include "dialogs/login_dialog.h"
#include "diary/user_data.h"
#include "window/modal_loop.h"

namespace lunara {

/// What the main window lends for it. `userName` holds NameCapacity units.
struct SignedInUser {
    UserData& data;
    WCHAR* userName;
    HeldPassword& password;
};

/// Asks for name and password, the name preset with the user's, until they open a diary. Returns 1
/// with the diary loaded and name and password kept, 0 when the user gave up.
int Login(Window& main, SignedInUser user);

/// Sees to it that the password is held, asking for it when it was wiped: the name stands fast, and
/// only a password that opens the user's files as they are on disk is taken. 1, or 0 when the user
/// gave up.
int EnsurePassword(Window& main, SignedInUser user);

/// Asks for the old and the new password (and before that for the present one, when it is not
/// held). Returns 1 when the new one took the old one's place; every file is then written anew at
/// the next save, which enciphers it with the new one.
int ChangePassword(Window& main, SignedInUser user);

}  // namespace lunara
