#include "platform/documents_folder.h"

#include <shlobj.h>

namespace lunara {
namespace {

WideString& FixedFolder() {
    static WideString folder;
    return folder;
}

/// A system library, loaded for the lifetime of the object. shell32 and ole32 are not linked,
/// because every start would then load them and seven libraries that they need; backups are rare.
class Library {
  public:
    explicit Library(const WCHAR* name) : module(::LoadLibraryW(name)) {}
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() {
        if (module != nullptr) {
            ::FreeLibrary(module);
        }
    }

    /// The exported function `name`; null when the library or the function is missing.
    template <typename Function>
    Function* Find(const char* name) const {
        return module == nullptr ? nullptr
                                 : reinterpret_cast<Function*>(
                                       reinterpret_cast<void*>(::GetProcAddress(module, name)));
    }

  private:
    HMODULE module;
};

}  // namespace

WideString DocumentsFolder() {
    if (!FixedFolder().empty()) {
        return FixedFolder();
    }
    const Library shell(TEXT("shell32.dll"));
    const Library ole(TEXT("ole32.dll"));
    const auto getFolder = shell.Find<decltype(::SHGetKnownFolderPath)>("SHGetKnownFolderPath");
    const auto freeMemory = ole.Find<decltype(::CoTaskMemFree)>("CoTaskMemFree");
    if (getFolder == nullptr || freeMemory == nullptr) {
        return {};
    }
    PWSTR path = nullptr;
    WideString folder;
    if (SUCCEEDED(getFolder(FOLDERID_Documents, KF_FLAG_CREATE, nullptr, &path))) {
        folder = path;
    }
    freeMemory(path);  // also after a failure; null is allowed
    while (!folder.empty() && (folder.back() == '\\' || folder.back() == '/')) {
        folder.pop_back();
    }
    return folder;
}

void SetDocumentsFolder(WideView folder) { FixedFolder() = folder; }

}  // namespace lunara
