#pragma once

#include <optional>

#include "tools/lunara-cli/files.h"

namespace lunara {

/// Reads a password: the file's UTF-8 text without one line end (LF or CR LF) at its end and
/// without a byte order mark at its begin. Bytes that are not UTF-8, a zero character and more than
/// 64 KiB are refused, and so is a file that cannot be read.
std::optional<Failure> ReadPasswordFile(const WideString& path, WideString& password);

}  // namespace lunara
