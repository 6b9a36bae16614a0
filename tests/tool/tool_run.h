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
/// The same with more arguments, cut at the blanks of one text.
[[nodiscard]] ToolResult RunTool(std::vector<std::string> arguments, const std::string& more);

/// `text` without blanks and line ends, to compare JSON.
[[nodiscard]] std::string Packed(std::string text);

/// A command line that must be refused.
struct Refusal {
    const char* content;    ///< of the input file; a null pointer for a command without one
    const char* options;    ///< cut at blanks
    const char* complaint;  ///< what the one line ends in
    const char* file = "p.csv";
};

/// Expects of each one line that begins with "lmw: ", exit code 2, no output and no file.
void ExpectRefusals(const std::string& command, const std::vector<Refusal>& refusals);

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
