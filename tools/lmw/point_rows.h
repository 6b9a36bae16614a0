#pragma once

// Rows of points from files: the chains, segments and rings that the geometry commands work on,
// read from CSV or from well-known text (WKT).

#include "common/geom/geom_types.h"

#include <string>
#include <string_view>
#include <vector>

namespace lmw::tool {

/// Points joined in their order; a ring repeats its first point at the end.
using PointRows = std::vector<std::vector<Geom::Point2D>>;

/// Which columns of a CSV file hold the coordinates, by header or number; empty for the usual ones:
/// the columns headed x and y, else 2 and 3.
struct CoordinateColumns {
    std::string x;
    std::string y;
};

/// Reads a file, named in UTF-8: WKT when its name ends in .wkt, else CSV. In CSV, consecutive rows
/// that agree in all columns before the coordinates make one row of points. Throws Failure.
[[nodiscard]] PointRows ReadPointRows(const std::string& file, const CoordinateColumns& columns);

/// The innermost lists of points of POINT, LINESTRING, POLYGON, their MULTI forms and
/// GEOMETRYCOLLECTION; a third and fourth coordinate is left out. Any number of geometries. Throws
/// Failure, calling the text `name`.
[[nodiscard]] PointRows RowsFromWkt(const std::string& name, std::string_view text);

}  // namespace lmw::tool
