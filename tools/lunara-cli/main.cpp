#include <iostream>

#include "companion.h"
#include "platform/arguments.h"

int main(int argc, char** argv) {
    lunara::MakeStandardStreamsBinary();
    return lunara::RunCompanion(lunara::ProgramArguments(argc, argv),
                                {std::cin, std::cout, std::cerr});
}
