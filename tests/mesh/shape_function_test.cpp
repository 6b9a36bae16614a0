#include "common/mesh/shape_function.h"

#include "common/mesh/element_rule.h"

#include "tests/mesh/elements.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <array>
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

// 2. and 3., and completeness: a field given by its values at the nodes is reproduced with its
// gradient (the patch test of one element), a linear one in every subset, a quadratic one in the
// subsets with all mid-side nodes.
TEST(ShapeFunction, SumsToOneReproducesFieldsAndHasItsDifferencesAsDerivatives) {
    PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    for (const TestElement& element : AllElements()) {
        const bool line = element.family == Family::line;
        const bool triangle = element.family == Family::triangle;
        const bool full =
            element.Has(4) &&
            (line || (element.Has(5) && element.Has(6) && (triangle || element.Has(7))));
        const auto positions = NodePositions(element.family);
        for (int i = 0; i < 200; ++i) {
            const LocalPoint at = RandomPoint(random, element.family);
            SCOPED_TRACE(element.Name() + " at " + Exact(at.r) + " " + Exact(at.s));
            const auto n = Values(element, at.r, at.s);
            const auto d = Derivatives(element, at.r, at.s);
            ASSERT_NEAR(std::accumulate(n.begin(), n.end(), 0.0), 1.0, 1e-14);
            ASSERT_NEAR(std::accumulate(d.begin(), d.begin() + 8, 0.0), 0.0, 1e-14);
            ASSERT_NEAR(std::accumulate(d.begin() + 8, d.end(), 0.0), 0.0, 1e-14);
            const double gr = random.Uniform(-2, 2);
            const double gs = line ? 0.0 : random.Uniform(-2, 2);
            const double curved = full ? random.Uniform(-2, 2) : 0.0;
            const auto field = [&](const LocalPoint& p) {
                return 0.5 + gr * p.r + gs * p.s + curved * (p.r * p.r - p.r * p.s + p.s * p.s);
            };
            constexpr double h = 1.0 / 1024;  // quadratic: central differences are exact
            const auto right = Values(element, at.r + h, at.s);
            const auto left = Values(element, at.r - h, at.s);
            const auto above = Values(element, at.r, at.s + h);
            const auto below = Values(element, at.r, at.s - h);
            double value = 0.0;
            double dr = 0.0;
            double ds = 0.0;
            for (std::size_t node = 0; node < 8; ++node) {
                if (element.nodes[node] == 0) {
                    ASSERT_EQ(n[node], 0.0);
                    ASSERT_EQ(d[node], 0.0);
                    ASSERT_EQ(d[8 + node], 0.0);
                    continue;
                }
                ASSERT_NEAR(d[node], (right[node] - left[node]) / (2 * h), 1e-11) << node;
                ASSERT_NEAR(d[8 + node], (above[node] - below[node]) / (2 * h), 1e-11) << node;
                value += n[node] * field(positions[node]);
                dr += d[node] * field(positions[node]);
                ds += d[8 + node] * field(positions[node]);
            }
            ASSERT_NEAR(value, field(at), 5e-14);
            ASSERT_NEAR(dr, gr + curved * (2 * at.r - at.s), 5e-14);
            if (!line) {
                ASSERT_NEAR(ds, gs + curved * (2 * at.s - at.r), 5e-14);
            }
        }
    }
}

TEST(ShapeFunction, NumbersOfZeroOrLessAndSlotsThatAFamilyHasNotAreNoNodes) {
    using Nodes = std::array<std::int32_t, 8>;
    const Nodes same[][2] = {{{1, 2, 0, 0, 3, 7, 8, 9}, {1, 2, 0, 0, 3, 0, 0, 0}},
                             {{1, 2, 3, 0, 4, 5, 6, 7}, {1, 2, 3, 0, 4, 5, 6, 0}},
                             {{1, 2, 3, -4, 0, 0, 0, 0}, {1, 2, 3, 0, 0, 0, 0, 0}},
                             {{1, 2, 3, 4, -5, 6, -7, 8}, {1, 2, 3, 4, 0, 6, 0, 8}}};
    for (const auto& [crowded, plain] : same) {
        const TestElement a{Family::line, crowded};
        const TestElement b{Family::line, plain};
        EXPECT_EQ(Values(a, 0.25, 0.3), Values(b, 0.25, 0.3)) << a.Name();
        EXPECT_EQ(Derivatives(a, 0.25, 0.3), Derivatives(b, 0.25, 0.3)) << a.Name();
    }
    const TestElement line{Family::line, {1, 2, 0, 0, 3, 0, 0, 0}};
    EXPECT_EQ(Values(line, 0.0, 0.3), (std::array<double, 8>{0, 0, 0, 0, 1, 0, 0, 0}));
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
