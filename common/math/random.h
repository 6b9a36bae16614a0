#pragma once

// Reproducible streams of uniform and normal random numbers for probabilistic analyses: the
// position in a stream can be recorded and gone back to. common/math/statistics.h summarises what
// is drawn. Surprising: the recorded position counts draws in an uneven way and is replayed normals
// first, so a jump does not land where the position was taken, see JumpToPosition.

#include "common/export.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace math {

namespace detail {
class MersenneTwister;
}  // namespace detail

/// A stream of random numbers: a Mersenne Twister MT19937 (Matsumoto and Nishimura, ACM
/// Transactions on Modeling and Computer Simulation 8, 1998), its seed, and the counts of what was
/// drawn.
///
/// 1. The numbers depend on the seed and the calls alone: the same bits on every platform and
///    compiler. The seeding is the generator's array seeding with the one-word key (seed), so seed
///    0 starts with the outputs 3626764237, 1654615998, and seed 1 with 577090037, 2444712010.
/// 2. A uniform number takes one 32-bit output y of the generator: a + u (b - a) with u = y / 2^32,
///    and b where rounding would pass b. It is never redrawn.
/// 3. A normal number takes two outputs, u1 and then u2 (Box and Muller, Annals of Mathematical
///    Statistics 29, 1958): mean + (sigma sqrt(-2 ln u1)) sin(2 pi u2), where u1 = 0 gives the
///    square root 3.4244955099270222. Only the sine is used and nothing is kept for the next call.
///    The logarithm is within 0.85 ulp of the exact value, the sine within 2.3 ulp of that of the
///    exact angle. The number is finite as long as mean and sigma are below 1e307 in magnitude.
/// 4. A vector of n numbers holds the same bits, and leaves the stream at the same place, as n
///    single draws. Only the counts may differ (see PositionInStream).
/// 5. An argument that is not a number, infinite or undefined (lmw::kUndefined), a range with
///    a >= b and a sigma that is not positive give the undefined value, or a vector filled with it,
///    and leave stream and counts alone.
///
/// A copy continues on its own with the same numbers; it copies 2.5 kB. One object must not be used
/// by several threads at once; give each thread its own seed. Nothing throws but the allocation of
/// a new stream. Numbers have the unit of the arguments.
///
///     math::Random random(42);
///     std::vector<double> friction_angle(1000);              // degrees
///     random.ComputeNormal(friction_angle, 31.0, 2.5);
///     const double cohesion = random.ComputeUniform(5.0, 8.0);  // kPa
class LMW_API Random {
 public:
    /// A position in a stream, as the numbers of uniform and normal draws since the last reset,
    /// each modulo 2^32.
    struct PositionCounts {
        std::uint32_t uniform = 0;
        std::uint32_t normal = 0;
        friend bool operator==(const PositionCounts&, const PositionCounts&) = default;
    };

    /// A stream with the default seed.
    Random();
    explicit Random(unsigned seed);
    Random(const Random& other);
    Random& operator=(const Random& other);
    ~Random();

    /// 7777777.
    static unsigned DefaultSeed() noexcept;
    [[nodiscard]] unsigned Seed() const noexcept;

    /// A uniform number on [a, b); the count of uniform draws goes up by 1, or for a vector by its
    /// size.
    double ComputeUniform(double a, double b) noexcept;
    void ComputeUniform(std::vector<double>& out, double a, double b) noexcept;

    /// A normal number; the count of normal draws goes up by 2, or for a vector of n by n + 1.
    double ComputeNormal(double mean, double sigma) noexcept;
    void ComputeNormal(std::vector<double>& out, double mean, double sigma) noexcept;

    /// Goes back to the first number of the seed; both counts become 0.
    void Reset();

    /// The counts of draws since the last reset.
    // By design: a single normal draw counts 2, a vector of n counts n + 1 (1 for an empty one).
    // Positions in saved runs were counted so; counting true draws would replay them elsewhere.
    [[nodiscard]] PositionCounts PositionInStream() const noexcept;

    /// Steps over `position.normal` single normal draws, then `position.uniform` single uniform
    /// draws; the counts go up as those draws would have it. The numbers themselves are not
    /// computed, because only the number of outputs matters: a normal takes two whatever it
    /// becomes. About 0.25 ns an output (the table of 624 words is renewed as often as the draws
    /// would).
    void SkipAhead(const PositionCounts& position) noexcept;

    /// Reset, then SkipAhead(position).
    // By design: a position taken after k single normal draws has the count 2 k and steps over 2 k
    // normal draws, not k, and normals go before uniforms whatever their order was. Saved runs
    // continue from the places this gives; a jump to the true place would change their results.
    void JumpToPosition(const PositionCounts& position);

 private:
    std::unique_ptr<detail::MersenneTwister> stream_;
    std::uint32_t seed_;
    std::uint32_t uniform_count_ = 0;
    std::uint32_t normal_count_ = 0;
};

}  // namespace math
