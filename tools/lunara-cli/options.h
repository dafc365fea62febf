#pragma once

// The command line.

#include <optional>
#include <string>
#include <vector>

#include "platform/text.h"
#include "records/dates.h"

namespace lunara {

enum class Command { Predict, Export, Import, Check, Sample };

struct Options {
    Command command = Command::Check;
    WideString folder;  // without separators at its end
    std::optional<WideString> passwordFile;
    std::optional<DateKey> today;  // a real day
    bool json = false;
    WideString csv;  // "-" for the standard stream
};

/// What became of a command line: either `options`, or the text to print and the exit code: 0 with
/// the help that was asked for, 2 with what is wrong.
struct ParsedOptions {
    std::optional<Options> options;
    int exitCode = 0;
    std::string text;
};

/// `arguments` in order, without the program's name.
ParsedOptions ParseOptions(std::vector<std::string> arguments);

}  // namespace lunara
