#pragma once

// A folder for the files of a test, and files as bytes.

#include "common/sys/text_encoding.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <vector>

namespace lmw::test {

/// A native path as the library takes it.
template <class Native>
[[nodiscard]] std::wstring WideNative(const Native& native) {
    if constexpr (std::is_same_v<Native, std::wstring>) {
        return native;
    } else {
        return sys::Widen(native);
    }
}
[[nodiscard]] inline std::wstring WidePath(const std::filesystem::path& path) {
    return WideNative(path.native());
}

[[nodiscard]] inline std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A folder of its own that is deleted with everything in it.
class ScratchFolder {
 public:
    ScratchFolder() {
        std::random_device device;
        do {
            path_ =
                std::filesystem::temp_directory_path() / ("lmw-test-" + std::to_string(device()));
        } while (!std::filesystem::create_directory(path_));
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        namespace fs = std::filesystem;
        std::error_code ignored;
        for (const auto& entry : fs::recursive_directory_iterator(path_, ignored)) {
            fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, ignored);
        }
        fs::remove_all(path_, ignored);
    }

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    /// The path of something in the folder as the library takes it.
    [[nodiscard]] std::wstring operator/(const std::string& name) const {
        return WidePath(path_ / name);
    }
    [[nodiscard]] std::string Read(const std::string& name) const { return ReadFile(path_ / name); }
    /// Writes a file, with the folders it needs, and returns its path.
    std::wstring Write(const std::string& name, std::string_view content) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return WidePath(file);
    }
    /// The names of all files below the folder, sorted, with "/" between their parts.
    [[nodiscard]] std::vector<std::string> Files() const {
        std::vector<std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path_)) {
            if (!entry.is_directory()) {
                files.push_back(std::filesystem::relative(entry.path(), path_).generic_string());
            }
        }
        std::sort(files.begin(), files.end());
        return files;
    }

 private:
    std::filesystem::path path_;
};

}  // namespace lmw::test
