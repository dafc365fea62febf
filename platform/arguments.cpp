#include "platform/arguments.h"

#include "platform/text.h"
#include "platform/win32.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#endif

namespace lunara {

#ifdef _WIN32

const char PathSeparator = '\\';

std::vector<std::string> ProgramArguments(int /*argc*/, char** /*argv*/) {
    int count = 0;
    WCHAR** wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(ToUtf8(wide[i]));
    }
    ::LocalFree(wide);
    return arguments;
}

void MakeStandardStreamsBinary() {
    ::_setmode(::_fileno(stdin), _O_BINARY);
    ::_setmode(::_fileno(stdout), _O_BINARY);
    ::_setmode(::_fileno(stderr), _O_BINARY);
}

#else

const char PathSeparator = '/';

std::vector<std::string> ProgramArguments(int argc, char** argv) {
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

void MakeStandardStreamsBinary() {}

#endif

}  // namespace lunara
