#include "app/backup.h"

#include "app/saving.h"
#include "dialogs/backup_dialog.h"
#include "dialogs/file_boxes.h"
#include "dialogs/restore_dialog.h"
#include "resources/ids.h"
#include "storage/backup_files.h"
#include "window/messages.h"

namespace lunara {
namespace {

bool IsEmpty(const UserData& data) {
    return data.Bleeding().Count() == 0 && data.Temperature().Count() == 0 &&
           data.NoteFlags().Count() == 0 && data.NotePages().Count() == 0;
}

/// Saves unsaved entries before a backup copies the files. Returns false, and the backup must not
/// be made, when the password is needed for that and the user does not enter it. A failed save that
/// the user gives up does not stop the backup.
bool SaveFirst(Window& main, SignedInUser user) {
    if (user.data.IsDirty() && EnsurePassword(main, user) == 0) {
        return false;
    }
    if (!user.password.IsHeld()) {
        return true;  // the password is wiped and nothing is unsaved
    }
    // Wipe the password once everything is on disk. After a failed save it stays: the unsaved
    // entries still need it. It stays for an empty diary too: no file exists to check a password
    // against, so EnsurePassword would accept any.
    if (SaveWithHeldPassword(user) != 0 && !IsEmpty(user.data)) {
        user.password.Wipe();
    }
    return true;
}

}  // namespace

void Backup(Window& main, SignedInUser user) {
    const DialogScope scope(main);
    BackupDialog dialog(&main);
    if (dialog.DoModal() != IDOK) {
        return;
    }
    if (dialog.saveFirst == 1 && !SaveFirst(main, user)) {
        return;
    }
    const BackupResult result = BackupFiles(user.userName, dialog.backupName.data());
    if (result == BackupResult::Done) {
        ShowMessage(nullptr, IDS_BACKUP_DONE, CaptionMessage, MB_OK);
        return;
    }
    if (result == BackupResult::NoFolder) {
        ShowMessage(nullptr, IDS_NO_BACKUP_FOLDER, CaptionError, MB_OK);
    }
    ShowMessage(nullptr, IDS_BACKUP_FAILED, CaptionWarning, MB_OK);
}

int Restore(Window& main, SignedInUser user) {
    const DialogScope scope(main);
    RestoreDialog dialog(BackupsFolderOfUser(user.userName), &main);
    if (dialog.DoModal() != IDOK ||
        ShowMessage(main.Handle(), IDS_ASK_RESTORE, CaptionWarning, MB_YESNO) != IDYES) {
        return 0;
    }
    const RestoreResult result = RestoreFiles(user.userName, dialog.backupName.data());
    // Show the boxes only now that every file is in place: while a box is up, the session may end.
    for (const WideString& path : result.filesLeft) {
        ShowFileStays(path);
    }
    if (!result.isRestored) {
        if (IsRestoreCutOff(user.userName)) {
            // The user's folder may lack files; only the diary in memory is complete. A later save
            // must write all of it.
            user.data.MarkAllDirty();
            ShowRestoreCutOff(nullptr);
        }
        return 0;
    }
    // The diary in memory belongs to the files that were just replaced. Unload it, so that it is
    // never saved over the restored ones, whether the sign-in succeeds or not.
    user.data.Unload();
    if (Login(main, user) != 0) {
        return 1;
    }
    ::PostQuitMessage(0);
    return 0;
}

}  // namespace lunara
