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

/// Why a file was refused, left in the thread's last error. Each is the id of the string that the
/// user sees.
enum DataFileError : DWORD {
    DataFileMissing = 57344,
    DataFileForeign = 57345,
    DataFileTooNew = 57346,
    DataFileCorrupt = 57347,
    DataFileWrongPassword = 57348,
};

/// Replaces the list by the file's records and clears its `dirty` flag. `password` is UTF-16, "" or
/// null for none. 1 on success, with the last error 0, and when there is no file, with
/// `DataFileMissing` and the list empty. 0 on failure, with the list empty and a `DataFileError`,
/// or 0 when the file ends inside its header. A file that exists but cannot be opened is
/// `DataFileCorrupt`: taken for missing, it would be overwritten by the next save.
[[nodiscard]] int LoadDayValues(DayValueList& list, const WCHAR* path, const WCHAR* password);
[[nodiscard]] int LoadNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password);

/// Saves one list as the file at `path`, any path, when its `dirty` flag is set, and clears the
/// flag. An empty list deletes the file, which never fails. 1 on success and when nothing had to be
/// written. 0 when a step failed, with the flag and the old file as they were and the system's
/// error in the last error. The program itself does not call these: it saves a diary's files
/// together (`DataFileSet`).
[[nodiscard]] int SaveDayValues(DayValueList& list, const WCHAR* path, const WCHAR* password);
[[nodiscard]] int SaveNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password);

/// Creates `file`, writes header and records, flushes and closes it. The list stays plain; day
/// values are sorted first. The caller puts the file in place and then clears `dirty`. 1, or 0 when
/// a step failed, with the system's error in the last error.
[[nodiscard]] int WriteDayValues(DayValueList& list, ReplacementFile& file, const WCHAR* password);
[[nodiscard]] int WriteNotePages(NotePageList& list, ReplacementFile& file, const WCHAR* password);

}  // namespace lunara
