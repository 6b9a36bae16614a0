#include "common/geom/circle2d.h"
#include "common/geom/extents2d.h"
#include "common/geom/line2d.h"
#include "common/geom/line_intersection.h"
#include "common/geom/polygon2d.h"
#include "common/geom/precision.h"
#include "common/geom/vector2d.h"

#include "tests/support/allocation_counter.h"
#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <tuple>

namespace {

using namespace Geom;
using lmw::test::PropertyRandom;

const Precision3D kPrecision(3, 3, 3);
const double kH = kPrecision.halfEpsilon[0];  // 0.0005

void ExpectPoint(const Point2D& expected, const Point2D& actual) {
    EXPECT_EQ(expected.x, actual.x);
    EXPECT_EQ(expected.y, actual.y);
}

// ---- precision

TEST(Precision, UnsetRecordMakesEveryFinitePointEqual) {  // Precision3D 1
    const Precision3D unset;
    EXPECT_EQ(2147483647, unset.decimals[2]);
    EXPECT_EQ(unset.epsilon[0], unset.halfEpsilon[0]);
    EXPECT_TRUE(IsEqual2D(Point2D{0, 0}, Point2D{1e9, -1e9}, unset));
}

TEST(Precision, DecimalsGiveTheNearestPowerOfTen) {  // Precision3D 2
    const Precision3D precision(2, -3, 400);
    EXPECT_EQ(0.01, precision.epsilon[0]);
    EXPECT_EQ(0.005, precision.halfEpsilon[0]);
    EXPECT_EQ(1000.0, precision.epsilon[1]);
    EXPECT_EQ(0.0, precision.epsilon[2]);
    EXPECT_EQ(1e-23,
              Precision3D(23, 0, 0).epsilon[0]);  // pow is one bit off here on some platforms
    EXPECT_TRUE(precision == Precision3D(2, -3, 400));
    EXPECT_FALSE(precision == Precision3D(2, -3, 401));
}

TEST(Precision, ScalingKeepsTheEpsilonAndTruncatesItsDecimals) {  // Precision3D 3
    const std::tuple<int, double, double, int> rows[] = {{3, 2.0, 0.002, 2},
                                                         {3, 1.0, 0.001, 2},
                                                         {3, 4.0, 0.004, 1},
                                                         {0, 5.0, 5.0, -1},
                                                         {-2, 1.0, 100.0, -2}};
    for (const auto& [decimals, factor, epsilon, expected] : rows) {
        SCOPED_TRACE(factor);
        Precision3D precision(decimals, decimals, decimals);
        precision.ScaleEpsilon(factor);
        EXPECT_EQ(epsilon, precision.epsilon[0]);
        EXPECT_EQ(epsilon * 0.5, precision.halfEpsilon[0]);
        EXPECT_EQ(expected, precision.decimals[0]);
    }
    Precision3D unset;
    unset.ScaleEpsilon(0.5);
    EXPECT_EQ(2147483647, unset.decimals[0]);
    EXPECT_FALSE(lmw::IsDefined(unset.halfEpsilon[1]));
    Precision3D huge(-308, -308, -308);
    huge.ScaleEpsilon(1e10);
    EXPECT_EQ(2147483647, huge.decimals[0]);
}

TEST(Precision, OfExtentsKeepsSevenDigitsAndAtMostSevenDecimals) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, int> rows[] = {
        {0.0, 7},     {0.02, 7},    {1.0, 7},
        {9.9999, 7},  {9.99996, 6}, {123.0, 5},
        {5e6, 1},     {4e9, -2},    {std::numeric_limits<double>::max(), 7},
        {infinity, 7}};
    for (const auto& [magnitude, decimals] : rows) {
        SCOPED_TRACE(magnitude);
        const Precision3D precision = ComputePrecisionOfExtents({-magnitude, 0.0, 0.0, 1e5});
        EXPECT_EQ(decimals, precision.decimals[0]);
        EXPECT_EQ(2, precision.decimals[1]);
        EXPECT_EQ(std::min(decimals, 2), precision.decimals[2]);
    }
    EXPECT_EQ(Precision3D(7, 7, 7), ComputePrecisionOfExtents({}));
}

TEST(Precision, OfRangesKeepsTheDigitsAskedForWithoutALimit) {
    const Precision3D precision = MakePrecision3D({-0.05, 0.01}, {0.0, 0.0}, {0.0, 99.96}, 3);
    EXPECT_EQ(4, precision.decimals[0]);
    EXPECT_EQ(2, precision.decimals[1]);
    EXPECT_EQ(0, precision.decimals[2]);  // 99.96 to three digits is 100
    EXPECT_EQ(11, MakePrecision3D(Extents3D{0, 1e-9, 0, 1, 0, 1}, 3).decimals[0]);
}

TEST(Precision, RoundingGivesTheDoubleNearestToTheRoundedText) {
    const RoundCache cache(Precision3D(2, -2, 0));
    const std::pair<double, double> on_x[] = {{1.005, 1.0},    {1.015, 1.01},  {0.125, 0.12},
                                              {-2.675, -2.67}, {1e22, 1e22},   {0.004, 0.0},
                                              {0.006, 0.01},   {-1e-300, 0.0}, {99.999, 100.0}};
    for (const auto& [x, expected] : on_x) {
        SCOPED_TRACE(x);
        EXPECT_EQ(expected, cache.Round(x, 0));
        EXPECT_FALSE(std::signbit(cache.Round(x, 0)) && expected == 0.0);
    }
    const std::pair<double, double> on_y[] = {{149.999, 100.0}, {150.5, 200.0}, {50.0, 0.0},
                                              {51.0, 100.0},    {-4.0, 0.0},    {-99.0, -100.0}};
    for (const auto& [x, expected] : on_y) {
        EXPECT_EQ(expected, cache.Round(x, 1)) << x;
    }
    Point2D invalid;
    RoundClean(invalid, cache);
    EXPECT_FALSE(invalid.IsValid());
    Point2D p{1.2345, 1234.0};
    RoundClean(p, cache);
    ExpectPoint({1.23, 1200.0}, p);
}

TEST(Equality, HoldsAtTheHalfEpsilonAndNotBeyond) {  // IsEqual2D 1, 2
    const Precision3D precision(0, 1, 0);            // half-epsilons 0.5 and 0.05: exact at 0
    EXPECT_TRUE(IsEqual2D(Point2D{0, 0}, Point2D{0.5, 0.05}, precision));
    EXPECT_FALSE(IsEqual2D(Point2D{0, 0}, Point2D{std::nextafter(0.5, 1.0), 0}, precision));
    EXPECT_FALSE(IsEqual2D(Point2D{0, 0}, Point2D{0, std::nextafter(0.05, 1.0)}, precision));
    EXPECT_TRUE(IsEqual2D(Point2D{}, kInvalidPoint, precision));
    EXPECT_FALSE(IsEqual2D(Point2D{}, Point2D{0, 0}, precision));
    const Line2D line{{0, 0}, {9, 9}};
    EXPECT_TRUE(IsEqual2D(line, Line2D{{9.4, 9}, {0.4, 0}}, precision));
    EXPECT_FALSE(IsEqual2D(line, Line2D{{0, 0}, {0, 0}}, precision));
    EXPECT_TRUE(IsEqual3D({{1, 2, 3}}, {{1.4, 2, 3.4}}, precision));
    EXPECT_FALSE(IsEqual3D({{1, 2, 3}}, {{1, 2, 3.6}}, precision));
    EXPECT_FALSE(IsEqual3D({{1, 2, 3}}, {}, precision));
}

TEST(Equality, TolerantOrderComparesYOnlyWithinTheToleranceOfX) {
    const engless_Point2D before(kPrecision);
    EXPECT_TRUE(before({0, 9}, {1, 0}));
    EXPECT_TRUE(before({0.9 * kH, 0}, {0, 1}));
    EXPECT_FALSE(before({0, 0}, {0.9 * kH, 0.9 * kH}));
    EXPECT_TRUE(less_Point3D(kPrecision)({0, 0, 1}, {0, 0, 2}));
    EXPECT_FALSE(less_Point3D(kPrecision)({0, 1, 1}, {0, 0, 2}));
}

// ---- one segment

TEST(LineGet, OrdersTheEndsAndSwapsEqualOnes) {
    ExpectPoint({0, 0}, LineGet2D({1, 0}, {0, 0}, kPrecision).first);
    ExpectPoint({0, 0}, LineGet2D({0, 0}, {1, 0}, kPrecision).first);
    const Point2D a{0, 0};
    const Point2D b{0.5 * kH, 0};
    ExpectPoint(b, LineGet2D(a, b, kPrecision).first);
}

TEST(LineClosestPoint, TestsTheEndsBeforeTheDegenerateSegment) {  // LineClosestPoint2D 1
    const Point2D a{0, 0};
    const Point2D b{0.9 * kH, 0};
    const auto mode = NonPerpendicularMode::kNone;
    ExpectPoint(b, LineClosestPoint2D(a, b, {1.5 * kH, 0}, mode, kPrecision));
    ExpectPoint(a, LineClosestPoint2D(a, b, {0.5 * kH, 0}, mode, kPrecision));
    ExpectPoint(a, LineClosestPoint2D(a, b, {9, 9}, mode, kPrecision));
}

TEST(LineClosestPoint, FallsOnTheSegmentOrFollowsTheMode) {  // LineClosestPoint2D 2
    const Point2D a{0, 0};
    const Point2D b{4, 4};
    ExpectPoint({2, 2}, LineClosestPoint2D(a, b, {4, 0}, NonPerpendicularMode::kNone, kPrecision));
    EXPECT_FALSE(
        LineClosestPoint2D(a, b, {9, 9}, NonPerpendicularMode::kNone, kPrecision).IsValid());
    ExpectPoint(b, LineClosestPoint2D(a, b, {9, 9}, NonPerpendicularMode::kNearerEnd, kPrecision));
    ExpectPoint(a, LineClosestPoint2D(a, b, {-9, 1}, NonPerpendicularMode::kNearerEnd, kPrecision));
    ExpectPoint({9, 9}, InfLineClosestPoint2D(a, b, {10, 8}, kPrecision));
}

TEST(LineContainsPoint, UsesABoxPerAxisNotADistance) {
    const Point2D a{0, 0};
    const Point2D b{4, 4};
    EXPECT_TRUE(LineContainsPoint2D(a, b, {2 + 0.9 * kH, 2 - 0.9 * kH}, kPrecision));
    EXPECT_FALSE(LineContainsPoint2D(a, b, {2 + 1.1 * kH, 2 - 1.1 * kH}, kPrecision));
    EXPECT_TRUE(LineContainsPoint2D(a, a, {0.9 * kH, 0}, kPrecision));
    EXPECT_FALSE(LineContainsPoint2D(a, a, {1.1 * kH, 0}, kPrecision));
}

TEST(LineGetY, GivesTheHeightTheRangeOrNothing) {
    const Point2D a{0, 1};
    const Point2D b{4, 3};
    EXPECT_EQ(std::pair(2.0, 2.0), LineGetY2D(a, b, 2.0, kPrecision));
    EXPECT_EQ(std::pair(3.0, 3.0), LineGetY2D(a, b, 4.0 + 0.9 * kH, kPrecision));
    EXPECT_EQ(std::pair(1.0, 3.0), LineGetY2D({0, 3}, {0, 1}, 0.0, kPrecision));
    EXPECT_FALSE(lmw::IsDefined(LineGetY2D(a, b, 4.0 + 1.1 * kH, kPrecision).first));
}

// ---- two segments

struct PairRow {
    const char* name;
    Line2D a;
    Line2D b;
    int code;
    Point2D p0;
    Point2D p1;
    bool crossing;
    Point2D collision;
};

const Point2D kNone = kInvalidPoint;

class PairTest : public testing::TestWithParam<PairRow> {};

TEST_P(PairTest, CodeAndPointsFollow) {  // LineIntersection2D 2, 3, 4
    const auto& [name, a, b, code, p0, p1, crossing, collision] = GetParam();
    Point2D q0;
    Point2D q1;
    EXPECT_EQ(code, LineIntersection2D(q0, q1, a.first, a.second, b.first, b.second, kPrecision));
    ExpectPoint(p0, q0);
    ExpectPoint(p1, q1);
    EXPECT_EQ(crossing, LineIsCrossing2D(a.first, a.second, b.first, b.second, kPrecision));
    ExpectPoint(collision, LineCollision2D(a.first, a.second, b.first, b.second, kPrecision));
    ExpectPoint(code == 2 ? kNone : p0,
                LineIntersectionPoint2D(a.first, a.second, b.first, b.second, kPrecision,
                                        IntersectionType::kNoOverlapPoint));
}

// clang-format off
const PairRow kPairs[] = {
    {"crossing",             {{0, 0}, {4, 4}}, {{0, 4}, {4, 0}},           1, {2, 2},      kNone,  true,  {2, 2}},
    {"apart",                {{0, 0}, {1, 0}}, {{0, 1}, {1, 1}},           0, kNone,       kNone,  false, kNone},
    {"parallel_in_one_box",  {{0, 0}, {4, 4}}, {{1, 0}, {4, 3}},           0, kNone,       kNone,  false, kNone},
    {"shared_end",           {{0, 0}, {1, 0}}, {{0, 0}, {0, 1}},           1, {0, 0},      kNone,  false, kNone},
    {"collinear_end_to_end", {{0, 0}, {1, 0}}, {{1, 0}, {2, 0}},           1, {1, 0},      kNone,  false, kNone},
    {"overlap",              {{0, 0}, {2, 0}}, {{1, 0}, {3, 0}},           2, {2, 0},      {1, 0}, false, {2, 0}},
    {"same",                 {{0, 0}, {1, 0}}, {{1, 0}, {0, 0}},           2, {0, 0},      {1, 0}, false, {0, 0}},
    {"inside",               {{0, 0}, {4, 0}}, {{1, 0}, {3, 0}},           2, {1, 0},      {3, 0}, false, {1, 0}},
    {"inside_from_one_end",  {{0, 0}, {4, 0}}, {{0, 0}, {3, 0}},           2, {3, 0},      {0, 0}, false, {3, 0}},
    {"tee_is_the_crossing",  {{0, 0}, {4, 0}}, {{2, 3}, {2, -0.0004}},     1, {2, 0},      kNone,  false, {2, 0}},
    {"tee_falls_short",      {{0, 0}, {4, 0}}, {{2, 3}, {2, 0.0004}},      1, {2, 0.0004}, kNone,  false, {2, 0.0004}},
    {"point_inside",         {{0, 0}, {4, 0}}, {{1, 0}, {1, 0}},           2, {1, 0},      {1, 0}, false, {1, 0}},
    {"points",               {{1, 0}, {1, 0}}, {{1, .0004}, {1, .0004}},   1, {1, 0},      kNone,  false, kNone},
    // Two ends touch, but the segments are not collinear and do not cross: nothing is left.
    {"two_touches_not_collinear",
                 {{3.999, .0002}, {7.863, 1.0355}}, {{0, 0}, {4, 0}},      0, kNone,       kNone,  false, kNone},
    {"placeholder",          {},               {{0, 0}, {1, 1}},           0, kNone,       kNone,  false, kNone},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Rows, PairTest, testing::ValuesIn(kPairs),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(PairTest, ReportedPointsLieOnBothSegments) {  // LineIntersection2D 1
    PropertyRandom random;
    int met = 0;
    for (int k = 0; k < 20000; ++k) {
        const double size = random.LogUniform(1e-2, 1e3);
        const auto point = [&] {
            return random.Chance(0.5)
                       ? Point2D{random.Uniform(-size, size), random.Uniform(-size, size)}
                       : Point2D{1.0 * random.Integer(-2, 2), 1.0 * random.Integer(-2, 2)};
        };
        const Line2D a{point(), point()};
        const Line2D b{random.Chance(0.2) ? a.first : point(), point()};
        Point2D p0;
        Point2D p1;
        const int code =
            LineIntersection2D(p0, p1, a.first, a.second, b.first, b.second, kPrecision);
        met += code > 0 ? 1 : 0;
        for (const Point2D& p : {p0, p1}) {
            if (p.IsValid()) {
                // Widened by the rounding of the coordinates, as promised.
                Precision3D wider = kPrecision;
                wider.ScaleEpsilon(1.0 + 1e-6);
                EXPECT_TRUE(LineContainsPoint2D(a.first, a.second, p, wider));
                EXPECT_TRUE(LineContainsPoint2D(b.first, b.second, p, wider));
            }
        }
    }
    EXPECT_GT(met, 4000);
}

TEST(PairTest, InfiniteLinesCrossUnlessParallel) {
    ExpectPoint({5, 5}, InfLineIntersection2D({0, 0}, {1, 1}, {5, 0}, {5, 1}, kPrecision));
    EXPECT_FALSE(InfLineIntersection2D({0, 0}, {1, 1}, {1, 0}, {2, 1}, kPrecision).IsValid());
    EXPECT_FALSE(InfLineIntersection2D({0, 0}, {0, 0}, {1, 0}, {2, 1}, kPrecision).IsValid());
}

// ---- circles, turns, boxes, polygons

TEST(Circle, MeetsALineInTwoOneOrNoPoints) {
    const Circle2D circle{{1, 1}, 5};
    fixed_vector<Point2D, 2> out;
    const auto met_by_line = [&](const Point2D& a, const Point2D& b) {
        CircleInfLineIntersection2D(out, circle, {a, b}, kPrecision);
        return out.size();
    };
    ASSERT_EQ(2U, met_by_line({0, 4}, {1, 4}));
    ExpectPoint({-3, 4}, out[0]);
    ExpectPoint({5, 4}, out[1]);
    for (const double shift : {-0.9, 0.0, 0.9}) {  // tangent within tolerance
        ASSERT_EQ(1U, met_by_line({0, 6 + shift * kH}, {1, 6 + shift * kH}));
        ExpectPoint({1, 6 + shift * kH}, out[0]);
    }
    EXPECT_EQ(0U, met_by_line({0, 6 + 1.1 * kH}, {1, 6 + 1.1 * kH}));
    EXPECT_EQ(2U, met_by_line({-9, 1}, {9, 1}));  // through the centre
    EXPECT_EQ(1U, met_by_line({4, 5}, {4, 5}));   // a point on the circle
    EXPECT_EQ(0U, met_by_line({1, 5}, {1, 5}));
    CircleLineIntersection2D(out, circle, {{0, 4}, {9, 4}}, kPrecision);
    ASSERT_EQ(1U, out.size());
    ExpectPoint({5, 4}, out[0]);
    CircleLineIntersection2D(out, circle, {{7, -9}, {7, 9}}, kPrecision);
    EXPECT_TRUE(out.empty());
    ExpectPoint({6, 1}, CircleEdgePoint2D(circle, 0.0));
}

TEST(Turn, LeftIsMinusOne) {
    EXPECT_EQ(-1, static_cast<int>(VectorTurn2D({0, 0}, {1, 0}, {1, 1}, kPrecision)));
    EXPECT_EQ(1, static_cast<int>(VectorTurn2D({0, 0}, {1, 0}, {1, -1}, kPrecision)));
    EXPECT_EQ(0, static_cast<int>(VectorTurn2D({0, 0}, {2, 0}, {1, 0.9 * kH}, kPrecision)));
    // No threshold on the cross product: far points of a tiny cross product still turn.
    EXPECT_EQ(-1, static_cast<int>(VectorTurn2D({0, 0}, {0.01, 0}, {0.01, 0.01}, kPrecision)));
}

TEST(Turn, CollinearityDoesNotDependOnTheOrder) {  // VectorTurn2D 1
    PropertyRandom random;
    for (int k = 0; k < 5000; ++k) {
        const auto value = [&] { return 0.4 * kH * random.Integer(-6, 6); };
        const Point2D p{value(), value()};
        const Point2D q{value(), value()};
        const Point2D r{value(), value()};
        const auto collinear = [](const Point2D& o, const Point2D& a, const Point2D& b) {
            return VectorTurn2D(o, a, b, kPrecision) == TurnOrientation::kCollinear;
        };
        const Point2D* order[] = {&p, &q, &r};
        std::sort(std::begin(order), std::end(order));
        const bool expected = collinear(p, q, r);
        while (std::next_permutation(std::begin(order), std::end(order))) {
            EXPECT_EQ(expected, collinear(*order[0], *order[1], *order[2]));
        }
    }
}

TEST(Vector, AnglesAndAreas) {
    const double pi = std::acos(-1.0);
    EXPECT_DOUBLE_EQ(1.5 * pi, VectorAngle2D({1, 1}, {1, 0}));
    EXPECT_DOUBLE_EQ(1.5 * pi, VectorAngle2D({0, 0}, {0, 1}, {1, 0}));
    EXPECT_DOUBLE_EQ(0.5 * pi, VectorAbsAngle2D({0, 0}, {0, 1}, {1, 0}));
    EXPECT_EQ(0.0, VectorAngle2D({0, 0}, {1, -1e-300}));  // never a full turn
    const Point2D turned = VectorRotate2D({2, 1}, {1, 1}, 0.5 * pi);
    EXPECT_NEAR(1.0, turned.x, 1e-15);
    EXPECT_NEAR(2.0, turned.y, 1e-15);
    EXPECT_EQ(-12.0, TriArea2x2D({0, 0}, {0, 3}, {4, 0}));
    EXPECT_EQ(6.0, TriArea2D({0, 0}, {4, 0}, {0, 3}));
}

TEST(Extents, TouchingIsIntersectedButNoOverlap) {
    const Extents2D a{0, 2, 0, 1};
    EXPECT_TRUE(IsExtentsIntersected2D(a, {2 + 0.9 * kH, 3, 0, 1}, kPrecision));
    EXPECT_FALSE(IsExtentsIntersected2D(a, {2 + 1.1 * kH, 3, 0, 1}, kPrecision));
    EXPECT_FALSE(IsExtentsIntersected2D(a, {}, kPrecision));
    EXPECT_FALSE(ExtentsOverlap2D(a, {2, 3, 0, 1}, kPrecision));
    EXPECT_TRUE(ExtentsOverlap2D(a, {1, 3, 0, 1}, kPrecision));
    EXPECT_TRUE(ExtentsIntersection2D(a, {3, 4, 0, 1}).IsEmpty());
    EXPECT_EQ(1.0, WidthOf(ExtentsIntersection2D(a, {1, 4, 0, 1})));
    EXPECT_EQ(2.0, AspectOf(a));
    EXPECT_EQ(0.0, WidthOf({}));
    EXPECT_FALSE(lmw::IsDefined(AspectOf({0, 1, 1, 1})));
    ExpectPoint({2, 0}, CornerPointsOf(a)[1]);
    EXPECT_EQ(4.0, HeightOf(ExtentsOf(std::vector<Point2D>{{0, 1}, {}, {1, 5}})));
    EXPECT_TRUE(ExtentsOf(std::vector<Line2D>{{}}).IsEmpty());
}

TEST(Polygon, OpenAndClosedRingsAreTheSame) {
    std::vector<Point2D> ring{{1e6, 1e6}, {1e6 + 4, 1e6}, {1e6 + 4, 1e6 + 2}, {1e6, 1e6 + 2}};
    for (int closed = 0; closed < 2; ++closed) {
        EXPECT_TRUE(PolygonIsCCW2D(ring));
        EXPECT_EQ(8.0, PolygonArea2D(ring));
        ExpectPoint({1e6 + 2, 1e6 + 1}, PolygonCentreOfMass2D(ring));
        EXPECT_TRUE(PolygonContainsPoint2D(ring, {1e6 + 1, 1e6 + 1}, kPrecision));
        EXPECT_TRUE(PolygonContainsPoint2D(ring, {1e6 - 0.9 * kH, 1e6 + 1}, kPrecision));
        EXPECT_FALSE(PolygonContainsPoint2D(ring, {1e6 - 1.1 * kH, 1e6 + 1}, kPrecision));
        EXPECT_EQ(-1, PolygonSideOfVector2D(ring, {1e6, 1e6}, {1e6 + 1, 1e6}, kPrecision));
        EXPECT_EQ(1, PolygonSideOfVector2D(ring, {1e6 + 1, 1e6}, {1e6, 1e6}, kPrecision));
        EXPECT_EQ(0, PolygonSideOfVector2D(ring, {1e6, 1e6 + 1}, {1e6 + 1, 1e6 + 1}, kPrecision));
        ring.push_back(ring.front());
    }
    EXPECT_FALSE(PolygonCentreOfMass2D({{0, 0}, {1, 1}, {2, 2}}).IsValid());
    EXPECT_FALSE(PolygonContainsPoint2D({}, {0, 0}, kPrecision));
}

TEST(Primitives, AllocateNothing) {
    LMW_SKIP_UNCOUNTED_ALLOCATIONS();
    const auto allocations = lmw::test::AllocationsOf([] {
        Point2D p0;
        Point2D p1;
        fixed_vector<Point2D, 2> out;
        int sum = LineIntersection2D(p0, p1, {0, 0}, {4, 0}, {1, 0}, {3, 0}, kPrecision);
        sum += static_cast<int>(VectorTurn2D({0, 0}, {1, 0}, {1, 1}, kPrecision));
        CircleLineIntersection2D(out, {{0, 0}, 2}, {{-9, 0}, {9, 0}}, kPrecision);
        RoundClean(p0, RoundCache(ComputePrecisionOfExtents({0, sum + 1.0, 0, 1})));
    });
    EXPECT_EQ(0U, allocations);
}

}  // namespace
