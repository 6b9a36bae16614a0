#include "common/geom/line_discretize.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

using namespace Geom;
using lmw::test::PropertyRandom;

const Precision3D kPrecision(6, 6, 6);
constexpr double kNotGiven = lmw::kUndefined;

PointConstraint At(double x, double spacing, bool enforced = false) {
    return {{x, 0}, {spacing, enforced}};
}

TEST(PointCount, FollowsTheMeanSpacing) {
    const std::tuple<const char*, PointConstraints, double, unsigned> rows[] = {
        {"equal", {At(0, 1), At(10, 1)}, 9, 11},
        {"one to three", {At(0, 1), At(10, 3)}, 9, 6},
        {"default replaces both", {At(0, kNotGiven), At(10, kNotGiven)}, 2, 6},
        {"short, both enforced", {At(0, 9, true), At(1, 9, true)}, 9, 4},
        {"short, one enforced", {At(0, 9), At(1, 9, true)}, 9, 3},
        {"short", {At(0, 9), At(1, 9)}, 9, 2},
        {"clamped", {At(0, 1), At(1e6, 1e6)}, 9, 1999},
        {"clamped, reversed", {At(0, 1e6), At(1e6, 1)}, 9, 3},
        {"beyond the clamp", {At(0, 2000), At(1e6, 1)}, 9, 1000},
        {"five and seven", {At(0, 1), At(4, 1), At(10, 1)}, 9, 11},
        {"single", {At(0, 1)}, 9, 1},
        {"none", {}, 9, 0},
    };
    for (const auto& [name, constraints, default_spacing, expected] : rows) {
        EXPECT_EQ(expected, NumPtsFromPtConstraints(constraints, default_spacing, kPrecision))
            << name;
    }
}

TEST(LineDiscretize, SharesPiecesByLargestRemainderAndKeepsTheMinima) {
    // Pieces of [0, 4], of weight 4, and of [4, 10], of weight 6.
    const std::tuple<unsigned, unsigned, unsigned> rows[] = {
        {10U, 4U, 6U}, {11U, 4U, 7U}, {12U, 5U, 7U}, {5U, 2U, 3U}, {1U, 1U, 1U}, {0U, 1U, 1U}};
    for (const auto& [divisions, first, second] : rows) {
        SCOPED_TRACE(divisions);
        std::vector<Point2D> out{{9, 9}};
        ASSERT_TRUE(LineDiscretize2D(out, {At(0, 1), At(4, 1), At(10, 1)}, divisions, kPrecision));
        EXPECT_EQ(first + second + 1, out.size());
        EXPECT_EQ(4.0, out[first].x);  // property 1
        EXPECT_EQ(10.0, out.back().x);
    }
    std::vector<Point2D> out;
    ASSERT_TRUE(
        LineDiscretize2D(out, {At(0, 1), At(99, .3, true), At(100, .2, true)}, 10, kPrecision));
    EXPECT_EQ(11U, out.size());  // the short interval keeps its three, seven are left
    EXPECT_EQ(99.0, out[7].x);
}

TEST(LineDiscretize, GradesFromOneSpacingToTheOther) {
    std::vector<Point2D> out;
    ASSERT_TRUE(LineDiscretize2D(out, {At(0, 1), At(15, 8)}, 4, kPrecision));
    ASSERT_EQ(5U, out.size());
    const double expected[] = {0, 1, 3, 7, 15};  // ratio 8 over three steps: 2
    for (std::size_t k = 0; k < 5; ++k) {
        EXPECT_NEAR(expected[k], out[k].x, 1e-12);
    }
    ASSERT_TRUE(LineDiscretize2D(out, {At(0, 1), At(15, kNotGiven)}, 3, kPrecision));
    EXPECT_NEAR(5.0, out[1].x, 1e-12);  // no growth where one is not given
    ASSERT_TRUE(LineDiscretize2D(out, {At(0, 1, true), At(15, 8, true)}, 4, kPrecision));
    EXPECT_NEAR(1.0, out[1].x, 1e-12);
    EXPECT_NEAR(3.0, out[2].x, 1e-12);  // 2 : 4 shared over the remaining 6
    EXPECT_NEAR(7.0, out[3].x, 1e-12);
    ASSERT_TRUE(LineDiscretize2D(out, {At(0, 1, true), At(15, kNotGiven)}, 5, kPrecision));
    EXPECT_EQ(1.0, out[1].x);
}

TEST(LineDiscretize, BothDirectionsGiveTheSameBits) {  // property 2
    PropertyRandom random;
    for (int k = 0; k < 500; ++k) {
        const auto point = [&] { return Point2D{random.Uniform(0, 100), random.Uniform(0, 100)}; };
        const auto spacing = [&] {
            return random.Chance(0.2) ? kNotGiven : random.Uniform(0.01, 5.0);
        };
        PointConstraints line{{point(), {spacing(), random.Chance(0.3)}},
                              {point(), {spacing(), random.Chance(0.3)}}};
        std::vector<Point2D> forward;
        std::vector<Point2D> backward;
        const auto divisions = static_cast<unsigned>(random.Integer(1, 60));
        const bool possible = LineDiscretize2D(forward, line, divisions, kPrecision);
        std::reverse(line.begin(), line.end());
        ASSERT_EQ(possible, LineDiscretize2D(backward, line, divisions, kPrecision));
        std::reverse(backward.begin(), backward.end());
        ASSERT_EQ(forward.size(), backward.size());
        for (std::size_t i = 0; i < forward.size(); ++i) {
            EXPECT_TRUE(IsExactEqual2D(forward[i], backward[i]));
        }
    }
}

TEST(LineDiscretize, ReportsWhatCannotBeDivided) {
    const Precision3D coarse(0, 0, 0);
    const std::tuple<const char*, PointConstraints, unsigned, const Precision3D&> rows[] = {
        {"none", {}, 4, kPrecision},
        {"one", {At(0, 1)}, 4, kPrecision},
        {"equal ends", {At(0, 1), At(0, 1)}, 4, kPrecision},
        {"second interval", {At(0, 1), At(5, 1), At(5, 1)}, 4, kPrecision},
        {"enforced spacings reach the length", {At(0, 2, true), At(4, 2, true)}, 4, kPrecision},
        {"points fall together", {At(0, 1), At(4, 1)}, 8, coarse},
        {"too many to be made", {At(0, 1), At(4, 1)}, 4000000000, kPrecision},
        {"infinite", {At(0, 1), At(HUGE_VAL, 1)}, 4000000000, kPrecision},
        {"enforced backwards", {At(0, -1, true), At(4, 1)}, 4, kPrecision},
        {"invalid end", {At(0, 1), {{}, {1, false}}}, 4, kPrecision},
    };
    for (const auto& [name, constraints, divisions, precision] : rows) {
        std::vector<Point2D> out{{1, 1}};
        EXPECT_FALSE(LineDiscretize2D(out, constraints, divisions, precision)) << name;
        EXPECT_TRUE(out.empty()) << name;
    }
}

TEST(SortUniqueConstraints, OrdersByProjectionAndKeepsTheStrongest) {
    PointConstraints constraints{At(9, 1),         At(5, 3, true),   At(5, 1),
                                 At(0, kNotGiven), At(7, kNotGiven), At(7.0000001, 2),
                                 At(5, 2, true),   At(7, 4)};
    SortUniqueConstraintsOnLine(constraints, {{10, 1}, {-10, 1}}, kPrecision);
    ASSERT_EQ(4U, constraints.size());
    const PointConstraints expected{At(9, 1), At(7.0000001, 2), At(5, 2, true), At(0, kNotGiven)};
    for (std::size_t k = 0; k < 4; ++k) {
        EXPECT_EQ(expected[k].first.x, constraints[k].first.x);
        EXPECT_EQ(expected[k].second, constraints[k].second);
    }
}

}  // namespace
