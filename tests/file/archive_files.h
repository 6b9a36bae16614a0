#pragma once

// Folders, files and archives for the tests of this room.

#include "common/file/zip.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::test {

/// A folder of its own that is deleted with everything in it.
class ScratchFolder {
 public:
    ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    /// The path of something in the folder as the library takes it.
    [[nodiscard]] std::wstring operator/(const std::string& name) const;
    /// Writes a file, with the folders it needs, and returns its path.
    std::wstring Write(const std::string& name, std::string_view content) const;
    /// The names of all files below the folder, sorted, with "/" between their parts.
    [[nodiscard]] std::vector<std::string> Files() const;

 private:
    std::filesystem::path path_;
};

[[nodiscard]] std::wstring WidePath(const std::filesystem::path& path);
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path);

/// The content of an archive of tests/data/archives, by its name without ".zip".
[[nodiscard]] std::string ArchiveData(const std::string& name);
/// The names of all of them.
[[nodiscard]] std::vector<std::string> ArchiveDataNames();

/// A stream over a text, which must outlive it.
[[nodiscard]] sys::file::InputStream StreamOver(const std::string& bytes);

/// Bytes that hardly compress.
[[nodiscard]] std::string Noise(std::size_t size, unsigned seed = 1);

[[nodiscard]] std::string Text(const sys::file::Zip::Bytes& bytes);

/// The content of the entry with that name; the failure's text where there is none.
[[nodiscard]] std::string Content(const sys::file::Zip& zip, const std::wstring& name);

/// The names of all entries, in the order of their identifiers.
[[nodiscard]] std::vector<std::wstring> Names(const sys::file::Zip& zip);

}  // namespace lmw::test

/// Fails the test with the status's text.
#define EXPECT_OK(expression)                                       \
    do {                                                            \
        const gtl::status status_of_it = (expression);              \
        EXPECT_TRUE(status_of_it.Succeeded())                       \
            << ::testing::PrintToString(status_of_it.as_wstring()); \
    } while (false)
#define ASSERT_OK(expression)                                       \
    do {                                                            \
        const gtl::status status_of_it = (expression);              \
        ASSERT_TRUE(status_of_it.Succeeded())                       \
            << ::testing::PrintToString(status_of_it.as_wstring()); \
    } while (false)
