#include "platform/documents_folder.h"

#include <cstdlib>

namespace lunara {
namespace {

WideString& FixedFolder() {
    static WideString folder;
    return folder;
}

/// The absolute path in environment variable `name`, followed by `below`. Empty when the variable
/// is not set, not absolute or not UTF-8.
WideString FromEnvironment(const char* name, WideView below) {
    const char* value = std::getenv(name);
    if (value == nullptr || value[0] != '/') {
        return {};
    }
    const std::optional<WideString> folder = FromUtf8(value);
    return folder ? *folder + WideString(below) : WideString();
}

}  // namespace

WideString DocumentsFolder() {
    if (!FixedFolder().empty()) {
        return FixedFolder();
    }
    const WideString chosen = FromEnvironment("XDG_DOCUMENTS_DIR", {});
    return chosen.empty() ? FromEnvironment("HOME", TEXT("/Documents")) : chosen;
}

void SetDocumentsFolder(WideView folder) { FixedFolder() = folder; }

}  // namespace lunara
