#pragma once

// What the tests of files share: bytes in and out of files.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace lunara::test {

using Bytes = std::vector<unsigned char>;

inline Bytes ReadBytes(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    return Bytes(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

inline void WriteBytes(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(stream.good()) << path;
}

inline Bytes GoldenBytes(const std::string& name) {
    return ReadBytes(std::filesystem::path(LUNARA_TEST_DATA) / "golden" / (name + ".dat"));
}

}  // namespace lunara::test
