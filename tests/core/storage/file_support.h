#pragma once

// Shared by the tests of files: a temporary folder, and whole files as bytes.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "platform/text.h"

namespace lunara::test {

using Bytes = std::vector<unsigned char>;

/// A new, empty folder, deleted with its content at the end of the scope.
class ScratchFolder {
  public:
    ScratchFolder() {
        std::random_device random;
        do {
            root = std::filesystem::temp_directory_path() / ("lunara-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(root));
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    std::filesystem::path File(const std::string& name) const { return root / name; }
    const std::filesystem::path& Root() const { return root; }

    /// Names of its entries, in no order.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(root)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

  private:
    std::filesystem::path root;
};

/// The path in the program's UTF-16.
inline WideString Wide(const std::filesystem::path& path) { return path.string<WCHAR>(); }

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
