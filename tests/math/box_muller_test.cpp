#include "common/math/detail/box_muller.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace {

using namespace lmw::test;
using math::detail::MinusTwoLog;
using math::detail::SineOfTurn;
using math::detail::UniformMap;

// Outputs around which a mistake of the reduction would show, and random ones.
std::vector<std::uint32_t> Outputs(PropertyRandom& random) {
    std::vector<std::uint32_t> outputs;
    for (unsigned bit = 0; bit < 32; ++bit) {
        for (const std::uint32_t offset : {0U - 2U, 0U - 1U, 0U, 1U, 2U}) {
            outputs.push_back((1U << bit) + offset);
            outputs.push_back(0xC0000000U + offset);
            outputs.push_back(0xB504F333U + offset);  // sqrt(1/2)
        }
    }
    for (int i = 0; i < 200000; ++i) {
        outputs.push_back(static_cast<std::uint32_t>(random.Engine()()));
    }
    return outputs;
}

// The distance of `value` from `exact` in units of the last place of `exact`.
double UlpsFrom(long double exact, double value) {
    int exponent = 0;
    std::frexp(static_cast<double>(exact), &exponent);
    const long double error = std::fabs(static_cast<long double>(value) - exact);
    return static_cast<double>(error / std::ldexp(1.0L, exponent - 53));
}

TEST(OwnLogarithm, IsWithinOneUlpOfTheCLibrary) {
    PropertyRandom random;
    for (const std::uint32_t y : Outputs(random)) {
        if (y != 0) {
            const long double exact = -2.0L * std::log(static_cast<long double>(y) * 0x1p-32L);
            ASSERT_LE(UlpsFrom(exact, MinusTwoLog(y)), 0.9) << y;
        }
    }
}

TEST(OwnSine, IsWithinTwoUlpsOfTheCLibraryAtTheExactAngleAndIsOdd) {
    PropertyRandom random;
    const long double pi = std::acos(-1.0L);
    for (const std::uint32_t y : Outputs(random)) {
        // The reference is reduced to the first octant: there the C library's functions and the
        // product with pi keep their accuracy.
        const std::uint32_t half = y & 0x7fffffffU;
        const std::uint32_t folded = half > 0x40000000U ? 0x80000000U - half : half;
        const long double turn = static_cast<long double>(folded) * 0x1p-31L;
        long double exact = turn <= 0.25L ? std::sin(pi * turn) : std::cos(pi * (0.5L - turn));
        exact = y >= 0x80000000U ? -exact : exact;
        if (folded == 0) {
            ASSERT_EQ(SineOfTurn(y), 0.0) << y;
        } else {
            ASSERT_LE(UlpsFrom(exact, SineOfTurn(y)), 2.3) << y;
        }
        ASSERT_EQ(SineOfTurn(0U - y), -SineOfTurn(y)) << y;
    }
    EXPECT_EQ(SineOfTurn(0x40000000U), 1.0);
    EXPECT_EQ(SineOfTurn(0xC0000000U), -1.0);
}

// That vectors hold the bits of single draws is shown with the generator, whose outputs are no
// zeros.
TEST(NormalsFromPairs, ZeroHasItsOwnRadius) {
    std::vector<std::uint32_t> outputs(42, 0x40000000U);
    outputs[10] = outputs[20] = outputs[21] = 0;
    std::vector<double> normals(outputs.size() / 2);
    math::detail::NormalsFromPairs(outputs.data(), normals.size(), 5.0, 2.0, normals.data());
    EXPECT_EQ(normals[5], 5.0 + 2.0 * 3.4244955099270222);
    EXPECT_EQ(normals[10], 5.0);
    EXPECT_DOUBLE_EQ(normals[11], 5.0 + 2.0 * std::sqrt(std::log(16.0)));
}

TEST(UniformMap, IsTheRoundedFormulaClampedToItsRange) {
    PropertyRandom random;
    const std::array<std::uint32_t, 6> ends{0U, 1U, 2U, 0x80000000U, 0xfffffffeU, 0xffffffffU};
    for (int i = 0; i < 20000; ++i) {
        double a = random.SignedLogUniform(1e-300, 1e300);
        double b = a;
        if (random.Chance(0.3)) {  // a range of a few last places, where rounding passes b
            for (int steps = random.Integer(1, 4); steps > 0; --steps) {
                b = std::nextafter(b, HUGE_VAL);
            }
        } else if (random.Chance(0.1)) {  // a subnormal range
            a = random.Uniform(-1.0, 1.0) * 1e-310;
            b = a + random.Uniform(0.01, 1.0) * 1e-310;
        } else {
            b = random.SignedLogUniform(1e-300, 1e300);
            if (b < a) {
                std::swap(a, b);
            }
        }
        const UniformMap map(a, b);
        const auto y =
            random.Chance(0.5) ? random.Pick(ends) : static_cast<std::uint32_t>(random.Engine()());
        const double formula = a + (static_cast<double>(y) * 0x1p-32) * (b - a);
        ASSERT_EQ(map(y), std::min(formula, b)) << y << ' ' << Exact(a) << ' ' << Exact(b);
        ASSERT_GE(map(y), a) << y << ' ' << Exact(a) << ' ' << Exact(b);
    }
}

TEST(UniformMap, CoversRangesWhoseWidthOverflows) {
    const UniformMap map(-1.5e308, 1.7e308);
    EXPECT_EQ(map(0), -1.5e308);
    EXPECT_NEAR(map(0x80000000U), 0.1e308, 1e293);
    EXPECT_LE(map(0xffffffffU), 1.7e308);
    EXPECT_GT(map(0xffffffffU), 1.69e308);
}

}  // namespace
