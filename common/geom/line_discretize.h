#pragma once

// Dividing a line into points before meshing: how many points a line with pinned points and wanted
// spacings gets, and where they lie.
// Surprising: the number of points depends on the walking direction when the spacings differ by
// more than a factor of 1000 (see NumPtsFromPtConstraints).

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <utility>
#include <vector>

namespace Geom {

/// A pinned point, its wanted spacing (in the length unit of the points; the undefined value when
/// none is given) and whether the spacing is enforced there.
using PointConstraint = std::pair<Point2D, std::pair<double, bool>>;

/// A constrained line: its ends first and last, the points between in order.
using PointConstraints = std::vector<PointConstraint>;

/// The number of points on the whole line, ends included; spacings that are not given are the
/// default one. No constraints give 0, one gives 1.
///
/// An interval of length L between spacings a and b gets n = trunc(m + 0.5) + 1 points, with
/// m = 2 / (a / (L q) + a / L) and q = a / b, clamped to 0.001 ... 1000: the length divided by the
/// mean spacing; at least 2, 3 or 4 points when none, one or both ends are enforced.
///
/// By design: the clamp of q is not symmetric, because a stands in the formula beside it: spacings
/// 1 and 1e6 over 1e6 give 1999 points, 1e6 and 1 give 3. Models depend on the counts they were
/// meshed with. Spacings and lengths that are zero or not given are a programming error; such an
/// interval gets its least number.
[[nodiscard]] LMW_API unsigned NumPtsFromPtConstraints(const PointConstraints& constraints,
                                                       double default_spacing,
                                                       const Precision3D& precision) noexcept;

/// Fills `out` with the points of the line divided into `divisions` pieces (more when the
/// intervals' least numbers need it); false, and `out` empty, when it cannot be done: fewer than
/// two constraints, an interval whose ends are equal within tolerance, enforced spacings that are
/// not positive or together reach an interval's length, or points that would fall together within
/// tolerance.
///
/// The pieces are shared among the intervals in proportion to their point counts less one, by
/// largest remainder, each interval having at least its least number of points less one. A spacing
/// not given is the line's length divided by `divisions`. Within an interval of d pieces, lengths
/// grow by the ratio r = g^(1 / (d - 1)), g the ratio of the end spacings clamped to 0.001 ... 1000
/// (1 when one is not given); an enforced end's piece is exactly its spacing and the rest is scaled
/// to what remains.
///
/// 1. Every constraint's point is in the output, bit for bit, in order.
/// 2. Walking an interval the other way gives the same points bit for bit: it is always divided
///    from the end that comes first in tolerant order.
[[nodiscard]] LMW_API bool LineDiscretize2D(std::vector<Point2D>& out,
                                            const PointConstraints& constraints, unsigned divisions,
                                            const Precision3D& precision);

/// Orders constraints along `line`, by projection, and drops repeated ones: of points equal within
/// tolerance the enforced one stays, else the one with a spacing given, else the smaller spacing,
/// else the first.
LMW_API void SortUniqueConstraintsOnLine(PointConstraints& constraints, const Line2D& line,
                                         const Precision3D& precision);

}  // namespace Geom
