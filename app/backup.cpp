#include "app/backup.h"

#include "app/saving.h"
#include "dialogs/backup_dialog.h"
#include "resources/ids.h"
#include "storage/backup_files.h"
#include "window/messages.h"

namespace lunara {
namespace {

/// Buttons are hidden while a dialog is up.
class HiddenButtons {
  public:
    explicit HiddenButtons(DialogHost& host) : main(host) { main.HideButtons(); }
    HiddenButtons(const HiddenButtons&) = delete;
    HiddenButtons& operator=(const HiddenButtons&) = delete;
    ~HiddenButtons() { main.ShowButtons(); }

  private:
    DialogHost& main;
};

bool IsEmpty(const UserData& data) {
    return data.Bleeding().Count() == 0 && data.Temperature().Count() == 0 &&
           data.NoteFlags().Count() == 0 && data.NotePages().Count() == 0;
}

/// Saves before the copies are made. False when it needs the password and she did not give it.
bool SaveFirst(DialogHost& main, SignedInUser user) {
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

void Backup(DialogHost& main, SignedInUser user) {
    const HiddenButtons hidden(main);
    BackupDialog dialog(&main.Frame());
    if (dialog.DoModal() != IDOK) {
        return;
    }
    if (dialog.saveFirst == 1 && !SaveFirst(main, user)) {
        return;
    }
    if (BackupFiles(user.userName, dialog.backupName.data()) != 0) {
        ShowMessage(nullptr, IDS_BACKUP_DONE, CaptionMessage, MB_OK);
    } else {
        ShowMessage(nullptr, IDS_BACKUP_FAILED, CaptionWarning, MB_OK);
    }
}

int Restore(DialogHost& main, SignedInUser user) {
    const HiddenButtons hidden(main);
    RestoreDialog dialog(BackupsFolderOfUser(user.userName), &main.Frame());
    if (dialog.DoModal() != IDOK ||
        ShowMessage(main.Frame().Handle(), IDS_ASK_RESTORE, CaptionWarning, MB_YESNO) != IDYES) {
        return 0;
    }
    if (RestoreFiles(user.userName, dialog.backupName.data()) == 0) {
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
