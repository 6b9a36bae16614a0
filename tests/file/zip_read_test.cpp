#include "common/file/lwz_version.h"
#include "common/file/zip.h"

#include "tests/file/archive_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace {

using doc::file::GetLwzVersion;
using namespace lmw::test;
using namespace sys::file;
using Wide = std::vector<std::wstring>;
using Version = lmw::version::NumberKind<0>;
using namespace sys::file::zip;
using Files = std::vector<std::string>;
namespace fs = std::filesystem;

constexpr std::uint16_t kUnset = Version::kUnset;

// An open archive of the test data.
class ZipRead : public ::testing::Test {
 protected:
    void Open(const char* archive) {
        data = ArchiveData(archive);
        ASSERT_OK(zip.OpenReadOnly(StreamOver(data)));
    }

    std::string data;
    Zip zip;
};

TEST_F(ZipRead, NamesOfOtherProgramsAreRead) {
    const std::pair<const char*, Wide> rows[] = {
        {"plain", {L"a.txt", L"dir\\b.txt", L"dir\\"}},
        {"name_code_page_437", {L"B\u00F6schung.txt"}},
        {"name_utf8_without_flag", {L"B\u00F6schung.txt"}},
        {"names_with_backslashes", {L"dir\\a.txt", L"dir\\sub\\"}},
        {"two_of_one_name", {L"a.txt", L"a.txt"}},
        {"zip64_end_record", {L"a.txt", L"b.txt"}},
        {"program_in_front", {L"a.txt"}},
        {"bytes_behind", {L"a.txt"}},
        {"empty", {}},
    };
    for (const auto& [archive, names] : rows) {
        SCOPED_TRACE(archive);
        Open(archive);
        EXPECT_EQ(Names(zip), names);
        EXPECT_OK(zip.Test(zip.GetAllFileIDs()));
    }
}

TEST_F(ZipRead, DamageIsAStatusAndNeverContent) {
    for (const char* archive :
         {"bad_sum_stored", "bad_sum_deflated", "bad_deflate", "claims_4_gigabytes", "claims_less",
          "claims_content_of_nothing", "bomb_10_megabytes", "offset_outside", "method_unknown",
          "traditional_password_sesame"}) {
        SCOPED_TRACE(archive);
        Open(archive);
        Zip::Bytes bytes;
        EXPECT_TRUE(zip.Test({0}).Failed());
        const gtl::status result = zip.Extract(0, bytes);
        EXPECT_EQ(result.as_wstring().find(L"Error extracting file: "), 0U);
        EXPECT_TRUE(bytes.empty());
        EXPECT_LT(bytes.capacity(), 32U << 20) << "a claimed size was believed";
    }
    for (const char* archive : {"count_too_large", "count_too_small", "zip64_claims_many_entries",
                                "extra_field_overruns", "flag_utf8_and_bytes_that_are_not"}) {
        SCOPED_TRACE(archive);
        data = ArchiveData(archive);
        EXPECT_EQ(zip.OpenReadOnly(StreamOver(data)).MessageId(), 20526U);
        EXPECT_FALSE(zip.IsOpen());
    }
}

TEST_F(ZipRead, TraditionalEncryptionIsRead) {
    Open("traditional_password_sesame");
    EXPECT_OK(zip.Encrypt(L"sesame"));
    EXPECT_EQ(Content(zip, L"secret.txt"), "pore pressure 12.5 kPa");
    for (int k = 0; k < 600; ++k) {  // its own check lets one wrong password in 256 pass
        EXPECT_OK(zip.Encrypt(L"wrong" + std::to_wstring(k)));
        Zip::Bytes bytes;
        EXPECT_TRUE(zip.Extract(0, bytes).Failed()) << k;
    }
}

TEST_F(ZipRead, FindMatchesWholeNames) {
    Open("plain");
    const std::tuple<const wchar_t*, Finder::Filter, Zip::Ids> rows[] = {
        {L"*", Finder::kFilesAndFolders, {0, 1, 2}}, {L"*.*", Finder::kFolders, {2}},
        {L"*.TXT", Finder::kFiles, {0, 1}},          {L"dir/?.txt", Finder::kFiles, {1}},
        {L"dir", Finder::kFilesAndFolders, {2}},     {L"dir", Finder::kFiles, {}},
        {L"b.txt", Finder::kFilesAndFolders, {}},    {L"", Finder::kFilesAndFolders, {}},
    };
    for (const auto& [pattern, filter, expected] : rows) {
        Zip::Ids ids = {99};
        EXPECT_OK(zip.Find(ids, pattern, filter));
        EXPECT_EQ(ids, expected) << ::testing::PrintToString(std::wstring(pattern));
    }
}

TEST_F(ZipRead, ExceptionsOfPredicatesBecomeStatuses) {
    Open("plain");
    const auto broken = [](const std::wstring&) -> bool { throw std::runtime_error("broken"); };
    Zip::Ids ids;
    Zip::Bytes bytes(5);
    EXPECT_EQ(zip.FindAllMatching(ids, broken).MessageId(), 20654U);
    EXPECT_EQ(Zip::ExtractFirstMatching(bytes, StreamOver(data), broken).MessageId(), 20654U);
    EXPECT_TRUE(bytes.empty());
}

TEST_F(ZipRead, ExtractFirstMatchingTakesTheFirst) {
    data = ArchiveData("two_of_one_name");
    Zip::Bytes bytes;
    ASSERT_OK(Zip::ExtractFirstMatching(bytes, StreamOver(data),
                                        [](const std::wstring& name) { return name == L"a.txt"; }));
    EXPECT_EQ(Text(bytes), "first");
    const gtl::status none = Zip::ExtractFirstMatching(bytes, StreamOver(data),
                                                       [](const std::wstring&) { return false; });
    EXPECT_NE(none.as_wstring().find(L"file not found"), std::wstring::npos);
}

// A stream of a caller that fails, or throws, from some read on.
class BrokenStream final : public IInputStream {
 public:
    BrokenStream(std::string bytes, int good_reads, bool throws)
        : bytes_(std::move(bytes)), good_reads_(good_reads), throws_(throws) {}
    [[nodiscard]] std::wstring Name() const override { return L"broken"; }
    gtl::status Size(std::uint64_t& size) const override {
        size = bytes_.size();
        return {};
    }
    gtl::status ReadAt(std::uint64_t offset, std::span<std::byte> to,
                       std::size_t& read) const override {
        if (good_reads_-- <= 0) {
            if (throws_) {
                throw std::runtime_error("the cable was pulled");
            }
            return gtl::status::FromText(L"the cable was pulled");
        }
        return StreamOver(bytes_)->ReadAt(offset, to, read);
    }

 private:
    std::string bytes_;
    mutable int good_reads_;
    bool throws_;
};

TEST_F(ZipRead, FailingStreamsAreStatusesThatSayWhy) {
    data = ArchiveData("plain");
    for (const bool throws : {false, true}) {
        int failed = 0;
        for (int reads = 0; reads < 8; ++reads) {
            const InputStream stream(new BrokenStream(data, reads, throws));
            Zip reader;
            gtl::status result = reader.OpenReadOnly(stream);
            if (result.Succeeded()) {
                result = reader.Test(reader.GetAllFileIDs());
            }
            if (result.Failed()) {
                ++failed;
                EXPECT_NE(result.as_wstring().find(L"the cable was pulled"), std::wstring::npos);
            }
            // The version is told from what can be read, or not at all.
            const InputStream again(new BrokenStream(data, reads, throws));
            EXPECT_EQ(GetLwzVersion(again).parts[0], reads == 0 ? 0 : 6);
        }
        EXPECT_GT(failed, 0);
        EXPECT_LT(failed, 8);
    }
}

TEST_F(ZipRead, TheStreamIsHeldWhileTheArchiveIsOpen) {
    data = ArchiveData("plain");
    InputStream stream = StreamOver(data);
    ASSERT_OK(zip.OpenReadOnly(stream));
    EXPECT_OK(zip.Close());
    EXPECT_EQ(stream->ReferenceCount(), 1U);
    ASSERT_OK(zip.OpenReadOnly(stream));
    stream.reset();
    EXPECT_OK(zip.Test(zip.GetAllFileIDs()));
    EXPECT_TRUE(zip.OpenReadOnly(InputStream()).Failed());
}

TEST_F(ZipRead, SharedFilesCanBeReplacedWhileTheyAreRead) {
    const ScratchFolder folder;
    const InputStream stream =
        MakeSharedFileInputStream(folder.Write("p.lwz", ArchiveData("plain")));
    ASSERT_OK(zip.OpenReadOnly(stream));
    EXPECT_EQ(GetLwzVersion(stream).parts[0], 6);  // a second reader of the same stream
    EXPECT_OK(zip.Test(zip.GetAllFileIDs()));
    std::filesystem::remove(folder.Path() / "p.lwz");
    EXPECT_OK(zip.Test(zip.GetAllFileIDs()));
    EXPECT_EQ(MakeFileInputStream(folder / "none")->ReferenceCount(), 1U);
    EXPECT_EQ(zip.OpenReadOnly(MakeFileInputStream(folder / "none")).MessageId(), 20526U);
}

using LwzVersion = ZipRead;

TEST_F(LwzVersion, ComesFromTheComment) {
    const std::pair<const wchar_t*, Version> rows[] = {
        {L"8.1", {{8, 1, kUnset, kUnset}}},       {L"8.1.3", {{8, 1, 3, kUnset}}},
        {L"0.0.0", {{0, 0, 0, kUnset}}},          {L"65534.00007", {{65534, 7, kUnset, kUnset}}},
        {L"8.1.65535", {{8, 1, kUnset, kUnset}}},  // counts as missing
        {L"8.1.2.65535", {{8, 1, 2, kUnset}}},
    };
    const wchar_t* const rejected[] = {
        L"1.2.3.4",      L"1.2.3.4.5", L"8",    L"65535.1", L"8.65535", L"8.65536",
        L"8.4294967297", L"8.",        L".1",   L"8..1",    L"8.1.",    L" 8.1",
        L"8.1 ",         L"+8.1",      L"8.-1", L"8,1",     L"v8.1",    L"8.1\u0661"};
    const ScratchFolder folder;
    ASSERT_OK(zip.Open(folder / "p.lwz", sys::file::zip::CompactMode::Never));
    const auto expect = [&](const wchar_t* comment, const Version& version) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(comment)));
        EXPECT_OK(zip.SetComment(comment));
        EXPECT_EQ(GetLwzVersion(zip), version);
        EXPECT_OK(zip.Flush());
        EXPECT_EQ(GetLwzVersion(MakeSharedFileInputStream(folder / "p.lwz")), version);
    };
    for (const auto& [comment, version] : rows) {
        expect(comment, version);
    }
    for (const wchar_t* comment : rejected) {
        expect(comment, {});
    }
    EXPECT_EQ(Version(), (Version{{0, 0, kUnset, kUnset}}));
}

TEST_F(LwzVersion, WithoutCommentComesFromTheFirstEntry) {
    const Version seven = Version::FromFirst(7);
    const Version six = Version::FromFirst(6);
    const std::string nothing;
    const std::string text = "this is no archive";
    for (const auto& [archive, version] :
         {std::pair{"host_10", seven}, {"host_10_second", six}, {"plain", six}, {"empty", six}}) {
        SCOPED_TRACE(archive);
        Open(archive);
        EXPECT_EQ(GetLwzVersion(zip), version);
        EXPECT_EQ(GetLwzVersion(StreamOver(data)), version);
    }
    EXPECT_EQ(GetLwzVersion(Zip()), six);
    EXPECT_EQ(GetLwzVersion(StreamOver(nothing)), six);  // no bytes are an empty archive
    EXPECT_EQ(GetLwzVersion(StreamOver(text)), Version::FromFirst(0));
    EXPECT_EQ(GetLwzVersion(InputStream()), Version::FromFirst(0));
}

// The quick answer from the end of the archive against that of an archive opened for good, over
// every archive, every truncation and many bit flips of it.
void CompareSummaries(const std::string& bytes) {
    Zip zip;
    const bool opens = zip.OpenReadOnly(StreamOver(bytes)).Succeeded();
    std::wstring comment;
    ASSERT_EQ(Zip::GetComment(StreamOver(bytes), comment).Succeeded(), opens);
    ASSERT_EQ(comment, zip.GetComment());
    ASSERT_EQ(GetLwzVersion(StreamOver(bytes)), opens ? GetLwzVersion(zip) : Version::FromFirst(0));
}

// Shows every truncation of an archive, and every byte of it with one of the bits turned.
template <class Visit>
void ForEachDamage(const std::string& data, std::initializer_list<int> bits, Visit&& visit) {
    for (std::size_t size = 0; size < data.size(); ++size) {
        visit(data.substr(0, size));
    }
    std::string flipped = data;
    for (char& byte : flipped) {
        for (const int bit : bits) {
            byte = static_cast<char>(byte ^ (1 << bit));
            visit(flipped);
            byte = static_cast<char>(byte ^ (1 << bit));
        }
    }
}

TEST_F(LwzVersion, QuickReadingAgreesWithOpening) {
    for (const std::string& archive : ArchiveDataNames()) {
        SCOPED_TRACE(archive);
        data = ArchiveData(archive);
        CompareSummaries(data);
        if (data.size() <= 2000) {
            ForEachDamage(data, {0, 3, 7}, &CompareSummaries);
        }
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(ZipRead, TruncationAndBitFlipsNeverGiveWrongContent) {
    Open("plain");
    const std::string text = Content(zip, L"a.txt");
    int read = 0;
    int refused = 0;
    ForEachDamage(data, {0, 1, 2, 3, 4, 5, 6, 7}, [&](const std::string& bytes) {
        Zip damaged;
        if (damaged.OpenReadOnly(StreamOver(bytes)).Failed()) {
            ++refused;
            return;
        }
        Zip::Bytes content;
        for (const Zip::Id id : damaged.GetAllFileIDs()) {
            if (damaged.Extract(id, content).Succeeded()) {
                ++read;
                const std::string got = Text(content);
                ASSERT_TRUE(got == text || got == "b" || got.empty());
            }
        }
    });
    EXPECT_GT(read, 100);
    EXPECT_GT(refused, 100);
}

// The same, and a folder to extract into.
class ZipExtract : public ZipRead {
 protected:
    gtl::status ExtractAll(const IExtractName& name = ExtractNameSame(),
                           const ExtractLimits& limits = {}) {
        return zip.Extract(zip.GetAllFileIDs(), folder / "target", name, limits);
    }

    ScratchFolder folder;
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
