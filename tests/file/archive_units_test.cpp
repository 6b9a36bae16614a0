// The units beneath the archive that are not exported.

#include "common/file/detail/archive_text.h"
#include "common/file/detail/central_directory.h"
#include "common/file/detail/entry_path.h"
#include "common/file/detail/secret.h"
#include "common/file/detail/wildcard.h"
#include "common/file/detail/zip_source.h"
#include "common/sys/disk_file.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace lmw::file::detail;
using lmw::test::PropertyRandom;

TEST(ArchiveText, IllFormedUtf8IsCodePage437AndPairsAreOneCharacter) {
    EXPECT_EQ(WideFromArchive("B\x94schung \xE3 \xFF"), L"B\u00F6schung \u03C0 \u00A0");
    EXPECT_EQ(WideFromArchive("\xC7\x80"), L"\u01C0");  // well-formed, so UTF-8
    const std::wstring pair = {wchar_t{0xD83D}, wchar_t{0xDE00}, L'\\', wchar_t{0xDE00}};
    EXPECT_EQ(WrittenName(pair), "\xF0\x9F\x98\x80/\xEF\xBF\xBD");
}

// The definition of a match, taken literally.
bool PlainMatch(std::wstring_view name, std::wstring_view pattern) {
    if (pattern.empty()) {
        return name.empty();
    }
    if (pattern[0] == L'*') {
        return PlainMatch(name, pattern.substr(1)) ||
               (!name.empty() && PlainMatch(name.substr(1), pattern));
    }
    return !name.empty() && (pattern[0] == L'?' || pattern[0] == name[0]) &&
           PlainMatch(name.substr(1), pattern.substr(1));
}

TEST(Wildcard, AgreesWithTheDefinition) {
    PropertyRandom random;
    for (int k = 0; k < 20'000; ++k) {
        const std::wstring name = random.Text(std::wstring(L"ab."), 8);
        const std::wstring pattern = random.Text(std::wstring(L"ab.*?"), 6);
        ASSERT_EQ(MatchesWildcard(name, pattern), pattern == L"*.*" || PlainMatch(name, pattern))
            << ::testing::PrintToString(name) << ::testing::PrintToString(pattern);
    }
}

TEST(Wildcard, SeparatorsCaseAndBracketsAndNoBlowUp) {
    EXPECT_TRUE(MatchesWildcard(L"Dir\\A.TXT", L"dir/a.txt"));
    EXPECT_TRUE(MatchesWildcard(L"a[1]", L"A[1]"));
    EXPECT_FALSE(MatchesWildcard(L"a1", L"a[1]"));
    EXPECT_FALSE(MatchesWildcard(L"\u00C4", L"\u00E4"));
    EXPECT_TRUE(MatchesWildcard(L"noext", L"*.*"));
    // Steps that multiply with every star would never come to an end here.
    const std::wstring name(20'000, L'a');
    EXPECT_FALSE(MatchesWildcard(name, L"*a*a*a*a*a*a*a*a*a*a*a*a*b"));
}

TEST(EntryPath, PartsAreSingleNames) {
    const auto path = SafeEntryPath(L"a\\./b//c.d\\");
    ASSERT_TRUE(path.has_value());
    EXPECT_EQ(path->parts, (std::vector<std::wstring>{L"a", L"b", L"c.d"}));
    EXPECT_TRUE(path->is_folder);
}

TEST(Secret, IsOverwrittenWithItsSource) {
    std::string source = "a password that is too long to be kept inside the string object itself";
    const char* const bytes = source.data();
    {
        const Secret secret(source);
        EXPECT_EQ(std::string(secret.Text()).size(), 70U);
    }
    EXPECT_TRUE(source.empty());
    EXPECT_EQ(std::string(bytes, 10), std::string(10, '\0'));  // still the string's own memory
}

TEST(PieceWriter, WritesWhatAPlainBufferHolds) {
    PropertyRandom random;
    sys::DiskFile file;
    const std::filesystem::path beside = std::filesystem::temp_directory_path() / "x";
    ASSERT_EQ(sys::DiskFile::CreateScratch(
                  std::wstring(beside.native().begin(), beside.native().end()), file),
              0U);
    PieceWriter writer(file);
    std::string plain;
    std::size_t at = 0;
    for (int k = 0; k < 2000; ++k) {
        if (random.Chance(0.3)) {
            // Mostly a short way back, as to a header; sometimes anywhere.
            const std::size_t back = random.Chance(0.8) ? 500 : plain.size();
            at = plain.size() - static_cast<std::size_t>(random.Integer(
                                    0, static_cast<int>(std::min(back, plain.size()))));
            ASSERT_EQ(writer.Seek(at), 0U);
        }
        const std::string piece(static_cast<std::size_t>(random.LogUniform(1.0, 100'000.0)),
                                static_cast<char>('a' + k % 26));
        ASSERT_EQ(writer.Write(piece.data(), piece.size()), 0U);
        plain.resize(std::max(plain.size(), at + piece.size()));
        plain.replace(at, piece.size(), piece);
        at += piece.size();
        ASSERT_EQ(writer.Offset(), at);
        ASSERT_EQ(writer.Size(), plain.size());
    }
    ASSERT_EQ(writer.Flush(), 0U);
    std::string written(plain.size() + 1, '\0');
    std::size_t read = 0;
    ASSERT_EQ(file.ReadAt(0, written.data(), written.size(), read), 0U);
    written.resize(read);
    EXPECT_TRUE(written == plain);
}

}  // namespace
