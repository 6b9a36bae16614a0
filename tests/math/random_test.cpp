#include "common/math/random.h"

#include "common/undefined.h"

#include "tests/support/allocation_counter.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <tuple>
#include <vector>

namespace {

using math::Random;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kTwo32 = 4294967296.0;

// The generator in its plain form: the array seeding with a key of one word, as published, and the
// standard library's twister set to that state.
class ReferenceOutputs {
 public:
    explicit ReferenceOutputs(std::uint32_t seed) {
        constexpr std::size_t n = 624;
        std::vector<std::uint32_t> mt(n);
        mt[0] = 19650218U;
        for (std::size_t i = 1; i < n; ++i) {
            mt[i] = 1812433253U * (mt[i - 1] ^ (mt[i - 1] >> 30U)) + static_cast<std::uint32_t>(i);
        }
        std::size_t i = 1;
        const auto next = [&] {
            if (++i >= n) {
                mt[0] = mt[n - 1];
                i = 1;
            }
        };
        for (std::size_t k = 0; k < n; ++k, next()) {
            mt[i] = (mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30U)) * 1664525U)) + seed;
        }
        for (std::size_t k = 0; k < n - 1; ++k, next()) {
            mt[i] = (mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30U)) * 1566083941U)) -
                    static_cast<std::uint32_t>(i);
        }
        mt[0] = 0x80000000U;
        Words words{mt};
        engine_.seed(words);
    }
    double operator()() { return static_cast<double>(engine_()); }

 private:
    // A seed sequence that hands over a ready state.
    struct Words {
        using result_type = std::uint32_t;
        std::vector<std::uint32_t> words;
        template <class It>
        void generate(It begin, It end) const {
            for (std::size_t i = 0; begin != end; ++begin, ++i) {
                *begin = words[i];
            }
        }
    };
    std::mt19937 engine_;
};

void ExpectSameContinuation(Random a, Random b) {
    for (int i = 0; i < 1300; ++i) {
        ASSERT_EQ(a.ComputeUniform(0.0, 1.0), b.ComputeUniform(0.0, 1.0)) << i;
    }
}

TEST(Random, StartsWithThePrescribedOutputsOfItsSeed) {
    for (const auto& [seed, first, second] :
         {std::tuple{0U, 3626764237.0, 1654615998.0}, {1U, 577090037.0, 2444712010.0}}) {
        Random random(seed);
        EXPECT_EQ(random.ComputeUniform(0.0, kTwo32), first);
        EXPECT_EQ(random.ComputeUniform(0.0, kTwo32), second);
    }
    EXPECT_EQ(Random::DefaultSeed(), 7777777U);
    ExpectSameContinuation(Random(), Random(7777777));
}

TEST(Random, UniformTakesOneOutputOfTheReferenceGeneratorAndNormalTwoAndTheSineOnly) {
    for (const unsigned seed : {0U, 42U, 7777777U, 0xffffffffU}) {
        ReferenceOutputs reference(seed);
        Random random(seed);
        for (int i = 0; i < 2000; ++i) {
            ASSERT_EQ(random.ComputeUniform(-2.0, 3.0), -2.0 + reference() / kTwo32 * 5.0) << i;
            const double u1 = reference() / kTwo32;
            const double angle = 2.0 * std::acos(-1.0) * (reference() / kTwo32);
            ASSERT_NEAR(random.ComputeNormal(20.0, 3.0),
                        20.0 + 3.0 * std::sqrt(-2.0 * std::log(u1)) * std::sin(angle), 2e-14)
                << i;
        }
    }
}

// The hash is that of GCC and Clang on Linux and of GCC for Windows alike.
TEST(Random, VectorsHoldTheBitsOfSingleDrawsAndThoseOfEveryPlatform) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const std::size_t offset : {0U, 1U, 2U, 311U, 623U}) {
        for (const std::size_t size : {0U, 1U, 2U, 3U, 255U, 256U, 257U, 312U, 623U, 624U, 5000U}) {
            Random singles(99);
            Random vectors(99);
            for (std::size_t i = 0; i < offset; ++i) {
                singles.ComputeUniform(0.0, 1.0);
                vectors.ComputeUniform(0.0, 1.0);
            }
            std::vector<double> normal(size);
            std::vector<double> uniform(size);
            vectors.ComputeNormal(normal, 1.0, 0.25);
            vectors.ComputeUniform(uniform, -1.0, 0.3);
            for (const double value : normal) {
                ASSERT_EQ(value, singles.ComputeNormal(1.0, 0.25)) << size;
            }
            for (std::size_t i = 0; i < size; ++i) {
                ASSERT_EQ(uniform[i], singles.ComputeUniform(-1.0, 0.3)) << i << " of " << size;
                hash = (hash ^ std::bit_cast<std::uint64_t>(normal[i])) * 0x100000001b3U;
                hash = (hash ^ std::bit_cast<std::uint64_t>(uniform[i])) * 0x100000001b3U;
            }
            ExpectSameContinuation(singles, vectors);
        }
    }
    EXPECT_EQ(hash, 16813194090451676067U);
}

TEST(Random, CountsSingleNormalsTwiceAndVectorsOfNormalsOnceAndOneMore) {
    Random random;
    random.ComputeNormal(0.0, 1.0);
    for (int i = 0; i < 3; ++i) {
        random.ComputeUniform(0.0, 1.0);
    }
    EXPECT_EQ(random.PositionInStream(), (Random::PositionCounts{3, 2}));

    random.Reset();
    std::vector<double> four(4);
    random.ComputeNormal(four, 0.0, 1.0);
    random.ComputeUniform(four, 0.0, 1.0);
    EXPECT_EQ(random.PositionInStream(), (Random::PositionCounts{4, 5}));
    std::vector<double> empty;
    random.ComputeNormal(empty, 0.0, 1.0);
    random.ComputeUniform(empty, 0.0, 1.0);
    EXPECT_EQ(random.PositionInStream(), (Random::PositionCounts{4, 6}));
}

TEST(Random, SkipAheadIsTheDrawsItStandsFor) {
    using Position = Random::PositionCounts;
    // The table of outputs is renewed every 624.
    for (const Position p :
         {Position{0, 0}, Position{1, 0}, Position{0, 1}, Position{623, 0}, Position{624, 0},
          Position{625, 0}, Position{1248, 0}, Position{5, 1000}, Position{100000, 2000}}) {
        for (const int drawn_before : {0, 1, 600, 624}) {
            Random drawn(11);
            for (int i = 0; i < drawn_before; ++i) {
                drawn.ComputeUniform(0.0, 1.0);
            }
            Random skipped = drawn;
            skipped.SkipAhead(p);
            for (std::uint32_t i = 0; i < p.normal; ++i) {
                drawn.ComputeNormal(0.0, 1.0);
            }
            for (std::uint32_t i = 0; i < p.uniform; ++i) {
                drawn.ComputeUniform(0.0, 1.0);
            }
            EXPECT_EQ(skipped.PositionInStream(), drawn.PositionInStream());
            ExpectSameContinuation(skipped, drawn);
        }
    }
}

// The replay is not the true position: 2 k normals for k single draws, all normals before uniforms.
TEST(Random, JumpToPositionReplaysCountsNotDraws) {
    Random random(3);
    random.ComputeUniform(0.0, 1.0);
    random.ComputeNormal(0.0, 1.0);
    random.JumpToPosition(random.PositionInStream());
    EXPECT_EQ(random.PositionInStream(), (Random::PositionCounts{1, 4}));
    Random replay(3);
    replay.ComputeNormal(0.0, 1.0);
    replay.ComputeNormal(0.0, 1.0);
    replay.ComputeUniform(0.0, 1.0);
    ExpectSameContinuation(random, replay);
}

TEST(Random, CopiesGoOnAlikeAndApart) {
    Random original(17);
    original.ComputeUniform(0.0, 1.0);
    original.ComputeNormal(0.0, 1.0);
    Random copy(1);
    copy = original;
    ExpectSameContinuation(copy, original);
    original.ComputeUniform(0.0, 1.0);
    EXPECT_EQ(copy.PositionInStream(), (Random::PositionCounts{1, 2}));
    copy.Reset();
    ExpectSameContinuation(copy, Random(17));
}

TEST(Random, BadArgumentsGiveTheUndefinedValueAndLeaveTheStreamAlone) {
    Random random(8);
    const std::vector<double> undefined(3, lmw::kUndefined);
    // Each is neither a range nor a mean with a sigma.
    constexpr double kBad[][2] = {{0.0, 0.0},
                                  {0.0, -0.0},
                                  {0.0, -1.0},
                                  {kNan, 1.0},
                                  {0.0, kNan},
                                  {1.0, -1.0},
                                  {kInfinity, 1.0},
                                  {-kInfinity, 1.0},
                                  {0.0, kInfinity},
                                  {lmw::kUndefined, 1.0},
                                  {0.0, lmw::kUndefined}};
    for (const auto& [a, b] : kBad) {
        SCOPED_TRACE(testing::Message() << a << ' ' << b);
        std::vector<double> uniform(3, 0.0);
        std::vector<double> normal(3, 0.0);
        random.ComputeUniform(uniform, a, b);
        random.ComputeNormal(normal, a, b);
        EXPECT_EQ(random.ComputeUniform(a, b), lmw::kUndefined);
        EXPECT_EQ(random.ComputeNormal(a, b), lmw::kUndefined);
        EXPECT_EQ(uniform, undefined);
        EXPECT_EQ(normal, undefined);
    }
    EXPECT_EQ(random.PositionInStream(), Random::PositionCounts{});
    ExpectSameContinuation(random, Random(8));
}

TEST(Random, DrawingAllocatesNothing) {
    LMW_SKIP_UNCOUNTED_ALLOCATIONS();
    Random random(1);
    std::vector<double> out(2000);
    EXPECT_EQ(lmw::test::AllocationsOf([&] {
                  random.ComputeUniform(0.0, 1.0);
                  random.ComputeNormal(0.0, 1.0);
                  random.ComputeUniform(out, 0.0, 1.0);
                  random.ComputeNormal(out, 0.0, 1.0);
                  random.SkipAhead({1000, 1000});
                  random.Reset();
              }),
              0U);
}

}  // namespace
