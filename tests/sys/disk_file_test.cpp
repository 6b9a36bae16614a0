#include "common/sys/disk_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace {

namespace fs = std::filesystem;

class DiskFile : public ::testing::Test {
 protected:
    DiskFile() {
        do {
            folder =
                fs::temp_directory_path() / ("lmw-sys-" + std::to_string(std::random_device()()));
        } while (!fs::create_directory(folder));
        const fs::path native = folder / "file";
        path.assign(native.native().begin(), native.native().end());  // all ASCII
    }
    ~DiskFile() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    [[nodiscard]] std::string Content() const {
        std::ifstream file(folder / "file", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    unsigned Put(const std::string& content, sys::Existing existing) {
        sys::ReplacementFile file;
        EXPECT_EQ(file.Create(path), 0U);
        EXPECT_EQ(file.File().WriteAt(0, content.data(), content.size()), 0U);
        const unsigned code = file.Commit(existing);
        EXPECT_EQ(file.IsInPlace(), code == 0);
        return code;
    }

    fs::path folder;
    std::wstring path;
};

TEST_F(DiskFile, NewFilesReplaceOnlyWhereTheyMay) {
    EXPECT_EQ(Put("first", sys::Existing::kKeep), 0U);
    EXPECT_EQ(Content(), "first");
    EXPECT_NE(Put("second", sys::Existing::kKeep), 0U);
    EXPECT_EQ(Content(), "first");
    EXPECT_EQ(Put("third", sys::Existing::kReplace), 0U);
    EXPECT_EQ(Content(), "third");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

}  // namespace
