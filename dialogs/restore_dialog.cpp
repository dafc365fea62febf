#include "dialogs/restore_dialog.h"

#include "dialogs/file_boxes.h"
#include "platform/pocketpc/aygshell.h"
#include "resources/ids.h"
#include "storage/folder_files.h"
#include "window/data_exchange.h"
#include "window/messages.h"

namespace lunara {

RestoreDialog::RestoreDialog(WideView folder, Window* owner)
    : Dialog(IDD_RESTORE, owner), backupsFolder(folder) {}

HWND RestoreDialog::List() const { return ::GetDlgItem(Handle(), IDC_BACKUP_LIST); }

void RestoreDialog::FillList() {
    // An empty path would search the root of the drive, and offer its folders for deletion.
    if (backupsFolder.empty()) {
        return;
    }
    for (const WideString& name : SubFolders(backupsFolder.c_str())) {
        ::SendMessageW(List(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
        if (backupName[0] == 0) {  // preselects the first one found; the list may be sorted
            CopyText(backupName.data(), backupName.size(), name.c_str());
        }
    }
}

void RestoreDialog::SayThereAreNone() {
    ShowMessage(Handle(), IDS_NO_BACKUPS, CaptionWarning, MB_OK);
    OnCancel();
}

BOOL RestoreDialog::OnInitDialog() {
    FillList();
    if (backupName[0] == 0) {
        SayThereAreNone();
        return TRUE;
    }
    const BOOL result = Dialog::OnInitDialog();
    SHSipPreference(Handle(), SIP_UP);
    return result;
}

void RestoreDialog::OnOK() {
    UpdateData(true);
    SHSipPreference(Handle(), SIP_FORCEDOWN);
    ::EndDialog(Handle(), IDOK);
}

void RestoreDialog::OnCancel() {
    SHSipPreference(Handle(), SIP_FORCEDOWN);
    ::EndDialog(Handle(), IDCANCEL);
}

void RestoreDialog::OnDeleteCurrent() {
    const LRESULT item = ::SendMessageW(List(), CB_GETCURSEL, 0, 0);
    if (item == CB_ERR) {
        return;
    }
    std::array<WCHAR, PathCapacity> name{};
    ::SendMessageW(List(), CB_GETLBTEXT, static_cast<WPARAM>(item),
                   reinterpret_cast<LPARAM>(name.data()));
    WideString folder = backupsFolder;
    if (AppendPath(folder, name.data()) != 0) {
        ShowNotDeleted(DeleteFolderFiles(folder.c_str(), TEXT("*.*"), FolderItself::Goes));
    }
    ::SendMessageW(List(), CB_DELETESTRING, static_cast<WPARAM>(item), 0);
    if (::SendMessageW(List(), CB_GETCOUNT, 0, 0) <= 0) {
        SayThereAreNone();
    } else {
        ::SendMessageW(List(), CB_SETCURSEL, 0, 0);
    }
}

bool RestoreDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND && LOWORD(wParam) == IDC_DELETE_BACKUP) {
        OnDeleteCurrent();
        if (result != nullptr) {
            *result = 0;
        }
        return true;
    }
    return Dialog::OnMessage(message, wParam, lParam, result);
}

void RestoreDialog::DoDataExchange(DataExchange& exchange) {
    ExchangeComboText(exchange, IDC_BACKUP_LIST, backupName.data());
}

}  // namespace lunara
