#include "common/mesh/element_rule.h"

#include "common/mesh/shape_function.h"

#include "tests/mesh/elements.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <span>
#include <vector>

namespace {

using lmw::mesh::EvaluateShapes;
using lmw::mesh::IntegrationPoint;
using lmw::mesh::LineRule;
using lmw::mesh::QuadrilateralRule;
using lmw::mesh::ShapeAtPoint;
using lmw::mesh::TriangleRule;
using lmw::test::AllElements;
using lmw::test::Family;
using lmw::test::TestElement;

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

double Factorial(int n) {
    return std::tgamma(n + 1.0);
}

// The integral of r^i s^j over the reference element.
double ExactIntegral(Family family, int i, int j) {
    const auto symmetric = [](int power) { return power % 2 != 0 ? 0.0 : 2.0 / (power + 1); };
    switch (family) {
        case Family::line:
            return j == 0 ? symmetric(i) : 0.0;
        case Family::triangle:
            return Factorial(i) * Factorial(j) / Factorial(i + j + 2);
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
    for (const int count : {-1, 0, 5, 8, 100}) {
        EXPECT_TRUE(LineRule(count).empty());
        EXPECT_TRUE(TriangleRule(count).empty());
        EXPECT_TRUE(QuadrilateralRule(count).empty());
    }
    EXPECT_TRUE(LineRule(4).empty());
    EXPECT_TRUE(TriangleRule(4).empty());
    EXPECT_TRUE(QuadrilateralRule(1).empty());
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
