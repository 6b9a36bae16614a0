#pragma once

// The edges of many polygons, each once per occurrence or once per distinct edge with all its uses:
// the table from which neighbours and shared edges of regions are read. Surprising: no closing edge
// is added. A ring is passed with its first point repeated at the end.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace Geom {

/// One edge and where it is used.
struct PolygonLineEntry {
    Line2D line;  ///< ends in tolerant order, so both walking directions give the same line
    /// (polygon, edge), both from 0: edge j runs from point j to point j + 1 of its polygon.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> uses;
    std::uint32_t line_id = 0;  ///< in the geometry database of all edges; 0 until assigned
};

/// One entry per pair of consecutive points of every polygon, in order, line identifiers 0. A
/// zero-length edge is an entry too. `entries` is cleared.
LMW_API void PolygonGetAllLineEntries2D(std::vector<PolygonLineEntry>& entries,
                                        const std::vector<std::vector<Point2D>>& polygons,
                                        const Precision3D& precision);

/// One entry per distinct edge, ascending by line identifier. `entries` is cleared.
/// 1. Uses stand in polygon order, then edge order.
/// 2. Edges are one when their lines are equal within tolerance in either direction and snap to the
///    same points; the entry's line is that of the first use.
LMW_API void PolygonGetUniqueLineEntries2D(std::vector<PolygonLineEntry>& entries,
                                           const std::vector<std::vector<Point2D>>& polygons,
                                           const Precision3D& precision);

}  // namespace Geom
