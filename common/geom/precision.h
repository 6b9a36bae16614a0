#pragma once

// The tolerance record of all planar geometry, and the only comparisons of coordinates there are:
// two coordinates are the same when they differ by no more than half a unit of the last decimal
// kept. Surprising: the tolerant order is not transitive (0 and 0.9 h are the same, 0.9 h and 1.8 h
// too, 0 and 1.8 h are not), so it must never be given to a sort or an ordered container; snap
// first, then sort exactly. And under a default record everything equals everything.

#include "common/export.h"
#include "common/geom/geom_types.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace Geom {

/// The tolerance per axis x, y, z. `halfEpsilon` bounds the difference of two equal coordinates: a
/// per-axis box, not a radius; equality at the bound counts as equal.
///
/// 1. A default record is unset: decimals 2147483647, epsilon and halfEpsilon the largest double,
///    so that every two finite points are equal. Build a real one before use.
/// 2. Made from decimals, epsilon is the double nearest to 10^-decimals on every platform, and
///    halfEpsilon exactly half of it.
/// 3. ScaleEpsilon keeps the new epsilon as computed, not snapped to a power of ten.
///
/// Plain value, cheap to copy.
struct LMW_API Precision3D {
    std::array<std::int32_t, 3> decimals;
    std::array<double, 3> epsilon;      ///< resolution, in the length unit of the coordinates
    std::array<double, 3> halfEpsilon;  ///< half of epsilon: the tolerance of every comparison

    Precision3D() noexcept;
    /// Decimal places kept on each axis; may be negative (-2 keeps hundreds).
    Precision3D(int x, int y, int z) noexcept;

    /// Multiplies each epsilon by `factor` and derives halfEpsilon and decimals from it, decimals =
    /// -trunc(log10(epsilon) + 0.5). By design: truncation, not floor (an epsilon of 0.002 has 2
    /// decimals); flooring would change the decimals shown for every scaled record. An unset axis,
    /// and one whose epsilon overflows, is unset afterwards; decimals stay when the new epsilon is
    /// not positive.
    void ScaleEpsilon(double factor) noexcept;

    /// Compares the decimals only, not the doubles.
    friend bool operator==(const Precision3D& a, const Precision3D& b) noexcept {
        return a.decimals == b.decimals;
    }
};

/// The precision that keeps about seven significant digits of coordinates within `extents`, never
/// more than seven decimals: per axis min(7 - E, 7), E the decimal exponent of the greatest
/// magnitude after rounding it to five digits (9.99996 has E = 1). Empty extents and unset or
/// infinite bounds give 7. The z axis gets the smaller of the other two.
LMW_API Precision3D ComputePrecisionOfExtents(const Extents2D& extents) noexcept;

/// The precision that keeps `digits` significant digits of the greatest magnitude m of each range:
/// decimals = digits - E(m) - 1, m rounded to `digits` digits first; E(0) = 0. Another rule than
/// ComputePrecisionOfExtents, without its limit of seven.
LMW_API Precision3D MakePrecision3D(std::pair<double, double> x, std::pair<double, double> y,
                                    std::pair<double, double> z, int digits) noexcept;
LMW_API Precision3D MakePrecision3D(const Extents3D& extents, int digits) noexcept;

/// Rounds coordinates to kept decimals; build once, use for many points.
class LMW_API RoundCache {
 public:
    explicit RoundCache(const Precision3D& precision) noexcept : decimals_(precision.decimals) {}

    /// `value` rounded on axis 0, 1 or 2: the double nearest to the rounded decimal text, an exact
    /// half going to the even digit. Not finite values and unset axes come back unchanged, and zero
    /// is never negative.
    [[nodiscard]] double Round(double value, int axis) const noexcept;

 private:
    std::array<std::int32_t, 3> decimals_;
};

/// Rounds a valid point's x and y in place; the invalid point stays as it is.
LMW_API void RoundClean(Point2D& point, const RoundCache& cache) noexcept;

// ---- equality and order

namespace detail {

/// The exact short cut comes first, so that the undefined value equals itself and infinities are
/// not subtracted.
inline bool Near(double a, double b, double half_epsilon) noexcept {
    return a == b || std::fabs(a - b) <= half_epsilon;
}

inline bool Before(const Point2D& p, const Point2D& q, double hx, double hy) noexcept {
    return p.x < q.x - hx || (Near(p.x, q.x, hx) && p.y < q.y - hy);
}

}  // namespace detail

/// 1. Symmetric, and true for two copies of any point without NaN, the invalid point included.
/// 2. Not transitive.
inline bool IsEqual2D(const Point2D& a, const Point2D& b, const Precision3D& precision) noexcept {
    return detail::Near(a.x, b.x, precision.halfEpsilon[0]) &&
           detail::Near(a.y, b.y, precision.halfEpsilon[1]);
}

inline bool IsEqual3D(const Point3D& a, const Point3D& b, const Precision3D& precision) noexcept {
    return detail::Near(a.x, b.x, precision.halfEpsilon[0]) &&
           detail::Near(a.y, b.y, precision.halfEpsilon[1]) &&
           detail::Near(a.z, b.z, precision.halfEpsilon[2]);
}

/// Element by element; sequences of different length are not equal.
LMW_API bool IsEqual3D(const std::vector<Point3D>& a, const std::vector<Point3D>& b,
                       const Precision3D& precision) noexcept;

inline bool IsExactEqual2D(const Point2D& a, const Point2D& b) noexcept {
    return a.x == b.x && a.y == b.y;
}

/// Equal when the ends match in the same order or crosswise.
inline bool IsEqual2D(const Line2D& a, const Line2D& b, const Precision3D& precision) noexcept {
    return (IsEqual2D(a.first, b.first, precision) && IsEqual2D(a.second, b.second, precision)) ||
           (IsEqual2D(a.first, b.second, precision) && IsEqual2D(a.second, b.first, precision));
}

/// Tolerant equality as a function object with a copy of its tolerances.
class engequal_Point2D {
 public:
    explicit engequal_Point2D(const Precision3D& precision) noexcept
        : hx_(precision.halfEpsilon[0]), hy_(precision.halfEpsilon[1]) {}
    bool operator()(const Point2D& a, const Point2D& b) const noexcept {
        return detail::Near(a.x, b.x, hx_) && detail::Near(a.y, b.y, hy_);
    }

 private:
    double hx_;
    double hy_;
};

class engequal_Point3D {
 public:
    explicit engequal_Point3D(const Precision3D& precision) noexcept : h_(precision.halfEpsilon) {}
    bool operator()(const Point3D& a, const Point3D& b) const noexcept {
        return detail::Near(a.x, b.x, h_[0]) && detail::Near(a.y, b.y, h_[1]) &&
               detail::Near(a.z, b.z, h_[2]);
    }

 private:
    std::array<double, 3> h_;
};

/// The tolerant order: x first, y among points of the same x. Not a strict weak order: never sort
/// with it.
class engless_Point2D {
 public:
    explicit engless_Point2D(const Precision3D& precision) noexcept
        : hx_(precision.halfEpsilon[0]), hy_(precision.halfEpsilon[1]) {}
    bool operator()(const Point2D& p, const Point2D& q) const noexcept {
        return detail::Before(p, q, hx_, hy_);
    }

 private:
    double hx_;
    double hy_;
};

/// The tolerant order with z last; the same warning.
class less_Point3D {
 public:
    explicit less_Point3D(const Precision3D& precision) noexcept : h_(precision.halfEpsilon) {}
    bool operator()(const Point3D& p, const Point3D& q) const noexcept {
        if (!detail::Near(p.x, q.x, h_[0])) {
            return p.x < q.x - h_[0];
        }
        if (!detail::Near(p.y, q.y, h_[1])) {
            return p.y < q.y - h_[1];
        }
        return p.z < q.z - h_[2];
    }

 private:
    std::array<double, 3> h_;
};

}  // namespace Geom
