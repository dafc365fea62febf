#include "storage/data_file_set.h"

#include <algorithm>

namespace lunara {
namespace {

// No longer than the shortest of the data files' names, so that they fit where those do.
constexpr WideView RecordName = TEXT("\\Save.set");
constexpr WideView DoneName = TEXT("\\Save.end");
constexpr std::size_t ExtensionLength = 4;

// The record: its mark, then what becomes of each file, in the order of `DataFile`.
constexpr std::array<char, 4> RecordMark = {'L', 'U', 'S', '1'};
constexpr char Untouched = '.';
constexpr char Replaced = 'r';
constexpr char Deleted = 'd';
constexpr char Added = 'a';  // there was no file
using RecordBytes = std::array<char, RecordMark.size() + DataFileCount>;

DWORD AttributesOf(const WideString& path) { return ::GetFileAttributesW(path.c_str()); }

bool Exists(const WideString& path) { return AttributesOf(path) != INVALID_FILE_ATTRIBUTES; }

/// The second name of the old file.
WideString KeptPath(WideView path) {
    path.remove_suffix(ExtensionLength);
    return WideString(path).append(TEXT(".old"));
}

/// 0 when it is still there afterwards.
int RemoveWhatIsThere(const WideString& path) {
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

enum class RecordState { None, Unfinished, Valid, Unreadable };

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
    // A record reaches the disk whole before anything is changed: this one was never in force.
    const bool isWhole =
        got == bytes.size() && std::equal(RecordMark.begin(), RecordMark.end(), bytes.begin());
    return isWhole ? RecordState::Valid : RecordState::Unfinished;
}

/// Makes one file again what it was before the save. Doing so twice does no harm.
int PutBack(const WideString& path, char change) {
    const WideString sibling = SiblingPath(path);
    const WideString kept = KeptPath(path);
    // A new file that still has its sibling's name has not replaced anything.
    const bool isWaiting = change != Deleted && Exists(sibling);
    if (change == Added) {
        return isWaiting || !Exists(path) ? 1 : Rename(path, sibling);
    }
    if (!Exists(kept)) {
        return 1;
    }
    if (Exists(path) && (isWaiting || change == Deleted)) {
        CurrentFileCalls().Remove(kept.c_str());  // only a second name
        return 1;
    }
    return Rename(kept, path);
}

int UndoSave(const WideString& folder, const RecordBytes& record) {
    int result = 1;
    DWORD error = ERROR_SUCCESS;
    for (std::size_t i = 0; i < DataFileCount; ++i) {
        const char change = record[RecordMark.size() + i];
        WideString path;
        if ((change == Replaced || change == Deleted || change == Added) &&
            DataFilePath(folder.c_str(), static_cast<DataFile>(i), path) &&
            PutBack(path, change) == 0) {
            error = ::GetLastError();
            result = 0;  // the others are put back all the same
        }
    }
    ::SetLastError(error);
    return result;
}

/// What a save that was done may leave: the second names of the old files, then its record.
void RemoveRest(const WideString& folder) {
    int areGone = 1;
    for (std::size_t i = 0; i < DataFileCount; ++i) {
        WideString path;
        if (DataFilePath(folder.c_str(), static_cast<DataFile>(i), path) &&
            RemoveWhatIsThere(KeptPath(path)) == 0) {
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
                RemoveRest(base);
            }
            return 1;
        case RecordState::Unfinished:
            return RemoveWhatIsThere(recordPath);
        case RecordState::Valid:
            return UndoSave(base, bytes) != 0 ? RemoveWhatIsThere(recordPath) : 0;
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
        record.Complete() != 0) {
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
        Undo();
        return 0;
    }
    if (record.PutInPlace() == 0) {
        lastFailure = {std::nullopt, folder + WideString(RecordName)};
        Undo();
        return 0;
    }
    // The record is gone from its place: from here on the new files count.
    ForEach(RemoveSibling);
    RemoveRest(folder);
    return 1;
}

void DataFileSet::Undo() {
    const DWORD error = ::GetLastError();
    if (MendDataFiles(folder.c_str()) != 0) {
        ForEach(RemoveSibling);
    } else {
        // The record stays for the next time, and so must the files that it speaks of.
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
    CurrentFileCalls().Remove(change.path.c_str());
    return RemoveSibling(change);
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
        ::SetLastError(ERROR_ACCESS_DENIED);  // would be found out half-way otherwise
        return 0;
    }
    // A second name that an earlier save left would be taken for the old file.
    return RemoveWhatIsThere(KeptPath(change.path));
}

int DataFileSet::Apply(Change& change) {
    // Where a file cannot have two names the old one is moved away instead.
    const WideString kept = KeptPath(change.path);
    if (change.hadOriginal && CurrentFileCalls().Link(change.path.c_str(), kept.c_str()) == FALSE &&
        lunara::Rename(change.path, kept) == 0) {
        return 0;
    }
    return change.file ? change.file->Rename() : RemoveWhatIsThere(change.path);
}

int DataFileSet::RemoveSibling(Change& change) {
    // One that a crash left behind may hold what has been deleted since.
    CurrentFileCalls().Remove(SiblingPath(change.path).c_str());
    return 1;
}

}  // namespace lunara
