// The worked example from start to end: facts of its sections that its data and published numbers
// fix, and what its archive holds.

#include "common/file/zip.h"

#include "tests/tool/tool_run.h"
#include "tools/lmw/csv_table.h"
#include "tools/lmw/text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace lmw::tool {
namespace {

using test::RunTool;
using test::TemporaryFolder;
using test::ToolResult;

class Demo : public testing::Test {
 protected:
    Demo() : run_(RunTool({"demo", folder_.Name("out"), "--data", LMW_EXAMPLE_DATA})) {}

    [[nodiscard]] CsvTable Table_(const std::string& name) const {
        return CsvTable::ReadFile(folder_.Name("out/" + name + ".csv"));
    }

    // How many edges of a section two regions share.
    [[nodiscard]] std::size_t Shared_(const std::string& section) const {
        const CsvTable edges = Table_(section + "-edges");
        const std::size_t regions = edges.Column("regions");
        std::size_t shared = 0;
        for (std::size_t row = 0; row < edges.NumberOfRows(); ++row) {
            shared += edges.Text(row, regions).find(" + ") != std::string::npos ? 1U : 0U;
        }
        return shared;
    }

    TemporaryFolder folder_;
    ToolResult run_;
};

TEST_F(Demo, SectionsHaveTheirAreasAndSharedEdges) {
    ASSERT_EQ(run_.exit_code, 0) << run_.err;
    // The outline's area: the mean of crest and base times the height.
    const CsvTable dam = Table_("section-dam-regions");
    ASSERT_EQ(dam.NumberOfRows(), 3U);
    EXPECT_NEAR(dam.Number(0, 1) + dam.Number(1, 1) + dam.Number(2, 1),
                (172.727 + 6.061) / 2.0 * 33.333, 0.001);
    const CsvTable slope = Table_("section-slope-regions");
    ASSERT_EQ(slope.NumberOfRows(), 3U);
    const std::vector<double> areas = {3247.0, 4548.0, 12800.0};
    for (std::size_t row = 0; row < areas.size(); ++row) {
        EXPECT_NEAR(slope.Number(row, 1), areas[row], 0.001);
    }
    EXPECT_EQ(Table_("section-dam-edges").NumberOfRows(), 10U);
    EXPECT_EQ(Shared_("section-dam"), 2U);
    // Layer 3's top is split at the corner of layer 2 that lies inside it.
    EXPECT_EQ(Table_("section-slope-edges").NumberOfRows(), 11U);
    EXPECT_EQ(Shared_("section-slope"), 2U);
}

TEST_F(Demo, LevelMeetsTheDamsFacesAndCore) {
    ASSERT_EQ(run_.exit_code, 0) << run_.err;
    const CsvTable level = Table_("section-dam-level");
    std::set<double> places;
    for (std::size_t row = 0; row < level.NumberOfRows(); ++row) {
        EXPECT_EQ(level.Number(row, 1), 30.227);
        places.insert(level.Number(row, 0));
    }
    ASSERT_EQ(places.size(), 4U);
    // Upstream 3:1 and downstream 2:1, from the faces' feet.
    EXPECT_NEAR(*places.begin(), 30.227 * 100.0 / 33.333, 1e-4);
    EXPECT_NEAR(*places.rbegin(), 172.727 - 30.227 * 66.666 / 33.333, 1e-4);
}

TEST_F(Demo, ArchiveHoldsEveryFileAndThePageEveryPicture) {
    ASSERT_EQ(run_.exit_code, 0) << run_.err;
    const TemporaryFolder& folder = folder_;
    sys::file::Zip zip;
    ASSERT_FALSE(zip.OpenReadOnly(sys::file::MakeFileInputStream(Wide(folder.Name("out/demo.lwz"))))
                     .Failed());
    const auto page = folder.Read("out/index.html");
    ASSERT_TRUE(page.has_value());
    EXPECT_NE(page->find("\n  core  "), std::string::npos);  // the report, line by line
    std::size_t entries = 0;
    for (const sys::file::Zip::Id id : zip.GetAllFileIDs()) {
        const std::string name = Utf8(zip.GetName(id));
        ASSERT_EQ(name.rfind("Results", 0), 0U) << name;
        const std::string file = name.substr(std::string("Results/").size());
        const auto content = folder.Read("out/" + file);
        ASSERT_TRUE(content.has_value()) << file;
        EXPECT_EQ(content->size(), zip.GetSize(id)) << file;
        if (file.ends_with(".svg")) {
            EXPECT_NE(page->find("src=\"" + file + "\""), std::string::npos) << file;
        }
        ++entries;
    }
    const std::filesystem::directory_iterator first(PathOf(folder.Name("out")));
    const auto files = std::distance(begin(first), end(first));
    EXPECT_EQ(entries + 1, static_cast<std::size_t>(files));  // and the archive itself
}

}  // namespace
}  // namespace lmw::tool
