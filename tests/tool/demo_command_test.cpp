// The worked example from start to end: facts of its sections that its data and published numbers
// fix, and what its archive holds.

#include "common/file/zip.h"

#include "tests/tool/tool_run.h"
#include "tools/lmw/csv_table.h"
#include "tools/lmw/progress_bar.h"
#include "tools/lmw/text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace lmw::tool {
namespace {

using test::Packed;
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

TEST_F(Demo, MeshAreasAndWaterContentsFollowTheSection) {
    ASSERT_EQ(run_.exit_code, 0) << run_.err;
    const CsvTable regions = Table_("section-dam-regions");
    const CsvTable low = Table_("element-1");
    const CsvTable high = Table_("element-2");
    const CsvTable again = Table_("element-4");
    const std::size_t area = low.Column("ElementArea");
    const std::size_t pressure = low.Column("PorePressure");
    const std::size_t content = low.Column("VolumetricWaterContent");
    std::vector<double> areas(regions.NumberOfRows());
    const std::vector<double> saturated = {0.38, 0.557, 0.315};
    for (std::size_t row = 0; row < low.NumberOfRows(); ++row) {
        std::size_t region = 0;
        while (regions.Text(region, 0) != low.Text(row, 1)) {
            ASSERT_LT(++region, areas.size());
        }
        areas[region] += low.Number(row, area);
        // All of the element is below the water when its middle is so by more than its half height.
        if (low.Number(row, pressure) > 25.0) {
            EXPECT_EQ(low.Number(row, content), saturated[region]);
        }
        EXPECT_LE(low.Number(row, content), high.Number(row, content));
        // Month 61.5 is month 13.5 of the second round.
        EXPECT_EQ(low.Text(row, content), again.Text(row, content));
    }
    for (std::size_t region = 0; region < areas.size(); ++region) {
        EXPECT_NEAR(areas[region], regions.Number(region, 1), 1e-3);
    }
    // Neighbours share their nodes: 9 rows of 16 + 3 + 10 columns and one more.
    EXPECT_EQ(low.NumberOfRows(), 8U * 29U);
    EXPECT_EQ(Table_("mesh-nodes").NumberOfRows(), 9U * 30U);
}

TEST_F(Demo, LevelsComeFromTheStoredVolumesAndRepeat) {
    ASSERT_EQ(run_.exit_code, 0) << run_.err;
    const CsvTable levels = Table_("reservoir-level");
    ASSERT_EQ(levels.NumberOfRows(), 72U);
    // Month 13 holds 910446 acre-feet, between 852196 at 640 ft and 1108409 at 680 ft.
    const double elevation = 640.0 + 40.0 * (910446.0 - 852196.0) / (1108409.0 - 852196.0);
    EXPECT_NEAR(levels.Number(13, 1), 30.227 * (elevation - 520.0) / 380.0, 0.0005);
    for (std::size_t month = 48; month < levels.NumberOfRows(); ++month) {
        EXPECT_EQ(levels.Text(month, 1), levels.Text(month - 48, 1));
    }
}

// With normal laws the factor's mean and deviation follow from those of the data to first order;
// 10000 trials scatter about them by less than the bounds (six deviations of the mean).
TEST_F(Demo, SampledStrengthsFollowTheirLaws) {
    ASSERT_EQ(run_.exit_code, 0) << run_.err;
    const CsvTable strengths = Table_("strengths");
    const CsvTable laws = CsvTable::ReadFile(LMW_EXAMPLE_DATA "/strength-dam.csv");
    for (std::size_t row = 0; row < laws.NumberOfRows(); ++row) {
        const double deviation = laws.Number(row, 2);
        EXPECT_NEAR(strengths.Number(row, 1), laws.Number(row, 1), 0.06 * deviation);
        EXPECT_NEAR(strengths.Number(row, 2), deviation, 0.05 * deviation);
    }
    const double by_cohesion = 8.62 / (18.85 * 8.0 * 0.4);
    const double mean = 28.73 / (18.85 * 8.0 * 0.4) + 2.0 * 0.364;
    EXPECT_NEAR(strengths.Number(3, 1), mean, 0.015);
    EXPECT_NEAR(strengths.Number(3, 2), std::hypot(by_cohesion, 2.0 * 0.055), 0.01);
    double trials = 0.0;
    const CsvTable bins = Table_("safety");
    for (std::size_t row = 0; row < bins.NumberOfRows(); ++row) {
        trials += bins.Number(row, 2);
    }
    EXPECT_GT(trials, 9990.0);
    EXPECT_LE(trials, 10000.0);
}

TEST_F(Demo, ArchiveHoldsEveryFileAndThePageEveryPicture) {
    ASSERT_EQ(run_.exit_code, 0) << run_.err;
    sys::file::Zip zip;
    ASSERT_FALSE(
        zip.OpenReadOnly(sys::file::MakeFileInputStream(Wide(folder_.Name("out/demo.lwz"))))
            .Failed());
    const auto page = folder_.Read("out/index.html");
    ASSERT_TRUE(page.has_value());
    EXPECT_NE(page->find("\n  core  "), std::string::npos);  // the report, line by line
    std::size_t entries = 0;
    for (const sys::file::Zip::Id id : zip.GetAllFileIDs()) {
        // Analysis\file, or analysis\step\file for "file-step" of the folder.
        const std::string name = Utf8(zip.GetName(id));
        std::string file = name.substr(name.find('\\') + 1);
        if (const std::size_t at = file.find('\\'); at != std::string::npos) {
            const std::string step = file.substr(0, at);
            file = file.substr(at + 1);
            file.insert(file.rfind('.'), "-" + step);
        }
        const auto content = folder_.Read("out/" + file);
        ASSERT_TRUE(content.has_value()) << name;
        EXPECT_EQ(content->size(), zip.GetSize(id)) << name;
        if (file.ends_with(".svg")) {
            EXPECT_NE(page->find("src=\"" + file + "\""), std::string::npos) << file;
        }
        ++entries;
    }
    const std::filesystem::directory_iterator first(PathOf(folder_.Name("out")));
    const auto files = std::distance(begin(first), end(first));
    EXPECT_EQ(entries + 1, static_cast<std::size_t>(files));  // and the archive itself

    EXPECT_FALSE(zip.Close().Failed());  // an archive that is read cannot be replaced everywhere
    const ToolResult json =
        RunTool({"demo", folder_.Name("out"), "--data", LMW_EXAMPLE_DATA, "--json"});
    ASSERT_EQ(json.exit_code, 0) << json.err;
    EXPECT_NE(Packed(json.out).find(R"("version":"8.1","entries":[{"name":"Functions\\functions)"),
              std::string::npos)
        << json.out;
}

TEST(DemoFolder, MayNotBeThatOfTheData) {
    const TemporaryFolder folder;
    const ToolResult run = RunTool({"demo", folder.Name("."), "--data", folder.Name("")});
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_NE(run.err.find("is the folder of the data"), std::string::npos) << run.err;
}

TEST(Progress, BarFillsWithTheWorkAndHoldsBeyond) {
    EXPECT_EQ(ProgressText(0.0, "soils"), "[------------------------] soils");
    EXPECT_EQ(ProgressText(1.0 / 3.0, "mesh"), "[########----------------] mesh");
    EXPECT_EQ(ProgressText(1.5, ""), "[########################] ");
    EXPECT_EQ(ProgressText(-1.0, ""), "[------------------------] ");
}

}  // namespace
}  // namespace lmw::tool
