#pragma once

// The four data files of a folder, changed together. A new password must reach all of them or none:
// files under two passwords are opened by neither. So every new file is written beside its old one
// first; only when all are complete, and the old ones are kept under a second name, are they put in
// place. A record in the folder says from the first change to the last that the old ones count;
// whoever finds it, this save or the next start, puts them back. docs/file-format.md has the names.

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

/// The names, in the order of `DataFile`.
inline constexpr const WCHAR* DataFileNames[DataFileCount] = {
    TEXT("Temperature.dat"),
    TEXT("Bleeding.dat"),
    TEXT("Notes.dat"),
    TEXT("NotePages.dat"),
};
constexpr const WCHAR* DataFileName(DataFile which) {
    return DataFileNames[static_cast<std::size_t>(which)];
}

/// Folder, separator and file name; false when they do not fit into a path. A path that was cut
/// would name another file, perhaps another collection's.
bool DataFilePath(const WCHAR* folder, DataFile which, WideString& path);

/// Puts the old files back when the last save of several files was broken off, and removes what a
/// save that was done left behind. 1 when the files are one whole set, which they nearly always are
/// before; 0 with the system's error when an old file cannot be put back now: nothing may be read
/// or saved then, and the next call tries again.
int MendDataFiles(const WCHAR* folder);

/// Where a save failed.
struct SaveFailure {
    /// The data file; none when it was the folder itself, or the record of a save in it.
    std::optional<DataFile> file;
    /// The full path of what could not be written or deleted.
    WideString path;
};

class DataFileSet {
  public:
    /// A folder that is there, without a separator at its end, and mended.
    explicit DataFileSet(const WCHAR* dataFolder) : folder(dataFolder) {}

    // Each file at most once. 0 (null) with the system's error in the last error and the
    // place in `LastFailure`.

    /// The new file, which the caller creates, writes and completes before the next call.
    ReplacementFile* Replace(DataFile which);
    int Delete(DataFile which);
    /// What has been replaced or deleted so far, and nothing else, becomes so. After a failure all
    /// files are as they were, or will be after `MendDataFiles`. A single file needs no record; and
    /// deleting it, whatever comes of it, is no failure: it has nothing to lose.
    int PutInPlace();

    /// Where the last failure was.
    const SaveFailure& LastFailure() const { return lastFailure; }

  private:
    struct Change {
        Change(DataFile changedFile, WideString changedPath)
            : which(changedFile), path(std::move(changedPath)) {}

        DataFile which;
        WideString path;
        std::optional<ReplacementFile> file;  // none: to be deleted
        bool hadOriginal = false;
    };
    using Step = int (*)(Change& change);

    Change* Add(DataFile which);
    /// Stops at the first 0, whose file becomes the failed one.
    int ForEach(Step step);
    int WriteRecord(ReplacementFile& record);
    void Undo();

    static int PutOnlyOneInPlace(Change& change);
    /// Sees what is there, and that it can be replaced.
    static int TakeStock(Change& change);
    /// Keeps the old file under its second name and puts the new one in place.
    static int Apply(Change& change);
    static int RemoveSibling(Change& change);

    WideString folder;
    std::array<std::optional<Change>, DataFileCount> changes;
    std::size_t count = 0;
    SaveFailure lastFailure;
};

}  // namespace lunara
