#include "common/geom/precision.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace Geom {

namespace {

constexpr std::int32_t kUnsetDecimals = std::numeric_limits<std::int32_t>::max();

/// The double nearest to 10^exponent. Read from text, because pow differs in the last bit between C
/// libraries, and epsilons must be the same on every platform.
double PowerOfTen(std::int64_t exponent) noexcept {
    if (exponent > 308) {
        return lmw::kUndefined;
    }
    if (exponent < -323) {
        return 0.0;
    }
    std::array<char, 8> text{'1', 'e'};
    const auto written = std::to_chars(text.data() + 2, text.data() + text.size(), exponent);
    double power = 0.0;
    std::from_chars(text.data(), written.ptr, power);
    return power;
}

/// Decimal exponent of `magnitude` after rounding it to `digits` significant digits; 0 for zero and
/// for what is not finite.
int DecimalExponent(double magnitude, int digits) noexcept {
    if (!std::isfinite(magnitude) || magnitude == 0.0) {
        return 0;
    }
    std::array<char, 40> text{};
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), magnitude,
                      std::chars_format::scientific, std::clamp(digits, 1, 18) - 1);
    const char* const mark = std::find(text.data(), written.ptr, 'e');
    const char* const number = mark + (mark + 1 != written.ptr && mark[1] == '+' ? 2 : 1);
    int exponent = 0;
    std::from_chars(number, written.ptr, exponent);
    return exponent;
}

double Magnitude(double low, double high) noexcept {
    return std::max(std::fabs(low), std::fabs(high));
}

int DecimalsOfExtents(double low, double high) noexcept {
    constexpr int kMostDecimals = 7;
    constexpr int kDigitsOfMagnitude = 5;
    const double magnitude = Magnitude(low, high);
    if (!lmw::IsDefined(magnitude)) {
        return kMostDecimals;
    }
    return std::min(kMostDecimals - DecimalExponent(magnitude, kDigitsOfMagnitude), kMostDecimals);
}

int DecimalsOfRange(std::pair<double, double> range, int digits) noexcept {
    return digits - DecimalExponent(Magnitude(range.first, range.second), digits) - 1;
}

}  // namespace

Precision3D::Precision3D() noexcept : decimals{}, epsilon{}, halfEpsilon{} {
    decimals.fill(kUnsetDecimals);
    epsilon.fill(lmw::kUndefined);
    halfEpsilon.fill(lmw::kUndefined);
}

Precision3D::Precision3D(int x, int y, int z) noexcept
    : decimals{x, y, z}, epsilon{}, halfEpsilon{} {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        epsilon[axis] = PowerOfTen(-static_cast<std::int64_t>(decimals[axis]));
        halfEpsilon[axis] = epsilon[axis] * 0.5;
    }
}

void Precision3D::ScaleEpsilon(double factor) noexcept {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double scaled = epsilon[axis] * factor;
        if (!lmw::IsDefined(epsilon[axis]) || scaled >= lmw::kUndefined) {
            decimals[axis] = kUnsetDecimals;
            epsilon[axis] = lmw::kUndefined;
            halfEpsilon[axis] = lmw::kUndefined;
            continue;
        }
        epsilon[axis] = scaled;
        halfEpsilon[axis] = scaled * 0.5;
        if (scaled > 0.0) {  // the logarithm of a usable epsilon lies within -324 ... 309
            decimals[axis] = -static_cast<std::int32_t>(std::trunc(std::log10(scaled) + 0.5));
        }
    }
}

Precision3D ComputePrecisionOfExtents(const Extents2D& extents) noexcept {
    if (extents.IsEmpty()) {
        return {7, 7, 7};
    }
    const int x = DecimalsOfExtents(extents.x_min, extents.x_max);
    const int y = DecimalsOfExtents(extents.y_min, extents.y_max);
    return {x, y, std::min(x, y)};
}

Precision3D MakePrecision3D(std::pair<double, double> x, std::pair<double, double> y,
                            std::pair<double, double> z, int digits) noexcept {
    return {DecimalsOfRange(x, digits), DecimalsOfRange(y, digits), DecimalsOfRange(z, digits)};
}

Precision3D MakePrecision3D(const Extents3D& extents, int digits) noexcept {
    return MakePrecision3D({extents.x_min, extents.x_max}, {extents.y_min, extents.y_max},
                           {extents.z_min, extents.z_max}, digits);
}

double RoundCache::Round(double value, int axis) const noexcept {
    constexpr std::int64_t kDigitsOfDouble = 17;
    const std::int32_t decimals = decimals_[static_cast<std::size_t>(axis)];
    if (!std::isfinite(value) || decimals == kUnsetDecimals || value == 0.0) {
        return value + 0.0;
    }
    // Digits after the first one that are kept, so that negative decimals need no second rounding.
    const int exponent = DecimalExponent(std::fabs(value), static_cast<int>(kDigitsOfDouble));
    const std::int64_t digits = static_cast<std::int64_t>(exponent) + decimals;
    if (digits >= kDigitsOfDouble) {
        return value;
    }
    if (digits < 0) {  // the whole value lies below the last place kept: nothing, or one unit of it
        const double unit = PowerOfTen(-static_cast<std::int64_t>(decimals));
        const bool up = digits == -1 && std::fabs(value) > unit * 0.5;
        return up ? std::copysign(unit, value) : 0.0;
    }
    std::array<char, 40> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::scientific, static_cast<int>(digits));
    double rounded = value;
    std::from_chars(text.data(), written.ptr, rounded);
    return rounded + 0.0;
}

void RoundClean(Point2D& point, const RoundCache& cache) noexcept {
    if (point.IsValid()) {
        point = {cache.Round(point.x, 0), cache.Round(point.y, 1)};
    }
}

bool IsEqual3D(const std::vector<Point3D>& a, const std::vector<Point3D>& b,
               const Precision3D& precision) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), engequal_Point3D(precision));
}

}  // namespace Geom
