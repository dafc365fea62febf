#include "app/saving.h"

#include "storage/backup_files.h"
#include "storage/data_folder.h"
#include "window/messages.h"

namespace lunara {
namespace {

constexpr int FailureTextCapacity = 1024;

/// Shows which file could not be saved and the system's text for `error`. Returns whether the user
/// wants to try again.
bool AskForRetry(const WideString& path, DWORD error) {
    MessageText text(FailureTextCapacity);
    text.FormatSystem(&MessageText::Set, error);
    text.Prepend(TEXT("':\n"));
    text.Prepend(path.c_str());
    text.Prepend(TEXT("Fail to save file '"));
    return ShowText(nullptr, text.Text(), CaptionError, MB_RETRYCANCEL | MB_ICONEXCLAMATION) ==
           IDRETRY;
}

/// Ends an interrupted restore, because nothing may be saved while one could still move files into
/// the user's folder. Returns false when a file cannot be moved yet, with the folder in
/// `failedPath`.
bool MendRestoreFirst(const WCHAR* userName, WideString& failedPath) {
    if (!IsRestoreCutOff(userName) || MendCutOffRestore(userName) != 0) {
        return true;
    }
    failedPath = DataFolderOfUser(userName);
    // The real reason is lost by now; an open file is the usual one.
    ::SetLastError(ERROR_SHARING_VIOLATION);
    return false;
}

/// Saves once. Returns false with the path in `failedPath` and the reason in the last error.
bool Save(SignedInUser user, WideString& failedPath) {
    if (!MendRestoreFirst(user.userName, failedPath)) {
        return false;
    }
    int saved = 0;
    DWORD error = ERROR_SUCCESS;
    {
        const ClearPasswordScope clear(user.password);
        saved = user.data.Save(user.userName, user.password.Text());
        error = ::GetLastError();
    }
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
