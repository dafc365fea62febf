#include <iostream>

#include "platform/arguments.h"
#include "tools/lunara-cli/companion.h"

int main(int argc, char** argv) {
    lunara::MakeStandardStreamsBinary();
    return lunara::RunCompanion(lunara::ProgramArguments(argc, argv),
                                {std::cin, std::cout, std::cerr});
}
