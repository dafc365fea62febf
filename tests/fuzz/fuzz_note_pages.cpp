#include "tests/fuzz/fuzz_data_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lunara::NotePageList list{10};
    lunara::NotePageList again{10};
    lunara::fuzz::CheckReader(list, again, data, size);
    return 0;
}
