#pragma once

// A mesh of quadrilaterals for the worked example, made from regions of four corners by simple
// mapping, and the integration points of its elements.

#include "common/geom/geom_types.h"
#include "common/geom/geometry_database.h"

#include "tools/lmw/demo_results.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace lmw::tool {

/// A quadrilateral: its nodes, counted from 1, from (+1, +1) of the local coordinates on,
/// counter-clockwise, as the shape functions take them; the last four are 0.
struct QuadElement {
    std::size_t region = 0;
    std::array<std::int32_t, 8> nodes{};
    std::array<Geom::Point2D, 4> corners{};
};

/// An integration point of an element, counted from 0, and the area it stands for.
struct QuadSample {
    std::size_t element = 0;
    Geom::Point2D place;
    double area = 0.0;
};

struct QuadMesh {
    std::unique_ptr<Geom::IGeometryDatabase> nodes;
    std::vector<QuadElement> elements;
    std::vector<QuadSample> samples;  ///< four for each element, in the elements' order
};

/// Meshes regions whose rings begin at the lower left corner and go on counter-clockwise, each in
/// `rows` rows and in columns that are about `column_width` wide at its foot. Nodes of neighbours
/// that are equal within the regions' precision are one. Throws Failure, calling the file `file`,
/// for a region that has not four corners.
[[nodiscard]] QuadMesh MeshOf(const NamedRegions& regions, const std::string& file,
                              double column_width, std::size_t rows);

}  // namespace lmw::tool
