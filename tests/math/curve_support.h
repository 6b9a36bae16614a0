#pragma once

// Short ways to write points and curves, and plain integrals to compare with.

#include "common/math/fpoint.h"
#include "common/math/linear.h"
#include "common/math/spline.h"
#include "common/math/step.h"
#include "common/undefined.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace lmw::test {

using math::algorithm::Tolerance;
using math::fn::TailType;
using math::fn::interpolate::Linear;
using math::fn::interpolate::Spline;
using math::fn::interpolate::Step;

using Points = std::vector<FPOINT>;

inline const Tolerance<double> kTolerance;
inline const TailType kNone = TailType::None();
inline const TailType kCalc = TailType::Calc();
inline const TailType kCycle = TailType::Cycle();

inline const FPOINT* First(const Points& points) {
    return points.data();
}
inline const FPOINT* Last(const Points& points) {
    return points.data() + points.size();
}

inline Step MakeStep(const Points& points, TailType before, TailType after,
                     double period = kUndefined) {
    Step step(before, after, First(points), Last(points));
    step.SetFunctionPeriod(period);
    step.UpdateCalculatedValues();
    return step;
}

/// Prepared; the preparation is expected to succeed.
inline Linear MakeLinear(const Points& points, TailType before, TailType after,
                         double period = kUndefined) {
    Linear curve(First(points), Last(points), before, after);
    curve.SetFunctionPeriod(period);
    EXPECT_TRUE(curve.UpdateCalculatedValues().Succeeded());
    return curve;
}

inline Spline MakeSpline(const Points& points, unsigned smooth, unsigned tension,
                         TailType before = TailType::Calc(), TailType after = TailType::Calc(),
                         double period = kUndefined) {
    Spline curve(smooth, tension, before, after, First(points), Last(points), period);
    EXPECT_TRUE(curve.UpdateCalculatedValues().Succeeded());
    return curve;
}

/// `count` points with x strictly increasing in random steps and y random.
inline Points RandomPoints(PropertyRandom& random, int count) {
    Points points;
    double x = random.Uniform(-50.0, 50.0);
    for (int i = 0; i < count; ++i) {
        points.push_back({x, random.Uniform(-10.0, 10.0), random.Uniform(-1e9, 1e9)});
        x += random.LogUniform(1e-2, 10.0);
    }
    return points;
}

/// The integral from a to b by Simpson's rule between all places where the curve is not one cubic:
/// the data points and their repetitions in each period.
template <class Curve>
double PlainIntegral(const Curve& curve, const Points& points, double a, double b,
                     double period = 0.0) {
    std::vector<double> cuts = {a, b};
    for (const FPOINT& point : points) {
        cuts.push_back(point.x);
        for (int n = 1; period > 0.0 && point.x + n * period < b; ++n) {
            cuts.push_back(point.x + n * period);
        }
    }
    for (int n = 1; period > 0.0 && points.front().x + n * period < b; ++n) {
        cuts.push_back(points.front().x + n * period);
    }
    std::sort(cuts.begin(), cuts.end());
    double sum = 0.0;
    for (std::size_t i = 1; i < cuts.size(); ++i) {
        const double left = std::max(a, cuts[i - 1]);
        const double right = std::min(b, cuts[i]);
        if (right > left) {
            // Just inside, for a curve may jump at a cut; three inner points are exact for a cubic.
            const double h = right - left;
            const double middle = left + 0.5 * h;
            sum += h / 3.0 *
                   (2.0 * curve(left + 0.25 * h) - curve(middle) + 2.0 * curve(left + 0.75 * h));
        }
    }
    return sum;
}

}  // namespace lmw::test
