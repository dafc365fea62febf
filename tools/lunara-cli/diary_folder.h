#pragma once

// The four data files of a diary folder, loaded and saved so that a failure names the file.
// Functions that return a Failure return nothing on success.

#include <optional>
#include <span>

#include "diary/user_data.h"
#include "tools/lunara-cli/files.h"

namespace lunara {

/// One data file: its name, and access to the collection of a data set that it holds.
struct DiaryFile {
    const WCHAR* name;
    int (*load)(UserData& data, const WCHAR* path, const WCHAR* password);
    std::int32_t (*count)(const UserData& data);
    bool (*isDirty)(const UserData& data);
};

/// The four files in the order of loading and saving: temperature, bleeding, note flags, note
/// pages.
std::span<const DiaryFile> DiaryFiles();

/// Joins folder and file name. Adds a separator unless the folder ends with one.
WideString PathInFolder(const WideString& folder, const WCHAR* name);

/// Checks that the folder can be read: that it exists, is a folder and can be reached.
std::optional<Failure> CheckFolder(const WideString& folder);

/// Whether a file or folder of this path can be reached.
bool FileExists(const WideString& path);

/// Undoes an interrupted save (storage/data_file_set.h). Call it before loading anything.
std::optional<Failure> MendDiary(const WideString& folder);

/// Loads one file into its collection of `data`. A missing file loads as an empty collection.
std::optional<Failure> LoadDiaryFile(const DiaryFile& file, UserData& data,
                                     const WideString& folder, const WideString& password);

/// Mends the diary, then loads the four files up to the first bad one.
std::optional<Failure> LoadDiary(UserData& data, const WideString& folder,
                                 const WideString& password);

/// Creates the folder and its parents and saves every dirty collection: all of them or none.
std::optional<Failure> SaveDiary(UserData& data, const WideString& folder,
                                 const WideString& password);

}  // namespace lunara
