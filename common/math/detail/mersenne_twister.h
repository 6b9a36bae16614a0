#pragma once

// The Mersenne Twister MT19937 with the array seeding, generated in blocks. Use math::Random
// instead unless raw 32-bit outputs are wanted. Surprising: the seed is a key of length 1 of the
// array seeding, so the sequence differs from std::mt19937(seed).
//
// M. Matsumoto and T. Nishimura, "Mersenne Twister: a 623-dimensionally equidistributed uniform
// pseudo-random number generator", ACM Transactions on Modeling and Computer Simulation 8 (1998)
// 3-30; the array seeding is the authors' revision of 26 January 2002.

#include <array>
#include <cstddef>
#include <cstdint>

namespace math::detail {

/// One stream of 32-bit outputs. A value: a copy continues with the same outputs. The state is 2.5
/// kB.
class MersenneTwister {
 public:
    static constexpr std::size_t kStateSize = 624;

    /// Seeds with the array (`seed`); 0 is a seed like any other.
    explicit MersenneTwister(std::uint32_t seed) noexcept;

    /// The next output.
    std::uint32_t Next() noexcept {
        if (position_ == kStateSize) {
            Regenerate_();
        }
        return Temper(state_[position_++]);
    }

    /// Steps over `count` outputs, as that many calls of Next would: whole blocks are generated
    /// without being tempered.
    void Discard(std::uint64_t count) noexcept;

    /// Passes the next `count` outputs, in order, to `consume(const uint32_t* raw, size_t length)`
    /// in pieces of 1 to 624 untempered words: Temper(raw[i]) is the output.
    template <class Consume>
    void DrawRaw(std::size_t count, Consume&& consume) noexcept {
        while (count > 0) {
            if (position_ == kStateSize) {
                Regenerate_();
            }
            const std::size_t left = kStateSize - position_;
            const std::size_t length = count < left ? count : left;
            consume(state_.data() + position_, length);
            position_ += length;
            count -= length;
        }
    }

    /// The output that belongs to a word of the state.
    [[nodiscard]] static constexpr std::uint32_t Temper(std::uint32_t word) noexcept {
        word ^= word >> 11U;
        word ^= (word << 7U) & 0x9d2c5680U;
        word ^= (word << 15U) & 0xefc60000U;
        return word ^ (word >> 18U);
    }

 private:
    void Regenerate_() noexcept;

    std::array<std::uint32_t, kStateSize> state_{};
    std::size_t position_ = kStateSize;
};

}  // namespace math::detail
