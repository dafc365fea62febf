#include "diary_folder.h"

#include <limits>
#include <vector>

#include "platform/arguments.h"
#include "records/data_file.h"
#include "records/data_folder.h"

namespace lunara {
namespace {

template <auto List>
constexpr DiaryFile DayValueFile(const WCHAR* name) {
    return {
        name,
        [](UserData& data, const WCHAR* path, const WCHAR* password) {
            return LoadDayValues(data.*List, path, password);
        },
        [](UserData& data, const WCHAR* path, const WCHAR* password) {
            return SaveDayValues(data.*List, path, password);
        },
        [](const UserData& data) { return (data.*List).Count(); },
        [](const UserData& data) { return (data.*List).dirty; },
    };
}

constexpr DiaryFile Files[] = {
    DayValueFile<&UserData::temperature>(TEXT("Temperature.dat")),
    DayValueFile<&UserData::bleeding>(TEXT("Bleeding.dat")),
    DayValueFile<&UserData::noteFlags>(TEXT("Notes.dat")),
    {
        TEXT("NotePages.dat"),
        [](UserData& data, const WCHAR* path, const WCHAR* password) {
            return LoadNotePages(data.notePages, path, password);
        },
        [](UserData& data, const WCHAR* path, const WCHAR* password) {
            return SaveNotePages(data.notePages, path, password);
        },
        [](const UserData& data) { return data.notePages.Count(); },
        [](const UserData& data) { return data.notePages.dirty; },
    },
};

bool IsSeparator(WCHAR unit) { return unit == '/' || unit == '\\'; }

std::optional<Failure> CheckLength(const WideString& path) {
    if (path.size() < PathCapacity) {
        return std::nullopt;
    }
    return Failure{path, ReasonText(ERROR_FILENAME_EXCED_RANGE)};
}

/// What a data file held before it was saved over.
struct OldFile {
    WideString path;
    std::optional<std::string> bytes;  // nothing: there was no file
};

void PutBack(const std::vector<OldFile>& files) {
    for (const OldFile& file : files) {
        if (file.bytes) {
            ReplaceWholeFile(file.path, *file.bytes);
        } else {
            ::DeleteFileW(file.path.c_str());
        }
    }
}

}  // namespace

std::span<const DiaryFile> DiaryFiles() { return Files; }

WideString PathInFolder(const WideString& folder, const WCHAR* name) {
    WideString path = folder;
    if (path.empty() || !IsSeparator(path.back())) {
        path.push_back(static_cast<WCHAR>(PathSeparator));
    }
    return path.append(name);
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

std::optional<Failure> LoadDiaryFile(const DiaryFile& file, UserData& data,
                                     const WideString& folder, const WideString& password) {
    const WideString path = PathInFolder(folder, file.name);
    if (std::optional<Failure> failure = CheckLength(path)) {
        return failure;
    }
    // A file that ends inside its header leaves no error of its own, nor may it show an earlier
    // file's.
    ::SetLastError(ERROR_SUCCESS);
    if (file.load(data, path.c_str(), password.c_str()) != 0) {
        return std::nullopt;
    }
    const DWORD error = ::GetLastError();
    return Failure{path, ReasonText(error == ERROR_SUCCESS ? DWORD{DataFileCorrupt} : error)};
}

std::optional<Failure> LoadDiary(UserData& data, const WideString& folder,
                                 const WideString& password) {
    for (const DiaryFile& file : DiaryFiles()) {
        if (std::optional<Failure> failure = LoadDiaryFile(file, data, folder, password)) {
            return failure;
        }
    }
    return std::nullopt;
}

std::optional<Failure> SaveDiary(UserData& data, const WideString& folder,
                                 const WideString& password) {
    for (const DiaryFile& file : DiaryFiles()) {
        if (std::optional<Failure> failure = CheckLength(PathInFolder(folder, file.name))) {
            return failure;
        }
    }
    if (CreateDirectoryTree(folder.c_str()) == 0) {
        return Failure{folder, ReasonText(::GetLastError())};
    }
    std::vector<OldFile> saved;
    for (const DiaryFile& file : DiaryFiles()) {
        if (!file.isDirty(data)) {
            continue;
        }
        OldFile old{PathInFolder(folder, file.name), std::nullopt};
        std::string bytes;
        if (ReadWholeFile(old.path, std::numeric_limits<std::size_t>::max(), bytes)) {
            old.bytes = std::move(bytes);
        }
        if (file.save(data, old.path.c_str(), password.c_str()) == 0) {
            const DWORD error = ::GetLastError();
            PutBack(saved);
            return Failure{old.path, ReasonText(error)};
        }
        // An empty list deletes its file, and does not say when that fails.
        if (file.count(data) == 0 && FileExists(old.path)) {
            PutBack(saved);
            return Failure{old.path, "it could not be deleted"};
        }
        saved.push_back(std::move(old));
    }
    return std::nullopt;
}

}  // namespace lunara
