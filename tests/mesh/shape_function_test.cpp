#include "common/mesh/shape_function.h"

#include "common/mesh/element_rule.h"

#include "tests/mesh/elements.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>

namespace {

using lmw::test::AllElements;
using lmw::test::Exact;
using lmw::test::Family;
using lmw::test::LocalPoint;
using lmw::test::NodePositions;
using lmw::test::PropertyRandom;
using lmw::test::TestElement;

std::array<double, 8> Values(const TestElement& element, double r, double s) {
    std::array<double, 8> n;
    n.fill(std::numeric_limits<double>::quiet_NaN());
    Shape_Function(n.data(), r, s, element.nodes.data());
    return n;
}

std::array<double, 16> Derivatives(const TestElement& element, double r, double s) {
    std::array<double, 16> d;
    d.fill(std::numeric_limits<double>::quiet_NaN());
    Shape_Derivative(d.data(), r, s, element.nodes.data());
    return d;
}

// A local point in and around the element.
LocalPoint RandomPoint(PropertyRandom& random, Family family) {
    return {random.Uniform(-1.2, 1.2), family == Family::line ? 0.0 : random.Uniform(-1.2, 1.2)};
}

// 1. and 3., exactly: every factor at a node is 0, 1/2, 1 or 2.
TEST(ShapeFunction, IsOneAtItsOwnNodeAndZeroAtTheOthersForEverySubset) {
    ASSERT_EQ(AllElements().size(), 26U);
    for (const TestElement& element : AllElements()) {
        const auto positions = NodePositions(element.family);
        for (int node = 0; node < 8; ++node) {
            if (!element.Has(node)) {
                continue;
            }
            SCOPED_TRACE(element.Name() + " at node " + std::to_string(node));
            const LocalPoint at = positions[static_cast<std::size_t>(node)];
            std::array<double, 8> expected{};
            expected[static_cast<std::size_t>(node)] = 1.0;
            EXPECT_EQ(Values(element, at.r, at.s), expected);
        }
    }
}

// 2. and 3.
TEST(ShapeFunction, ValuesSumToOneDerivativesToZeroAndAbsentNodesHaveNone) {
    PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    for (const TestElement& element : AllElements()) {
        for (int i = 0; i < 200; ++i) {
            const LocalPoint at = RandomPoint(random, element.family);
            SCOPED_TRACE(element.Name() + " at " + Exact(at.r) + " " + Exact(at.s));
            const auto n = Values(element, at.r, at.s);
            const auto d = Derivatives(element, at.r, at.s);
            ASSERT_NEAR(std::accumulate(n.begin(), n.end(), 0.0), 1.0, 1e-14);
            ASSERT_NEAR(std::accumulate(d.begin(), d.begin() + 8, 0.0), 0.0, 1e-14);
            ASSERT_NEAR(std::accumulate(d.begin() + 8, d.end(), 0.0), 0.0, 1e-14);
            for (std::size_t node = 0; node < 8; ++node) {
                if (element.nodes[node] == 0) {
                    ASSERT_EQ(n[node], 0.0);
                    ASSERT_EQ(d[node], 0.0);
                    ASSERT_EQ(d[8 + node], 0.0);
                }
            }
        }
    }
}

// Completeness: a linear field given by its values at the nodes is reproduced with its gradient
// (the patch test of one element), for every subset.
TEST(ShapeFunction, ReproducesLinearFieldsAndTheirGradients) {
    PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    for (const TestElement& element : AllElements()) {
        const auto positions = NodePositions(element.family);
        const double c = random.Uniform(-2, 2);
        const double gr = random.Uniform(-2, 2);
        const double gs = element.family == Family::line ? 0.0 : random.Uniform(-2, 2);
        for (int i = 0; i < 50; ++i) {
            const LocalPoint at = RandomPoint(random, element.family);
            const auto n = Values(element, at.r, at.s);
            const auto d = Derivatives(element, at.r, at.s);
            double value = 0.0;
            double dr = 0.0;
            double ds = 0.0;
            for (std::size_t node = 0; node < 8; ++node) {
                const double field = c + gr * positions[node].r + gs * positions[node].s;
                value += n[node] * field;
                dr += d[node] * field;
                ds += d[8 + node] * field;
            }
            SCOPED_TRACE(element.Name() + " at " + Exact(at.r) + " " + Exact(at.s));
            ASSERT_NEAR(value, c + gr * at.r + gs * at.s, 2e-14);
            ASSERT_NEAR(dr, gr, 2e-14);
            ASSERT_NEAR(ds, gs, 2e-14);
        }
    }
}

// The full quadratic elements reproduce every quadratic field.
TEST(ShapeFunction, FullQuadraticElementsReproduceQuadraticFields) {
    PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    for (const TestElement& element : AllElements()) {
        const int midside = element.family == Family::quadrilateral ? 4
                            : element.family == Family::triangle    ? 3
                                                                    : 1;
        int present = 0;
        for (int node = 4; node < 8; ++node) {
            present += element.Has(node) ? 1 : 0;
        }
        if (present != midside) {
            continue;
        }
        const auto positions = NodePositions(element.family);
        const auto field = [](double r, double s) {
            return 1.0 - 2.0 * r + 0.5 * s + 3.0 * r * r - r * s + 0.25 * s * s;
        };
        for (int i = 0; i < 50; ++i) {
            const LocalPoint at = RandomPoint(random, element.family);
            const auto n = Values(element, at.r, at.s);
            double value = 0.0;
            for (std::size_t node = 0; node < 8; ++node) {
                value += n[node] * field(positions[node].r, positions[node].s);
            }
            ASSERT_NEAR(value, field(at.r, at.s), 5e-14) << element.Name();
        }
    }
}

TEST(ShapeDerivative, AgreesWithDifferencesOfTheValues) {
    PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    constexpr double h =
        1.0 / 1024;  // values are quadratic in r and in s: central differences are exact
    for (const TestElement& element : AllElements()) {
        for (int i = 0; i < 50; ++i) {
            const LocalPoint at = RandomPoint(random, element.family);
            const auto d = Derivatives(element, at.r, at.s);
            const auto right = Values(element, at.r + h, at.s);
            const auto left = Values(element, at.r - h, at.s);
            const auto above = Values(element, at.r, at.s + h);
            const auto below = Values(element, at.r, at.s - h);
            for (std::size_t node = 0; node < 8; ++node) {
                SCOPED_TRACE(element.Name() + " node " + std::to_string(node));
                ASSERT_NEAR(d[node], (right[node] - left[node]) / (2 * h), 1e-11);
                ASSERT_NEAR(d[8 + node], (above[node] - below[node]) / (2 * h), 1e-11);
            }
        }
    }
}

TEST(ShapeFunction, NodesInSlotsThatAFamilyHasNotChangeNothing) {
    const TestElement line{Family::line, {1, 2, 0, 0, 3, 0, 0, 0}};
    const TestElement crowded_line{Family::line, {1, 2, 0, 0, 3, 7, 8, 9}};
    EXPECT_EQ(Values(line, 0.0, 0.3), (std::array<double, 8>{0, 0, 0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(Values(crowded_line, 0.25, 0.3), Values(line, 0.25, 0.3));
    EXPECT_EQ(Derivatives(crowded_line, 0.25, 0.3), Derivatives(line, 0.25, 0.3));
    const TestElement triangle{Family::triangle, {1, 2, 3, 0, 4, 5, 6, 0}};
    const TestElement crowded_triangle{Family::triangle, {1, 2, 3, 0, 4, 5, 6, 7}};
    EXPECT_EQ(Values(crowded_triangle, 0.25, 0.3), Values(triangle, 0.25, 0.3));
    EXPECT_EQ(Derivatives(crowded_triangle, 0.25, 0.3), Derivatives(triangle, 0.25, 0.3));
}

TEST(ShapeFunction, OnlyNumbersGreaterThanZeroAreNodes) {
    const TestElement negative{Family::quadrilateral, {1, 2, 3, 4, -5, 6, -7, 8}};
    const TestElement zero{Family::quadrilateral, {1, 2, 3, 4, 0, 6, 0, 8}};
    EXPECT_EQ(Values(negative, 0.25, 0.3), Values(zero, 0.25, 0.3));
    const TestElement triangle{Family::triangle, {1, 2, 3, 0, 0, 0, 0, 0}};
    const TestElement negative_corner{Family::triangle, {1, 2, 3, -4, 0, 0, 0, 0}};
    EXPECT_EQ(Values(negative_corner, 0.25, 0.3), Values(triangle, 0.25, 0.3));
}

TEST(GaussData, HoldsThePrescribedTables) {
    constexpr double t = 1.0 / 3.0;
    constexpr double x = 1.0 / 6.0;
    constexpr double y = 2.0 / 3.0;
    constexpr double g = 0.5773502691896258;
    constexpr double a = 0.7745966692414834;
    constexpr double f = 5.0 / 9.0;
    constexpr double e = 8.0 / 9.0;
    const std::vector<std::vector<double>> tables{
        {t, t, 1, 0.5},
        {x, x, t, 0.5, y, x, t, 0.5, x, y, t, 0.5},
        {g, g, 1, 1, -g, g, 1, 1, -g, -g, 1, 1, g, -g, 1, 1},
        {a, a, f,  f, -a, a, f, f,  -a, -a, f, f, a, -a, f, f, 0, a,
         e, f, -a, 0, f,  e, 0, -a, e,  f,  a, 0, f, e,  0, 0, e, e},
    };
    for (const std::vector<double>& table : tables) {
        std::vector<double> points(table.size() + 1, -99.0);
        Gauss_Data(points.data(), static_cast<int>(table.size() / 4));
        EXPECT_EQ(points.back(), -99.0);
        points.pop_back();
        for (std::size_t i = 0; i < table.size(); ++i) {
            EXPECT_DOUBLE_EQ(points[i], table[i]) << table.size() / 4 << " points, double " << i;
        }
    }
    // The rules that Gauss_Data does not offer do not leak into it.
    for (const int count : {-1, 0, 2, 5, 6, 7, 8, 10, 100}) {
        double points[40] = {-99.0};
        Gauss_Data(points, count);
        EXPECT_EQ(points[0], -99.0) << count;
    }
}

TEST(ElementMathematics, AllocatesNothing) {
    if (!lmw::test::CountsLibraryAllocations()) {
        GTEST_SKIP() << "allocations inside the library are not counted on this platform";
    }
    const TestElement element{Family::quadrilateral, {1, 2, 3, 4, 5, 0, 7, 8}};
    std::array<double, 36> out{};
    lmw::mesh::ShapeAtPoint shapes[9];
    const double corners[] = {2, 2, 0, 2, 0, 0, 2, 0};
    EXPECT_EQ(lmw::test::AllocationsOf([&] {
                  Shape_Function(out.data(), 0.1, 0.2, element.nodes.data());
                  Shape_Derivative(out.data(), 0.1, 0.2, element.nodes.data());
                  Gauss_Data(out.data(), 9);
                  lmw::mesh::EvaluateShapes(shapes, lmw::mesh::QuadrilateralRule(9),
                                            element.nodes.data());
                  iGlobal_To_Local_Coords(out[0], out[1], 0.5, 0.5, corners, 4);
              }),
              0U);
}

}  // namespace
