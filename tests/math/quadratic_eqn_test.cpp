#include "common/math/quadratic_eqn.h"

#include "common/undefined.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace {

using namespace lmw::test;
using math::fn::QuadraticEqn;

constexpr double kTolerance = 1e-20;
constexpr double kNone = lmw::kUndefined;

struct Roots {
    int count;
    double first;
    double second;
};

Roots Solve(double a, double b, double c, double tolerance = kTolerance) {
    Roots roots{-1, 1.0, 1.0};
    roots.count = QuadraticEqn::Solve(a, b, c, tolerance, roots.first, roots.second);
    return roots;
}

TEST(QuadraticEqn, SolvesKnownEquations) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Row {
        const char* name;
        double a, b, c;
        int count;
        double first, second;
    };
    const Row rows[] = {
        {"q / a first: b > 0", 1, 3, 2, 2, -2, -1},
        {"q / a first: b < 0", 1, -3, 2, 2, 2, 1},
        {"b = 0 counts as positive", 1, 0, -4, 2, -2, 2},
        {"b = -0 as well", 1, -0.0, -4, 2, -2, 2},
        {"double root", 1, -2, 1, 1, 1, kNone},
        {"double root 0", 3, 0, 0, 1, 0, kNone},
        {"root 0 from c / q", 1, -5, 0, 2, 5, 0},
        {"no real root", 1, 0, 1, 0, kNone, kNone},
        {"linear", 0, 2, -8, 1, 4, kNone},
        {"linear below the tolerance", 1e-21, 2, -8, 1, 4, kNone},
        {"not linear at the tolerance", 1e-20, 1, 0, 2, -1e20, 0},
        {"linear without slope", 0, 0, 5, 0, kNone, kNone},
        {"linear with a root beyond the range", 0, 1e-200, 1e200, 0, kNone, kNone},
        {"all zero", 0, 0, 0, 0, kNone, kNone},
        {"infinite coefficient", 1, inf, 1, 0, kNone, kNone},
        {"not a number", 1, 2, nan, 0, kNone, kNone},
        {"small", 1e-310, -3e-310, 2e-310, 2, 2, 1},
        {"small roots of a wide equation", 1e200, 0, -1e-100, 2, -1e-150, 1e-150},
        {"subnormal roots", 1e300, 1e-10, -1e-320, 2, -1.618034e-310, 6.18034e-311},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Roots roots = Solve(row.a, row.b, row.c);
        EXPECT_EQ(roots.count, row.count);
        for (const auto& [got, wanted] :
             {std::pair{roots.first, row.first}, {roots.second, row.second}}) {
            // Subnormal coefficients and roots have few digits.
            const bool subnormal = std::fabs(wanted) < 1e-307;
            EXPECT_NEAR(got, wanted, std::fabs(wanted) * (subnormal ? 1e-3 : 1e-13));
        }
    }
}

// The order of the roots is that of the formula, their values those of the factors.
TEST(QuadraticEqn, FindsTheRootsOfFactorsOfAnySize) {
    PropertyRandom random;
    for (int i = 0; i < 20000; ++i) {
        const double large = random.SignedLogUniform(1e-120, 1e120);
        const double small = large * random.SignedLogUniform(1e-25, 0.5);
        const double a = random.SignedLogUniform(1e-50, 1e50);
        const Roots roots = Solve(a, -a * (large + small), a * large * small, 0.0);
        SCOPED_TRACE(Exact(a) + " roots " + Exact(large) + " " + Exact(small));
        ASSERT_EQ(roots.count, 2);
        ASSERT_NEAR(roots.first, large, 1e-13 * std::fabs(large));
        ASSERT_NEAR(roots.second, small, 1e-13 * std::fabs(small));
    }
}

// The inline path and the path for extreme sizes are one function: a power of two changes nothing.
TEST(QuadraticEqn, PowersOfTwoOfTheCoefficientsAndTheUnknownChangeNothing) {
    PropertyRandom random;
    for (int i = 0; i < 20000; ++i) {
        const double a = random.SignedLogUniform(1e-3, 1e3);
        const double b = random.SignedLogUniform(1e-3, 1e3);
        const double c = random.SignedLogUniform(1e-3, 1e3);
        const int scale = random.Integer(-600, 600);
        const int unknown = random.Integer(-200, 200);
        const Roots plain = Solve(a, b, c, 0.0);
        const Roots scaled = Solve(std::ldexp(a, scale - unknown), std::ldexp(b, scale),
                                   std::ldexp(c, scale + unknown), 0.0);
        SCOPED_TRACE(Exact(a) + " " + Exact(b) + " " + Exact(c) + " 2^" + std::to_string(scale) +
                     " x^" + std::to_string(unknown));
        ASSERT_EQ(scaled.count, plain.count);
        if (plain.count > 0) {
            ASSERT_DOUBLE_EQ(scaled.first, std::ldexp(plain.first, unknown));
        }
        if (plain.count > 1) {
            ASSERT_DOUBLE_EQ(scaled.second, std::ldexp(plain.second, unknown));
        }
    }
}

}  // namespace
