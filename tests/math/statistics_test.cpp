#include "common/math/statistics.h"

#include "common/undefined.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <vector>

namespace {

using namespace lmw::test;
using math::StatisticsAccumulator;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::vector<std::uint32_t> Bins(const StatisticsAccumulator& accumulator) {
    return {accumulator.BinCounts().begin(), accumulator.BinCounts().end()};
}

TEST(StatisticsAccumulator, IsUndefinedWhileEmptyAndAfterReset) {
    const std::vector<double> edges{0.0, 10.0};
    StatisticsAccumulator a(edges);
    for (const double x : {-7.0, 3.0}) {
        EXPECT_EQ(a.Count(), 0);
        for (const double value :
             {a.Mean(), a.Variance(), a.StandardDeviation(), a.Min(), a.Max()}) {
            EXPECT_EQ(value, lmw::kUndefined);
        }
        EXPECT_EQ(Bins(a), (std::vector<std::uint32_t>{0, 0, 0}));
        a.Accumulate(x);
        EXPECT_EQ(a.Mean(), x);
        EXPECT_EQ(a.Variance(), 0.0);
        EXPECT_EQ(a.StandardDeviation(), 0.0);
        EXPECT_EQ(a.Max(), x);
        a.Reset();
    }
}

TEST(StatisticsAccumulator, CountsInfiniteValuesAndAnEdgeInTheBinAboveIt) {
    const std::vector<double> edges{0.0};
    StatisticsAccumulator a(edges);
    a.Accumulate(1.0);
    a.Accumulate(0.0);
    a.Accumulate(-kInfinity);
    EXPECT_EQ(a.Min(), -kInfinity);
    EXPECT_EQ(Bins(a), (std::vector<std::uint32_t>{1, 2}));
}

TEST(StatisticsAccumulator, RefusesEdgesThatDoNotAscend) {
    for (const std::vector<double>& edges :
         {std::vector<double>{1.0, 0.0}, {0.0, 0.0}, {0.0, kNan}, {kNan}, {0.0, 1.0, 0.5}}) {
        EXPECT_DEBUG_DEATH(
            {
                StatisticsAccumulator a(edges);
                EXPECT_TRUE(a.BinEdges().empty());
                EXPECT_TRUE(a.BinCounts().empty());
                a.Accumulate(0.5);
                EXPECT_EQ(a.Count(), 1);
            },
            "bin edges must ascend");
    }
    const std::vector<double> good{-kInfinity, 0.0, kInfinity};
    EXPECT_EQ(StatisticsAccumulator(good).BinCounts().size(), 4U);
}

// A large mean beside a small deviation, where a sum of squares would lose everything.
TEST(StatisticsAccumulator, KeepsTheVarianceOfASmallDeviationBesideALargeMean) {
    StatisticsAccumulator a;
    for (int i = 0; i < 3000; ++i) {
        a.Accumulate(1e9 + (i % 3) - 1);
    }
    EXPECT_NEAR(a.Mean(), 1e9, 1e-5);
    EXPECT_NEAR(a.Variance(), 2000.0 / 2999.0, 1e-6);
}

// NaN and the undefined value do not count. A range is the bits of its values one by one; parts are
// the whole up to rounding.
TEST(StatisticsAccumulator, RangesAndMergedPartsAreTheWholeAndAgreeWithPlainSums) {
    PropertyRandom random;
    const std::vector<double> edges{-100.0, -1.0, 0.0, 2.0, 500.0};
    for (int round = 0; round < 300; ++round) {
        const double shift = random.SignedLogUniform(1e-3, 1e6);
        StatisticsAccumulator whole(edges);
        StatisticsAccumulator range(edges);
        StatisticsAccumulator merged(edges);
        std::vector<double> values;
        for (int part = random.Integer(1, 5); part > 0; --part) {
            StatisticsAccumulator piece(edges);
            std::vector<double> all;
            for (int i = random.Integer(0, 60); i > 0; --i) {
                all.push_back(random.Chance(0.05)   ? kNan
                              : random.Chance(0.05) ? lmw::kUndefined
                                                    : shift + random.SignedLogUniform(1e-3, 1e3));
                whole.Accumulate(all.back());
                piece.Accumulate(all.back());
                if (all.back() < lmw::kUndefined) {
                    values.push_back(all.back());
                }
            }
            range.Accumulate(all);
            ASSERT_TRUE(merged.Merge(piece));
        }
        ASSERT_EQ(range.Count(), whole.Count());
        ASSERT_EQ(Bins(range), Bins(whole));
        ASSERT_EQ(range.Mean(), whole.Mean());
        ASSERT_EQ(range.Variance(), whole.Variance());
        ASSERT_EQ(merged.Count(), whole.Count());
        ASSERT_EQ(whole.Count(), static_cast<int>(values.size()));
        ASSERT_EQ(Bins(merged), Bins(whole));
        std::vector<std::uint32_t> bins(edges.size() + 1);
        for (const double x : values) {
            ++bins[static_cast<std::size_t>(
                std::count_if(edges.begin(), edges.end(), [x](double edge) { return edge <= x; }))];
        }
        ASSERT_EQ(Bins(whole), bins);
        if (values.empty()) {
            continue;
        }
        const double n = static_cast<double>(values.size());
        const double mean = std::accumulate(values.begin(), values.end(), 0.0) / n;
        double m2 = 0.0;
        for (const double x : values) {
            m2 += (x - mean) * (x - mean);
        }
        for (const StatisticsAccumulator& got : {whole, range, merged}) {
            ASSERT_EQ(got.Min(), *std::min_element(values.begin(), values.end()));
            ASSERT_EQ(got.Max(), *std::max_element(values.begin(), values.end()));
            ASSERT_NEAR(got.Mean(), mean, 1e-12 * (std::fabs(shift) + 1e3)) << Exact(shift);
            if (values.size() > 1) {
                const double variance = m2 / (n - 1.0);
                ASSERT_NEAR(got.Variance(), variance, 1e-8 * variance) << Exact(shift);
                ASSERT_DOUBLE_EQ(got.StandardDeviation(), std::sqrt(got.Variance()));
            }
        }
    }
}

TEST(StatisticsAccumulator, MergesWithItselfAndRefusesOtherEdges) {
    const std::vector<double> edges{0.0};
    StatisticsAccumulator a(edges);
    a.Accumulate(-1.0);
    a.Accumulate(3.0);
    EXPECT_TRUE(a.Merge(a));
    EXPECT_EQ(a.Count(), 4);
    EXPECT_EQ(a.Mean(), 1.0);
    EXPECT_DOUBLE_EQ(a.Variance(), 16.0 / 3.0);
    EXPECT_EQ(Bins(a), (std::vector<std::uint32_t>{2, 2}));
    StatisticsAccumulator without;
    without.Accumulate(1.0);
    EXPECT_FALSE(a.Merge(without));
    EXPECT_FALSE(without.Merge(a));
    EXPECT_EQ(a.Count(), 4);
}

// Doubling by merging reaches the count's end without 2^31 calls.
TEST(StatisticsAccumulator, StopsAtTheLargestCount) {
    StatisticsAccumulator a;
    StatisticsAccumulator total;
    a.Accumulate(1.0);
    for (int i = 0; i < 31; ++i) {
        ASSERT_TRUE(total.Merge(a));  // total: 2^(i + 1) - 1
        if (i < 30) {
            ASSERT_TRUE(a.Merge(a));
        }
    }
    EXPECT_EQ(total.Count(), std::numeric_limits<std::int32_t>::max());
    EXPECT_FALSE(total.Merge(a));
    total.Accumulate(99.0);
    total.Accumulate(std::vector<double>{98.0, 99.0});
    EXPECT_EQ(total.Count(), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(total.Max(), 1.0);
}

}  // namespace
