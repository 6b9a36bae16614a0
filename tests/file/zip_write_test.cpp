#include "common/file/lwz_version.h"
#include "common/file/zip.h"

#include "tests/file/archive_files.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace lmw::test;
using namespace sys::file;
using sys::file::zip::CompactMode;
using Wide = std::vector<std::wstring>;
using Files = std::vector<std::string>;

// An archive "p.lwz" in a folder of its own.
class ZipWrite : public ::testing::Test {
 protected:
    void Open() { ASSERT_OK(zip.Open(path, CompactMode::OnClose)); }
    void Reopen() {
        ASSERT_OK(zip.Close());
        Open();
    }
    gtl::status Add(const std::wstring& name, std::string_view content) {
        return zip.Add(folder.Write("source", content), name);
    }

    ScratchFolder folder;
    std::wstring path = folder / "p.lwz";
    Zip zip;
};

TEST_F(ZipWrite, EntriesComeBackUnderTheirNames) {
    Open();
    const std::string noise = Noise(3'000'000);  // through the scratch file
    EXPECT_OK(Add(L"Stage\\12\\node.csv", "x,y\n"));
    EXPECT_OK(Add(L"B\u00F6schung/\U0001F600.txt", "unicode"));
    EXPECT_OK(Add(L"noise", noise));
    EXPECT_OK(Add(L"empty", ""));
    const Wide names{L"Stage\\12\\node.csv", L"B\u00F6schung\\\U0001F600.txt", L"noise", L"empty"};
    // The same while the changes are pending, when they are written, and to a reader.
    const auto check = [&](const Zip& checked) {
        EXPECT_EQ(checked.Count(), 4U);
        EXPECT_EQ(Names(checked), names);
        EXPECT_EQ(Content(checked, names[0]), "x,y\n");
        EXPECT_EQ(Content(checked, names[1]), "unicode");
        EXPECT_TRUE(Content(checked, L"noise") == noise);
        EXPECT_EQ(Content(checked, L"empty"), "");
        EXPECT_OK(checked.Test(checked.GetAllFileIDs()));
    };
    check(zip);
    ASSERT_OK(zip.Flush());
    check(zip);
    ASSERT_OK(zip.Close());
    Zip reader;
    ASSERT_OK(reader.OpenReadOnly(MakeFileInputStream(path)));
    check(reader);
    const std::string bytes = folder.Read("p.lwz");
    EXPECT_NE(bytes.find("B\xC3\xB6schung/\xF0\x9F\x98\x80.txt"), std::string::npos);
    EXPECT_EQ(folder.Files(), (Files{"p.lwz", "source"}));
}

TEST_F(ZipWrite, EmptyArchiveIsThereFromOpenOnAndKeepsItsComment) {
    Open();
    EXPECT_EQ(folder.Read("p.lwz").size(), 22U);
    EXPECT_OK(zip.SetComment(L"8.1"));
    ASSERT_OK(zip.Close());
    EXPECT_EQ(folder.Read("p.lwz").size(), 25U);
    Open();
    EXPECT_OK(Add(L"a", "a"));
    ASSERT_OK(zip.Flush());
    EXPECT_OK(zip.Delete(zip.GetAllFileIDs()));
    ASSERT_OK(zip.Close());
    EXPECT_EQ(folder.Read("p.lwz").size(), 25U);
    EXPECT_EQ(Zip::GetComment(MakeFileInputStream(path)), L"8.1");
}

TEST_F(ZipWrite, UnchangedArchiveIsNotWritten) {
    folder.Write("p.lwz", ArchiveData("program_in_front"));
    const std::string before = folder.Read("p.lwz");
    ASSERT_OK(zip.Open(path, CompactMode::Never));
    EXPECT_OK(zip.SetComment(zip.GetComment()));
    EXPECT_OK(zip.Flush());
    ASSERT_OK(zip.Close());
    EXPECT_EQ(folder.Read("p.lwz"), before);
}

TEST_F(ZipWrite, IdentifiersStayUntilFlushAndAreRenumberedByIt) {
    Open();
    for (const wchar_t* name : {L"a", L"b", L"c"}) {
        EXPECT_OK(Add(name, "1"));
    }
    ASSERT_OK(zip.Flush());
    EXPECT_OK(zip.Delete({1}));
    EXPECT_FALSE(zip.IsValidId(1));
    EXPECT_EQ(zip.GetName(1), L"");
    EXPECT_OK(Add(L"b", "2"));  // the name is free again
    EXPECT_EQ(zip.GetAllFileIDs(), (Zip::Ids{0, 2, 3}));
    ASSERT_OK(zip.Flush());
    EXPECT_EQ(Names(zip), (Wide{L"a", L"c", L"b"}));
    EXPECT_EQ(Content(zip, L"b"), "2");
}

TEST_F(ZipWrite, DeleteTellsWhatCouldNotBeDeleted) {
    Open();
    EXPECT_OK(Add(L"a", "1"));
    EXPECT_OK(Add(L"b", "1"));
    EXPECT_TRUE(zip.Delete({0, 7}).Failed());
    Zip::Ids others = {9};
    EXPECT_OK(zip.Delete({7, 0, 0, 8}, others));
    EXPECT_EQ(others, (Zip::Ids{7, 8}));
    EXPECT_EQ(Names(zip), (Wide{L"b"}));
    ASSERT_OK(zip.Close());
    EXPECT_TRUE(zip.Delete({0, 1}, others).Failed());
    EXPECT_EQ(others, (Zip::Ids{0, 1}));
}

TEST_F(ZipWrite, ReplaceAtGivesNewContentAndName) {
    const TestHost host;
    Open();
    EXPECT_OK(Add(L"a", "old"));
    EXPECT_OK(Add(L"b", "other"));
    for (int round = 0; round < 2; ++round) {  // pending entries, then written ones
        SCOPED_TRACE(round);
        const std::string text = "new " + std::to_string(round);
        EXPECT_OK(zip.ReplaceAt(0, folder.Write("n", text), round == 0 ? L"dir\\c" : L""));
        EXPECT_TRUE(zip.ReplaceAt(0, folder.Write("n", text), L"b").Failed());
        EXPECT_EQ(Content(zip, L"dir\\c"), text);
        ASSERT_OK(zip.Flush());
        EXPECT_EQ(Names(zip), (Wide{L"dir\\c", L"b"}));
        EXPECT_EQ(Content(zip, L"dir\\c"), text);
        EXPECT_EQ(Content(zip, L"b"), "other");
    }
    EXPECT_OK(Add(L"a", "the old name is free"));
    EXPECT_TRUE(zip.ReplaceAt(9, folder.Write("n", "x"), L"z").Failed());
    const gtl::status no_source = zip.ReplaceAt(0, L"", L"a");
    EXPECT_EQ(no_source.MessageId(), 20571U);
    EXPECT_EQ(no_source.Detail()->Arguments()[0], L"sys::file::ZipImpl::ReplaceAt");
}

TEST_F(ZipWrite, AddRefusesAtOnce) {
    Open();
    EXPECT_OK(Add(L"dir\\a", "1"));
    EXPECT_TRUE(Add(L"dir/a", "2").Failed());
    EXPECT_OK(Add(L"DIR\\a", "names tell case apart"));
    EXPECT_EQ(zip.Add(folder / "missing", L"m").MessageId(), 20524U);
    EXPECT_TRUE(zip.Add(WidePath(folder.Path()), L"folder").Failed());
    for (const std::wstring& name :
         {std::wstring(), std::wstring(L"dir\\"), std::wstring(L"a\0b", 3), std::wstring(L"a\x1b"),
          std::wstring(65536, L'a')}) {
        EXPECT_EQ(Add(name, "1").MessageId(), 20521U) << name.size();
    }
    EXPECT_OK(Add(std::wstring(65535, L'a'), "the longest name"));
    ASSERT_OK(zip.Flush());
    EXPECT_EQ(zip.Count(), 3U);
    EXPECT_EQ(Content(zip, std::wstring(65535, L'a')), "the longest name");
}

TEST_F(ZipWrite, EncryptedEntriesNeedTheirPassword) {
    const TestHost host;
    EXPECT_EQ(zip.Encrypt(L"x").MessageId(), 27578U);  // closed
    Open();
    EXPECT_OK(zip.Encrypt(L"sesame"));
    EXPECT_OK(Add(L"secret", "12.5 kPa"));
    EXPECT_OK(Add(L"none", ""));
    EXPECT_OK(zip.Encrypt(L""));
    EXPECT_OK(Add(L"open again", "readable"));
    EXPECT_EQ(Content(zip, L"secret"), "12.5 kPa");  // pending, so plain here
    ASSERT_OK(zip.Close());
    EXPECT_EQ(folder.Read("p.lwz").find("12.5"), std::string::npos);

    Open();
    EXPECT_EQ(Content(zip, L"open again"), "readable");
    EXPECT_TRUE(zip.IsEncrypted(0));
    Zip::Bytes bytes(3);
    const gtl::status without = zip.Extract(0, bytes);
    EXPECT_EQ(without.as_wstring().find(L"Error extracting file: secret. Cause: "), 0U);
    EXPECT_TRUE(bytes.empty());
    EXPECT_OK(zip.Encrypt(L"Sesame"));
    EXPECT_TRUE(zip.Extract(0, bytes).Failed());
    EXPECT_TRUE(zip.Test({1}).Failed());
    // Rewriting the archive keeps the others as they are, without needing the password.
    Reopen();
    EXPECT_OK(Add(L"more", "m"));
    Reopen();
    EXPECT_OK(zip.Encrypt(L"sesame"));
    EXPECT_EQ(Content(zip, L"secret"), "12.5 kPa");
    EXPECT_EQ(Content(zip, L"none"), "");
    const gtl::status unusable = zip.Encrypt(std::wstring(L"a\0b", 3));
    EXPECT_EQ(unusable.MessageId(), 27578U);
    EXPECT_EQ(unusable.Detail()->Arguments()[0], path);
}

TEST_F(ZipWrite, TraditionallyEncryptedEntriesSurviveARewrite) {
    folder.Write("p.lwz", ArchiveData("traditional_password_sesame"));
    Open();
    EXPECT_OK(Add(L"more", "m"));
    Reopen();
    EXPECT_OK(zip.Encrypt(L"sesame"));
    EXPECT_EQ(Content(zip, L"secret.txt"), "pore pressure 12.5 kPa");
}

TEST_F(ZipWrite, CommentsAreKeptToTheLongest) {
    Open();
    EXPECT_OK(Add(L"a", "1"));
    for (const std::wstring& comment :
         {std::wstring(L"\u00FC\u20AC\U0001F600"), std::wstring(65535, L'c'),
          std::wstring(L"two\r\nlines"), std::wstring()}) {
        ASSERT_OK(zip.SetComment(comment));
        EXPECT_EQ(zip.GetComment(), comment);
        ASSERT_OK(zip.Flush());
        EXPECT_EQ(Zip::GetComment(MakeSharedFileInputStream(path)), comment);
    }
    EXPECT_TRUE(zip.SetComment(std::wstring(65536, L'c')).Failed());
    EXPECT_TRUE(zip.SetComment(std::wstring(32768, L'\u00FC')).Failed());
    EXPECT_TRUE(zip.SetComment(L"PK\5\6").Failed());
    EXPECT_EQ(zip.GetComment(), L"");
}

TEST_F(ZipWrite, GapsGoWhenTheModeSaysSo) {
    const std::string gaps = ArchiveData("gaps");
    const auto size_after = [&](CompactMode::Type mode, auto work) {
        folder.Write("p.lwz", gaps);
        EXPECT_OK(zip.Open(path, mode));
        work();
        const std::size_t flushed = folder.Read("p.lwz").size();
        EXPECT_OK(zip.Close());
        EXPECT_TRUE(mode != CompactMode::OnFlush || flushed <= folder.Read("p.lwz").size());
        return folder.Read("p.lwz").size();
    };
    const auto nothing = [] {};
    const auto flush = [&] { EXPECT_OK(zip.Flush()); };
    const auto compact = [&] { EXPECT_OK(zip.Compact()); };
    EXPECT_EQ(size_after(CompactMode::Never, flush), gaps.size());
    EXPECT_EQ(size_after(CompactMode::Never, compact), gaps.size() - 5100);
    EXPECT_EQ(size_after(CompactMode::OnClose, nothing), gaps.size() - 5100);
    EXPECT_EQ(size_after(CompactMode::OnFlush, flush), gaps.size() - 5100);
}

TEST_F(ZipWrite, CancellingOrThrowingLeavesTheArchiveAndTheChanges) {
    Open();
    EXPECT_OK(Add(L"a", "1"));
    ASSERT_OK(zip.Flush());
    const std::string before = folder.Read("p.lwz");
    EXPECT_OK(Add(L"noise", Noise(2'000'000)));
    const Files pending =
        folder.Files();  // on Windows the scratch file can be seen while it is used
    int calls = 0;
    EXPECT_TRUE(zip.Flush([&](double) { return ++calls < 3; }).Failed());
    EXPECT_GE(calls, 3);
    const gtl::status thrown =
        zip.Compact([](double) -> bool { throw std::runtime_error("no more"); });
    EXPECT_EQ(thrown.MessageId(), 20654U);
    EXPECT_EQ(folder.Read("p.lwz"), before);
    EXPECT_EQ(folder.Files(), pending);
    double last = -1.0;
    EXPECT_OK(zip.Flush([&](double part_done) {
        EXPECT_GE(part_done, last);
        last = part_done;
        return true;
    }));
    EXPECT_GT(last, 0.5);
    EXPECT_OK(zip.Test(zip.GetAllFileIDs()));
    EXPECT_TRUE(zip.Test(zip.GetAllFileIDs(), [](double) { return false; }).Failed());
    EXPECT_EQ(folder.Files(), (Files{"p.lwz", "source"}));
}

TEST_F(ZipWrite, ChangeByAnotherProgramIsNotOverwritten) {
    const std::string theirs = ArchiveData("plain");
    for (const bool while_writing : {false, true}) {
        SCOPED_TRACE(while_writing);
        Open();
        EXPECT_OK(Add(L"mine", "1"));
        std::error_code failure;
        const auto change = [&] {
            folder.Write("other", theirs);
            std::filesystem::rename(folder.Path() / "other", folder.Path() / "p.lwz", failure);
        };
        if (!while_writing) {
            change();
        }
        const gtl::status result = zip.Flush([&](double part_done) {
            if (while_writing && part_done == 0.0) {
                change();
            }
            return true;
        });
        if (failure) {
            GTEST_SKIP() << "here nobody can replace an archive that is open";
        }
        EXPECT_NE(result.as_wstring().find(L"changed it meanwhile"), std::wstring::npos);
        EXPECT_TRUE(zip.Close().Failed());
        EXPECT_EQ(Content(zip, L"mine"), "1");
        zip.Discard();
        EXPECT_EQ(folder.Read("p.lwz"), theirs);
    }
}

TEST_F(ZipWrite, ArchiveThatCannotBeOpenedAgainIsLeftAlone) {
    Open();
    EXPECT_OK(Add(L"a", "1"));
    const gtl::status result = zip.Flush([&](double part_done) {
        if (part_done == 1.0) {  // it is in its place already
            std::filesystem::rename(folder.Path() / "p.lwz", folder.Path() / "moved");
        }
        return true;
    });
    EXPECT_EQ(result.MessageId(), 20524U);
    std::filesystem::rename(folder.Path() / "moved", folder.Path() / "p.lwz");
    EXPECT_EQ(zip.Count(), 0U);
    EXPECT_TRUE(zip.Compact().Failed());
    EXPECT_OK(zip.SetComment(L"8.1"));
    EXPECT_TRUE(zip.Flush().Failed());
    zip.Discard();
    Open();
    EXPECT_EQ(Content(zip, L"a"), "1");
}

TEST_F(ZipWrite, FilesOfAnyAgeAreAdded) {
    Open();
    for (const int years : {-100, 100}) {
        const std::filesystem::path source(folder.Path() / "source");
        folder.Write("source", "1");
        std::filesystem::last_write_time(
            source, std::filesystem::last_write_time(source) + std::chrono::hours(8766 * years));
        EXPECT_OK(zip.Add(WidePath(source), std::to_wstring(years)));
    }
    ASSERT_OK(zip.Flush());
    EXPECT_OK(zip.Test(zip.GetAllFileIDs()));
}

TEST_F(ZipWrite, OpenRefusesReadOnlyFilesEvenForTheSuperuser) {
    const TestHost host;
    Open();
    ASSERT_OK(zip.Close());
    std::filesystem::permissions(folder.Path() / "p.lwz", std::filesystem::perms::owner_read);
    const gtl::status result = zip.Open(path, CompactMode::OnClose);
    EXPECT_EQ(result.MessageId(), 20537U);
    EXPECT_EQ(result.Detail()->Arguments()[0], path);
    EXPECT_FALSE(zip.IsOpen());
    EXPECT_OK(zip.OpenReadOnly(MakeFileInputStream(path)));
    EXPECT_TRUE(zip.IsOpenReadOnly());
    std::filesystem::permissions(folder.Path() / "p.lwz", std::filesystem::perms::owner_all);
}

TEST_F(ZipWrite, OpenFailsWithTheReasonAndStaysClosed) {
    folder.Write("no.lwz", "this is no archive");
    EXPECT_EQ(zip.Open(folder / "no.lwz", CompactMode::Never).MessageId(), 20526U);
    EXPECT_TRUE(zip.Open(WidePath(folder.Path()), CompactMode::Never).Failed());
    EXPECT_TRUE(zip.Open(folder / "no-folder/p.lwz", CompactMode::Never).Failed());
    EXPECT_FALSE(zip.IsOpen());
    EXPECT_EQ(folder.Files(), (Files{"no.lwz"}));
}

TEST_F(ZipWrite, ClosedAndReadOnlyArchivesRefuseChanges) {
    const std::string plain = ArchiveData("plain");
    const std::wstring source = folder.Write("source", "1");
    for (const bool open : {false, true}) {
        if (open) {
            ASSERT_OK(zip.OpenReadOnly(StreamOver(plain)));
        }
        EXPECT_TRUE(zip.Add(source, L"x").Failed());
        EXPECT_TRUE(zip.ReplaceAt(0, source, L"x").Failed());
        EXPECT_TRUE(zip.Delete({0}).Failed());
        EXPECT_TRUE(zip.SetComment(L"x").Failed());
        EXPECT_TRUE(zip.Flush().Failed());
        EXPECT_TRUE(zip.Compact().Failed());
        EXPECT_EQ(zip.Count(), open ? 3U : 0U);
        EXPECT_OK(zip.Close());
        EXPECT_OK(zip.Close());
    }
}

TEST_F(ZipWrite, OpenClosesWhatIsOpenAndTheDestructorWritesToo) {
    {
        Zip other;
        ASSERT_OK(other.Open(path, CompactMode::Never));
        EXPECT_OK(other.Add(folder.Write("source", "1"), L"a"));
        ASSERT_OK(other.Open(folder / "q.lwz", CompactMode::Never));
        EXPECT_EQ(other.Count(), 0U);
        EXPECT_OK(other.Add(folder.Write("source", "2"), L"b"));
    }
    ASSERT_OK(zip.Open(path, CompactMode::Never));
    EXPECT_EQ(Content(zip, L"a"), "1");
    ASSERT_OK(zip.Open(folder / "q.lwz", CompactMode::Never));
    EXPECT_EQ(Content(zip, L"b"), "2");
}

// A number of the zip format: `size` bytes, the lowest first.
std::string Bytes(std::uint64_t number, int size) {
    std::string bytes;
    for (; size > 0; --size, number >>= 8) {
        bytes += static_cast<char>(number & 0xFF);
    }
    return bytes;
}

// An archive of many entries without content, named by five digits from 10000 on.
std::string EmptyEntries(std::uint64_t count) {
    std::string entries;
    std::string directory;
    for (std::uint64_t k = 0; k < count; ++k) {
        const std::string name = std::to_string(10'000 + k);
        const std::string common = Bytes(20, 2) + Bytes(0, 4) + Bytes(0x2C216000, 4) +
                                   Bytes(0, 12) + Bytes(name.size(), 2) + Bytes(0, 2);
        directory +=
            "PK\1\2" + Bytes(20, 2) + common + Bytes(0, 10) + Bytes(entries.size(), 4) + name;
        entries += "PK\3\4" + common + name;
    }
    return entries + directory + "PK\5\6" + Bytes(0, 4) + Bytes(count, 2) + Bytes(count, 2) +
           Bytes(directory.size(), 4) + Bytes(entries.size(), 4) + Bytes(0, 2);
}

TEST_F(ZipWrite, MoreEntriesThanSixteenBitsCount) {
    constexpr std::uint64_t kBefore = 65'530;
    folder.Write("p.lwz", EmptyEntries(kBefore));
    Open();
    EXPECT_EQ(zip.Count(), kBefore);
    for (int k = 0; k < 10; ++k) {
        ASSERT_OK(Add(std::to_wstring(k), std::to_string(k)));
    }
    EXPECT_OK(zip.SetComment(L"8.1"));
    ASSERT_OK(zip.Flush());
    EXPECT_EQ(zip.Count(), kBefore + 10);
    EXPECT_EQ(Content(zip, L"9"), "9");
    EXPECT_OK(zip.Test(zip.GetAllFileIDs()));
    EXPECT_EQ(doc::file::GetLwzVersion(MakeSharedFileInputStream(path)).parts[1], 1);
}

}  // namespace
