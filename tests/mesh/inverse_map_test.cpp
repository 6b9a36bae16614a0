#include "common/mesh/shape_function.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <tuple>

namespace {

using namespace lmw::test;

struct Result {
    int found;
    double r;
    double s;
};

template <std::size_t N>
Result Inverse(const std::array<double, N>& corners, double x, double y) {
    Result result{-1, 99.0, 99.0};
    result.found = iGlobal_To_Local_Coords(result.r, result.s, x, y, corners.data(), N / 2);
    return result;
}

template <std::size_t N>
std::array<double, 2> Forward(const std::array<double, N>& corners, double r, double s) {
    const std::int32_t nodes[8] = {1, 2, 3, N / 2 == 4 ? 4 : 0, 0, 0, 0, 0};
    double n[8];
    Shape_Function(n, r, s, nodes);
    std::array<double, 2> point{};
    for (std::size_t i = 0; i < N / 2; ++i) {
        point[0] += n[i] * corners[2 * i];
        point[1] += n[i] * corners[2 * i + 1];
    }
    return point;
}

template <std::size_t N>
std::string Text(const std::array<double, N>& corners) {
    std::string text;
    for (const double c : corners) {
        text += Exact(c) + ", ";
    }
    return text;
}

using Quad = std::array<double, 8>;
using Triangle = std::array<double, 6>;

// Twice the signed area at corner i: positive where the corner is convex.
double Turn(const Quad& q, std::size_t i) {
    const std::size_t a = 2 * ((i + 3) % 4);
    const std::size_t b = 2 * i;
    const std::size_t c = 2 * ((i + 1) % 4);
    return (q[b] - q[a]) * (q[c + 1] - q[b + 1]) - (q[b + 1] - q[a + 1]) * (q[c] - q[b]);
}

// A convex quadrilateral, often of a kind in which a coefficient of the inverse vanishes.
Quad RandomConvexQuad(PropertyRandom& random) {
    for (;;) {
        Quad q{1, 1, -1, 1, -1, -1, 1, -1};
        const int kind = random.Integer(0, 4);
        if (kind == 0) {  // parallelogram, rectangles included
            const double shear = random.Chance(0.5) ? 0.0 : random.Uniform(-1, 1);
            for (std::size_t i = 0; i < 4; ++i) {
                q[2 * i] = q[2 * i] * random.LogUniform(1.0, 1.0 + 1e-12) + shear * q[2 * i + 1];
            }
        } else if (kind == 1) {  // trapezoid, its parallel sides in one of the two directions
            const double shorter = random.Uniform(0.05, 1.0);
            const std::size_t axis = random.Chance(0.5) ? 0 : 1;
            q[axis] *= shorter;
            q[(axis == 0 ? 2U : 6U) + axis] *= shorter;
        } else if (kind == 2) {  // nearly a triangle
            const double small = random.LogUniform(1e-6, 1e-1);
            q[0] = q[6] + small * (q[0] - q[6]);
            q[1] = q[7] + small * (q[1] - q[7]);
        } else {
            for (double& c : q) {
                c += random.Uniform(-0.7, 0.7);
            }
        }
        // Turned (by a quarter, or by any angle), stretched and moved away from the origin.
        const double angle = random.Chance(0.3) ? std::acos(-1.0) / 2 * random.Integer(0, 3)
                                                : random.Uniform(0, 6.28);
        const double size = random.LogUniform(1e-3, 1e3);
        const double flat = random.Chance(0.2) ? random.LogUniform(1e-3, 1.0) : 1.0;
        const double away = random.Chance(0.3) ? 1e3 * size : 0.0;
        for (std::size_t i = 0; i < 4; ++i) {
            const double x = size * q[2 * i];
            const double y = size * flat * q[2 * i + 1];
            q[2 * i] = std::cos(angle) * x - std::sin(angle) * y + away;
            q[2 * i + 1] = std::sin(angle) * x + std::cos(angle) * y - away;
        }
        if (Turn(q, 0) > 0.0 && Turn(q, 1) > 0.0 && Turn(q, 2) > 0.0 && Turn(q, 3) > 0.0) {
            return q;
        }
    }
}

// 2. and 3.: the residual in space is bounded by the rounding of the coordinates, forth and back.
TEST(InverseMap, FindsEveryPointOfRandomConvexQuadrilaterals) {
    PropertyRandom random;
    for (int i = 0; i < 50000; ++i) {
        const Quad q = RandomConvexQuad(random);
        const auto local = [&random] {
            return random.Chance(0.2) ? random.Integer(-1, 1) : random.Uniform(-1, 1);
        };
        const double r = local();
        const double s = local();
        const auto point = Forward(q, r, s);
        const Result result = Inverse(q, point[0], point[1]);
        SCOPED_TRACE(Text(q) + " at " + Exact(r) + " " + Exact(s));
        ASSERT_EQ(result.found, 1);
        const auto [least, most] = std::minmax_element(q.begin(), q.end());
        const double size = std::fmax(-*least, *most);
        const auto back = Forward(q, result.r, result.s);
        ASSERT_NEAR(back[0], point[0], 1e-9 * size);
        ASSERT_NEAR(back[1], point[1], 1e-9 * size);
        ASSERT_LE(std::fabs(result.r), 1.0001);
        ASSERT_LE(std::fabs(result.s), 1.0001);
    }
}

void ExpectFound(const Quad& q, double r, double s) {
    const auto point = Forward(q, r, s);
    const Result result = Inverse(q, point[0], point[1]);
    EXPECT_EQ(result.found, 1);
    EXPECT_NEAR(result.r, r, 1e-14);
    EXPECT_NEAR(result.s, s, 1e-14);
}

TEST(InverseMap, TheRootOfSmallerMagnitudeIsTaken) {
    // x = r (3 + s) / 4, y = s + ... : the lines of constant r meet left of the element, so that
    // every point has a second, farther solution.
    ExpectFound({2, 1, -2, 1, -1, -1, 1, -1}, 0.5, 0.25);
}

// 4. The allowance, in an element whose second relation has no usable denominator.
TEST(InverseMap, AcceptsPointsJustOutsideAnEdge) {
    const Quad exact{1, 1, -1, 1, -1, -1, 1, -1};
    // Turned by a quarter with rounding: the second denominator is noise of 1e-16, not 0.
    const double c = std::cos(std::acos(-1.0) / 2);
    Quad turned{};
    for (std::size_t i = 0; i < 4; ++i) {
        turned[2 * i] = c * exact[2 * i] - exact[2 * i + 1];
        turned[2 * i + 1] = exact[2 * i] + c * exact[2 * i + 1];
    }
    const std::tuple<double, double, int> rows[] = {
        {0.3, 1.00009, 1},  {0.3, -1.00009, 1}, {-1.5, 0.2, 1}, {0.3, 1.00011, 0},
        {0.3, -1.00011, 0}, {0.3, 2.5, 0},      {0.0, -3.0, 0}};
    for (const auto& [r, s, found] : rows) {
        for (const Quad& q : {exact, turned}) {
            SCOPED_TRACE(Text(q) + Exact(r) + " " + Exact(s));
            const auto point = Forward(q, r, s);
            const Result result = Inverse(q, point[0], point[1]);
            EXPECT_EQ(result.found, found);
            EXPECT_NEAR(result.r, found * r, 1e-14);
            EXPECT_NEAR(result.s, found * s, 1e-14);
        }
    }
}

TEST(InverseMap, OutsideAGeneralQuadrilateralTheOtherRelationGivesS) {
    ExpectFound({3, 2, -1, 3, -2, -1, 2, -2}, 0.2, 1.4);
}

// By design: other corner counts answer 1 and leave the coordinates.
TEST(InverseMap, DegenerateElementsGiveZeroAndOtherCornerCountsTouchNothing) {
    const auto expect = [](int found, double coordinate, const double* corners, int count) {
        Result result{-1, 7.0, 7.0};
        result.found = iGlobal_To_Local_Coords(result.r, result.s, 0.5, 0.25, corners, count);
        EXPECT_EQ(result.found, found) << count;
        EXPECT_EQ(result.r, coordinate) << count;
        EXPECT_EQ(result.s, coordinate) << count;
    };
    for (const Triangle& t : {Triangle{0, 0, 1, 1, 2, 2}, Triangle{0, 0, 0.1, 0.3, 0.2, 0.6},
                              Triangle{1, 1, 1, 1, 1, 1}, Triangle{0, 0, 5, 0, 2, 0}}) {
        expect(0, 0.0, t.data(), 3);
    }
    for (const Quad& q : {Quad{1, 1, 1, 1, 1, 1, 1, 1}, Quad{3, 0, 2, 0, 1, 0, 0, 0}}) {
        expect(0, 0.0, q.data(), 4);
    }
    for (const int count : {-1, 0, 1, 2, 5, 8}) {
        expect(1, 7.0, nullptr, count);
    }
}

// 1.
TEST(InverseMap, TrianglesAreInvertedInsideAndOutside) {
    PropertyRandom random;
    for (int i = 0; i < 20000; ++i) {
        Triangle t;
        const double size = random.LogUniform(1e-3, 1e3);
        const double away = random.Chance(0.3) ? 1e5 * size : 0.0;
        for (double& c : t) {
            c = away + size * random.Uniform(-1, 1);
        }
        const double area = (t[2] - t[0]) * (t[5] - t[1]) - (t[4] - t[0]) * (t[3] - t[1]);
        if (std::fabs(area) < 1e-2 * size * size) {
            continue;
        }
        const double r = random.Uniform(-3, 3);
        const double s = random.Uniform(-3, 3);
        const auto point = Forward(t, r, s);
        const Result result = Inverse(t, point[0], point[1]);
        ASSERT_EQ(result.found, 1) << Text(t);
        const double tolerance = away == 0.0 ? 1e-11 : 1e-6;  // of the coordinates' own rounding
        ASSERT_NEAR(result.r, r, tolerance) << Text(t);
        ASSERT_NEAR(result.s, s, tolerance) << Text(t);
    }
}

}  // namespace
