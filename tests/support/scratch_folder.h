#pragma once

// A folder of a test's own in the system's folder for temporary files.

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "platform/text.h"

namespace lunara::test {

/// An empty folder, removed with all that is in it at the end of the scope. Its name is random, so
/// test programs may run side by side.
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

    /// The names of its files and folders, in no particular order.
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

/// The path in UTF-16, as the program takes it.
inline WideString Wide(const std::filesystem::path& path) { return path.string<WCHAR>(); }

}  // namespace lunara::test
