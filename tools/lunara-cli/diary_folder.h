#pragma once

// The four data files of a diary folder, loaded and saved so that a failure names the file.
// Functions that return a Failure return nothing on success.

#include <optional>

#include "diary/user_data.h"
#include "tools/lunara-cli/files.h"

namespace lunara {

/// Joins folder and file name. Adds a separator unless the folder ends with one.
WideString PathInFolder(const WideString& folder, DataFile file);

/// Checks that the folder can be read: that it exists, is a folder and can be reached.
std::optional<Failure> CheckFolder(const WideString& folder);

/// Whether a file or folder of this path can be reached.
bool FileExists(const WideString& path);

/// Undoes an interrupted save (storage/data_file_set.h). Call it before loading anything.
std::optional<Failure> MendDiary(const WideString& folder);

/// Loads one file into its collection of `data`. A missing file loads as an empty collection.
std::optional<Failure> LoadDiaryFile(DataFile file, UserData& data, const WideString& folder,
                                     const WideString& password);

/// Mends the diary, then loads the four files up to the first bad one.
std::optional<Failure> LoadDiary(UserData& data, const WideString& folder,
                                 const WideString& password);

/// Creates the folder and its parents and saves every dirty collection: all of them or none.
std::optional<Failure> SaveDiary(UserData& data, const WideString& folder,
                                 const WideString& password);

}  // namespace lunara
