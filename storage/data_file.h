#pragma once

// Reads and writes the files of the two kinds of collections: a four-byte header ("LU", version
// 1.0), then fixed-size records, each enciphered by itself when there is a password.
// docs/file-format.md describes every byte.
//
// No password is stored. A wrong one turns the dates of the records into noise, and that is how it
// is recognised.
//
// The program loads and saves through UserData::LoadFolder and SaveFolder (diary/user_data.h):
// those call `LoadDayValues` and `LoadNotePages`, and `WriteDayValues` and `WriteNotePages` for the
// files of one DataFileSet. `SaveDayValues` and `SaveNotePages` save a single file by the same
// steps.

#include "records/collections.h"
#include "storage/replacement_file.h"

namespace lunara {

/// What loading a data file leaves in the thread's last error: that there is no file
/// (`DataFileMissing`, not a failure) or why the file was refused. Each value is also the id of the
/// string resource with the text for the user.
enum DataFileError : DWORD {
    DataFileMissing = 57344,
    DataFileForeign = 57345,
    DataFileTooNew = 57346,
    DataFileCorrupt = 57347,
    DataFileWrongPassword = 57348,
};

/// Replaces the list by the file's records and clears its `dirty` flag. `password` is UTF-16, "" or
/// null for none. Returns 1 on success, with 0 in the last error; also when there is no file, with
/// `DataFileMissing` in the last error and the list empty. Returns 0 on failure, with the list
/// empty and a `DataFileError` in the last error; the last error is 0 when the file ends inside its
/// header. A file that exists but cannot be opened is `DataFileCorrupt`: if it counted as missing,
/// the next save would overwrite it.
[[nodiscard]] int LoadDayValues(DayValueList& list, const WCHAR* path, const WCHAR* password);
[[nodiscard]] int LoadNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password);

/// Saves one list as the file at `path` (any path) if its `dirty` flag is set, and clears the flag.
/// For an empty list it deletes the file instead; failing to is no error. Returns 1 on success and
/// when the list is not dirty. Returns 0 when a step failed, with the flag and the old file
/// unchanged and the system's error in the last error. The program itself does not call these: it
/// saves a diary's files together (`DataFileSet`).
[[nodiscard]] int SaveDayValues(DayValueList& list, const WCHAR* path, const WCHAR* password);
[[nodiscard]] int SaveNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password);

/// Creates `file`, writes header and records, flushes and closes it. Enciphers copies of the
/// records, never the list's own; sorts a list of day values first. The caller puts the file in
/// place and then clears `dirty`. Returns 1, or 0 when a step failed, with the system's error in
/// the last error.
[[nodiscard]] int WriteDayValues(DayValueList& list, ReplacementFile& file, const WCHAR* password);
[[nodiscard]] int WriteNotePages(NotePageList& list, ReplacementFile& file, const WCHAR* password);

}  // namespace lunara
