#pragma once

// The commands "Backup" and "Restore".

#include "app/sign_in.h"

namespace lunara {

/// Asks for a name, saves what is unsaved if she wants, and copies her files. Afterwards, when it
/// saved, the password is not held any more: `EnsurePassword` asks for it when it is needed next.
void Backup(Window& main, SignedInUser user);

/// Asks for a backup, puts it in place and signs in anew. Returns 1 when another diary is loaded,
/// which the views have to show; 0 when nothing changed. When the sign-in was given up the diary is
/// unloaded and the program asked to end.
int Restore(Window& main, SignedInUser user);

}  // namespace lunara
