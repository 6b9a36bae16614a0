// What the archive survives on Windows: readers that hold the old file.

#include "common/file/zip.h"

#include "tests/file/archive_files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using lmw::test::Content;
using lmw::test::ReadFile;
using lmw::test::ScratchFolder;
using sys::file::Zip;
using sys::file::zip::CompactMode;

TEST(ZipFaults, ReaderThatHoldsTheArchiveFailsAndCanBeRepeated) {
    const ScratchFolder folder;
    const std::wstring path = folder / "p.lwz";
    Zip zip;
    ASSERT_OK(zip.Open(path, CompactMode::Never));
    ASSERT_OK(zip.Add(folder.Write("source", "1"), L"a"));
    const std::string before = ReadFile(folder.Path() / "p.lwz");
    {
        const sys::file::InputStream reader = sys::file::MakeFileInputStream(path);
        EXPECT_TRUE(zip.Flush().Failed());
        EXPECT_EQ(ReadFile(folder.Path() / "p.lwz"), before);
        EXPECT_EQ(folder.Files(), (std::vector<std::string>{"p.lwz", "source"}));
        EXPECT_EQ(Content(zip, L"a"), "1");
    }
    ASSERT_OK(zip.Close());
    ASSERT_OK(zip.Open(path, CompactMode::Never));
    EXPECT_EQ(Content(zip, L"a"), "1");
}

}  // namespace
