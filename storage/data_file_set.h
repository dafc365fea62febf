#pragma once

// Changes the four data files of a folder together. A new password must reach all files or none,
// because a diary whose files have two passwords cannot be opened with either. Every new file is
// first written and flushed beside its old one. Then a save record is written, each old file gets a
// second name, and the new files are renamed into place. While the record is in the folder, the old
// files are the valid ones, and `MendDataFiles` puts them back: at once when a step of the save
// fails, else at the next load or save. docs/file-format.md has the names and the order of the
// steps.

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "platform/text.h"
#include "storage/replacement_file.h"

namespace lunara {

enum class DataFile : std::size_t { Temperature, Bleeding, NoteFlags, NotePages };
inline constexpr std::size_t DataFileCount = 4;

/// All of them, in the order in which they are loaded and saved.
inline constexpr DataFile AllDataFiles[DataFileCount] = {DataFile::Temperature, DataFile::Bleeding,
                                                         DataFile::NoteFlags, DataFile::NotePages};

/// File names in the order of `DataFile`.
inline constexpr const WCHAR* DataFileNames[DataFileCount] = {
    TEXT("Temperature.dat"),
    TEXT("Bleeding.dat"),
    TEXT("Notes.dat"),
    TEXT("NotePages.dat"),
};
constexpr const WCHAR* DataFileName(DataFile which) {
    return DataFileNames[static_cast<std::size_t>(which)];
}

/// Sets `path` to folder, separator and file name. Returns false when that does not fit into
/// `PathCapacity`. `path` must not be used then: a call that cuts it would open another file,
/// perhaps that of another collection.
[[nodiscard]] bool DataFilePath(const WCHAR* folder, DataFile which, WideString& path);

/// Makes the data files of `folder` one consistent set again: reverts a save of several files that
/// was interrupted before its last step, and deletes what a finished save left behind. Usually
/// there is neither, and nothing changes. Returns 1 when the files are consistent. Returns 0, with
/// the system's error in the last error, when an old file cannot be restored now: the caller must
/// then neither load nor save, and the next call tries again. Idempotent.
[[nodiscard]] int MendDataFiles(const WCHAR* folder);

/// Where a save failed.
struct SaveFailure {
    /// The data file; none when the folder itself or its save record could not be written.
    std::optional<DataFile> file;
    /// The full path of what could not be written or deleted.
    WideString path;
};

/// One save: name each file that changes with `Replace` or `Delete`, at most once, then call
/// `PutInPlace`. A null or 0 means failure, with the system's error in the last error and the place
/// in `LastFailure`.
class DataFileSet {
  public:
    /// The folder must exist and have been mended, and its path must not end in a separator.
    explicit DataFileSet(const WCHAR* dataFolder) : folder(dataFolder) {}

    /// Returns the replacement of file `which`, owned by this set. The caller creates, writes,
    /// flushes and closes it before the next call on this set; until then `LastFailure` names this
    /// file. Null, with ERROR_FILENAME_EXCED_RANGE in the last error, when its path is too long.
    [[nodiscard]] ReplacementFile* Replace(DataFile which);
    /// Marks file `which` for deletion by `PutInPlace`. Returns 1; 0, with
    /// ERROR_FILENAME_EXCED_RANGE in the last error, when its path is too long.
    [[nodiscard]] int Delete(DataFile which);
    /// Makes the named changes, all or none. After a failure the files are the old ones, at the
    /// latest after the next `MendDataFiles`. A single file needs no save record. A failure to
    /// delete a single file is ignored: an empty collection has nothing to lose.
    [[nodiscard]] int PutInPlace();

    /// Where the last failure was.
    const SaveFailure& LastFailure() const { return lastFailure; }

  private:
    struct Change {
        Change(DataFile changedFile, WideString changedPath)
            : which(changedFile), path(std::move(changedPath)) {}

        DataFile which;
        WideString path;
        std::optional<ReplacementFile> file;  // empty: `path` is to be deleted
        bool hadOriginal = false;             // `path` existed before the save
    };
    using Step = int (*)(Change& change);

    /// Null when the path is too long.
    Change* Add(DataFile which);
    /// Calls `step` for each change, in the order of `DataFile`. At the first that returns 0,
    /// stops, stores its file in `lastFailure` and returns 0; else returns 1.
    int ForEach(Step step);
    int WriteRecord(ReplacementFile& record);
    /// Mends the folder after a step of `PutInPlace` failed, and keeps the last error.
    void MendAfterFailure();

    static int PutOnlyOneInPlace(Change& change);
    /// Sets `hadOriginal`, checks that the file can be replaced, and deletes an outdated ".old"
    /// file.
    static int TakeStock(Change& change);
    /// Keeps the old file under its second name and puts the new one in place.
    static int Apply(Change& change);
    /// Deletes the sibling of the data file, if there is one. Always returns 1.
    static int RemoveSibling(Change& change);

    WideString folder;
    std::array<std::optional<Change>, DataFileCount> changes;
    std::size_t count = 0;
    SaveFailure lastFailure;
};

}  // namespace lunara
