#include "tests/tool/tool_run.h"

#include "tools/lmw/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <system_error>

namespace lmw::test {
namespace {

namespace fs = std::filesystem;

fs::path PathOf(const std::string& name) {
    return fs::path(std::u8string(name.begin(), name.end()));
}

}  // namespace

ToolResult RunTool(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    const int exit_code = tool::RunProgram(arguments, out, err);
    return {exit_code, out.str(), err.str()};
}

ToolResult RunTool(std::vector<std::string> arguments, const std::string& more) {
    std::istringstream words(more);
    arguments.insert(arguments.end(), std::istream_iterator<std::string>(words), {});
    return RunTool(arguments);
}

std::string Packed(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    return text;
}

void ExpectRefusals(const std::string& command, const std::vector<Refusal>& refusals) {
    for (const Refusal& row : refusals) {
        const TemporaryFolder folder;
        std::vector<std::string> arguments = {command};
        if (row.content != nullptr) {
            arguments.insert(arguments.end(), {folder.Write(row.file, row.content), "--svg",
                                               folder.Name("p.svg"), "-o", folder.Name("o.csv")});
        }
        const ToolResult result = RunTool(arguments, row.options);
        SCOPED_TRACE(std::string(row.options) + ": " + row.complaint);
        EXPECT_EQ(result.exit_code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, testing::StartsWith("lmw: "));
        EXPECT_THAT(result.err, testing::EndsWith(std::string(row.complaint) + "\n"));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
        EXPECT_EQ(folder.Count(), row.content != nullptr ? 1U : 0U) << "only the input is there";
    }
}

TemporaryFolder::TemporaryFolder() {
    std::random_device random;  // tests of several programs run at once
    const std::u8string base = fs::temp_directory_path().generic_u8string();
    path_ = std::string(base.begin(), base.end()) + "/lmw-tool-test-" + std::to_string(random());
    fs::create_directories(PathOf(path_));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(PathOf(path_), ignored);
}

std::string TemporaryFolder::Name(const std::string& file) const {
    return path_ + "/" + file;
}

std::string TemporaryFolder::Write(const std::string& file, const std::string& content) const {
    std::ofstream(PathOf(Name(file)), std::ios::binary) << content;
    return Name(file);
}

std::optional<std::string> TemporaryFolder::Read(const std::string& file) const {
    std::ifstream stream(PathOf(Name(file)), std::ios::binary);
    if (!stream) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::size_t TemporaryFolder::Count() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(PathOf(path_)), fs::directory_iterator()));
}

}  // namespace lmw::test
