#include "common/file/zip.h"

#include "tests/file/archive_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace lmw::test;
using namespace sys::file;
using namespace sys::file::zip;
using Files = std::vector<std::string>;
namespace fs = std::filesystem;

// An open archive of the test data, and a folder to extract into.
class ZipExtract : public ::testing::Test {
 protected:
    void Open(const char* archive) {
        data_ = ArchiveData(archive);
        ASSERT_OK(zip.OpenReadOnly(StreamOver(data_)));
    }
    gtl::status ExtractAll(const IExtractName& name = ExtractNameSame(),
                           const ExtractLimits& limits = {}) {
        return zip.Extract(zip.GetAllFileIDs(), folder / "target", name, limits);
    }

    ScratchFolder folder;
    Zip zip;

 private:
    std::string data_;
};

// Names every entry by a text of the test.
class NamedByTest final : public IExtractName {
 public:
    explicit NamedByTest(std::wstring name) : name_(std::move(name)) {}
    [[nodiscard]] std::wstring ExtractName(const std::wstring& entry_name) const override {
        if (name_ == L"throw") {
            throw std::runtime_error("no name for " + std::to_string(entry_name.size()));
        }
        return name_;
    }

 private:
    std::wstring name_;
};

TEST_F(ZipExtract, FilesGoBelowTheTarget) {
    Open("plain");
    ASSERT_OK(ExtractAll());
    EXPECT_EQ(folder.Files(), (Files{"target/a.txt", "target/dir/b.txt"}));
    EXPECT_EQ(folder.Read("target/dir/b.txt"), "b");
    // Again, over what is there; then one entry under another name, in the range form.
    ASSERT_OK(ExtractAll());
    const Zip::Ids ids = zip.GetAllFileIDs();
    ASSERT_OK(zip.Extract(ids.data() + 1, ids.data() + 2, folder / "deep/er",
                          ExtractNameFName(L"model")));
    EXPECT_EQ(folder.Files(), (Files{"deep/er/dir/model.txt", "target/a.txt", "target/dir/b.txt"}));
    EXPECT_EQ(zip.GetName(1, ExtractNameFName(L"model")), L"dir\\model.txt");
    // A folder keeps its name: an empty file "dir\model" would replace that of another entry.
    EXPECT_EQ(ExtractNameFName(L"model").ExtractName(L"dir\\"), L"dir\\");
}

TEST_F(ZipExtract, HostileNamesAreRefusedBeforeAnythingIsWritten) {
    int refused = 0;
    for (const std::string& archive : ArchiveDataNames()) {
        if (archive.rfind("name_", 0) != 0 || archive == "name_code_page_437" ||
            archive == "name_utf8_without_flag") {
            continue;
        }
        SCOPED_TRACE(archive);
        Open(archive.c_str());
        const gtl::status result = ExtractAll();
        EXPECT_EQ(result.as_wstring().find(L"Error extracting file: "), 0U);
        EXPECT_TRUE(folder.Files().empty());
        Zip::Bytes bytes;
        EXPECT_OK(zip.Extract(0, bytes));  // memory is no danger
        // A better name makes it harmless.
        EXPECT_OK(zip.Extract({0}, folder / "other", NamedByTest(L"safe.txt")));
        fs::remove_all(folder.Path() / "other");
        ++refused;
    }
    EXPECT_EQ(refused, 10);
    Open("plain");
    for (const wchar_t* name :
         {L"", L"..", L"a\\..\\b", L"/a", L"\\a", L"c:a", L"a/b:c", L"...", L".", L"NUL",
          L"a\\com1.x\\b", L"lpt\u00B2", L"a..", L"dir.\\a", L"a ", L"throw"}) {
        EXPECT_TRUE(ExtractAll(NamedByTest(name)).Failed());
        EXPECT_TRUE(folder.Files().empty());
    }
    EXPECT_TRUE(ExtractAll(NamedByTest(std::wstring(L"a\0b", 3))).Failed());
    for (const wchar_t* name : {L"a\\.\\b", L"a//b", L"..a", L".a", L"nul_.txt", L"com"}) {
        EXPECT_OK(zip.Extract({0}, folder / "target", NamedByTest(name)));
    }
}

TEST_F(ZipExtract, LinksAreNeitherMadeNorFollowed) {
    Open("link_then_file_below");
    EXPECT_TRUE(ExtractAll().Failed());
    EXPECT_FALSE(fs::is_symlink(folder.Path() / "target/out"));
    EXPECT_EQ(folder.Read("target/out"), "..");

    // A link that lies in the target already.
    std::error_code failure;
    fs::create_directory(folder.Path() / "outside");
    folder.Write("outside/kept.txt", "kept");
    fs::create_directory_symlink(folder.Path() / "outside", folder.Path() / "target/dir", failure);
    fs::create_symlink(folder.Path() / "outside/kept.txt", folder.Path() / "target/a.txt", failure);
    if (failure) {
        GTEST_SKIP() << "links cannot be made here";
    }
    Open("plain");
    EXPECT_OK(zip.Extract({0}, folder / "target", ExtractNameSame()));
    EXPECT_FALSE(fs::is_symlink(folder.Path() / "target/a.txt"));  // replaced, not followed
    EXPECT_TRUE(zip.Extract({1}, folder / "target", ExtractNameSame()).Failed());
    EXPECT_TRUE(zip.Extract({2}, folder / "target", ExtractNameSame()).Failed());
    EXPECT_EQ(folder.Read("outside/kept.txt"), "kept");
    EXPECT_FALSE(fs::exists(folder.Path() / "outside/b.txt"));
    // The target itself may be reached through a link: the caller chose it.
    fs::create_directory_symlink(folder.Path() / "outside", folder.Path() / "by-link");
    EXPECT_OK(zip.Extract({1}, folder / "by-link", ExtractNameSame()));
    EXPECT_EQ(folder.Read("outside/dir/b.txt"), "b");
}

TEST_F(ZipExtract, OlderFilesSurviveAFailure) {
    folder.Write("target/a.txt", "older");
    for (const char* archive : {"bad_sum_deflated", "bad_deflate", "bomb_10_megabytes"}) {
        Open(archive);
        EXPECT_TRUE(ExtractAll().Failed());
        EXPECT_EQ(folder.Files(), (Files{"target/a.txt"}));
        EXPECT_EQ(folder.Read("target/a.txt"), "older");
    }
    fs::create_directories(folder.Path() / "folder/a.txt");
    Open("plain");
    EXPECT_TRUE(zip.Extract({0}, folder / "folder", ExtractNameSame()).Failed());
    EXPECT_TRUE(zip.Extract({0}, folder / "target/a.txt", ExtractNameSame()).Failed());
    EXPECT_EQ(folder.Files(), (Files{"target/a.txt"}));
}

TEST_F(ZipExtract, LimitsCountWhatIsUnpacked) {
    Zip::Bytes bytes;
    Open("bomb_10_megabytes");  // claims 100 bytes
    ExtractLimits limits;
    limits.entry_size = 100'000;
    EXPECT_NE(zip.Extract(0, bytes, limits).as_wstring().find(L"100000"), std::wstring::npos);
    EXPECT_TRUE(ExtractAll(ExtractNameSame(), limits).Failed());
    EXPECT_TRUE(folder.Files().empty());

    Open("plain");
    const std::uint64_t first = zip.GetSize(0);
    limits = {first, first + 1, 3};
    EXPECT_OK(ExtractAll(ExtractNameSame(), limits));
    EXPECT_TRUE(ExtractAll(ExtractNameSame(), {first - 1, first + 1, 3}).Failed());
    EXPECT_TRUE(ExtractAll(ExtractNameSame(), {first, first, 3}).Failed());
    EXPECT_TRUE(ExtractAll(ExtractNameSame(), {first, first + 1, 2}).Failed());
    EXPECT_OK(zip.Extract(0, bytes, {first, first, 1}));
    EXPECT_TRUE(zip.Extract(0, bytes, {first, first - 1, 1}).Failed());
}

TEST_F(ZipExtract, CancellingStopsAndLeavesCompleteFilesOnly) {
    Open("plain");
    int calls = 0;
    EXPECT_TRUE(zip.Extract(zip.GetAllFileIDs(), folder / "target", ExtractNameSame(), {},
                            [&](double) { return ++calls < 2; })
                    .Failed());
    EXPECT_EQ(folder.Files(), (Files{"target/a.txt"}));
}

TEST_F(ZipExtract, UnknownIdentifiersAreNotFound) {
    Open("plain");
    Zip::Bytes bytes;
    EXPECT_NE(zip.Extract(7, bytes).as_wstring().find(L"file not found"), std::wstring::npos);
    EXPECT_TRUE(zip.Extract({0, 7}, folder / "target", ExtractNameSame()).Failed());
    EXPECT_TRUE(folder.Files().empty());
    Zip closed;
    EXPECT_TRUE(closed.Extract(0, bytes).Failed());
    EXPECT_TRUE(closed.Test({}).Failed());
}

}  // namespace
