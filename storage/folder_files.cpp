#include "storage/folder_files.h"

#include <functional>
#include <utility>
#include <vector>

#include "storage/data_folder.h"
#include "storage/replacement_file.h"

namespace lunara {
namespace {

constexpr WCHAR AllFiles[] = TEXT("*.*");

bool BeginsWithDot(const WIN32_FIND_DATAW& entry) { return entry.cFileName[0] == '.'; }

bool NamesFolder(const WIN32_FIND_DATAW& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsDotOrDotDot(const WIN32_FIND_DATAW& entry) {
    const WideView name(entry.cFileName);
    return name == TEXT(".") || name == TEXT("..");
}

/// Iterates over the entries of `folder` that match `pattern`; the destructor closes the search.
/// There are no entries when nothing matches or the path is too long.
class FolderSearch {
  public:
    FolderSearch(const WCHAR* folder, const WCHAR* pattern) {
        WideString path(folder);
        if (AppendPath(path, pattern) != 0) {
            handle = ::FindFirstFileW(path.c_str(), &entry);
        }
        found = handle != INVALID_HANDLE_VALUE;
    }
    FolderSearch(const FolderSearch&) = delete;
    FolderSearch& operator=(const FolderSearch&) = delete;
    ~FolderSearch() {
        if (handle != INVALID_HANDLE_VALUE) {
            ::FindClose(handle);
        }
    }

    bool HasEntry() const { return found; }
    const WIN32_FIND_DATAW& Entry() const { return entry; }
    void Next() { found = ::FindNextFileW(handle, &entry) != FALSE; }

  private:
    HANDLE handle = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAW entry{};
    bool found = false;
};

/// Deletes file `name` of `folder`. False on failure, and for a sub-folder.
bool DeleteEntry(const WCHAR* folder, const WCHAR* name) {
    WideString path(folder);
    return AppendPath(path, name) != 0 && ::DeleteFileW(path.c_str()) != FALSE;
}

/// Calls `transfer` with the source and the target path of every entry of `source` that matches
/// `pattern`, except those for which `IsPassedOver` is true. Stops and returns 0 when a call
/// returns false or a path is too long; otherwise returns 1.
int TransferFiles(const WCHAR* source, const WCHAR* target, const WCHAR* pattern,
                  const std::function<bool(const WCHAR*, const WCHAR*)>& transfer) {
    for (FolderSearch search(source, pattern); search.HasEntry(); search.Next()) {
        if (IsPassedOver(search.Entry())) {
            continue;
        }
        WideString from(source);
        WideString to(target);
        if (AppendPath(from, search.Entry().cFileName) == 0 ||
            AppendPath(to, search.Entry().cFileName) == 0 || !transfer(from.c_str(), to.c_str())) {
            return 0;
        }
    }
    return 1;
}

}  // namespace

int AppendPath(WideString& path, WideView name) {
    const bool endsWithSeparator = !path.empty() && path.back() == '\\';
    const bool beginsWithSeparator = !name.empty() && name.front() == '\\';
    WideString joined = path;
    if (!endsWithSeparator && !beginsWithSeparator) {
        joined.push_back('\\');
    }
    joined.append(endsWithSeparator && beginsWithSeparator ? name.substr(1) : name);
    if (joined.size() >= PathCapacity) {
        return 0;
    }
    path = joined;
    return 1;
}

bool IsPassedOver(const WIN32_FIND_DATAW& entry) { return BeginsWithDot(entry); }

NotDeleted DeleteFolderFiles(const WCHAR* folder, const WCHAR* pattern, FolderItself itself) {
    NotDeleted left;
    for (FolderSearch search(folder, pattern); search.HasEntry(); search.Next()) {
        if (BeginsWithDot(search.Entry()) && NamesFolder(search.Entry())) {
            continue;
        }
        if (!DeleteEntry(folder, search.Entry().cFileName)) {
            WideString path(folder);
            AppendPath(path, search.Entry().cFileName);
            left.files.push_back(path);
        }
    }
    if (itself == FolderItself::Goes && ::RemoveDirectoryW(folder) == FALSE) {
        left.folder = folder;
    }
    return left;
}

int CopyFolderFiles(const WCHAR* source, const WCHAR* target, const WCHAR* pattern) {
    return TransferFiles(source, target, pattern, [](const WCHAR* from, const WCHAR* to) {
        return ::CopyFileW(from, to, FALSE) != FALSE;
    });
}

int DeleteFilesGoneFrom(const WCHAR* source, const WCHAR* copies, const WCHAR* pattern) {
    if (!FolderSearch(source, pattern).HasEntry()) {
        return 1;
    }
    int deleted = 1;
    for (FolderSearch search(copies, pattern); search.HasEntry(); search.Next()) {
        WideString original(source);
        if (AppendPath(original, search.Entry().cFileName) != 0 &&
            ::GetFileAttributesW(original.c_str()) == INVALID_FILE_ATTRIBUTES &&
            !DeleteEntry(copies, search.Entry().cFileName)) {
            deleted = 0;
        }
    }
    return deleted;
}

std::vector<WideString> SubFolders(const WCHAR* folder) {
    std::vector<WideString> names;
    for (FolderSearch search(folder, AllFiles); search.HasEntry(); search.Next()) {
        if (NamesFolder(search.Entry()) && !BeginsWithDot(search.Entry())) {
            names.emplace_back(search.Entry().cFileName);
        }
    }
    return names;
}

bool HasUnmovableEntries(const WCHAR* folder) {
    for (FolderSearch search(folder, AllFiles); search.HasEntry(); search.Next()) {
        if (IsDotOrDotDot(search.Entry())) {
            continue;
        }
        WideString path(folder);
        if (NamesFolder(search.Entry()) || AppendPath(path, search.Entry().cFileName) == 0) {
            return true;
        }
        const HANDLE file = ::CreateFileW(path.c_str(), DELETE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) {
            return true;
        }
        ::CloseHandle(file);
    }
    return false;
}

std::vector<WideString> MoveFolderFiles(const WCHAR* source, const WCHAR* target) {
    std::vector<WideString> left;
    TransferFiles(source, target, AllFiles, [&left](const WCHAR* from, const WCHAR* to) {
        if (IsFolder(from) || CurrentFileCalls().Replace(from, to) == FALSE) {
            left.emplace_back(from);
        }
        return true;
    });
    return left;
}

int MoveAllFolderFiles(const WCHAR* source, const WCHAR* target) {
    std::vector<std::pair<WideString, WideString>> moved;
    const int finished =
        TransferFiles(source, target, AllFiles, [&moved](const WCHAR* from, const WCHAR* to) {
            if (CurrentFileCalls().Replace(from, to) == FALSE) {
                return false;
            }
            moved.emplace_back(from, to);
            return true;
        });
    if (finished == 0) {
        for (const auto& [from, to] : moved) {
            CurrentFileCalls().Replace(to.c_str(), from.c_str());
        }
    }
    return finished;
}

int RemoveFolder(const WideString& folder) {
    if (!IsFolder(folder.c_str()) ||
        DeleteFolderFiles(folder.c_str(), AllFiles, FolderItself::Goes).IsNothing()) {
        return 1;
    }
    for (FolderSearch search(folder.c_str(), AllFiles); search.HasEntry(); search.Next()) {
        WideString path(folder);
        if (!NamesFolder(search.Entry()) &&
            (search.Entry().dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0 &&
            AppendPath(path, search.Entry().cFileName) != 0) {
            ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_ARCHIVE);
        }
    }
    return DeleteFolderFiles(folder.c_str(), AllFiles, FolderItself::Goes).IsNothing() ? 1 : 0;
}

}  // namespace lunara
