#include "common/mesh/element_shape.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace {

using namespace lmw::mesh::element::shape;
using impl::TraitsLookup;
using lmw::mesh::MeshDimension;
using Point = std::array<double, 3>;

// One element of a solid shape: its corners, bottom counter-clockwise seen from above, and its
// edges in the order of their middle nodes.
struct Solid {
    Type type;
    std::vector<Point> corners;
    std::vector<std::pair<int, int>> edges;
    double volume;
};

// clang-format off
const Solid kSolids[] = {
    {Type::tetrahedron, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0.2, 0.2, 1}},
     {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}}, 1.0 / 6.0},
    {Type::pyramid, {{1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}, {1, -1, 0}, {0, 0, 1}},
     {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}}, 4.0 / 3.0},
    {Type::prism, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}},
     {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}}, 0.5},
    {Type::hexahedron,
     {{1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}, {1, -1, 0}, {1, 1, 1}, {-1, 1, 1}, {-1, -1, 1}, {1, -1, 1}},
     {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6}, {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}},
     4.0},
};
// clang-format on

TEST(ElementShape, HasThePrescribedRows) {
    // corner nodes, nodes of the quadratic element, dimension, facets, integration points
    const std::array<int, 5> rows[] = {{0, 0, 0, 0, 0},  {2, 3, 1, 2, 2},  {3, 6, 2, 3, 3},
                                       {4, 8, 2, 4, 4},  {4, 10, 3, 4, 4}, {5, 13, 3, 5, 8},
                                       {6, 15, 3, 5, 6}, {8, 20, 3, 6, 8}};
    for (int index = 0; index < 8; ++index) {
        const Traits& t = TraitsLookup(static_cast<Type>(index));
        EXPECT_EQ(static_cast<int>(t.type), index);
        EXPECT_EQ((std::array<int, 5>{t.corner_nodes, t.quadratic_nodes, t.dimension, t.facets,
                                      t.integration_points}),
                  rows[index]);
        EXPECT_EQ(t.facet_nodes != nullptr, index > 0);
    }
    for (const int no_shape : {-1, 8, 0x7fffffff}) {
        EXPECT_EQ(TraitsLookup(static_cast<Type>(no_shape)).type, Type::none);
    }
}

std::vector<std::vector<int>> Facets(Type type) {
    std::vector<std::vector<int>> facets;
    const Traits& traits = TraitsLookup(type);
    for (int f = 0; f < traits.facets; ++f) {
        const auto nodes = traits.facet_nodes(f);
        facets.emplace_back(nodes.begin(), nodes.end());
    }
    EXPECT_TRUE(traits.facet_nodes(-1).empty());
    EXPECT_TRUE(traits.facet_nodes(traits.facets).empty());
    return facets;
}

TEST(ElementShape, PlanarFacetsArePrescribed) {
    using Lists = std::vector<std::vector<int>>;
    EXPECT_EQ(Facets(Type::line), (Lists{{0}, {1}}));
    EXPECT_EQ(Facets(Type::triangle), (Lists{{0, 1, 4}, {1, 2, 5}, {2, 0, 6}}));
    EXPECT_EQ(Facets(Type::quadrilateral), (Lists{{0, 1, 4}, {1, 2, 5}, {2, 3, 6}, {3, 0, 7}}));
}

TEST(ElementShape, FacesOfSolidsPointOutwardAndCloseTheElement) {
    for (const auto& [type, corners, edges, volume] : kSolids) {
        SCOPED_TRACE(static_cast<int>(type));
        const Traits& traits = TraitsLookup(type);
        ASSERT_EQ(static_cast<int>(corners.size()), traits.corner_nodes);
        std::map<std::pair<int, int>, int> middle_of;
        int next = traits.corner_nodes;
        for (const auto& [i, j] : edges) {
            middle_of[{i, j}] = middle_of[{j, i}] = next++;
        }
        ASSERT_EQ(next, traits.quadratic_nodes);

        std::set<std::pair<int, int>> directed_edges;
        double flux = 0.0;  // of the position vector: three times the volume
        for (const std::vector<int>& face : Facets(type)) {
            const std::size_t n = face.size() / 2;
            ASSERT_TRUE(face.size() == 6 || face.size() == 8);
            Point normal{};
            for (std::size_t k = 0; k < n; ++k) {
                const int from = face[k];
                const int to = face[(k + 1) % n];
                EXPECT_TRUE(directed_edges.emplace(from, to).second) << from << '-' << to;
                ASSERT_TRUE(middle_of.contains({from, to})) << from << '-' << to;
                EXPECT_EQ(face[n + k], (middle_of[{from, to}])) << from << '-' << to;
                const Point& a = corners[static_cast<std::size_t>(from)];
                const Point& b = corners[static_cast<std::size_t>(to)];
                for (std::size_t c = 0; c < 3; ++c) {
                    normal[c] +=
                        0.5 * (a[(c + 1) % 3] * b[(c + 2) % 3] - a[(c + 2) % 3] * b[(c + 1) % 3]);
                }
            }
            const Point& on_face = corners[static_cast<std::size_t>(face[0])];
            for (std::size_t c = 0; c < 3; ++c) {
                flux += normal[c] * on_face[c];
            }
        }
        // Neighbours go along their edge in opposite directions, so one face that points outward
        // makes all do; a positive volume says that it does.
        for (const auto& [from, to] : directed_edges) {
            EXPECT_TRUE(directed_edges.contains({to, from})) << from << '-' << to;
        }
        EXPECT_NEAR(flux / 3.0, volume, 1e-15);
    }
}

TEST(MeshDimension, IsTheLargestOfItsElements) {
    EXPECT_EQ(MeshDimension({}), 0);
    const Type planar[] = {Type::line, Type::quadrilateral, Type::none, Type::triangle};
    EXPECT_EQ(MeshDimension(planar), 2);
    const Type solid[] = {Type::line, Type::prism, Type::quadrilateral};
    EXPECT_EQ(MeshDimension(solid), 3);
    EXPECT_EQ(MeshDimension(std::span(planar).first(1)), 1);
}

}  // namespace
