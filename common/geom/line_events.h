#pragma once

// Every place where segments of a set meet, as events that name the point and the two segments. For
// one pair use line_intersection.h; to find segments near a point or box use quad_tree2d.h or
// cell_table.h. Surprising: the fast methods give exactly the events of the plain all-pairs scan,
// bit for bit and in the same order, on any input: they only decide which pairs need not be tested.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/geometry_database.h"
#include "common/geom/precision.h"

#include <cstdint>
#include <vector>

namespace Geom {

/// One meeting point of two segments; the segments are those of the caller's vector, which must
/// outlive the event.
struct LineEvent2D {
    Point2D point;
    const Line2D* first = nullptr;
    const Line2D* second = nullptr;
};

/// Whether the plane sweep is demanded.
struct SweepLineImplForced {
    enum Type : std::int32_t {
        kChoose = 0,  ///< the engine chooses (so does any other value but 1)
        kSweep = 1,   ///< always the plane sweep
    };
};

// The four questions. All append to `events`, for every unordered pair of segments i < j that
// counts, in the order of (i, j), the pair's points snapped to a geometry database of the segments'
// ends.
//
// 1. Sweep, scan and what the engine chooses give the same events in the same order, bit for bit.
// 2. Events that meet in one point within tolerance of the first one reported carry identical
//    coordinates.
// 3. A placeholder (all four coordinates the undefined value) never gives an event, and an input
//    without meetings leaves the output as it is.
// 4. A point is reported once per pair. An overlap gives two events, its two ends, but the second
//    is dropped when it is an end of both segments (except by LineIntersectionEvents2D, which keeps
//    it).
//
// Method: fewer than 25 segments are scanned, because that is cheaper than any structure. From 25
// on the pairs that can meet are found first: by comparing all boxes up to 80 segments, beyond by a
// grid; where the grid's work would not stay within a constant times segments plus meetings, and
// always when forced, the plane sweep finds them, in O((n + k) log n). Any number of threads may
// ask at once.

/// Every pair for which LineIntersection2D answers 1 or 2.
LMW_API void LineIntersectionEvents2D(
    std::vector<LineEvent2D>& events, const std::vector<Line2D>& lines,
    const Precision3D& precision, SweepLineImplForced::Type forced = SweepLineImplForced::kChoose);

/// Only overlaps: pairs for which LineIntersection2D answers 2.
LMW_API void LineCoincidentEvents2D(
    std::vector<LineEvent2D>& events, const std::vector<Line2D>& lines,
    const Precision3D& precision, SweepLineImplForced::Type forced = SweepLineImplForced::kChoose);

/// Only proper crossings: pairs for which LineIsCrossing2D holds.
LMW_API void LineCrossingEvents2D(std::vector<LineEvent2D>& events,
                                  const std::vector<Line2D>& lines, const Precision3D& precision,
                                  SweepLineImplForced::Type forced = SweepLineImplForced::kChoose);

/// Pairs for which LineCollision2D gives a point; that point alone.
LMW_API void LineCollisionEvents2D(std::vector<LineEvent2D>& events,
                                   const std::vector<Line2D>& lines, const Precision3D& precision,
                                   SweepLineImplForced::Type forced = SweepLineImplForced::kChoose);

/// The same, snapping to a database of the caller's, whose precision is used; points that it does
/// not have are inserted.
LMW_API void LineCollisionEvents2D(std::vector<LineEvent2D>& events,
                                   const std::vector<Line2D>& lines, IGeometryDatabase& database,
                                   SweepLineImplForced::Type forced = SweepLineImplForced::kChoose);

/// Removes repeated events in place: the same snapped point (tolerant equality with the first
/// comer, as in a geometry database) and the same two segments in either order. The first one is
/// kept, and the order of those that stay.
LMW_API void LineRemoveDuplicateEvents2D(std::vector<LineEvent2D>& events,
                                         const Precision3D& precision);

/// The process-wide demand for the plane sweep, off by default: for tests of a whole application
/// and for telling whether a finding depends on the method (it must not). Atomic.
enum class SweepDemand : std::uint8_t { kOff, kOn };
LMW_API void SetSweepDemand(SweepDemand demand) noexcept;
[[nodiscard]] LMW_API SweepDemand GetSweepDemand() noexcept;

}  // namespace Geom
