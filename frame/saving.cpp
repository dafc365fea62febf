#include "frame/saving.h"

#include "frame/messages.h"

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

}  // namespace

int SaveWithHeldPassword(SignedInUser user) {
    for (;;) {
        user.password.Unmask();
        const int saved = user.data.Save(user.userName, user.password.Text());
        const DWORD error = ::GetLastError();
        user.password.Mask();
        if (saved != 0) {
            return 1;
        }
        if (!AskForRetry(user.data.FailedPath(), error)) {
            return 0;
        }
    }
}

}  // namespace lunara
