#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string>

#include "platform/posix/native_path.h"
#include "platform/posix/win32_posix.h"
#include "platform/text.h"

namespace {

using lunara::NativePath;

/// An open search; its address is the HANDLE.
struct Search {
    DIR* folder = nullptr;
    std::string path;           // of the folder, with '/' at its end
    lunara::WideString suffix;  // how a name must end; empty for every name

    Search() = default;
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;
    ~Search() {
        if (folder != nullptr) {
            ::closedir(folder);
        }
    }
};

bool Matches(const Search& search, const lunara::WideString& name) {
    return name.size() >= search.suffix.size() &&
           name.compare(name.size() - search.suffix.size(), search.suffix.size(), search.suffix) ==
               0;
}

/// Stores the next matching entry. FALSE after the last one, with ERROR_NO_MORE_FILES, or when the
/// folder cannot be read, with ERROR_READ_FAULT.
BOOL Next(Search& search, WIN32_FIND_DATAW& entry) {
    for (;;) {
        errno = 0;
        const dirent* found = ::readdir(search.folder);
        if (found == nullptr) {
            SetLastError(errno == 0 ? ERROR_NO_MORE_FILES : ERROR_READ_FAULT);
            return FALSE;
        }
        const std::optional<lunara::WideString> name = lunara::FromUtf8(found->d_name);
        // Skip a name that is not UTF-8 or does not fit: the program never creates such a file.
        if (!name || name->size() >= std::size(entry.cFileName) || !Matches(search, *name)) {
            continue;
        }
        struct stat status {};
        const bool isFolder =
            ::stat((search.path + found->d_name).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
        entry.dwFileAttributes = isFolder ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
        lunara::CopyText(entry.cFileName, std::size(entry.cFileName), *name);
        return TRUE;
    }
}

}  // namespace

HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* entry) {
    const lunara::WideView whole(pattern);
    const std::size_t last = whole.find_last_of(TEXT("\\/"));
    const lunara::WideView name = last == lunara::WideView::npos ? whole : whole.substr(last + 1);
    auto search = std::make_unique<Search>();
    search->path = last == lunara::WideView::npos
                       ? "./"
                       : NativePath(lunara::WideString(whole.substr(0, last + 1)).c_str());
    search->suffix = name == TEXT("*.*") ? lunara::WideView() : name.substr(1);
    search->folder = ::opendir(search->path.c_str());
    if (search->folder == nullptr) {
        SetLastError(errno == ENOENT || errno == ENOTDIR ? ERROR_PATH_NOT_FOUND
                                                         : ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    if (Next(*search, *entry) == FALSE) {
        if (GetLastError() == ERROR_NO_MORE_FILES) {
            SetLastError(ERROR_FILE_NOT_FOUND);
        }
        return INVALID_HANDLE_VALUE;
    }
    return search.release();
}

BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* entry) {
    return Next(*static_cast<Search*>(search), *entry);
}

BOOL FindClose(HANDLE search) {
    delete static_cast<Search*>(search);
    return TRUE;
}
