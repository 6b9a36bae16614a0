#pragma once

// The shapes that elements of a mesh can have, planar and solid, and their traits. The shape
// functions of the planar ones are in common/mesh/shape_function.h. Surprising: node numbers here
// are slots of the element's node list, so a quadratic triangle has the nodes 0, 1, 2, 4, 5, 6, and
// a quadratic line 0, 1, 4; the other shapes number without gaps.

#include "common/export.h"

#include <cstdint>
#include <span>

namespace lmw::mesh::element::shape {

/// The shape of an element: the index of its row in the table of traits. Node numbers of every
/// shape: docs/images/element-shapes.svg. "Bottom" corners run counter-clockwise as seen from the
/// apex or top.
enum class Type : std::int32_t {
    none = 0,
    line = 1,           ///< ends 0, 1; middle 4
    triangle = 2,       ///< corners 0-2 counter-clockwise; middles 4: 0-1, 5: 1-2, 6: 2-0
    quadrilateral = 3,  ///< corners 0-3 counter-clockwise; middles 4: 0-1, 5: 1-2, 6: 2-3, 7: 3-0
    tetrahedron = 4,    ///< bottom 0-2, apex 3; middles 4-6 bottom, 7-9 from 0-2 to the apex
    pyramid = 5,        ///< bottom 0-3, apex 4; middles 5-8 bottom, 9-12 from 0-3 to the apex
    prism = 6,          ///< bottom 0-2, top 3-5 above; middles 6-8 bottom, 9-11 top, 12-14 upright
    hexahedron = 7,  ///< bottom 0-3, top 4-7 above; middles 8-11 bottom, 12-15 top, 16-19 upright
};

/// One row of the table. A value that refers to constants only.
struct Traits {
    Type type = Type::none;
    std::int32_t corner_nodes = 0;
    std::int32_t quadratic_nodes = 0;  ///< nodes when quadratic, corners included
    std::int32_t dimension = 0;
    std::int32_t facets = 0;              ///< boundary facets: ends, edges or faces
    std::int32_t integration_points = 0;  ///< by default

    /// The shape's own routine: the local nodes of boundary facet `facet`, corners first, then the
    /// middle nodes of its edges in the same order (a linear element ignores those). Empty when
    /// there is no such facet; null in the row of `none`.
    ///
    /// 1. The corners of a planar element's edge run counter-clockwise; those of a solid's face run
    ///    counter-clockwise as seen from outside.
    /// 2. Edges are in the order of their first nodes. Faces are the bottom, then the sides in the
    ///    order of the bottom edges they stand on, then the top.
    /// 3. Every edge of a solid belongs to two of its faces, once in each direction.
    std::span<const std::int32_t> (*facet_nodes)(std::int32_t facet) noexcept = nullptr;
};

namespace impl {

/// The traits of a shape. The table is constant; a number that is no shape gets the row of `none`.
[[nodiscard]] LMW_API const Traits& TraitsLookup(Type type) noexcept;

}  // namespace impl

}  // namespace lmw::mesh::element::shape

namespace lmw::mesh {

/// The dimension of a mesh: the largest dimension of the shapes of its elements, 0 without
/// elements.
[[nodiscard]] LMW_API std::int32_t MeshDimension(
    std::span<const element::shape::Type> shapes) noexcept;

}  // namespace lmw::mesh
