#include "platform/app_folder.h"

#include <array>

namespace lunara {

WideView FolderOfModule(const WCHAR* path, DWORD length, std::size_t size) {
    if (length >= size) {
        return {};
    }
    const WideView module(path, length);
    const std::size_t last = module.find_last_of(TEXT("\\/"));
    return last == WideView::npos ? WideView() : module.substr(0, last + 1);
}

int GetAppFolder(WCHAR* buffer, int size) {
    std::array<WCHAR, PathCapacity> path{};
    const DWORD length =
        ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    CopyText(buffer, static_cast<std::size_t>(size),
             FolderOfModule(path.data(), length, path.size()));
    return 1;
}

}  // namespace lunara
