#pragma once

// Both readers of data files under the fuzzer. The first byte of an input says how the rest becomes
// a file: bit 0 loads it with a password, bit 1 enciphers its records with that password first, so
// that the checks behind the cipher are reached, too.

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/text.h"
#include "storage/cipher/cipher.h"
#include "storage/cipher/password_key.h"
#include "storage/data_file.h"

namespace lunara::fuzz {

inline constexpr std::size_t HeaderBytes = 4;

/// Unlike assert, checked in every build.
inline void Require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "broken: %s\n", what);
        std::abort();
    }
}

/// A file of this process alone, in memory where the system offers that, gone at its end.
class PrivateFile {
  public:
    PrivateFile() {
        const std::filesystem::path memory = "/dev/shm";
        std::error_code none;
        std::string pattern =
            (std::filesystem::is_directory(memory, none) ? memory
                                                         : std::filesystem::temp_directory_path()) /
            "lunara-fuzz-XXXXXX";
        Require(::mkdtemp(pattern.data()) != nullptr, "folder");
        folder = pattern;
        path = (folder / "Fuzzed.dat").u16string();
    }
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;
    ~PrivateFile() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    void Write(const std::vector<std::uint8_t>& bytes) const {
        std::FILE* file = std::fopen((folder / "Fuzzed.dat").c_str(), "wb");
        Require(file != nullptr, "create");
        Require(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size(), "write");
        Require(std::fclose(file) == 0, "close");
    }

    bool Exists() const { return std::filesystem::exists(folder / "Fuzzed.dat"); }

    const WCHAR* Path() const { return path.c_str(); }

  private:
    std::filesystem::path folder;
    WideString path;
};

inline int Load(DayValueList& list, const WCHAR* path, const WCHAR* password) {
    return LoadDayValues(list, path, password);
}
inline int Load(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return LoadNotePages(list, path, password);
}
inline int Save(DayValueList& list, const WCHAR* path, const WCHAR* password) {
    return SaveDayValues(list, path, password);
}
inline int Save(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return SaveNotePages(list, path, password);
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

/// An accepted file holds what the list holds, and comes back the same after a save.
template <typename List>
void CheckLoaded(List& list, List& again, const PrivateFile& file, const WCHAR* password,
                 std::size_t bytes) {
    const std::size_t recordBytes = sizeof(*list.begin());
    Require(bytes >= HeaderBytes, "a short header was accepted");
    Require(static_cast<std::size_t>(list.Count()) * recordBytes == bytes - HeaderBytes, "count");
    Require(list.Count() <= list.Capacity(), "capacity");
    Require(IsOrdered(list), "order");
    Require(std::all_of(list.begin(), list.end(),
                        [](const auto& record) { return IsPossibleDate(record.date); }),
            "dates");
    list.dirty = true;
    Require(Save(list, file.Path(), password) == 1 && !list.dirty, "save");
    Require(file.Exists() == (list.Count() > 0), "an empty list leaves no file");
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

template <typename List>
void CheckReader(List& list, List& again, const std::uint8_t* data, std::size_t size) {
    static const PrivateFile file;
    if (size == 0) {
        return;
    }
    const WCHAR* password = (data[0] & 1) != 0 ? TEXT("secret") : TEXT("");
    std::vector<std::uint8_t> bytes(data + 1, data + size);
    if ((data[0] & 3) == 3 && bytes.size() > HeaderBytes) {
        CipherState state;
        InitCipher(state, DataKey(password).Bytes());
        EncipherBlocks(state, bytes.data() + HeaderBytes, bytes.size() - HeaderBytes);
    }
    file.Write(bytes);
    list.dirty = true;
    const int loaded = Load(list, file.Path(), password);
    if (loaded == 0) {
        CheckRefused(list);
    }
    Require(!list.dirty, "a load clears the dirty flag");
    if (loaded != 0) {
        CheckLoaded(list, again, file, password, bytes.size());
    }
}

}  // namespace lunara::fuzz
