#pragma once

// lunara-cli: a user's diary for scripts, tests and people who want their data in other hands. The
// executable is only its `main`; tests call `RunCompanion` themselves.

#include <iosfwd>
#include <string>
#include <vector>

namespace lunara {

enum ExitCode : int {
    ExitDone = 0,
    ExitData = 1,   // data could not be read or written
    ExitUsage = 2,  // wrong usage
};

/// Bytes in and out, without any change of line ends.
struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

/// Runs one command line (without the program's name) and returns its exit code. `--today` sets the
/// clock for as long as the command runs.
int RunCompanion(const std::vector<std::string>& arguments, const Streams& streams);

}  // namespace lunara
