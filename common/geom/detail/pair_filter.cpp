#include "common/geom/detail/pair_filter.h"

#include "common/geom/detail/segment_math.h"
#include "common/geom/line_intersection.h"

namespace Geom::detail {

bool PairCounts(PairKind kind, const Line2D& a, const Line2D& b, const Precision3D& precision,
                PairPoints& points) noexcept {
    if (kind == PairKind::kCollision) {
        points = {LineCollision2D(a.first, a.second, b.first, b.second, precision), kInvalidPoint};
        return points.p0.IsValid();
    }
    const int code =
        LineIntersection2D(points.p0, points.p1, a.first, a.second, b.first, b.second, precision);
    switch (kind) {
        case PairKind::kIntersection:
            return code > 0;
        case PairKind::kCoincident:
            // The far end of segments that share both ends is no news.
            if (code == 2 && IsEndOf(points.p1, a, precision) && IsEndOf(points.p1, b, precision)) {
                points.p1 = kInvalidPoint;
            }
            return code == 2;
        case PairKind::kCrossing:
            return code == 1 && !IsEndOf(points.p0, a, precision) &&
                   !IsEndOf(points.p0, b, precision);
        case PairKind::kCollision:
            break;
    }
    return false;
}

}  // namespace Geom::detail
