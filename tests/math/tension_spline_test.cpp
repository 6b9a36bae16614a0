#include "common/math/detail/tension_spline.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using lmw::test::Exact;
using lmw::test::PropertyRandom;
using math::fn::interpolate::detail::ShapeParameter;
using math::fn::interpolate::detail::TensionSpline;

// The formulas as they are written at the class Spline.
double PlainInnerSlope(double h1, double d1, double h2, double d2, double p) {
    if (d1 * d2 <= 0.0) {
        return 0.0;
    }
    const double larger = std::max(std::fabs(d1), std::fabs(d2));
    const double u1 = std::fabs(d1) / larger;
    const double u2 = std::fabs(d2) / larger;
    const double w1 = h2 / (h1 + h2);
    const double w2 = 1.0 - w1;
    const double mean = larger * (w1 * std::pow(u1, 1.0 - p) + w2 * std::pow(u2, 1.0 - p)) /
                        (w1 * std::pow(u1, -p) + w2 * std::pow(u2, -p));
    return std::copysign(std::min(mean, 3.0 * std::min(std::fabs(d1), std::fabs(d2))), d1);
}

double PlainEndSlope(double h1, double d1, double h2, double d2, double p) {
    const double e = ((2.0 * h1 + h2) * d1 - h1 * d2) / (h1 + h2);
    const double m = d1 + (1.0 - p / 3.0) * (e - d1);
    if (m * d1 <= 0.0) {
        return 0.0;
    }
    return std::copysign(std::min(std::fabs(m), 3.0 * std::fabs(d1)), d1);
}

TEST(TensionSpline, ShapeFollowsTensionWithinItsRange) {
    EXPECT_EQ(ShapeParameter(0), 3.0);
    EXPECT_EQ(ShapeParameter(50), 1.5);
    EXPECT_EQ(ShapeParameter(100), 0.0);
    EXPECT_EQ(ShapeParameter(4294967295U), 0.0);
}

TEST(TensionSpline, SlopesAreThoseOfThePlainFormulas) {
    PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    for (int round = 0; round < 500; ++round) {
        const double p = ShapeParameter(static_cast<unsigned>(random.Integer(0, 110)));
        std::vector<double> x = {random.Uniform(-1.0, 1.0)};
        std::vector<double> y = {0.0};
        for (int i = random.Integer(2, 30); i > 0; --i) {
            x.push_back(x.back() + random.LogUniform(1e-3, 1e3));
            y.push_back(y.back() + (random.Chance(0.1)   ? 0.0
                                    : random.Chance(0.3) ? -random.LogUniform(1e-6, 1e6)
                                                         : random.LogUniform(1e-6, 1e6)));
        }
        const TensionSpline spline(x, y, p);
        const std::size_t n = x.size();
        const auto h = [&](std::size_t i) { return x[i + 1] - x[i]; };
        const auto d = [&](std::size_t i) { return (y[i + 1] - y[i]) / h(i); };
        for (std::size_t i = 0; i < n; ++i) {
            const double plain = i == 0 ? PlainEndSlope(h(0), d(0), h(1), d(1), p)
                                 : i == n - 1
                                     ? PlainEndSlope(h(n - 2), d(n - 2), h(n - 3), d(n - 3), p)
                                     : PlainInnerSlope(h(i - 1), d(i - 1), h(i), d(i), p);
            EXPECT_NEAR(spline.Slopes()[i], plain, 1e-11 * std::fabs(plain)) << i << " p " << p;
        }
    }
}

TEST(TensionSpline, HasThePublishedMeansAsSpecialShapes) {
    const std::vector<double> x = {0.0, 1.0, 4.0};
    const std::vector<double> y = {0.0, 2.0, 5.0};  // secants 2 and 1, widths 1 and 3
    const auto slope = [&](double p) { return TensionSpline(x, y, p).Slopes()[1]; };
    EXPECT_DOUBLE_EQ(slope(0.0), 0.75 * 2.0 + 0.25 * 1.0) << "parabola";
    EXPECT_DOUBLE_EQ(slope(1.0), 1.0 / (0.75 / 2.0 + 0.25 / 1.0)) << "weighted harmonic mean";
    const TensionSpline two({0.0, 2.0}, {1.0, 4.0}, 0.0);
    EXPECT_EQ(two.Slopes()[0], 1.5);
    EXPECT_EQ(two.Slopes()[1], 1.5);
}

TEST(TensionSpline, SecantsFarApartInSizeDoNotOverflow) {
    for (const double p : {0.0, 0.03, 1.5, 2.97, 3.0}) {
        const TensionSpline spline({0.0, 1.0, 2.0, 3.0}, {0.0, 1e-200, 1e150, 2e150}, p);
        EXPECT_GE(spline.Slopes()[1], 0.0) << p;
        EXPECT_LE(spline.Slopes()[1], 3e-200) << p;
    }
}

}  // namespace
