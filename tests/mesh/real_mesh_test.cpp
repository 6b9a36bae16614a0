// The element mathematics on meshes of real slopes and dams.

#include "common/mesh/shape_function.h"

#include "tests/mesh/elements.h"
#include "tests/support/shared_data.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace lmw::test;

// An element in our slots: corners counter-clockwise first, slot 3 of a triangle empty.
struct Element {
    int corners = 0;
    std::array<std::int32_t, 8> nodes{};  // 1-based, 0 absent
};

struct Mesh {
    std::vector<std::array<double, 2>> points;
    std::vector<Element> elements;
    [[nodiscard]] const std::array<double, 2>& At(std::int32_t node) const {
        return points[static_cast<std::size_t>(node - 1)];
    }
};

Mesh Read(const std::string& name) {
    Mesh mesh;
    for (const CsvRow& row : ReadCsv(SharedData("fe-mesh/" + name + "_nodes.csv"))) {
        mesh.points.push_back(
            {std::strtod(row[1].c_str(), nullptr), std::strtod(row[2].c_str(), nullptr)});
    }
    for (const CsvRow& row : ReadCsv(SharedData("fe-mesh/" + name + "_elements.csv"))) {
        Element element;
        element.corners = row[1].rfind("tri", 0) == 0 ? 3 : 4;
        const auto corners = static_cast<std::size_t>(element.corners);
        for (std::size_t k = 0; k + 3 < row.size(); ++k) {
            const std::size_t slot = k < corners ? k : 4 + (k - corners);
            element.nodes[slot] = std::atoi(row[3 + k].c_str()) + 1;
        }
        mesh.elements.push_back(element);
    }
    return mesh;
}

class RealMesh : public testing::TestWithParam<std::pair<const char*, std::size_t>> {};

TEST_P(RealMesh, EveryNodeIsLocatedInItsElementsAtItsLocalPosition) {
    LMW_SKIP_WITHOUT(SharedData("fe-mesh"));
    const Mesh mesh = Read(GetParam().first);
    ASSERT_EQ(mesh.elements.size(), GetParam().second);
    const auto quad = NodePositions(Family::quadrilateral);
    const auto triangle = NodePositions(Family::triangle);
    std::size_t located = 0;
    for (const Element& element : mesh.elements) {
        std::vector<double> corners;
        for (int i = 0; i < element.corners; ++i) {
            const auto& corner = mesh.At(element.nodes[static_cast<std::size_t>(i)]);
            corners.insert(corners.end(), corner.begin(), corner.end());
        }
        for (std::size_t k = 0; k < 8; ++k) {
            if (element.nodes[k] > 0) {
                const auto& p = mesh.At(element.nodes[k]);
                double r = 99.0;
                double s = 99.0;
                ASSERT_EQ(
                    iGlobal_To_Local_Coords(r, s, p[0], p[1], corners.data(), element.corners), 1);
                const auto& expected = element.corners == 4 ? quad[k] : triangle[k];
                ASSERT_NEAR(r, expected.r, 1e-9) << "slot " << k;
                ASSERT_NEAR(s, expected.s, 1e-9) << "slot " << k;
                ++located;
            }
        }
    }
    EXPECT_GE(located, 3 * mesh.elements.size());
}

INSTANTIATE_TEST_SUITE_P(Meshes, RealMesh,
                         testing::Values(std::pair{"slope_quad4", 3371},
                                         std::pair{"slope_transfinite_quad8", 221},
                                         std::pair{"slope_tri6", 1083},
                                         std::pair{"layered_slope_tri3", 1872},
                                         std::pair{"confined_flow_under_dam_quad4", 2000}),
                         [](const auto& row) { return std::string(row.param.first); });

}  // namespace
