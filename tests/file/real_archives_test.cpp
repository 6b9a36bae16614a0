// Archives of other programs, good and bad, with what two independent readers make of them.

#include "common/file/lwz_version.h"
#include "common/file/zip.h"

#include "tests/file/archive_files.h"
#include "tests/support/shared_data.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace lmw::test;
using sys::file::Zip;
namespace fs = std::filesystem;

constexpr sys::file::zip::ExtractLimits kLimits{64U << 20, 256U << 20, 200'000};

// Opens an archive and does everything to it that reads. Returns the number of entries, -1 where it
// does not open; `good` counts the entries that read.
int ReadEverything(const sys::file::InputStream& stream, std::uint64_t& good) {
    good = 0;
    Zip zip;
    const bool opens = zip.OpenReadOnly(stream).Succeeded();
    if (!opens) {
        EXPECT_EQ(doc::file::GetLwzVersion(stream).parts[0], 0);
        return -1;
    }
    EXPECT_EQ(doc::file::GetLwzVersion(stream), doc::file::GetLwzVersion(zip));
    EXPECT_OK(zip.Encrypt(L"x"));
    const Zip::Ids ids = zip.GetAllFileIDs();
    EXPECT_EQ(ids.size(), zip.Count());
    Zip::Bytes bytes;
    for (const Zip::Id id : ids) {
        const bool tests = zip.Test({id}).Succeeded();
        EXPECT_EQ(zip.Extract(id, bytes, kLimits).Succeeded(), tests);
        EXPECT_TRUE(!tests || bytes.size() == zip.GetSize(id));
        good += tests ? 1 : 0;
    }
    // One by one, so that a refused name does not save the others from being tried.
    const ScratchFolder folder;
    fs::create_directory(folder.Path() / "target");
    for (std::size_t k = 0; k < ids.size() && k < 300; ++k) {
        zip.Extract({ids[k]}, folder / "target", sys::file::zip::ExtractNameSame(), kLimits)
            .Ignore();
    }
    for (const auto& entry : fs::directory_iterator(folder.Path())) {
        EXPECT_EQ(entry.path().filename(), "target") << "written outside the target";
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
        EXPECT_FALSE(fs::is_symlink(entry.path()));
    }
    return static_cast<int>(ids.size());
}

TEST(RealArchives, AreReadAsOtherReadersReadThem) {
    const fs::path data = SharedData("zip");
    LMW_SKIP_WITHOUT(data / "expected.csv");
    int files = 0;
    int compared = 0;
    for (const CsvRow& row : ReadCsv(data / "expected.csv")) {
        ASSERT_GE(row.size(), 12U);
        SCOPED_TRACE(row[0]);
        std::uint64_t good = 0;
        const int entries =
            ReadEverything(sys::file::MakeFileInputStream(WidePath(data / row[0])), good);
        ++files;
        // Refused: a name that claims to be UTF-8 and holds control characters.
        if (row[0] == "yauzl/ok_unicode_path_extra_field.zip") {
            EXPECT_EQ(entries, -1);
            continue;
        }
        // Where both other readers read everything without a complaint, so must we; some of these
        // are damaged all the same. Which methods besides storing (0) and deflating (8) can be read
        // depends on how the archive library was built.
        if (row[4] == "opens" && row[10] == "reads" && row[11] == "0" &&
            row[2].find("must fail") == std::string::npos &&
            row[8].find_first_not_of("08/") == std::string::npos) {
            ++compared;
            EXPECT_EQ(entries, std::stoi(row[5]));
            EXPECT_EQ(static_cast<int>(good), entries);
        }
    }
    EXPECT_EQ(files, 116);
    EXPECT_GT(compared, 50);
}

}  // namespace
