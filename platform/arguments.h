#pragma once

// What a command-line program needs of the system first: its arguments as UTF-8, and standard
// streams that pass bytes unchanged.

#include <string>
#include <vector>

namespace lunara {

/// Returns the arguments as UTF-8, without the program's name. On Windows they come from the
/// system's own command line, because `main` receives them in the 8-bit code page. Elsewhere they
/// are the bytes that `main` received, UTF-8 or not.
std::vector<std::string> ProgramArguments(int argc, char** argv);

/// Switches standard input, output and error to binary mode, which passes line ends unchanged.
void MakeStandardStreamsBinary();

/// The system's separator between folder and file: '\' on Windows, '/' elsewhere.
extern const char PathSeparator;

}  // namespace lunara
