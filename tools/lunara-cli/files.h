#pragma once

// Whole files in and out, and what went wrong with them in words.

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace lunara {

/// A file (or folder) that could not be read or written, and why.
struct Failure {
    WideString path;
    std::string reason;
};

/// The text of an error code on one line: the program's own string for one of its message ids, our
/// own words for the common errors of files, the system's text for the rest.
std::string ReasonText(DWORD code);

/// Reads the file. False, with the system's error in the last error, when it cannot be read, or
/// when it holds more than `limit` bytes (ERROR_FILE_TOO_LARGE).
bool ReadWholeFile(const WideString& path, std::size_t limit, std::string& bytes);

/// The same with a stream; false when it fails or holds more.
bool ReadWholeStream(std::istream& stream, std::size_t limit, std::string& bytes);

/// The path for the standard library, with either separator of `path` as the system's own. Symbolic
/// links are followed when the path itself is one, to where a file of that name would be made.
std::filesystem::path TargetOf(const WideString& path);

/// Writes the bytes to a new file beside `path` and puts it in the place of `path`, so that the
/// file there is the old one or the new one, whatever happens. The new file takes a name that
/// nothing has. A symbolic link stays and what it leads to is replaced. What is there and no plain
/// file (a pipe, a device) is written to as it is. False with the system's error in the last error.
bool ReplaceWholeFile(const WideString& path, std::string_view bytes);

}  // namespace lunara
