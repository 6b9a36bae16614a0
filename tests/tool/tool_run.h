#pragma once

// Whole command lines of the program, run inside the test's process, and a folder for their files.

#include <optional>
#include <string>
#include <vector>

namespace lmw::test {

struct ToolResult {
    int exit_code = 0;
    std::string out;
    std::string err;
};

[[nodiscard]] ToolResult RunTool(const std::vector<std::string>& arguments);

/// A fresh folder that goes with the object. All names are in UTF-8.
class TemporaryFolder {
 public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    /// The full name of a file in the folder.
    [[nodiscard]] std::string Name(const std::string& file) const;
    /// Writes a file and returns its full name.
    [[nodiscard]] std::string Write(const std::string& file, const std::string& content) const;
    /// A file's content; nothing when it does not exist.
    [[nodiscard]] std::optional<std::string> Read(const std::string& file) const;
    /// How many files and folders the folder holds.
    [[nodiscard]] std::size_t Count() const;

 private:
    std::string path_;
};

}  // namespace lmw::test
