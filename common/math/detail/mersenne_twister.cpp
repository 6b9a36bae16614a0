#include "common/math/detail/mersenne_twister.h"

namespace math::detail {

namespace {

constexpr std::size_t kShift = 397;

constexpr std::uint32_t Twist(std::uint32_t upper, std::uint32_t lower) noexcept {
    const std::uint32_t mixed = (upper & 0x80000000U) | (lower & 0x7fffffffU);
    return (mixed >> 1U) ^ ((0U - (mixed & 1U)) & 0x9908b0dfU);
}

}  // namespace

MersenneTwister::MersenneTwister(std::uint32_t seed) noexcept {
    constexpr auto kSize = static_cast<std::uint32_t>(kStateSize);
    state_[0] = 19650218U;
    for (std::uint32_t i = 1; i < kSize; ++i) {
        state_[i] = 1812433253U * (state_[i - 1] ^ (state_[i - 1] >> 30U)) + i;
    }
    // The key has one word, so its index is always 0 and adds nothing. Each round of the two loops
    // wraps around after the last word.
    std::uint32_t i = 1;
    const auto wrap = [&] {
        if (++i == kSize) {
            state_[0] = state_[kSize - 1];
            i = 1;
        }
    };
    for (std::uint32_t k = 0; k < kSize; ++k) {
        state_[i] = (state_[i] ^ ((state_[i - 1] ^ (state_[i - 1] >> 30U)) * 1664525U)) + seed;
        wrap();
    }
    for (std::uint32_t k = 0; k + 1 < kSize; ++k) {
        state_[i] = (state_[i] ^ ((state_[i - 1] ^ (state_[i - 1] >> 30U)) * 1566083941U)) - i;
        wrap();
    }
    state_[0] = 0x80000000U;
}

void MersenneTwister::Discard(std::uint64_t count) noexcept {
    std::uint64_t left = kStateSize - position_;
    while (count > left) {
        Regenerate_();
        count -= left;
        left = kStateSize;
    }
    position_ += static_cast<std::size_t>(count);
}

// Every word depends on words at least 227 places before it, so the compiler turns both loops into
// vector code.
void MersenneTwister::Regenerate_() noexcept {
    std::uint32_t* const x = state_.data();
    for (std::size_t i = 0; i < kStateSize - kShift; ++i) {
        x[i] = x[i + kShift] ^ Twist(x[i], x[i + 1]);
    }
    for (std::size_t i = kStateSize - kShift; i < kStateSize - 1; ++i) {
        x[i] = x[i + kShift - kStateSize] ^ Twist(x[i], x[i + 1]);
    }
    x[kStateSize - 1] = x[kShift - 1] ^ Twist(x[kStateSize - 1], x[0]);
    position_ = 0;
}

}  // namespace math::detail
