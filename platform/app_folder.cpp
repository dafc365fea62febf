#include "platform/app_folder.h"

#include <algorithm>

#include "platform/text.h"

namespace lunara {

int GetAppFolder(WCHAR* buffer, int size) {
    std::array<WCHAR, PathCapacity> path{};
    const DWORD length =
        ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    WideView folder(path.data(), std::min<std::size_t>(length, path.size()));
    const std::size_t last = folder.find_last_of(TEXT("\\/"));
    folder = last == WideView::npos ? WideView() : folder.substr(0, last + 1);
    CopyText(buffer, static_cast<std::size_t>(size), folder);
    return 1;
}

}  // namespace lunara
