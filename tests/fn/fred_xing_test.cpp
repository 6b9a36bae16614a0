#include "common/fn/fred_xing.h"

#include "common/math/fpu.h"

#include "tests/support/property_random.h"
#include "tests/support/shared_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <string>
#include <vector>

namespace {

using lmw::kUndefined;
using math::UnitSet;
using math::fn::flow::FredXing;
using math::fn::flow::FredXingFit;

TEST(FredXing, AgreesWithTheFormulaAndWithPublishedValues) {
    const FredXing curve(100.0, 2.0, 1.0, 0.4, 1e6);
    EXPECT_DOUBLE_EQ(curve(-100.0),
                     0.4 * (1.0 - std::log(1.0 + 100.0 / 3000.0) / std::log(1.0 + 1e6 / 3000.0)) /
                         std::log(std::numbers::e + 1.0));

    // Silt: Fredlund, Rahardjo, Fredlund (2012), Unsaturated Soil Mechanics in Engineering
    // Practice, Fig. 5.34; relative water contents computed from the formula with other software,
    // six digits.
    const FredXing silt(1.948, 2.708, 1.084, 1.0, 1e6);
    const std::pair<double, double> rows[] = {
        {1.0, 0.939979}, {2.0, 0.732235}, {10.0, 0.197563}, {100.0, 0.076423}, {1000.0, 0.044352}};
    for (const auto& [suction, expected] : rows) {
        EXPECT_NEAR(silt(-suction), expected, 5e-7) << suction;
    }
}

TEST(FredXing, IsSaturatedWithoutSuctionOrScale) {  // property 1
    const FredXing curve(10.0, 2.0, 0.7, 0.45, 1e6);
    for (const double pressure :
         {0.0, -0.0, 1e-300, 50.0, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(curve(pressure), 0.45);
    }
    for (const double a : {0.0, -3.0}) {
        EXPECT_EQ(FredXing(a, 2.0, 0.7, 0.45, 1e6)(-100.0), 0.45);
    }
}

TEST(FredXing, IsEmptyAtTheLimitAndNegativeBeyond) {  // property 2
    const FredXing curve(10.0, 2.0, 0.7, 0.45, 1e6);
    EXPECT_EQ(curve(-1e6), 0.0);
    EXPECT_LT(curve(-2e6), 0.0);
    EXPECT_EQ(curve.PressureLimits(), std::pair(-1e6, 0.0));
}

// Property 3: the undefined test comes before every other.
TEST(FredXing, UndefinedParametersGiveTheUndefinedValue) {
    for (int which = 0; which < 5; ++which) {
        double values[] = {10.0, 2.0, 0.7, 0.45, 1e6};
        values[which] = kUndefined;
        const FredXing curve(values[0], values[1], values[2], values[3], values[4]);
        EXPECT_EQ(curve(-100.0), kUndefined) << which;
        EXPECT_EQ(curve(5.0), kUndefined) << which;
        EXPECT_EQ(curve.IsValid(), which == 3) << which;  // by design: an undefined theta_s passes
    }
    EXPECT_EQ(FredXing()(-1.0), kUndefined);
    EXPECT_EQ(FredXing(0.0, 2.0, 0.7, kUndefined, 1e6)(1.0), kUndefined);
}

TEST(FredXing, ValidityNeedsPositiveParameters) {
    EXPECT_TRUE(FredXing(10.0, 2.0, 0.7, 0.45, -1.0).IsValid());
    EXPECT_FALSE(FredXing(0.0, 2.0, 0.7, 0.45, 1e6).IsValid());
    EXPECT_FALSE(FredXing(10.0, -2.0, 0.7, 0.45, 1e6).IsValid());
    EXPECT_FALSE(FredXing(10.0, 2.0, 0.0, 0.45, 1e6).IsValid());
    EXPECT_FALSE(FredXing(10.0, 2.0, 0.7, 0.0, 1e6).IsValid());
}

TEST(FredXing, StaysFiniteAndDoesNotTrapWhereThePowerOverflows) {
    const FredXing steep(1.0, 100.0, 1.0, 0.4, 1e6);
    const double before = steep(-1e3);  // 1e300
    const double behind = steep(-2e3);  // 2e330
    EXPECT_GT(before, behind);
    math::fpu::Exception::On(math::fpu::Exception::DefaultExceptionMask());
    const double trapping = steep(-2e3);
    math::fpu::Exception::Off();
    EXPECT_EQ(trapping, behind);
    EXPECT_NEAR(behind,
                0.4 * (1.0 - std::log(1.0 + 2e3 / 3e3) / std::log(1.0 + 1e6 / 3e3)) /
                    (100.0 * std::log(2e3)),
                1e-15);
}

TEST(FredXing, StandardLimitFollowsTheUnitOfPressure) {
    EXPECT_EQ(FredXing::CalcLimit(UnitSet::KiloPascal()), 1e6);
    EXPECT_EQ(FredXing::CalcLimit(UnitSet::Pascal()), 1e9);
    EXPECT_NEAR(FredXing::CalcLimit(UnitSet::PoundsPerSquareInch()), 145037.7377302, 1e-6);
    EXPECT_NEAR(FredXing::CalcLimit(UnitSet::PoundsPerSquareFoot()), 20885434.233, 1e-2);
    EXPECT_NEAR(FredXing::CalcLimit(UnitSet::MetresOfWater()), 101971.6213, 1e-4);
    EXPECT_NEAR(FredXing::CalcLimit(UnitSet::FeetOfWater()), 334552.5633, 1e-3);
}

constexpr double kKiloPascalPerCentimetre = 0.0980665;
constexpr std::array<double, 3> kNoStart = {0.0, 0.0, 0.0};

double SumOfSquares(const FredXing& curve, const std::vector<FPOINT>& points) {
    double sum = 0.0;
    for (const FPOINT& point : points) {
        sum += std::pow(curve(point.x) - point.y, 2);
    }
    return sum;
}

std::vector<FPOINT> FromHeads(const std::vector<double>& heads,
                              const std::vector<double>& contents) {
    std::vector<FPOINT> points;
    for (std::size_t k = 0; k < heads.size(); ++k) {
        points.push_back({-heads[k] * kKiloPascalPerCentimetre, contents[k], 0.0});
    }
    return points;
}

// UNSODA 2.0 (Nemes et al. 2001, J. Hydrology 251, 151-162), codes 1462, 3392 and 2362; the minima
// were found with other software from 80 starts each.
TEST(FredXingFit, ReachesTheMinimaOfThreeMeasuredSoils) {
    struct Soil {
        const char* name;
        double theta_s;
        std::vector<double> heads, contents;
        std::array<double, 3> minimum;
        double sum;
    };
    // clang-format off
    const Soil soils[] = {
        {"sand", 0.315,
         {20, 40, 60, 80, 100, 150, 300, 1000, 5000, 15000},
         {0.276, 0.105, 0.065, 0.050, 0.043, 0.033, 0.025, 0.016, 0.012, 0.009},
         {2.28085, 5.53094, 0.959172}, 3.12044e-6},
        {"silt loam", 0.38,
         {11, 27, 50, 83, 140, 316, 550, 880, 1500, 2450, 4000, 7500, 14700},
         {0.38, 0.37, 0.36, 0.35, 0.34, 0.32, 0.30, 0.28, 0.26, 0.24, 0.22, 0.20, 0.18},
         {23.7753, 0.827871, 0.548779}, 6.64229e-5},
        {"clay", 0.557,
         {0, 10, 30, 50, 100, 300, 500, 800, 1500, 3000, 5000, 8000, 15000},
         {.557, .555, .554, .552, .548, .542, .536, .528, .513, .486, .458, .448, .414},
         {102.102, 0.919700, 0.231755}, 1.00986e-4},
    };
    // clang-format on
    for (const Soil& soil : soils) {
        SCOPED_TRACE(soil.name);
        std::vector<FPOINT> points = FromHeads(soil.heads, soil.contents);
        double a = 1.0;
        double n = 1.0;
        double m = 1.0;
        EXPECT_EQ(
            FredXing::EstimateParam(soil.theta_s, points.data(), static_cast<int>(points.size()),
                                    UnitSet::KiloPascal(), a, n, m),
            FredXingFit::kConverged);
        EXPECT_NEAR(a / soil.minimum[0], 1.0, 2e-5);
        EXPECT_NEAR(n / soil.minimum[1], 1.0, 2e-5);
        EXPECT_NEAR(m / soil.minimum[2], 1.0, 2e-5);
        EXPECT_NEAR(SumOfSquares(FredXing(a, n, m, soil.theta_s, 1e6), points) / soil.sum, 1.0,
                    1e-5);
    }
}

TEST(FredXingFit, ReportsWhatItFound) {
    const FredXing truth(12.0, 1.8, 0.6, 0.42, 1e6);
    std::vector<FPOINT> points;
    for (int k = 0; k < 20; ++k) {
        const double suction = 0.5 * std::pow(1.6, k);
        points.push_back({-suction, truth(-suction) + (k % 2 == 0 ? 1e-3 : -1e-3), 0.0});
    }
    points.push_back({5.0, 0.41, 0.0});          // no suction: counts in the sum only
    points.push_back({-3.0, kUndefined, 0.0});   // skipped
    points.push_back({std::nan(""), 0.3, 0.0});  // skipped
    const FredXingFit fit = FredXing::Fit(0.42, points, UnitSet::KiloPascal(), kNoStart);
    ASSERT_EQ(fit.code, FredXingFit::kConverged);
    EXPECT_EQ(fit.points, 21);
    EXPECT_GT(fit.iterations, 3);
    points.resize(21);
    EXPECT_NEAR(fit.sum_of_squares / SumOfSquares(FredXing(fit.a, fit.n, fit.m, 0.42, 1e6), points),
                1.0, 1e-9);
    EXPECT_NEAR(fit.root_mean_square, std::sqrt(fit.sum_of_squares / 21.0), 1e-15);
}

// The covariance against its definition, with derivatives by finite differences.
TEST(FredXingFit, CovarianceIsThatOfTheLinearisedModel) {
    const std::array<double, 3> truth = {12.0, 1.8, 0.6};
    std::vector<FPOINT> points;
    for (int k = 0; k < 12; ++k) {
        const double suction = 0.7 * std::pow(2.0, k);
        points.push_back(
            {-suction,
             FredXing(truth[0], truth[1], truth[2], 0.4, 1e6)(-suction) + 1e-3 * std::sin(7.0 * k),
             0.0});
    }
    const FredXingFit fit = FredXing::Fit(0.4, points, UnitSet::KiloPascal(), kNoStart);
    ASSERT_EQ(fit.code, FredXingFit::kConverged);
    const std::array<double, 3> found = {fit.a, fit.n, fit.m};
    std::array<std::array<double, 3>, 3> normal{};
    for (const FPOINT& point : points) {
        std::array<double, 3> row{};
        for (std::size_t k = 0; k < 3; ++k) {
            auto up = found;
            auto down = found;
            up[k] *= 1.0 + 1e-5;
            down[k] *= 1.0 - 1e-5;
            row[k] = (FredXing(up[0], up[1], up[2], 0.4, 1e6)(point.x) -
                      FredXing(down[0], down[1], down[2], 0.4, 1e6)(point.x)) /
                     (2e-5 * found[k]);
        }
        for (std::size_t i = 0; i < 3; ++i) {
            for (std::size_t j = 0; j < 3; ++j) {
                normal[i][j] += row[i] * row[j];
            }
        }
    }
    // covariance * normal = s^2 * identity
    const double variance = fit.sum_of_squares / 9.0;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            double product = 0.0;
            double size = 0.0;
            for (std::size_t k = 0; k < 3; ++k) {
                product += fit.covariance[3 * i + k] * normal[k][j];
                size += std::fabs(fit.covariance[3 * i + k] * normal[k][j]);
            }
            EXPECT_NEAR(product, i == j ? variance : 0.0, 1e-5 * size) << i << j;
        }
    }
}

// Property 1, also from starts outside the bounds.
TEST(FredXingFit, IsNeverWorseThanTheCallersStart) {
    lmw::test::PropertyRandom random;
    for (int round = 0; round < 300; ++round) {
        std::vector<FPOINT> points;
        for (int k = random.Integer(3, 12); k > 0; --k) {
            points.push_back({-random.LogUniform(0.01, 1e6), random.Uniform(0.0, 0.6), 0.0});
        }
        const std::array<double, 3> start = {random.LogUniform(1e-6, 1e7),
                                             random.LogUniform(0.01, 300.0),
                                             random.LogUniform(0.005, 100.0)};
        const FredXingFit fit = FredXing::Fit(0.5, points, UnitSet::KiloPascal(), start);
        const auto sum = [&](double a, double n, double m) {
            return SumOfSquares(FredXing(a, n, m, 0.5, 1e6), points);
        };
        ASSERT_LE(sum(fit.a, fit.n, fit.m), sum(start[0], start[1], start[2]) * (1.0 + 1e-9));
    }
}

TEST(FredXingFit, DoesNotDependOnTheUnitOfPressure) {  // property 3
    const FredXing truth(30.0, 1.2, 0.9, 0.5, 1e6);
    std::vector<FPOINT> in_kilopascals;
    std::vector<FPOINT> in_psf;
    const UnitSet psf = UnitSet::PoundsPerSquareFoot();
    for (int k = 0; k < 15; ++k) {
        const double suction = std::pow(2.0, k);
        const double content = truth(-suction) + 0.002 * std::cos(5.0 * k);
        in_kilopascals.push_back({-suction, content, 0.0});
        in_psf.push_back({psf.FromSi(math::Quantity::kPressure, -suction * 1000.0), content, 0.0});
    }
    const FredXingFit first = FredXing::Fit(0.5, in_kilopascals, UnitSet::KiloPascal(), kNoStart);
    const FredXingFit second = FredXing::Fit(0.5, in_psf, psf, kNoStart);
    EXPECT_NEAR(psf.ToSi(math::Quantity::kPressure, second.a) / (1000.0 * first.a), 1.0, 1e-6);
    EXPECT_NEAR(second.n / first.n, 1.0, 1e-6);
    EXPECT_NEAR(second.m / first.m, 1.0, 1e-6);
}

TEST(FredXingFit, BadInputLeavesTheParametersAlone) {
    std::vector<FPOINT> points = FromHeads({10, 100, 1000}, {0.4, 0.3, 0.1});
    const auto code = [](double theta_s, std::vector<FPOINT> some) {
        double a = 1.0;
        double n = 2.0;
        double m = 3.0;
        const int result = FredXing::EstimateParam(
            theta_s, some.data(), static_cast<int>(some.size()), UnitSet::KiloPascal(), a, n, m);
        EXPECT_EQ(result == FredXingFit::kBadInput, a == 1.0 && n == 2.0 && m == 3.0);
        return result;
    };
    EXPECT_NE(code(0.4, points), FredXingFit::kBadInput);
    for (const double theta_s : {0.0, -0.1, std::nan(""), kUndefined, HUGE_VAL}) {
        EXPECT_EQ(code(theta_s, points), FredXingFit::kBadInput);
    }
    EXPECT_EQ(code(0.4, {}), FredXingFit::kBadInput);
    points[1].x = 0.0;  // two points with suction are left
    EXPECT_EQ(code(0.4, points), FredXingFit::kBadInput);
    double a = 1.0;
    EXPECT_EQ(FredXing::EstimateParam(0.4, nullptr, 3, UnitSet::KiloPascal(), a, a, a),
              FredXingFit::kBadInput);
}

TEST(FredXingFit, SaysWhenTheDataDoNotDetermineTheParameters) {
    // UNSODA 2.0, code 1115: no residual part was measured, so the scale runs away.
    const auto points = FromHeads(
        {0, 10, 20, 30, 40, 60, 90, 180, 405, 810, 1630},
        {0.4477, 0.384, 0.383, 0.3803, 0.3749, 0.3693, 0.3613, 0.347, 0.3283, 0.3109, 0.2969});
    // A step between two points, however steep.
    const auto step = FromHeads({0.01, 10, 99, 101, 1000, 1e6}, {0.4, 0.4, 0.4, 0.1, 0.09, 0.05});
    math::fpu::Exception::On(math::fpu::Exception::DefaultExceptionMask());  // nothing traps
    const FredXingFit fit = FredXing::Fit(0.4477, points, UnitSet::KiloPascal(), kNoStart);
    const FredXingFit steep = FredXing::Fit(0.4, step, UnitSet::KiloPascal(), kNoStart);
    math::fpu::Exception::Off();
    EXPECT_EQ(fit.code, FredXingFit::kAtBound);
    EXPECT_EQ(fit.a, 1e5);
    EXPECT_EQ(fit.covariance[0], kUndefined);
    EXPECT_EQ(steep.code, FredXingFit::kAtBound);
    EXPECT_EQ(steep.n, 100.0);
    // One suction alone: all parameters run to bounds, where the sum is flat.
    const std::vector<FPOINT> same(4, FPOINT{-1.0, 0.4});
    EXPECT_EQ(FredXing::Fit(0.4, same, UnitSet::KiloPascal(), kNoStart).code,
              FredXingFit::kAtBound);
    // Two suctions leave a valley of equally good curves, wherever they are.
    lmw::test::PropertyRandom random;
    for (int repeat = 0; repeat < 200; ++repeat) {
        const double suctions[] = {random.LogUniform(0.1, 1e4), random.LogUniform(0.1, 1e4)};
        std::vector<FPOINT> two;
        for (int k = 0; k < 5; ++k) {
            two.push_back({-suctions[k % 2], random.Uniform(0.05, 0.41)});
        }
        const FredXingFit valley = FredXing::Fit(0.42, two, UnitSet::KiloPascal(), kNoStart);
        EXPECT_NE(valley.code, FredXingFit::kConverged);
        EXPECT_EQ(valley.covariance[0], kUndefined);
    }
}

// Reference fits of measured drying curves, computed with other software by a multi-start search.
TEST(FredXingFit, ReachesTheReferenceOnMeasuredCurves) {
    const auto folder = lmw::test::SharedData("soil-retention");
    LMW_SKIP_WITHOUT(folder);
    std::map<std::string, std::vector<FPOINT>> curves;
    for (const auto& row : lmw::test::ReadCsv(folder / "unsoda_lab_drying_retention.csv")) {
        curves[row[0]].push_back(
            {-std::stod(row[1]) * kKiloPascalPerCentimetre, std::stod(row[2]), 0.0});
    }
    int determined = 0;
    int reached = 0;
    for (const auto& row : lmw::test::ReadCsv(folder / "fx_reference_fits.csv")) {
        const double theta_s = std::stod(row[2]);
        const double n = std::stod(row[4]);
        const double m = std::stod(row[5]);
        const double reference = std::stod(row[6]);
        const auto& points = curves.at(row[0]);
        const FredXingFit fit = FredXing::Fit(theta_s, points, UnitSet::KiloPascal(), kNoStart);
        ASSERT_NE(fit.code, FredXingFit::kBadInput) << row[0];
        const double a = std::stod(row[3]);
        if (a > 8e6 || n > 49.0 || m > 24.0 || n < 0.051 || m < 0.021) {
            continue;  // the reference itself runs to a bound of its search
        }
        ++determined;
        reached += fit.sum_of_squares <= reference * 1.001 ? 1 : 0;
    }
    EXPECT_GE(reached, 0.99 * determined) << reached << " of " << determined;
}

}  // namespace
