#pragma once

// Reads and writes whole files, and turns error codes into words.

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace lunara {

/// A file or folder that could not be read or written, and why.
struct Failure {
    WideString path;
    std::string reason;
};

/// The text of an error code, on one line, in UTF-8: the program's own string for one of its
/// message ids (57344..57359), fixed words for common file errors, the system's text for the rest.
std::string ReasonText(DWORD code);

/// Reads the whole file into `bytes`. Returns false with the system's error in the last error:
/// ERROR_FILE_TOO_LARGE when the file holds more than `limit` bytes.
bool ReadWholeFile(const WideString& path, std::size_t limit, std::string& bytes);

/// Reads the rest of the stream into `bytes`. False when reading fails or more than `limit` bytes
/// come; the last error is not set.
bool ReadWholeStream(std::istream& stream, std::size_t limit, std::string& bytes);

/// Converts `path` for the standard library: either separator becomes the system's own, and
/// symbolic links are followed when the path itself is one, even to a target that does not exist
/// yet.
std::filesystem::path TargetOf(const WideString& path);

/// Writes the bytes to a new file beside `path`, under an unused name, and renames it to `path`.
/// After an interruption `path` is the whole old file or the whole new one. A symbolic link stays,
/// and its target is replaced. A pipe or a device is written to directly. False, with the system's
/// error in the last error, on failure.
bool ReplaceWholeFile(const WideString& path, std::string_view bytes);

}  // namespace lunara
