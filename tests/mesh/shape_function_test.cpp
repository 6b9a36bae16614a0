#include "common/mesh/shape_function.h"

#include "common/mesh/element_rule.h"

#include "tests/support/allocation_counter.h"
#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>
#include <span>
#include <string>
#include <vector>

namespace {

using namespace lmw::mesh;
using namespace lmw::test;

enum class Family { line, triangle, quadrilateral };

// One element kind: its node numbers, 0 for absent ones.
struct TestElement {
    Family family;
    std::array<std::int32_t, 8> nodes;
    [[nodiscard]] bool Has(int node) const { return nodes[static_cast<std::size_t>(node)] > 0; }
    [[nodiscard]] std::string Name() const {
        std::string name("nodes");
        for (int node = 0; node < 8; ++node) {
            name.append(1, ' ').append(1, Has(node) ? static_cast<char>('0' + node) : '-');
        }
        return name;
    }
};

struct LocalPoint {
    double r;
    double s;
};

// The local positions of the 8 slots (slots a family has not: 0).
std::array<LocalPoint, 8> NodePositions(Family family) {
    switch (family) {
        case Family::line:
            return {{{1, 0}, {-1, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}}};
        case Family::triangle:
            return {{{0, 0}, {1, 0}, {0, 1}, {0, 0}, {0.5, 0}, {0.5, 0.5}, {0, 0.5}, {0, 0}}};
        default:
            return {{{1, 1}, {-1, 1}, {-1, -1}, {1, -1}, {0, 1}, {-1, 0}, {0, -1}, {1, 0}}};
    }
}

// All 26: 16 quadrilaterals, 8 triangles, 2 lines.
std::vector<TestElement> AllElements() {
    std::vector<TestElement> elements;
    const auto add = [&](Family family, int corners, int midside_slots) {
        for (int subset = 0; subset < (1 << midside_slots); ++subset) {
            TestElement element{family, {}};
            for (int node = 0; node < corners; ++node) {
                element.nodes[static_cast<std::size_t>(node)] = 101 + node;
            }
            for (int k = 0; k < midside_slots; ++k) {
                element.nodes[static_cast<std::size_t>(4 + k)] =
                    (subset >> k) % 2 != 0 ? 105 + k : 0;
            }
            elements.push_back(element);
        }
    };
    add(Family::quadrilateral, 4, 4);
    add(Family::triangle, 3, 3);
    add(Family::line, 2, 1);
    return elements;
}

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
    LMW_SKIP_UNCOUNTED_ALLOCATIONS();
    const TestElement element{Family::quadrilateral, {1, 2, 3, 4, 5, 0, 7, 8}};
    std::array<double, 36> out{};
    ShapeAtPoint shapes[9];
    const double corners[] = {2, 2, 0, 2, 0, 0, 2, 0};
    EXPECT_EQ(AllocationsOf([&] {
                  Shape_Function(out.data(), 0.1, 0.2, element.nodes.data());
                  Shape_Derivative(out.data(), 0.1, 0.2, element.nodes.data());
                  Gauss_Data(out.data(), 9);
                  EvaluateShapes(shapes, QuadrilateralRule(9), element.nodes.data());
                  iGlobal_To_Local_Coords(out[0], out[1], 0.5, 0.5, corners, 4);
              }),
              0U);
}

struct Rule {
    const char* name;
    Family family;
    std::span<const IntegrationPoint> points;
    std::size_t count;
    int degree;  // total for a triangle, in each of r and s for a quadrilateral
};

std::vector<Rule> AllRules() {
    return {
        {"line 2", Family::line, LineRule(2), 2, 3},
        {"line 3", Family::line, LineRule(3), 3, 5},
        {"triangle 1", Family::triangle, TriangleRule(1), 1, 1},
        {"triangle 3", Family::triangle, TriangleRule(3), 3, 2},
        {"triangle 6", Family::triangle, TriangleRule(6), 6, 4},
        {"triangle 7", Family::triangle, TriangleRule(7), 7, 5},
        {"quadrilateral 4", Family::quadrilateral, QuadrilateralRule(4), 4, 3},
        {"quadrilateral 9", Family::quadrilateral, QuadrilateralRule(9), 9, 5},
    };
}

// The integral of r^i s^j over the reference element.
double ExactIntegral(Family family, int i, int j) {
    const auto symmetric = [](int power) { return power % 2 != 0 ? 0.0 : 2.0 / (power + 1); };
    switch (family) {
        case Family::line:
            return j == 0 ? symmetric(i) : 0.0;
        case Family::triangle:
            return std::tgamma(i + 1.0) * std::tgamma(j + 1.0) / std::tgamma(i + j + 3.0);
        default:
            return symmetric(i) * symmetric(j);
    }
}

bool IsWithinDegree(const Rule& rule, int i, int j) {
    switch (rule.family) {
        case Family::line:
            return j == 0 && i <= rule.degree;
        case Family::triangle:
            return i + j <= rule.degree;
        default:
            return i <= rule.degree && j <= rule.degree;
    }
}

TEST(ElementRule, LiesInsideAndIntegratesEveryMonomialUpToItsDegreeAndNotAllBeyond) {
    for (const Rule& rule : AllRules()) {
        SCOPED_TRACE(rule.name);
        ASSERT_EQ(rule.points.size(), rule.count);
        for (const IntegrationPoint& p : rule.points) {
            EXPECT_TRUE(p.w1 > 0.0 && p.w2 > 0.0);
            EXPECT_TRUE(rule.family == Family::triangle
                            ? p.r > 0.0 && p.s > 0.0 && p.r + p.s < 1.0
                            : std::fabs(p.r) < 1.0 && std::fabs(p.s) < 1.0);
        }
        double worst_beyond = 0.0;
        for (int i = 0; i <= rule.degree + 1; ++i) {
            for (int j = 0; j <= rule.degree + 1; ++j) {
                double sum = 0.0;
                for (const IntegrationPoint& p : rule.points) {
                    sum += p.w1 * p.w2 * std::pow(p.r, i) * std::pow(p.s, j);
                }
                const double error = std::fabs(sum - ExactIntegral(rule.family, i, j));
                if (IsWithinDegree(rule, i, j)) {
                    EXPECT_LT(error, 1e-15) << "r^" << i << " s^" << j;
                } else {
                    worst_beyond = std::fmax(worst_beyond, error);
                }
            }
        }
        EXPECT_GT(worst_beyond, 1e-5) << "the degree is higher than documented";
    }
}

TEST(ElementRule, HasNoRuleOfOtherCounts) {
    for (const int count : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 100}) {
        EXPECT_EQ(LineRule(count).empty(), count != 2 && count != 3);
        EXPECT_EQ(TriangleRule(count).empty(),
                  count != 1 && count != 3 && count != 6 && count != 7);
        EXPECT_EQ(QuadrilateralRule(count).empty(), count != 4 && count != 9);
    }
}

TEST(EvaluateShapes, GivesTheBitsOfTheFlatFunctionsForEverySubsetAndWritesNoMore) {
    const auto rule = QuadrilateralRule(9);
    for (const TestElement& element : AllElements()) {
        std::vector<ShapeAtPoint> shapes(rule.size() + 1, ShapeAtPoint{{-9.0}, {-9.0}, {-9.0}});
        EvaluateShapes(shapes, rule, element.nodes.data());
        for (std::size_t i = 0; i < rule.size(); ++i) {
            double flat[24];
            Shape_Function(flat, rule[i].r, rule[i].s, element.nodes.data());
            Shape_Derivative(flat + 8, rule[i].r, rule[i].s, element.nodes.data());
            EXPECT_EQ(std::memcmp(flat, &shapes[i], sizeof flat), 0) << element.Name();
        }
        EXPECT_EQ(shapes[9].n[0], -9.0);
        shapes[2].n[0] = -9.0;
        EvaluateShapes(std::span(shapes).first(2), rule, element.nodes.data());
        EXPECT_EQ(shapes[2].n[0], -9.0) << "the shorter of rule and result";
    }
}

}  // namespace
