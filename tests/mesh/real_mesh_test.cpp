// The element mathematics on meshes of real slopes and dams.

#include "common/mesh/element_rule.h"
#include "common/mesh/shape_function.h"

#include "tests/mesh/elements.h"
#include "tests/support/shared_data.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using lmw::mesh::EvaluateShapes;
using lmw::mesh::QuadrilateralRule;
using lmw::mesh::ShapeAtPoint;
using lmw::mesh::TriangleRule;
using lmw::test::CsvRow;
using lmw::test::Family;
using lmw::test::NodePositions;
using lmw::test::ReadCsv;
using lmw::test::SharedData;

struct MeshRow {
    const char* name;
    std::size_t elements;
    double area;
    double area_tolerance;  // the published area is rounded
};

constexpr MeshRow kMeshes[] = {
    {"slope_quad4", 3371, 2650.0, 1e-6},
    {"slope_transfinite_quad8", 221, 2650.0, 1e-6},
    {"slope_tri6", 1083, 10540.0, 0.5},
    {"layered_slope_tri3", 1872, 20595.0, 0.5},
    {"confined_flow_under_dam_quad4", 2000, 500.0, 1e-6},
};

struct Point {
    double x;
    double y;
};

// An element in our slots: corners counter-clockwise first, slot 3 of a triangle empty.
struct Element {
    int corners = 0;
    std::array<std::int32_t, 8> nodes{};  // 1-based, 0 absent
};

struct Mesh {
    std::vector<Point> points;
    std::vector<Element> elements;
    [[nodiscard]] const Point& At(std::int32_t node) const {
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

double PolygonArea(const Mesh& mesh, const Element& element) {
    double twice = 0.0;
    for (int i = 0; i < element.corners; ++i) {
        const Point& a = mesh.At(element.nodes[static_cast<std::size_t>(i)]);
        const Point& b =
            mesh.At(element.nodes[static_cast<std::size_t>((i + 1) % element.corners)]);
        twice += a.x * b.y - a.y * b.x;
    }
    return 0.5 * twice;
}

double IntegratedArea(const Mesh& mesh, const Element& element) {
    const auto rule = element.corners == 3 ? TriangleRule(3) : QuadrilateralRule(9);
    std::array<ShapeAtPoint, 9> shapes{};
    EvaluateShapes(shapes, rule, element.nodes.data());
    double area = 0.0;
    for (std::size_t i = 0; i < rule.size(); ++i) {
        double xr = 0.0;
        double xs = 0.0;
        double yr = 0.0;
        double ys = 0.0;
        for (std::size_t k = 0; k < 8; ++k) {
            if (element.nodes[k] > 0) {
                const Point& p = mesh.At(element.nodes[k]);
                xr += shapes[i].dn_dr[k] * p.x;
                xs += shapes[i].dn_ds[k] * p.x;
                yr += shapes[i].dn_dr[k] * p.y;
                ys += shapes[i].dn_ds[k] * p.y;
            }
        }
        area += rule[i].w1 * rule[i].w2 * (xr * ys - xs * yr);
    }
    return area;
}

class RealMesh : public testing::TestWithParam<MeshRow> {};

TEST_P(RealMesh, AreasByIntegrationAreThoseOfThePolygons) {
    LMW_SKIP_WITHOUT(SharedData("fe-mesh"));
    const Mesh mesh = Read(GetParam().name);
    ASSERT_EQ(mesh.elements.size(), GetParam().elements);
    double total = 0.0;
    for (const Element& element : mesh.elements) {
        const double polygon = PolygonArea(mesh, element);
        ASSERT_NEAR(IntegratedArea(mesh, element), polygon, 1e-11 * (1.0 + polygon));
        total += polygon;
    }
    EXPECT_NEAR(total, GetParam().area, GetParam().area_tolerance);
}

TEST_P(RealMesh, EveryNodeIsLocatedInItsElementsAtItsLocalPosition) {
    LMW_SKIP_WITHOUT(SharedData("fe-mesh"));
    const Mesh mesh = Read(GetParam().name);
    const auto quad = NodePositions(Family::quadrilateral);
    const auto triangle = NodePositions(Family::triangle);
    std::size_t located = 0;
    for (const Element& element : mesh.elements) {
        std::vector<double> corners;
        for (int i = 0; i < element.corners; ++i) {
            corners.push_back(mesh.At(element.nodes[static_cast<std::size_t>(i)]).x);
            corners.push_back(mesh.At(element.nodes[static_cast<std::size_t>(i)]).y);
        }
        for (std::size_t k = 0; k < 8; ++k) {
            if (element.nodes[k] > 0) {
                const Point& p = mesh.At(element.nodes[k]);
                double r = 99.0;
                double s = 99.0;
                ASSERT_EQ(iGlobal_To_Local_Coords(r, s, p.x, p.y, corners.data(), element.corners),
                          1);
                const auto& expected = element.corners == 4 ? quad[k] : triangle[k];
                ASSERT_NEAR(r, expected.r, 1e-9) << "slot " << k;
                ASSERT_NEAR(s, expected.s, 1e-9) << "slot " << k;
                ++located;
            }
        }
    }
    EXPECT_GE(located, 3 * mesh.elements.size());
}

INSTANTIATE_TEST_SUITE_P(Meshes, RealMesh, testing::ValuesIn(kMeshes),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
