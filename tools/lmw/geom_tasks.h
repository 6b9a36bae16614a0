#pragma once

// What lmw geom finds in rows of points, as text: CSV, WKT or JSON. Rows, their edges and segments
// are counted from 0, distinct edges from 1.

#include "common/geom/geom_types.h"
#include "common/geom/line_events.h"
#include "common/geom/precision.h"

#include "tools/lmw/point_rows.h"

#include <cstddef>
#include <string>
#include <vector>

namespace lmw::tool {

enum class EventKind { kIntersection, kCoincident, kCrossing, kCollision };
enum class GeomForm { kCsv, kWkt, kJson };

/// The segments of all rows, in order, with the number of their row.
struct Segments {
    std::vector<Geom::Line2D> lines;
    std::vector<std::size_t> row_of;
};
[[nodiscard]] Segments SegmentsOf(const PointRows& rows);

/// What a task found: the text in the form asked for, and what a picture shows of it.
struct GeomResult {
    std::string text;
    std::string label;
    std::vector<Geom::Point2D> marks;
};

/// Where segments meet.
[[nodiscard]] GeomResult FindEvents(const Segments& segments, EventKind kind,
                                    Geom::SweepLineImplForced::Type method,
                                    const Geom::Precision3D& precision, GeomForm form);

/// Each distinct edge with its uses; the marks are the middles of those that are used twice or
/// more.
[[nodiscard]] GeomResult FindEdges(const PointRows& rows, const Geom::Precision3D& precision,
                                   GeomForm form);

/// Points along each row, which is one line pinned at its points. Throws Failure, calling the rows
/// `file`, when one cannot be divided or all together would have more than ten million points.
[[nodiscard]] GeomResult DivideRows(const PointRows& rows, const std::string& file, double spacing,
                                    const Geom::Precision3D& precision, GeomForm form);

}  // namespace lmw::tool
