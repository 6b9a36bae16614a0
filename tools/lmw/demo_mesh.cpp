#include "tools/lmw/demo_mesh.h"

#include "common/geom/extents2d.h"
#include "common/geom/precision.h"
#include "common/mesh/element_rule.h"
#include "common/mesh/shape_function.h"

#include "tools/lmw/failure.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace lmw::tool {
namespace {

constexpr int kRulePoints = 4;

// The sum of N_i x_i over the four corners.
Geom::Point2D Mapped(const double* functions, const std::array<Geom::Point2D, 4>& corners) {
    Geom::Point2D sum = {0.0, 0.0};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        sum.x += functions[i] * corners[i].x;
        sum.y += functions[i] * corners[i].y;
    }
    return sum;
}

// One of so many parts of the way from -1 to 1; its ends are 0 and 1.
struct Part {
    std::size_t index;
    std::size_t count;
    [[nodiscard]] double At(std::size_t end) const {
        return -1.0 + 2.0 * static_cast<double>(index + end) / static_cast<double>(count);
    }
};

// The part of a region of these corners that a part of its rows and one of its columns cut out.
// The region is the image of the square from -1 to 1 under its own shape functions.
QuadElement ElementOf(Geom::IGeometryDatabase& nodes, const std::array<Geom::Point2D, 4>& corners,
                      const Part& column, const Part& row) {
    constexpr std::array<std::int32_t, 8> kFourNodes = {1, 1, 1, 1};
    constexpr std::array<std::array<std::size_t, 2>, 4> kEnds = {{{1, 1}, {0, 1}, {0, 0}, {1, 0}}};
    QuadElement element;
    for (std::size_t i = 0; i < kEnds.size(); ++i) {
        std::array<double, 8> functions{};
        Shape_Function(functions.data(), column.At(kEnds[i][0]), row.At(kEnds[i][1]),
                       kFourNodes.data());
        const GID node = nodes.InsertPoint(Mapped(functions.data(), corners));
        element.nodes[i] = static_cast<std::int32_t>(node);
        element.corners[i] = nodes.PointAt(node);
    }
    return element;
}

// The shape functions at the points of the rule are those of every element: all have four nodes.
std::vector<QuadSample> SamplesOf(const std::vector<QuadElement>& elements) {
    const auto rule = mesh::QuadrilateralRule(kRulePoints);
    std::vector<mesh::ShapeAtPoint> shapes(rule.size());
    mesh::EvaluateShapes(shapes, rule, elements.front().nodes.data());
    std::vector<QuadSample> samples;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const auto& corners = elements[i].corners;
        for (std::size_t k = 0; k < rule.size(); ++k) {
            const Geom::Point2D by_r = Mapped(shapes[k].dn_dr, corners);
            const Geom::Point2D by_s = Mapped(shapes[k].dn_ds, corners);
            const double jacobian = by_r.x * by_s.y - by_r.y * by_s.x;
            samples.push_back(
                {i, Mapped(shapes[k].n, corners), rule[k].w1 * rule[k].w2 * jacobian});
        }
    }
    return samples;
}

}  // namespace

QuadMesh MeshOf(const NamedRegions& regions, const std::string& file, double column_width,
                std::size_t rows) {
    std::vector<Geom::Point2D> all;
    for (const auto& ring : regions.polygons) {
        all.insert(all.end(), ring.begin(), ring.end());
    }
    QuadMesh mesh;
    mesh.nodes = Geom::MakeGeometryDataBase(std::vector<Geom::Point2D>(),
                                            Geom::ComputePrecisionOfExtents(Geom::ExtentsOf(all)));
    for (std::size_t region = 0; region < regions.polygons.size(); ++region) {
        const std::vector<Geom::Point2D>& ring = regions.polygons[region];
        if (ring.size() != 5) {
            throw Failure(file + ": " + regions.names[region] + " has not four corners");
        }
        const std::array<Geom::Point2D, 4> corners = {ring[2], ring[3], ring[0], ring[1]};
        const auto columns = static_cast<std::size_t>(
            std::max(1.0, std::round((ring[1].x - ring[0].x) / column_width)));
        for (std::size_t row = 0; row < rows; ++row) {
            for (std::size_t column = 0; column < columns; ++column) {
                mesh.elements.push_back(
                    ElementOf(*mesh.nodes, corners, {column, columns}, {row, rows}));
                mesh.elements.back().region = region;
            }
        }
    }
    mesh.samples = SamplesOf(mesh.elements);
    return mesh;
}

}  // namespace lmw::tool
