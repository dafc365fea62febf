#include "dialogs/file_boxes.h"

#include <array>

#include "window/messages.h"

namespace lunara {
namespace {

void ShowFailure(const WCHAR* format, const WideString& path) {
    std::array<WCHAR, PathCapacity + 64> text{};
    FormatText(text.data(), text.size(), format, path.c_str());
    ShowText(nullptr, text.data(), CaptionError, MB_OK);
}

}  // namespace

void ShowFileStays(const WideString& path) { ShowFailure(TEXT("Fail to delete file '%s'"), path); }

void ShowNotDeleted(const NotDeleted& left) {
    for (const WideString& path : left.files) {
        ShowFileStays(path);
    }
    if (!left.folder.empty()) {
        ShowFailure(TEXT("Fail to delete folder '%s'"), left.folder);
    }
}

void ShowRestoreCutOff(HWND owner) {
    ShowText(owner, TEXT("A restore was cut off, and its files are still in use!"), CaptionWarning,
             MB_ICONEXCLAMATION);
}

}  // namespace lunara
