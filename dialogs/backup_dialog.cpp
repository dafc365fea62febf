#include "dialogs/backup_dialog.h"

#include "platform/clock.h"
#include "platform/pocketpc/aygshell.h"
#include "records/dates.h"
#include "resources/ids.h"
#include "window/data_exchange.h"

namespace lunara {

BackupDialog::BackupDialog(Window* owner) : Dialog(IDD_BACKUP, owner) {
    static_assert(DateStampCapacity <= static_cast<int>(PathCapacity));
    FormatDateStamp(LocalNow(), backupName.data());
}

BOOL BackupDialog::OnInitDialog() {
    const BOOL result = Dialog::OnInitDialog();
    SHSipPreference(Handle(), SIP_UP);
    return result;
}

void BackupDialog::OnOK() {
    UpdateData(true);
    SHSipPreference(Handle(), SIP_FORCEDOWN);
    ::EndDialog(Handle(), IDOK);
}

void BackupDialog::OnCancel() {
    SHSipPreference(Handle(), SIP_FORCEDOWN);
    ::EndDialog(Handle(), IDCANCEL);
}

void BackupDialog::DoDataExchange(DataExchange& exchange) {
    ExchangeText(exchange, IDC_BACKUP_NAME, backupName.data(), static_cast<int>(PathCapacity));
    LimitText(exchange, backupName.data(), static_cast<int>(PathCapacity) - 1);
    ExchangeCheck(exchange, IDC_SAVE_FIRST, saveFirst);
}

}  // namespace lunara
