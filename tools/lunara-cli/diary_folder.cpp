#include "tools/lunara-cli/diary_folder.h"

#include <vector>

#include "platform/arguments.h"
#include "storage/data_file.h"

namespace lunara {
namespace {

bool IsSeparator(WCHAR unit) { return unit == '/' || unit == '\\'; }

std::optional<Failure> CheckLength(const WideString& path) {
    if (path.size() < PathCapacity) {
        return std::nullopt;
    }
    return Failure{path, ReasonText(ERROR_FILENAME_EXCED_RANGE)};
}

}  // namespace

WideString PathInFolder(const WideString& folder, DataFile file) {
    WideString path = folder;
    if (path.empty() || !IsSeparator(path.back())) {
        path.push_back(static_cast<WCHAR>(PathSeparator));
    }
    return path.append(DataFileName(file));
}

std::optional<Failure> CheckFolder(const WideString& folder) {
    const DWORD attributes = ::GetFileAttributesW(folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = ::GetLastError();
        const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
        return Failure{folder, ReasonText(missing ? DWORD{DataFileMissing} : error)};
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        return Failure{folder, ReasonText(DataFileMissing)};
    }
    return std::nullopt;
}

bool FileExists(const WideString& path) {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::optional<Failure> LoadDiaryFile(DataFile file, UserData& data, const WideString& folder,
                                     const WideString& password) {
    const WideString path = PathInFolder(folder, file);
    if (std::optional<Failure> failure = CheckLength(path)) {
        return failure;
    }
    // Loading a file that ends inside its header fails without setting the last error. Clearing it
    // first keeps the error of an earlier call from being reported for this file.
    ::SetLastError(ERROR_SUCCESS);
    if (data.LoadFile(file, path.c_str(), password.c_str()) != 0) {
        return std::nullopt;
    }
    const DWORD error = ::GetLastError();
    return Failure{path, ReasonText(error == ERROR_SUCCESS ? DWORD{DataFileCorrupt} : error)};
}

std::optional<Failure> MendDiary(const WideString& folder) {
    if (MendDataFiles(folder.c_str()) != 0) {
        return std::nullopt;
    }
    const std::string reason = ReasonText(::GetLastError());
    return Failure{folder, "an unfinished save cannot be undone: " + reason};
}

std::optional<Failure> LoadDiary(UserData& data, const WideString& folder,
                                 const WideString& password) {
    if (std::optional<Failure> failure = MendDiary(folder)) {
        return failure;
    }
    for (const DataFile file : AllDataFiles) {
        if (std::optional<Failure> failure = LoadDiaryFile(file, data, folder, password)) {
            return failure;
        }
    }
    return std::nullopt;
}

std::optional<Failure> SaveDiary(UserData& data, const WideString& folder,
                                 const WideString& password) {
    for (const DataFile file : AllDataFiles) {  // before the folder is made
        if (std::optional<Failure> failure = CheckLength(PathInFolder(folder, file))) {
            return failure;
        }
    }
    // The data set appends a separator to the folder. A folder that is only a separator (the root)
    // gets a "." first, so that no path begins with two separators.
    const bool isRoot = folder.size() == 1 && IsSeparator(folder.front());
    const WideString target = isRoot ? folder + TEXT(".") : folder;
    std::vector<WideString> deleted;
    for (const DataFile file : AllDataFiles) {
        if (data.IsDirty(file) && data.Count(file) == 0) {
            deleted.push_back(PathInFolder(folder, file));
        }
    }
    if (data.SaveFolder(target.c_str(), password.c_str()) == 0) {
        const DWORD error = ::GetLastError();
        if (const std::optional<DataFile> file = data.LastFailure().file) {
            const bool isDeleted = data.Count(*file) == 0;
            return Failure{PathInFolder(folder, *file),
                           isDeleted ? "it could not be deleted" : ReasonText(error)};
        }
        return Failure{folder, ReasonText(error)};
    }
    // A save that only deletes one file reports no failure, so check that the file is gone.
    for (const WideString& path : deleted) {
        if (FileExists(path)) {
            return Failure{path, "it could not be deleted"};
        }
    }
    return std::nullopt;
}

}  // namespace lunara
