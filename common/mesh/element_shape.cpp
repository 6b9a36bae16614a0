#include "common/mesh/element_shape.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace lmw::mesh::element::shape {

namespace {

using Nodes = std::span<const std::int32_t>;

// The nodes of all facets of a shape one after the other, and where each begins. The facets of one
// shape may differ in size (pyramid, prism).
template <std::size_t Facets, std::size_t Total>
struct FacetTable {
    std::array<std::int32_t, Total> nodes;
    std::array<std::size_t, Facets + 1> begin;
};

template <const auto& Table>
Nodes FacetNodes(std::int32_t facet) noexcept {
    const auto index = static_cast<std::size_t>(facet);
    if (facet < 0 || index + 1 >= Table.begin.size()) {
        return {};
    }
    return Nodes(Table.nodes)
        .subspan(Table.begin[index], Table.begin[index + 1] - Table.begin[index]);
}

// clang-format off
constexpr FacetTable<2, 2> kLine{
    {0,
     1},
    {0, 1, 2}};

constexpr FacetTable<3, 9> kTriangle{
    {0, 1, 4,
     1, 2, 5,
     2, 0, 6},
    {0, 3, 6, 9}};

constexpr FacetTable<4, 12> kQuadrilateral{
    {0, 1, 4,
     1, 2, 5,
     2, 3, 6,
     3, 0, 7},
    {0, 3, 6, 9, 12}};

constexpr FacetTable<4, 24> kTetrahedron{
    {0, 2, 1, 6, 5, 4,
     0, 1, 3, 4, 8, 7,
     1, 2, 3, 5, 9, 8,
     2, 0, 3, 6, 7, 9},
    {0, 6, 12, 18, 24}};

constexpr FacetTable<5, 32> kPyramid{
    {0, 3, 2, 1, 8, 7, 6, 5,
     0, 1, 4, 5, 10, 9,
     1, 2, 4, 6, 11, 10,
     2, 3, 4, 7, 12, 11,
     3, 0, 4, 8, 9, 12},
    {0, 8, 14, 20, 26, 32}};

constexpr FacetTable<5, 36> kPrism{
    {0, 2, 1, 8, 7, 6,
     0, 1, 4, 3, 6, 13, 9, 12,
     1, 2, 5, 4, 7, 14, 10, 13,
     2, 0, 3, 5, 8, 12, 11, 14,
     3, 4, 5, 9, 10, 11},
    {0, 6, 14, 22, 30, 36}};

constexpr FacetTable<6, 48> kHexahedron{
    {0, 3, 2, 1, 11, 10, 9, 8,
     0, 1, 5, 4, 8, 17, 12, 16,
     1, 2, 6, 5, 9, 18, 13, 17,
     2, 3, 7, 6, 10, 19, 14, 18,
     3, 0, 4, 7, 11, 16, 15, 19,
     4, 5, 6, 7, 12, 13, 14, 15},
    {0, 8, 16, 24, 32, 40, 48}};

// Being constant, the table is there before any thread can ask.
constexpr std::array<Traits, 8> kTraits{{
    {Type::none,          0,  0, 0, 0, 0, nullptr},
    {Type::line,          2,  3, 1, 2, 2, FacetNodes<kLine>},
    {Type::triangle,      3,  6, 2, 3, 3, FacetNodes<kTriangle>},
    {Type::quadrilateral, 4,  8, 2, 4, 4, FacetNodes<kQuadrilateral>},
    {Type::tetrahedron,   4, 10, 3, 4, 4, FacetNodes<kTetrahedron>},
    {Type::pyramid,       5, 13, 3, 5, 8, FacetNodes<kPyramid>},
    {Type::prism,         6, 15, 3, 5, 6, FacetNodes<kPrism>},
    {Type::hexahedron,    8, 20, 3, 6, 8, FacetNodes<kHexahedron>},
}};
// clang-format on

}  // namespace

const Traits& impl::TraitsLookup(Type type) noexcept {
    const auto index = static_cast<std::size_t>(type);  // a negative number becomes a large one
    return index < kTraits.size() ? kTraits[index] : kTraits[0];
}

}  // namespace lmw::mesh::element::shape

namespace lmw::mesh {

std::int32_t MeshDimension(std::span<const element::shape::Type> shapes) noexcept {
    std::int32_t dimension = 0;
    for (const element::shape::Type type : shapes) {
        dimension = std::max(dimension, element::shape::impl::TraitsLookup(type).dimension);
    }
    return dimension;
}

}  // namespace lmw::mesh
