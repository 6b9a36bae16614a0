#include "common/geom/line_discretize.h"

#include "common/geom/detail/segment_math.h"
#include "common/geom/line2d.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>

namespace Geom {

namespace {

constexpr double kGreatestRatio = 1000.0;
constexpr double kSmallestRatio = 0.001;
/// More points than any line can have; keeps the conversions in range.
constexpr double kMostPoints = 2147483647.0;

struct Interval {
    Point2D a;
    Point2D b;
    double spacing_a;
    double spacing_b;
    bool enforced_a;
    bool enforced_b;
    bool both_given;

    [[nodiscard]] double Length() const noexcept { return std::hypot(b.x - a.x, b.y - a.y); }
    [[nodiscard]] std::uint64_t LeastPoints() const noexcept {
        return 2U + (enforced_a ? 1U : 0U) + (enforced_b ? 1U : 0U);
    }
};

Interval MakeInterval(const PointConstraint& a, const PointConstraint& b, double default_spacing) {
    const auto spacing = [&](const PointConstraint& c) {
        return lmw::IsDefined(c.second.first) ? c.second.first : default_spacing;
    };
    return {a.first,
            b.first,
            spacing(a),
            spacing(b),
            a.second.second,
            b.second.second,
            lmw::IsDefined(a.second.first) && lmw::IsDefined(b.second.first)};
}

std::uint64_t PointCount(const Interval& interval) noexcept {
    const double a = interval.spacing_a;
    const double b = interval.spacing_b;
    const double length = interval.Length();
    // By design: only q is clamped, not b, so the count depends on the walking direction beyond the
    // clamp. Clamping both would change the meshes of existing models.
    double q = a / b;
    if (a > kGreatestRatio * b) {
        q = kGreatestRatio;
    } else if (a < kSmallestRatio * b) {
        q = kSmallestRatio;
    }
    const double m = 2.0 / (a / (length * q) + a / length);
    const double n = std::trunc(m + 0.5) + 1.0;
    const std::uint64_t least = interval.LeastPoints();
    if (!(n > static_cast<double>(least))) {  // NaN too: zero length or spacing
        return least;
    }
    return static_cast<std::uint64_t>(std::min(n, kMostPoints));
}

/// An interval's share of the pieces.
struct Share {
    std::uint64_t weight;
    std::uint64_t least;
    std::uint64_t pieces;
    Point2D position;  // decides between equal remainders, whichever way the line is walked
};

/// Divides `pieces` by weight: whoever would get less than its least gets that, the others share
/// what is left by largest remainder.
void Distribute(std::vector<Share>& shares, std::uint64_t pieces) {
    std::vector<Share*> open;
    open.reserve(shares.size());
    for (Share& share : shares) {
        open.push_back(&share);
    }
    std::uint64_t weight = 0;
    for (bool settled = false; !settled;) {
        weight = 0;
        for (const Share* share : open) {
            weight += share->weight;
        }
        settled = true;
        std::uint64_t left = pieces;
        std::erase_if(open, [&](Share* share) {
            if (share->least * weight < pieces * share->weight) {
                return false;
            }
            share->pieces = share->least;
            left -= std::min(left, share->least);
            settled = false;
            return true;
        });
        pieces = left;
    }
    std::uint64_t given = 0;
    for (Share* share : open) {
        share->pieces = pieces * share->weight / weight;
        given += share->pieces;
    }
    std::sort(open.begin(), open.end(), [&](const Share* a, const Share* b) {
        const std::uint64_t remainder_a = pieces * a->weight % weight;
        const std::uint64_t remainder_b = pieces * b->weight % weight;
        if (remainder_a != remainder_b) {
            return remainder_a > remainder_b;
        }
        return a->position.x != b->position.x ? a->position.x < b->position.x
                                              : a->position.y < b->position.y;
    });
    for (std::size_t k = 0; k < open.size() && given < pieces; ++k, ++given) {
        ++open[k]->pieces;
    }
}

/// Lengths of the pieces from a to b; empty when the enforced ones are not positive or leave
/// nothing, and for an infinite interval.
std::vector<double> PieceLengths(const Interval& interval, std::uint64_t pieces, double growth) {
    const double length = interval.Length();
    const double enforced = (interval.enforced_a ? interval.spacing_a : 0.0) +
                            (interval.enforced_b ? interval.spacing_b : 0.0);
    const bool backwards = (interval.enforced_a && !(interval.spacing_a > 0.0)) ||
                           (interval.enforced_b && !(interval.spacing_b > 0.0));
    if (!(enforced < length) || std::isinf(length) || backwards) {
        return {};
    }
    const double ratio = pieces > 1 ? std::pow(std::clamp(growth, kSmallestRatio, kGreatestRatio),
                                               1.0 / static_cast<double>(pieces - 1))
                                    : 1.0;
    std::vector<double> lengths(pieces);
    double piece = 1.0;
    for (double& entry : lengths) {
        entry = piece;
        piece *= ratio;
    }
    const auto begin = lengths.begin() + (interval.enforced_a ? 1 : 0);
    const auto end = lengths.end() - (interval.enforced_b ? 1 : 0);
    const double scale = (length - enforced) / std::accumulate(begin, end, 0.0);
    std::for_each(begin, end, [&](double& entry) { entry *= scale; });
    if (interval.enforced_a) {
        lengths.front() = interval.spacing_a;
    }
    if (interval.enforced_b) {
        lengths.back() = interval.spacing_b;
    }
    return lengths;
}

/// Whether so many pieces must have ends that are equal within tolerance: pieces that differ by
/// more than the tolerance in x or in y do not fit into the interval. Saves making them all.
bool MustFallTogether(const Interval& interval, std::uint64_t pieces,
                      const Precision3D& precision) {
    const Point2D size = detail::Minus(interval.b, interval.a);
    return static_cast<double>(pieces) > std::fabs(size.x) / precision.halfEpsilon[0] +
                                             std::fabs(size.y) / precision.halfEpsilon[1];
}

/// Appends the points after a, b included.
bool Divide(std::vector<Point2D>& out, Interval interval, std::uint64_t pieces,
            const Precision3D& precision) {
    if (IsEqual2D(interval.a, interval.b, precision) ||
        MustFallTogether(interval, pieces, precision)) {
        return false;
    }
    // From the end that comes first in tolerant order, so that both directions give the same bits.
    const bool reversed =
        !IsExactEqual2D(LineGet2D(interval.a, interval.b, precision).first, interval.a);
    if (reversed) {
        std::swap(interval.a, interval.b);
        std::swap(interval.spacing_a, interval.spacing_b);
        std::swap(interval.enforced_a, interval.enforced_b);
    }
    const double growth = interval.both_given ? interval.spacing_b / interval.spacing_a : 1.0;
    const std::vector<double> lengths = PieceLengths(interval, pieces, growth);
    if (lengths.empty()) {
        return false;
    }
    const double length = interval.Length();
    const Point2D direction = detail::Minus(interval.b, interval.a);
    std::vector<Point2D> points{interval.a};
    double along = 0.0;
    for (std::size_t k = 0; k + 1 < lengths.size(); ++k) {
        along += lengths[k];
        // The last piece counts from the far end, so that an enforced one is exactly its spacing.
        const bool last = k + 2 == lengths.size() && interval.enforced_b;
        points.push_back(last ? detail::Along(interval.b, direction, -lengths.back() / length)
                              : detail::Along(interval.a, direction, along / length));
    }
    points.push_back(interval.b);
    for (std::size_t k = 1; k < points.size(); ++k) {
        // Negated: a coordinate that is not a number is no division either.
        if (IsEqual2D(points[k - 1], points[k], precision) || !std::isfinite(points[k].x) ||
            !std::isfinite(points[k].y)) {
            return false;
        }
    }
    if (reversed) {
        std::reverse(points.begin(), points.end());
    }
    out.insert(out.end(), points.begin() + 1, points.end());
    return true;
}

}  // namespace

unsigned NumPtsFromPtConstraints(const PointConstraints& constraints, double default_spacing,
                                 const Precision3D& /*precision*/) noexcept {
    if (constraints.size() < 2) {
        return static_cast<unsigned>(constraints.size());
    }
    std::uint64_t total = 2;
    for (std::size_t k = 1; k < constraints.size(); ++k) {
        total += PointCount(MakeInterval(constraints[k - 1], constraints[k], default_spacing));
    }
    total -= constraints.size();
    return static_cast<unsigned>(
        std::min<std::uint64_t>(total, std::numeric_limits<unsigned>::max()));
}

bool LineDiscretize2D(std::vector<Point2D>& out, const PointConstraints& constraints,
                      unsigned divisions, const Precision3D& precision) {
    out.clear();
    if (constraints.size() < 2) {
        return false;
    }
    double length = 0.0;
    for (std::size_t k = 1; k < constraints.size(); ++k) {
        length += MakeInterval(constraints[k - 1], constraints[k], 0.0).Length();
    }
    const double default_spacing = length / std::max(divisions, 1U);
    std::vector<Interval> intervals;
    std::vector<Share> shares;
    for (std::size_t k = 1; k < constraints.size(); ++k) {
        const Interval& interval = intervals.emplace_back(
            MakeInterval(constraints[k - 1], constraints[k], default_spacing));
        shares.push_back({PointCount(interval) - 1, interval.LeastPoints() - 1, 0,
                          LineGet2D(interval.a, interval.b, precision).first});
    }
    Distribute(shares, divisions);
    std::vector<Point2D> points{constraints.front().first};
    for (std::size_t k = 0; k < intervals.size(); ++k) {
        if (!Divide(points, intervals[k], shares[k].pieces, precision)) {
            return false;
        }
    }
    out = std::move(points);
    return true;
}

void SortUniqueConstraintsOnLine(PointConstraints& constraints, const Line2D& line,
                                 const Precision3D& precision) {
    const Point2D direction = detail::Minus(line.second, line.first);
    const auto place = [&](const PointConstraint& c) {
        return detail::Dot(detail::Minus(c.first, line.first), direction);
    };
    std::stable_sort(
        constraints.begin(), constraints.end(),
        [&](const PointConstraint& a, const PointConstraint& b) { return place(a) < place(b); });
    const auto is_stronger = [](const PointConstraint& a, const PointConstraint& b) {
        if (a.second.second != b.second.second) {
            return a.second.second;
        }
        // The undefined value is the largest of all, so "given" and "smaller" are one comparison.
        return a.second.first < b.second.first;
    };
    std::size_t kept = 0;
    for (const PointConstraint& constraint : constraints) {
        if (kept == 0 || !IsEqual2D(constraints[kept - 1].first, constraint.first, precision)) {
            constraints[kept++] = constraint;
        } else if (is_stronger(constraint, constraints[kept - 1])) {
            constraints[kept - 1] = constraint;
        }
    }
    constraints.resize(kept);
}

}  // namespace Geom
