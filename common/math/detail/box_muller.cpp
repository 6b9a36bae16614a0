#include "common/math/detail/box_muller.h"

#include "common/math/detail/mersenne_twister.h"

#include <algorithm>
#include <cmath>

namespace math::detail {

void NormalsFromPairs(const std::uint32_t* outputs, std::size_t count, double mean, double sigma,
                      double* out) noexcept {
    // No condition on single numbers, so that both loops become vector code. A zero comes once in
    // 2^32 outputs.
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = mean +
                 (sigma * std::sqrt(MinusTwoLog(outputs[2 * i]))) * SineOfTurn(outputs[2 * i + 1]);
    }
    std::uint32_t zeros = 0;
    for (std::size_t i = 0; i < count; ++i) {
        zeros |= outputs[2 * i] == 0 ? 1U : 0U;
    }
    for (std::size_t i = 0; zeros != 0 && i < count; ++i) {
        if (outputs[2 * i] == 0) {
            out[i] = mean + (sigma * kRadiusOfZero) * SineOfTurn(outputs[2 * i + 1]);
        }
    }
}

// u (b - a) is y (b - a) scaled by 2^-32, and so is y times the step, without any difference in
// rounding, unless the step is subnormal or b - a overflows. Rounding is monotone: if the largest
// output stays at or below b, all do. What is not so plain is left to Wide_.
UniformMap::UniformMap(double a, double b) noexcept
    : a_(a), b_(b), step_((0.5 * b - 0.5 * a) * 0x1p-31), plain_(false) {
    if (step_ >= 0x1p-1000 && step_ < 0x1p+991) {
        step_ = (b - a) * 0x1p-32;
        plain_ = Plain_(0xffffffffU) <= b;
    }
}

double UniformMap::Wide_(std::uint32_t y) const noexcept {
    const double u = AsDouble(y) * 0x1p-32;
    double value = 0.0;
    if (step_ < 1.0) {
        value = a_ + u * (b_ - a_);
    } else {
        // Half the numbers are away from overflow, and of this size halving is exact.
        const double half = 0.5 * a_ + u * (0.5 * b_ - 0.5 * a_);
        value = half < 0.5 * b_ ? 2.0 * half : b_;
    }
    return std::clamp(value, a_, b_);  // a subnormal a may have lost a bit when it was halved
}

void UniformMap::Fill(const std::uint32_t* raw, std::size_t count, double* out) const noexcept {
    if (plain_) {
        const UniformMap map = *this;  // a copy, which `out` cannot overlap
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = map.Plain_(MersenneTwister::Temper(raw[i]));
        }
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = Wide_(MersenneTwister::Temper(raw[i]));
    }
}

}  // namespace math::detail
