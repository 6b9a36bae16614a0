#pragma once

// Logarithm and sine of the normal draws, and the transforms of raw 32-bit outputs to numbers. The
// two functions are our own because the same stream has to give the same bits everywhere, and the C
// libraries differ in the last place. They use additions, multiplications, divisions and square
// roots only, each of which IEEE 754 rounds in one way, and have no branches, so that loops over
// them become vector code with the same bits.

#include <bit>
#include <cstddef>
#include <cstdint>

namespace math::detail {

/// y as a double, by its place in the fraction of 2^52 + y: unlike the conversion, this has a
/// vector form on every processor.
[[nodiscard]] inline double AsDouble(std::uint32_t y) noexcept {
    return std::bit_cast<double>(std::uint64_t{y} | 0x4330000000000000U) - 0x1p52;
}

/// -2 ln(y / 2^32) for y > 0; within 0.85 ulp of the exact value, over all y. For y = 0 a finite
/// number without meaning.
[[nodiscard]] inline double MinusTwoLog(std::uint32_t y) noexcept {
    // y / 2^32 = 2^k m with m in [sqrt(1/2), sqrt(2)), found by moving the exponent's borders to
    // 2^k sqrt(1/2). Then ln m = 2 atanh(s) with s = f / (2 + f), f = m - 1, in the form that keeps
    // f itself, which is exact, apart from the small terms: ln(1 + f) = f - (f^2/2 - s (f^2/2 + R))
    // and R = (ln((1 + s) / (1 - s)) - 2 s) / s. All of it is doubled below.
    constexpr std::uint64_t kBorder = 0x3fe6a09e00000000U;  // the upper half of sqrt(1/2)
    constexpr std::uint64_t kOne = 0x3ff0000000000000U;
    constexpr double kTwoLn2Upper = 0x1.62e42fefa2p+0;  // 40 bits: its product with k is exact
    constexpr double kTwoLn2Lower = 0x1.9ef35793c7673p-40;
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(AsDouble(y)) + (kOne - kBorder);
    const auto m = std::bit_cast<double>((bits & 0x000fffffffffffffU) + kBorder);
    const double k =
        std::bit_cast<double>((bits >> 52U) | 0x4330000000000000U) - (0x1p52 + 1023.0 + 32.0);
    const double f = m - 1.0;
    const double s = f / (1.0 + m);
    const double z = s * s;
    // 2 R / z by its minimax polynomial on [0, 0.02944] (Remez exchange in 50 digits); with it ln
    // is approximated to 2^-59.
    const double z2 = z * z;
    const double z4 = z2 * z2;
    const double r =
        z * (((0x1.5555555555592p+0 + z * 0x1.999999997fdb8p-1) +
              z2 * (0x1.24924941f123cp-1 + z * 0x1.c71c52095de2fp-2)) +
             z4 * ((0x1.74663ee84aacep-2 + z * 0x1.39a1baba66808p-2) + z2 * 0x1.2f05636a23f4cp-2));
    const double square = f * f;
    const double small = square - (s * (square + r) + k * kTwoLn2Lower);
    return (small - (f + f)) - k * kTwoLn2Upper;
}

/// sin(2 pi y / 2^32), the exact angle of y (not of its product with a rounded pi); within 2.3 ulp
/// of the exact value, over all y. y = 2^31 gives 0, and y and 2^32 - y opposite values.
[[nodiscard]] inline double SineOfTurn(std::uint32_t y) noexcept {
    // sin(pi - t) = sin(t) brings the angle into [-pi/2, pi/2], in integers and so without error;
    // then x = 2 t / pi is a multiple of 2^-30.
    const std::uint32_t outer = 0U - ((y + 0x40000000U) >> 31U);  // all ones in quadrants 2 and 3
    const std::uint32_t folded = ((y ^ outer) - outer) + (outer & 0x80000000U);
    const double x = static_cast<double>(static_cast<std::int32_t>(folded)) * 0x1p-30;
    const double z = x * x;
    // sin(pi x / 2) / x by its minimax polynomial in z on [0, 1] (Remez exchange in 50 digits,
    // error 2^-61). The first coefficient, pi/2, is split: the product of x and its upper 22 bits
    // is exact.
    constexpr double kHalfPiUpper = 0x1.921fbp+0;
    const double z2 = z * z;
    const double p = 0x1.466bc6775aa6ep-4 +
                     z * ((-0x1.32d2cce627543p-8 + z * 0x1.50783485190cdp-13) +
                          z2 * ((-0x1.e3074ddd1d7bcp-19 + z * 0x1.e8f35e9d5ce41p-25) +
                                z2 * (-0x1.6f79770ccf5edp-31 + z * 0x1.9d1b86a388b5cp-38)));
    const double cubic = (x * z) * (-0x1.4abbce625be52p-1 + z * p);
    return x * kHalfPiUpper + (x * 0x1.5110b46118856p-22 + cubic);
}

/// The square root that stands for sqrt(-2 ln 0).
inline constexpr double kRadiusOfZero = 3.4244955099270222;

/// Normal numbers from pairs of tempered outputs: out[i] = mean + (sigma r) sin(2 pi u2) with
/// r = sqrt(-2 ln u1), u1 = outputs[2 i] / 2^32, u2 = outputs[2 i + 1] / 2^32.
void NormalsFromPairs(const std::uint32_t* outputs, std::size_t count, double mean, double sigma,
                      double* out) noexcept;

/// The affine map of outputs to uniform numbers on [a, b], a < b, both finite.
class UniformMap {
 public:
    UniformMap(double a, double b) noexcept;

    /// a + u (b - a) with u = y / 2^32, but never above b.
    [[nodiscard]] double operator()(std::uint32_t y) const noexcept {
        return plain_ ? Plain_(y) : Wide_(y);
    }

    /// The same for `count` untempered words of a MersenneTwister.
    void Fill(const std::uint32_t* raw, std::size_t count, double* out) const noexcept;

 private:
    [[nodiscard]] double Plain_(std::uint32_t y) const noexcept { return a_ + AsDouble(y) * step_; }
    [[nodiscard]] double Wide_(std::uint32_t y) const noexcept;

    double a_;
    double b_;
    double step_;  // (b - a) / 2^32
    bool plain_;   // whether Plain_ gives the same as the formula for every output
};

}  // namespace math::detail
