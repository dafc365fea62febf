#pragma once

// What a program for the shell needs of the system before it can do anything: its arguments as
// UTF-8, and standard streams that pass bytes on as they are.

#include <string>
#include <vector>

namespace lunara {

/// The arguments without the program's own name, as UTF-8. Windows is asked for its own command
/// line, because what `main` receives there is in the system's 8-bit code page. Elsewhere they are
/// the bytes that `main` received, UTF-8 or not.
std::vector<std::string> ProgramArguments(int argc, char** argv);

/// Standard input, output and error no longer turn line ends into anything else.
void MakeStandardStreamsBinary();

/// What stands between a folder and a file in a path that is shown to a person.
extern const char PathSeparator;

}  // namespace lunara
