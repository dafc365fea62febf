#pragma once

// The four data files in a folder, one by one, so that a failure has the file's name.

#include <optional>

#include "diary/user_data.h"
#include "tools/lunara-cli/files.h"

namespace lunara {

/// The file's path to be opened or shown.
WideString PathInFolder(const WideString& folder, DataFile file);

/// What keeps the folder from being read: that it does not exist or is none, or cannot be reached.
std::optional<Failure> CheckFolder(const WideString& folder);

bool FileExists(const WideString& path);

/// Undoes a save that was broken off (storage/data_file_set.h); to be called before any loading.
std::optional<Failure> MendDiary(const WideString& folder);

/// Loads one file; a file that is not there loads as an empty collection.
std::optional<Failure> LoadDiaryFile(DataFile file, UserData& data, const WideString& folder,
                                     const WideString& password);

/// Mends the diary and loads all four, up to the first bad one.
std::optional<Failure> LoadDiary(UserData& data, const WideString& folder,
                                 const WideString& password);

/// Creates the folder and its parents and saves every dirty collection: all of them or none.
std::optional<Failure> SaveDiary(UserData& data, const WideString& folder,
                                 const WideString& password);

}  // namespace lunara
