#pragma once

// The commands "Backup" and "Restore": dialogs and messages around storage/backup_files.h.

#include "app/sign_in.h"

namespace lunara {

/// Asks for a backup name, saves unsaved entries if the user wants that, copies the user's files,
/// and reports the result in a message box. Saving wipes the held password (unless the save failed
/// or the diary is empty); `EnsurePassword` asks for it when it is needed next.
void Backup(Window& main, SignedInUser user);

/// Asks for a backup, replaces the user's files by it, and signs in again. Returns 1 when the
/// restored diary is loaded and the views must show it. Returns 0 when the user declined or the
/// restore failed, with the diary in memory unchanged; also when the user gave up the sign-in, with
/// the diary unloaded and WM_QUIT posted.
int Restore(Window& main, SignedInUser user);

}  // namespace lunara
