#include "common/math/detail/tension_spline.h"

#include <algorithm>
#include <cmath>

namespace math::fn::interpolate::detail {

namespace {

/// u^shape for 0 < u <= 1. The shapes of the tensions in common use need no general power.
double Power(double u, double shape) noexcept {
    if (shape == 0.0) {
        return 1.0;
    }
    if (shape == 1.5) {
        return u * std::sqrt(u);
    }
    return std::pow(u, shape);
}

/// The slope between two secants, `left` of width `left_width` and `right`.
///
/// With u <= 1 the ratio of the flatter to the steeper secant and W, V the widths on the other side
/// of the point from each (the weights, not divided by their sum), the mean
///     (w1 |d1|^(1-p) + w2 |d2|^(1-p)) / (w1 |d1|^-p + w2 |d2|^-p)
/// is steeper * (W u + V u^p) / (W + V u^p): no power in it can overflow.
double InnerSlope(double left_width, double left, double right_width, double right,
                  double shape) noexcept {
    const bool one_direction = (left > 0.0 && right > 0.0) || (left < 0.0 && right < 0.0);
    if (!one_direction) {
        return 0.0;
    }
    const bool left_is_flatter = std::fabs(left) <= std::fabs(right);
    const double flatter = std::fabs(left_is_flatter ? left : right);
    const double steeper = std::fabs(left_is_flatter ? right : left);
    const double flatter_weight = left_is_flatter ? right_width : left_width;
    const double steeper_weight = left_is_flatter ? left_width : right_width;
    const double ratio = flatter / steeper;
    const double power = steeper_weight * Power(ratio, shape);
    const double mean = steeper * ((flatter_weight * ratio + power) / (flatter_weight + power));
    return std::copysign(std::min(mean, 3.0 * flatter), left);
}

/// The slope at an end: `secant` of width `width` beside it, `next` behind that.
double EndSlope(double width, double secant, double next_width, double next,
                double shape) noexcept {
    const double parabola =
        ((2.0 * width + next_width) * secant - width * next) / (width + next_width);
    const double slope = secant + (1.0 - shape / 3.0) * (parabola - secant);
    if (!(slope > 0.0 && secant > 0.0) && !(slope < 0.0 && secant < 0.0)) {
        return 0.0;
    }
    return std::copysign(std::min(std::fabs(slope), 3.0 * std::fabs(secant)), secant);
}

/// The value at the middle one of three points of the Hermite cubic from the first to the last,
/// kept between their values.
double ValueOverNeighbours(const FPOINT& before, const FPOINT& point,
                           const FPOINT& after) noexcept {
    const double width = after.x - before.x;
    const double t = (point.x - before.x) / width;
    const double s = 1.0 - t;
    const double value = before.y * (s * s * (1.0 + 2.0 * t)) +
                         after.y * (t * t * (1.0 + 2.0 * s)) +
                         width * (t * s) * (s * before.z - t * after.z);
    return std::clamp(value, std::min(before.y, after.y), std::max(before.y, after.y));
}

}  // namespace

double ShapeParameter(std::uint32_t tension) noexcept {
    return std::clamp(3.0 - 0.03 * tension, 0.0, 3.0);
}

bool StrictlyIncreasing(std::span<const FPOINT> points) noexcept {
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (std::isnan(points[i].x) || (i > 0 && !std::isgreater(points[i].x, points[i - 1].x))) {
            return false;
        }
    }
    return true;
}

void ComputeSlopes(std::span<FPOINT> points, double shape) noexcept {
    double left_width = points[1].x - points[0].x;
    double left = (points[1].y - points[0].y) / left_width;
    if (points.size() == 2) {
        points[0].z = left;
        points[1].z = left;
        return;
    }
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const double right_width = points[i + 1].x - points[i].x;
        const double right = (points[i + 1].y - points[i].y) / right_width;
        points[i].z = InnerSlope(left_width, left, right_width, right, shape);
        if (i == 1) {
            points[0].z = EndSlope(left_width, left, right_width, right, shape);
        }
        if (i + 2 == points.size()) {
            points[i + 1].z = EndSlope(right_width, right, left_width, left, shape);
        }
        left_width = right_width;
        left = right;
    }
}

void SmoothPoints(std::vector<FPOINT>& points, std::uint32_t smooth, double shape) {
    const double part = 0.5 * (1.0 - std::min(smooth, 100U) / 100.0);
    if (part == 0.0) {
        return;
    }
    // The curve over the neighbours is that of the points as they were: keep one behind.
    FPOINT before = points.front();
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const FPOINT point = points[i];
        points[i].y += part * (ValueOverNeighbours(before, point, points[i + 1]) - point.y);
        before = point;
    }
    ComputeSlopes(points, shape);
}

std::vector<double> HermiteCoefficients(std::span<const FPOINT> points) {
    std::vector<double> coefficients((points.size() - 1) * 4);
    double* c = coefficients.data();
    for (std::size_t i = 0; i + 1 < points.size(); ++i, c += 4) {
        const FPOINT& from = points[i];
        const FPOINT& to = points[i + 1];
        const double width = to.x - from.x;
        const double secant = (to.y - from.y) / width;
        const double bend = (from.z - secant) + (to.z - secant);
        c[0] = from.y;
        c[1] = from.z;
        c[2] = ((secant - from.z) - bend) / width;
        c[3] = bend / (width * width);
    }
    return coefficients;
}

}  // namespace math::fn::interpolate::detail
