#pragma once

// lunara-cli, the companion on the command line: gives scripts, tests and other programs access to
// a user's diary. The executable holds only `main`; tests call `RunCompanion` directly.

#include <iosfwd>
#include <string>
#include <vector>

namespace lunara {

enum ExitCode : int {
    ExitDone = 0,
    ExitData = 1,   // data could not be read or written
    ExitUsage = 2,  // wrong usage
};

/// The standard streams, in binary mode: line ends pass unchanged.
struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

/// Runs one command line, given without the program's name, and returns its exit code. `--today`
/// fixes the clock while the command runs. Throws nothing: running out of memory and failing path
/// functions are reported as ExitData.
int RunCompanion(const std::vector<std::string>& arguments, const Streams& streams);

}  // namespace lunara
