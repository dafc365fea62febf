#include "frame/folder_files.h"

#include <functional>
#include <utility>
#include <vector>

#include "frame/messages.h"

namespace lunara {
namespace {

constexpr WCHAR AllFiles[] = TEXT("*.*");
constexpr WCHAR DeleteFileFailed[] = TEXT("Fail to delete file '%s'");
constexpr WCHAR DeleteFolderFailed[] = TEXT("Fail to delete folder '%s'");

bool BeginsWithDot(const WIN32_FIND_DATAW& entry) { return entry.cFileName[0] == '.'; }

bool IsFolder(const WIN32_FIND_DATAW& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Whether `CopyFolderFiles` passes over the entry.
bool IsPassedOver(const WIN32_FIND_DATAW& entry) {
    return BeginsWithDot(entry) || (entry.dwFileAttributes & FILE_ATTRIBUTE_NORMAL) != 0;
}

/// A search over folder\pattern, closed at the end of the scope. A search that finds nothing, or
/// whose path does not fit, has no entries.
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

void ShowFailure(const WCHAR* format, const WCHAR* path) {
    std::array<WCHAR, PathCapacity + 64> text{};
    FormatText(text.data(), text.size(), format, path);
    ShowText(nullptr, text.data(), CaptionError, MB_OK);
}

bool DeleteEntry(const WCHAR* folder, const WCHAR* name, bool quiet) {
    WideString path(folder);
    if (AppendPath(path, name) != 0 && ::DeleteFileW(path.c_str()) != FALSE) {
        return true;
    }
    if (!quiet) {
        ShowFailure(DeleteFileFailed, path.c_str());
    }
    return false;
}

/// Calls `transfer` with source and target path of every entry that is to go from one folder into
/// the other, until it fails or a path does not fit.
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

int DeleteFolderFiles(const WCHAR* folder, const WCHAR* pattern, bool removeFolder, bool quiet) {
    for (FolderSearch search(folder, pattern); search.HasEntry(); search.Next()) {
        if (BeginsWithDot(search.Entry()) && IsFolder(search.Entry())) {
            continue;
        }
        if (!DeleteEntry(folder, search.Entry().cFileName, quiet) && quiet) {
            return 1;
        }
    }
    if (removeFolder && ::RemoveDirectoryW(folder) == FALSE) {
        if (quiet) {
            return 2;
        }
        ShowFailure(DeleteFolderFailed, folder);
    }
    return 0;
}

int CopyFolderFiles(const WCHAR* source, const WCHAR* target, const WCHAR* pattern, bool clearFirst,
                    bool overwrite, bool quiet) {
    if (clearFirst && DeleteFolderFiles(target, AllFiles, false, quiet) != 0) {
        return 0;
    }
    return TransferFiles(source, target, pattern, [overwrite](const WCHAR* from, const WCHAR* to) {
        return ::CopyFileW(from, to, overwrite ? FALSE : TRUE) != FALSE;
    });
}

void MarkFilesForArchive(const WCHAR* folder) {
    for (FolderSearch search(folder, AllFiles); search.HasEntry(); search.Next()) {
        WideString path(folder);
        if (search.Entry().dwFileAttributes == FILE_ATTRIBUTE_NORMAL &&
            AppendPath(path, search.Entry().cFileName) != 0) {
            ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_ARCHIVE);
        }
    }
}

int MoveFolderFiles(const WCHAR* source, const WCHAR* target, OnMoveFailure onFailure) {
    constexpr DWORD Flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    std::vector<std::pair<WideString, WideString>> moved;
    bool all = true;
    const int finished =
        TransferFiles(source, target, AllFiles, [&](const WCHAR* from, const WCHAR* to) {
            if (::MoveFileExW(from, to, Flags) != FALSE) {
                moved.emplace_back(from, to);
                return true;
            }
            all = false;
            if (onFailure == OnMoveFailure::ShowAndGoOn) {
                ShowFailure(DeleteFileFailed, from);
                return true;
            }
            return false;
        });
    if (finished == 0 && onFailure == OnMoveFailure::UndoAndStop) {
        for (const auto& [from, to] : moved) {
            ::MoveFileExW(to.c_str(), from.c_str(), Flags);
        }
    }
    return finished != 0 && all ? 1 : 0;
}

}  // namespace lunara
