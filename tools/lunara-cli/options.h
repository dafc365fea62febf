#pragma once

// Parses the command line of lunara-cli.

#include <optional>
#include <string>
#include <vector>

#include "platform/text.h"
#include "records/dates.h"

namespace lunara {

enum class Command { Predict, Export, Import, Check, Sample };

struct Options {
    Command command = Command::Check;
    WideString folder;  // without separators at its end, but "/" for the root
    std::optional<WideString> passwordFile;
    std::optional<DateKey> today;  // a real day
    bool json = false;
    WideString csv;  // "-" for the standard stream, "" when not an import or export
};

/// Result of parsing: `options`, or else `text` to print and the exit code, which is 0 for help
/// that was asked for and 2 for wrong usage.
struct ParsedOptions {
    std::optional<Options> options;
    int exitCode = 0;
    std::string text;
};

/// Parses `arguments`, in order and without the program's name.
ParsedOptions ParseOptions(std::vector<std::string> arguments);

}  // namespace lunara
