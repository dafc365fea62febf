#pragma once

// The four data files of a user: a four-byte header ("LU", version 1.0), then fixed-size records,
// each enciphered by itself when there is a password. docs/file-format.md describes every byte.
//
// A password is recognised by what the deciphered records look like, never by comparison: the
// wrong one turns their dates into noise.

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

/// Fills the list from the file. 1 on success, and also (with `DataFileMissing` in the last error)
/// when there is no file: the list is then empty. 0 on failure, with the list empty and the last
/// error a `DataFileError`; the last error is 0 when the file ends inside its header. A file that
/// is there but cannot be opened is refused as `DataFileCorrupt`, so that nothing is ever saved
/// over it. `password` is UTF-16, "" (or null) for none.
int LoadDayValues(DayValueList& list, const WCHAR* path, const WCHAR* password);
int LoadNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password);

/// Writes the list when its `dirty` flag is set, and clears the flag; an empty list deletes the
/// file. The records go to a sibling file that then takes the old one's place, so that whatever
/// goes wrong the file on disk is the old one or the new one. 1 on success and when nothing had to
/// be written; 0 when any step failed, with `dirty` and the old file as they were and the system's
/// error in the last error. Part of the format's public operations, for one file by itself; the
/// program does not call them, because it saves a diary's files together (`DataFileSet`).
int SaveDayValues(DayValueList& list, const WCHAR* path, const WCHAR* password);
int SaveNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password);

/// Only the writing: creates `file`, writes the list as a data file and completes it. The caller
/// puts it in place and clears `dirty`. 0 as above.
int WriteDayValues(DayValueList& list, ReplacementFile& file, const WCHAR* password);
int WriteNotePages(NotePageList& list, ReplacementFile& file, const WCHAR* password);

}  // namespace lunara
