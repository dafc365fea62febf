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
    return data.bleeding.Count() == 0 && data.temperature.Count() == 0 &&
           data.noteFlags.Count() == 0 && data.notePages.Count() == 0;
}

/// Saves before the copies are made. False when it needs the password and she did not give it.
bool SaveFirst(Window& main, SignedInUser user) {
    if (user.data.IsDirty() && EnsurePassword(main, user) == 0) {
        return false;
    }
    if (!user.password.IsHeld()) {
        return true;  // and nothing to save
    }
    // Entries that are not on disk yet never would be without the password. And with no file on
    // disk, any other password would later be taken for hers.
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
    // Only now, with every file in its place: anything can happen while a box stands.
    for (const WideString& path : result.filesLeft) {
        ShowFileStays(path);
    }
    if (!result.isRestored) {
        if (IsRestoreCutOff(user.userName)) {
            // Of her diary, only what is in memory is sure to be whole.
            user.data.MarkAllDirty();
            ShowRestoreCutOff(nullptr);
        }
        return 0;
    }
    // What is in memory belongs to the files that were just replaced: it must not be saved over
    // them, however this ends.
    user.data.Unload();
    if (Login(main, user) != 0) {
        return 1;
    }
    ::PostQuitMessage(0);
    return 0;
}

}  // namespace lunara
