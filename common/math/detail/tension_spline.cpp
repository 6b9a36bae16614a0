#include "common/math/detail/tension_spline.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace math::fn::interpolate::detail {

namespace {

/// The slope between two secants, `left` of width `left_width` and `right`; power(u) is u^p.
///
/// With u <= 1 the ratio of the flatter to the steeper secant and W, V the widths on the other side
/// of the point from each (the weights, not divided by their sum), the mean
///     (w1 |d1|^(1-p) + w2 |d2|^(1-p)) / (w1 |d1|^-p + w2 |d2|^-p)
/// is steeper * (W u + V u^p) / (W + V u^p): no power in it can overflow. Everything is computed
/// and then chosen from, for the sake of the vectoriser.
template <class Power>
double InnerSlope(double left_width, double left, double right_width, double right,
                  const Power& power) noexcept {
    const double left_size = std::fabs(left);
    const double right_size = std::fabs(right);
    const bool left_is_flatter = left_size <= right_size;
    const double flatter = left_is_flatter ? left_size : right_size;
    const double steeper = left_is_flatter ? right_size : left_size;
    const double flatter_weight = left_is_flatter ? right_width : left_width;
    const double steeper_weight = left_is_flatter ? left_width : right_width;
    const double ratio = flatter / steeper;
    const double weighted = steeper_weight * power(ratio);
    const double mean =
        steeper * ((flatter_weight * ratio + weighted) / (flatter_weight + weighted));
    const double bound = 3.0 * flatter;
    const double slope = std::copysign(mean < bound ? mean : bound, left);
    // Zero where the secants differ in sign or one is zero; the quotient may be NaN there.
    const double signs = std::copysign(1.0, left) * std::copysign(1.0, right);
    return signs > 0.0 && flatter > 0.0 ? slope : 0.0;
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

}  // namespace

double ShapeParameter(std::uint32_t tension) noexcept {
    return std::clamp(3.0 - 0.03 * tension, 0.0, 3.0);
}

bool StrictlyIncreasing(std::span<const double> x) noexcept {
    bool increasing = x.empty() || !std::isnan(x.front());
    for (std::size_t i = 1; i < x.size(); ++i) {
        increasing &= std::isless(x[i - 1], x[i]);
    }
    return increasing;
}

TensionSpline::TensionSpline(std::vector<double> x, std::vector<double> y, double shape)
    : shape_(shape),
      x_(std::move(x)),
      y_(std::move(y)),
      slope_(x_.size()),
      width_(x_.size() - 1),
      secant_(x_.size() - 1) {
    ComputeSlopes_();
}

/// The slopes at all points but the two ends.
template <class Power>
void TensionSpline::ComputeInnerSlopes_(const Power& power) {
    const double* width = width_.data();
    const double* secant = secant_.data();
    double* slope = slope_.data();
    const std::size_t intervals = width_.size();
    for (std::size_t i = 1; i < intervals; ++i) {
        slope[i] = InnerSlope(width[i - 1], secant[i - 1], width[i], secant[i], power);
    }
}

void TensionSpline::ComputeSlopes_() {
    const std::size_t intervals = width_.size();
    const double* x = x_.data();
    const double* y = y_.data();
    double* width = width_.data();
    double* secant = secant_.data();
    double* slope = slope_.data();
    for (std::size_t i = 0; i < intervals; ++i) {
        width[i] = x[i + 1] - x[i];
        secant[i] = (y[i + 1] - y[i]) / width[i];
    }
    if (intervals == 1) {
        slope[0] = secant[0];
        slope[1] = secant[0];
        return;
    }
    // The shapes of the tensions 100 and 50 are common and need no general power, which costs as
    // much as all the rest.
    const double shape = shape_;
    if (shape == 0.0) {
        ComputeInnerSlopes_([](double) { return 1.0; });
    } else if (shape == 1.5) {
        ComputeInnerSlopes_([](double u) { return u * std::sqrt(u); });
    } else {
        ComputeInnerSlopes_([shape](double u) { return std::pow(u, shape); });
    }
    slope[0] = EndSlope(width[0], secant[0], width[1], secant[1], shape);
    slope[intervals] = EndSlope(width[intervals - 1], secant[intervals - 1], width[intervals - 2],
                                secant[intervals - 2], shape);
}

void TensionSpline::Smooth(std::uint32_t smooth) {
    const double part = 0.5 * (1.0 - std::min(smooth, 100U) / 100.0);
    if (part == 0.0) {
        return;
    }
    // The curve over the neighbours is that of the points as they were: keep one behind.
    double before = y_.front();
    for (std::size_t i = 1; i + 1 < y_.size(); ++i) {
        const double here = y_[i];
        const double after = y_[i + 1];
        const double span = x_[i + 1] - x_[i - 1];
        const double t = (x_[i] - x_[i - 1]) / span;
        const double s = 1.0 - t;
        const double curve = before * (s * s * (1.0 + 2.0 * t)) +
                             after * (t * t * (1.0 + 2.0 * s)) +
                             span * (t * s) * (s * slope_[i - 1] - t * slope_[i + 1]);
        const double target = std::clamp(curve, std::min(before, after), std::max(before, after));
        y_[i] += part * (target - here);
        before = here;
    }
    ComputeSlopes_();
}

std::vector<double> TensionSpline::Coefficients() const {
    std::vector<double> coefficients(width_.size() * 4);
    double* c = coefficients.data();
    for (std::size_t i = 0; i < width_.size(); ++i, c += 4) {
        const double per_width = 1.0 / width_[i];
        const double bend = (slope_[i] - secant_[i]) + (slope_[i + 1] - secant_[i]);
        c[0] = y_[i];
        c[1] = slope_[i];
        c[2] = ((secant_[i] - slope_[i]) - bend) * per_width;
        c[3] = bend * per_width * per_width;
    }
    return coefficients;
}

}  // namespace math::fn::interpolate::detail
