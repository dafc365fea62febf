#pragma once

#include <optional>

#include "tools/lunara-cli/files.h"

namespace lunara {

/// Reads a password from a UTF-8 file of at most 64 KiB. Strips a byte order mark from the
/// beginning and one line end (LF or CR LF) from the end. Fails when the file is longer, cannot be
/// read, is not UTF-8 or holds a zero character.
std::optional<Failure> ReadPasswordFile(const WideString& path, WideString& password);

}  // namespace lunara
