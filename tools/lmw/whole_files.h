#pragma once

// Files read and written as a whole. Output is all or nothing: a reader never meets half a file,
// and a command that fails leaves what was there before.

#include <string>
#include <vector>

namespace lmw::tool {

/// The content of a file, named in UTF-8. Throws Failure, naming the file, when there is none, it
/// is a folder, or it cannot be read.
[[nodiscard]] std::string ReadWholeFile(const std::string& file);

/// A file to be written: its name in UTF-8 and its content, byte for byte.
struct OutputFile {
    std::string name;
    std::string content;
};

/// Writes all files, replacing those that exist. Each is first written beside its place under a
/// name of its own and then renamed; when one cannot be written none is replaced, and Failure names
/// it. What exists and is no regular file (a pipe, a terminal) is written to directly. Failure,
/// too, when two of them are one file, or one is `input`: measured data are not replaced by
/// results.
void WriteFiles(const std::vector<OutputFile>& files, const std::string& input = {});

/// Whether two names lead to one file or folder, there or not yet.
[[nodiscard]] bool IsSamePlace(const std::string& a, const std::string& b);

/// Makes a folder and those above it, if they are not there. Throws Failure when that is
/// impossible.
void MakeFolder(const std::string& folder);

}  // namespace lmw::tool
