// Any bytes as a file of day values (fuzz_data_file.h).

#include "tests/fuzz/fuzz_data_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lunara::fuzz::CheckReader<lunara::fuzz::DayValueFile>(data, size);
    return 0;
}
