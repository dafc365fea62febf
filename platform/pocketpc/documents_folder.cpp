#include "platform/pocketpc/documents_folder.h"

#include <shlobj.h>

namespace lunara {
namespace {

WideString& FixedFolder() {
    static WideString folder;
    return folder;
}

}  // namespace

WideString DocumentsFolder() {
    if (!FixedFolder().empty()) {
        return FixedFolder();
    }
    PWSTR path = nullptr;
    WideString folder;
    if (SUCCEEDED(::SHGetKnownFolderPath(FOLDERID_Documents, 0, nullptr, &path))) {
        folder = path;
    }
    ::CoTaskMemFree(path);  // also after a failure; null is allowed
    while (!folder.empty() && (folder.back() == '\\' || folder.back() == '/')) {
        folder.pop_back();
    }
    return folder;
}

void SetDocumentsFolder(WideView folder) { FixedFolder() = folder; }

}  // namespace lunara
