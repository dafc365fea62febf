#include "storage/data_file_set.h"

#include <algorithm>

namespace lunara {
namespace {

// The save record while the old files count, and its name once the new ones do. Neither is longer
// than the shortest name of a data file, so both fit wherever the data files fit.
constexpr WideView RecordName = TEXT("\\Save.set");
constexpr WideView DoneName = TEXT("\\Save.end");
constexpr std::size_t ExtensionLength = 4;

// Content of the save record: the mark, then one letter for each `DataFile`, in that order.
constexpr std::array<char, 4> RecordMark = {'L', 'U', 'S', '1'};
constexpr char Untouched = '.';
constexpr char Replaced = 'r';
constexpr char Deleted = 'd';
constexpr char Added = 'a';  // had no file before
using RecordBytes = std::array<char, RecordMark.size() + DataFileCount>;

DWORD AttributesOf(const WideString& path) { return ::GetFileAttributesW(path.c_str()); }

bool Exists(const WideString& path) { return AttributesOf(path) != INVALID_FILE_ATTRIBUTES; }

/// The second name of an old file: ".old" in place of ".dat".
WideString KeptPath(WideView path) {
    path.remove_suffix(ExtensionLength);
    return WideString(path).append(TEXT(".old"));
}

/// Deletes the file. 1 when it does not exist afterwards, else 0 with the reason in the last error.
int RemoveIfThere(const WideString& path) {
    ::SetLastError(ERROR_SUCCESS);
    if (CurrentFileCalls().Remove(path.c_str()) != FALSE) {
        return 1;
    }
    const DWORD error = ::GetLastError();
    if (!Exists(path)) {
        return 1;
    }
    ::SetLastError(error);
    return FailWithReason();
}

int Rename(const WideString& from, const WideString& to) {
    ::SetLastError(ERROR_SUCCESS);
    return CurrentFileCalls().Rename(from.c_str(), to.c_str()) != FALSE ? 1 : FailWithReason();
}

enum class RecordState { None, Partial, Whole, Unreadable };

RecordState ReadRecord(const WideString& path, RecordBytes& bytes) {
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return Exists(path) ? RecordState::Unreadable : RecordState::None;
    }
    DWORD got = 0;
    const BOOL isRead =
        ::ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr);
    const DWORD error = ::GetLastError();
    ::CloseHandle(file);
    if (isRead == FALSE) {
        ::SetLastError(error);
        return RecordState::Unreadable;
    }
    // No file is changed before the record is on the disk as a whole, so a partial one was never in
    // force.
    const bool isWhole =
        got == bytes.size() && std::equal(RecordMark.begin(), RecordMark.end(), bytes.begin());
    return isWhole ? RecordState::Whole : RecordState::Partial;
}

/// Makes one file what it was before the unfinished save. Idempotent.
int MendFile(const WideString& path, char change) {
    const WideString sibling = SiblingPath(path);
    const WideString kept = KeptPath(path);
    // While the new file has its sibling's name, it has not replaced anything.
    const bool isWaiting = change != Deleted && Exists(sibling);
    if (change == Added) {
        return isWaiting || !Exists(path) ? 1 : Rename(path, sibling);
    }
    if (!Exists(kept)) {
        return 1;
    }
    if (Exists(path) && (isWaiting || change == Deleted)) {
        CurrentFileCalls().Remove(kept.c_str());  // `path` is still the old file
        return 1;
    }
    return Rename(kept, path);
}

/// Mends each file that the record names.
int MendFiles(const WideString& folder, const RecordBytes& record) {
    int result = 1;
    DWORD error = ERROR_SUCCESS;
    for (std::size_t i = 0; i < DataFileCount; ++i) {
        const char change = record[RecordMark.size() + i];
        WideString path;
        if ((change == Replaced || change == Deleted || change == Added) &&
            DataFilePath(folder.c_str(), static_cast<DataFile>(i), path) &&
            MendFile(path, change) == 0) {
            error = ::GetLastError();
            result = 0;  // goes on, so that as little as possible is left to the next time
        }
    }
    ::SetLastError(error);
    return result;
}

/// Deletes what a finished save may leave: the old files under their second names, then its record.
void RemoveLeftovers(const WideString& folder) {
    int areGone = 1;
    for (std::size_t i = 0; i < DataFileCount; ++i) {
        WideString path;
        if (DataFilePath(folder.c_str(), static_cast<DataFile>(i), path) &&
            RemoveIfThere(KeptPath(path)) == 0) {
            areGone = 0;
        }
    }
    if (areGone != 0) {
        CurrentFileCalls().Remove((folder + WideString(DoneName)).c_str());
    }
}

}  // namespace

bool DataFilePath(const WCHAR* folder, DataFile which, WideString& path) {
    path.assign(folder).append(TEXT("\\")).append(DataFileName(which));
    return path.size() < PathCapacity;
}

int MendDataFiles(const WCHAR* folder) {
    const WideString base(folder);
    const WideString recordPath = base + WideString(RecordName);
    RecordBytes bytes{};
    switch (ReadRecord(recordPath, bytes)) {
        case RecordState::None:
            if (Exists(base + WideString(DoneName))) {
                RemoveLeftovers(base);
            }
            return 1;
        case RecordState::Partial:
            return RemoveIfThere(recordPath);
        case RecordState::Whole:
            return MendFiles(base, bytes) != 0 ? RemoveIfThere(recordPath) : 0;
        case RecordState::Unreadable:
            break;
    }
    return FailWithReason();
}

DataFileSet::Change* DataFileSet::Add(DataFile which) {
    WideString path;
    if (!DataFilePath(folder.c_str(), which, path)) {
        lastFailure = {which, path};
        ::SetLastError(ERROR_FILENAME_EXCED_RANGE);
        return nullptr;
    }
    lastFailure = {which, path};  // of the caller's writing, should that fail
    ++count;
    return &changes[static_cast<std::size_t>(which)].emplace(which, std::move(path));
}

ReplacementFile* DataFileSet::Replace(DataFile which) {
    Change* change = Add(which);
    return change != nullptr ? &change->file.emplace(change->path) : nullptr;
}

int DataFileSet::Delete(DataFile which) { return Add(which) != nullptr ? 1 : 0; }

int DataFileSet::ForEach(Step step) {
    for (std::optional<Change>& change : changes) {
        if (change && step(*change) == 0) {
            lastFailure = {change->which, change->path};
            return 0;
        }
    }
    return 1;
}

int DataFileSet::WriteRecord(ReplacementFile& record) {
    RecordBytes bytes{};
    auto* next = std::copy(RecordMark.begin(), RecordMark.end(), bytes.begin());
    for (const std::optional<Change>& change : changes) {
        if (!change || (!change->file && !change->hadOriginal)) {
            *next++ = Untouched;
        } else if (!change->file) {
            *next++ = Deleted;
        } else {
            *next++ = change->hadOriginal ? Replaced : Added;
        }
    }
    if (record.Create() != 0 && record.Write(bytes.data(), bytes.size()) != 0 &&
        record.FlushAndClose() != 0) {
        return 1;
    }
    lastFailure = {std::nullopt, folder + WideString(RecordName)};
    return 0;
}

int DataFileSet::PutInPlace() {
    if (count < 2) {
        return ForEach(PutOnlyOneInPlace);
    }
    const WideString donePath = folder + WideString(DoneName);
    ReplacementFile record(donePath, folder + WideString(RecordName));
    if (ForEach(TakeStock) == 0 || WriteRecord(record) == 0) {
        return 0;
    }
    record.Keep();
    if (ForEach(Apply) == 0) {
        MendAfterFailure();
        return 0;
    }
    if (record.PutInPlace() == 0) {
        lastFailure = {std::nullopt, folder + WideString(RecordName)};
        MendAfterFailure();
        return 0;
    }
    // The record has left its first name, so the new files count. Leftovers that cannot be deleted
    // now are no failure: the next mending deletes them.
    ForEach(RemoveSibling);
    RemoveLeftovers(folder);
    return 1;
}

void DataFileSet::MendAfterFailure() {
    const DWORD error = ::GetLastError();
    if (MendDataFiles(folder.c_str()) != 0) {
        ForEach(RemoveSibling);
    } else {
        // The record stays in the folder for the next mending, which needs the new files too: where
        // one still has its sibling's name, the old file has not been replaced.
        for (std::optional<Change>& change : changes) {
            if (change && change->file) {
                change->file->Keep();
            }
        }
    }
    ::SetLastError(error);
}

int DataFileSet::PutOnlyOneInPlace(Change& change) {
    if (change.file) {
        return change.file->PutInPlace();
    }
    RemoveWithSibling(change.path);
    return 1;
}

int DataFileSet::TakeStock(Change& change) {
    const DWORD attributes = AttributesOf(change.path);
    change.hadOriginal = attributes != INVALID_FILE_ATTRIBUTES;
    if (!change.hadOriginal) {
        const DWORD error = ::GetLastError();
        if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) {
            return 0;
        }
    } else if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
        ::SetLastError(ERROR_ACCESS_DENIED);  // fails here rather than half-way through the renames
        return 0;
    }
    // Mending would take an ".old" file that an earlier save left for the old file of this one.
    return RemoveIfThere(KeptPath(change.path));
}

int DataFileSet::Apply(Change& change) {
    // Keep the old file under a second name: by a hard link, or, on a file system without links
    // (FAT), by renaming it. After a rename no file has the name until the new one is put there.
    const WideString kept = KeptPath(change.path);
    if (change.hadOriginal && CurrentFileCalls().Link(change.path.c_str(), kept.c_str()) == FALSE &&
        lunara::Rename(change.path, kept) == 0) {
        return 0;
    }
    return change.file ? change.file->Rename() : RemoveIfThere(change.path);
}

int DataFileSet::RemoveSibling(Change& change) {
    // A sibling that a crash left may hold what has been deleted since.
    CurrentFileCalls().Remove(SiblingPath(change.path).c_str());
    return 1;
}

}  // namespace lunara
