#include "app/saving.h"

#include "storage/backup_files.h"
#include "storage/data_folder.h"
#include "window/messages.h"

namespace lunara {
namespace {

constexpr int FailureTextCapacity = 1024;

bool AskForRetry(const WideString& path, DWORD error) {
    MessageText text(FailureTextCapacity);
    text.FormatSystem(&MessageText::Set, error);
    text.Prepend(TEXT("':\n"));
    text.Prepend(path.c_str());
    text.Prepend(TEXT("Fail to save file '"));
    return ShowText(nullptr, text.Text(), CaptionError, MB_RETRYCANCEL | MB_ICONEXCLAMATION) ==
           IDRETRY;
}

/// Where a restore that was cut off may still move files, nothing is saved before it is ended.
bool EndRestore(const WCHAR* userName, WideString& failedPath) {
    if (!IsRestoreCutOff(userName) || RecoverInterruptedRestore(userName) != 0) {
        return true;
    }
    failedPath = DataFolderOfUser(userName);
    ::SetLastError(ERROR_SHARING_VIOLATION);  // whatever it was that kept a file from being moved
    return false;
}

bool Save(SignedInUser user, WideString& failedPath) {
    if (!EndRestore(user.userName, failedPath)) {
        return false;
    }
    user.password.Unmask();
    const int saved = user.data.Save(user.userName, user.password.Text());
    const DWORD error = ::GetLastError();
    user.password.Mask();
    failedPath = user.data.LastFailure().path;
    ::SetLastError(error);
    return saved != 0;
}

}  // namespace

int SaveWithHeldPassword(SignedInUser user) {
    WideString failedPath;
    while (!Save(user, failedPath)) {
        const DWORD error = ::GetLastError();
        if (!AskForRetry(failedPath, error)) {
            return 0;
        }
    }
    return 1;
}

}  // namespace lunara
