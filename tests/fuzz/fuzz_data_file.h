#pragma once

// Fuzzes the readers of both kinds of data files. The first byte of an input says how the rest
// becomes a file. Bit 0: load it with a password. Bit 1, with bit 0: encipher its records with that
// password first, so that the fuzzer gets past the cipher to the checks behind it. What is accepted
// is saved as the program saves it (UserData::SaveFolder) and must come back the same.

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "diary/user_data.h"
#include "platform/text.h"
#include "storage/cipher/cipher.h"
#include "storage/cipher/password_key.h"
#include "storage/data_file.h"
#include "storage/data_file_set.h"
#include "tests/support/user_data_access.h"

namespace lunara::fuzz {

inline constexpr std::size_t HeaderBytes = 4;

/// Ends the process unless the condition holds, in release builds too.
inline void Require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "broken: %s\n", what);
        std::abort();
    }
}

/// One data file in a temporary folder of this process, in memory where the system offers that.
/// Deleted with the folder at the process's end.
class PrivateFile {
  public:
    explicit PrivateFile(DataFile which) {
        const std::filesystem::path memory = "/dev/shm";
        std::error_code none;
        std::string pattern =
            (std::filesystem::is_directory(memory, none) ? memory
                                                         : std::filesystem::temp_directory_path()) /
            "lunara-fuzz-XXXXXX";
        Require(::mkdtemp(pattern.data()) != nullptr, "folder");
        folder = pattern;
        Require(DataFilePath(Folder().c_str(), which, path), "path");
        native = folder / ToUtf8(DataFileName(which));
    }
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;
    ~PrivateFile() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    void Write(const std::vector<std::uint8_t>& bytes) const {
        std::FILE* file = std::fopen(native.c_str(), "wb");
        Require(file != nullptr, "create");
        Require(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size(), "write");
        Require(std::fclose(file) == 0, "close");
    }

    bool Exists() const { return std::filesystem::exists(native); }

    WideString Folder() const { return folder.u16string(); }
    /// The file as the program names it.
    const WCHAR* Path() const { return path.c_str(); }

  private:
    std::filesystem::path folder;
    std::filesystem::path native;
    WideString path;
};

// The two kinds of data files, each with one of the diary's lists that is saved as such a file.

struct DayValueFile {
    static constexpr DataFile Which = DataFile::Bleeding;
    static DayValueList& ListOf(UserData& data) { return UserDataTestAccess::Bleeding(data); }
};

struct NotePageFile {
    static constexpr DataFile Which = DataFile::NotePages;
    static NotePageList& ListOf(UserData& data) { return UserDataTestAccess::NotePages(data); }
};

inline int Load(DayValueList& list, const WCHAR* path, const WCHAR* password) {
    return LoadDayValues(list, path, password);
}
inline int Load(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return LoadNotePages(list, path, password);
}

inline bool IsPossibleDate(DateKey key) {
    const unsigned day = key & 0xFF;
    const unsigned month = key >> 8 & 0xFF;
    const unsigned year = key >> 16;
    return day - 1 < 31 && month - 1 < 12 && year - 1601 < 900;
}

inline bool IsOrdered(const DayValueList& list) {
    return std::adjacent_find(list.begin(), list.end(),
                              [](const DayValue& earlier, const DayValue& later) {
                                  return earlier.date >= later.date;
                              }) == list.end();
}
inline bool IsOrdered(const NotePageList& /*list*/) { return true; }

template <typename List>
bool IsSame(const List& a, const List& b) {
    return a.Count() == b.Count() &&
           (a.Count() == 0 ||
            std::memcmp(a.begin(), b.begin(),
                        static_cast<std::size_t>(a.Count()) * sizeof(*a.begin())) == 0);
}

/// Checks a list that was loaded from a file of `bytes` bytes, then saves and loads it again.
template <typename Kind>
void CheckLoaded(UserData& data, const PrivateFile& file, const WCHAR* password,
                 std::size_t bytes) {
    auto& list = Kind::ListOf(data);
    const std::size_t recordBytes = sizeof(*list.begin());
    Require(bytes >= HeaderBytes, "a short header was accepted");
    Require(static_cast<std::size_t>(list.Count()) * recordBytes == bytes - HeaderBytes, "count");
    Require(list.Count() <= list.Capacity(), "capacity");
    Require(IsOrdered(list), "order");
    Require(std::all_of(list.begin(), list.end(),
                        [](const auto& record) { return IsPossibleDate(record.date); }),
            "dates");
    list.dirty = true;
    Require(data.SaveFolder(file.Folder().c_str(), password) == 1 && !list.dirty, "save");
    Require(file.Exists() == (list.Count() > 0), "an empty list leaves no file");
    UserData copy;
    auto& again = Kind::ListOf(copy);
    Require(Load(again, file.Path(), password) == 1, "load again");
    Require(IsSame(list, again), "the same again");
}

template <typename List>
void CheckRefused(const List& list) {
    const DWORD error = ::GetLastError();
    Require(list.Count() == 0 && list.Capacity() == 0, "a refused file leaves the list empty");
    Require(error == ERROR_SUCCESS || error == DataFileForeign || error == DataFileTooNew ||
                error == DataFileCorrupt || error == DataFileWrongPassword,
            "error code");
}

template <typename Kind>
void CheckReader(const std::uint8_t* input, std::size_t size) {
    static const PrivateFile file(Kind::Which);
    if (size == 0) {
        return;
    }
    const WCHAR* password = (input[0] & 1) != 0 ? TEXT("secret") : TEXT("");
    std::vector<std::uint8_t> bytes(input + 1, input + size);
    if ((input[0] & 3) == 3 && bytes.size() > HeaderBytes) {
        CipherState state;
        InitCipher(state, DataKey(password).Bytes());
        EncipherBlocks(state, bytes.data() + HeaderBytes, bytes.size() - HeaderBytes);
    }
    file.Write(bytes);
    UserData data;
    auto& list = Kind::ListOf(data);
    list.dirty = true;
    const int loaded = Load(list, file.Path(), password);
    if (loaded == 0) {
        CheckRefused(list);
    }
    Require(!list.dirty, "a load clears the dirty flag");
    if (loaded != 0) {
        CheckLoaded<Kind>(data, file, password, bytes.size());
    }
}

}  // namespace lunara::fuzz
