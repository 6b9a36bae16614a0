#pragma once

// 128-bit signed integers, as far as exact orientation tests need them: products of 64-bit numbers,
// sums, a further 64-bit factor, the sign. One small type, because compilers spell them
// differently.

#include <cstdint>

#if !defined(__SIZEOF_INT128__) && defined(_MSC_VER)
#include <intrin.h>
#endif

namespace Geom::detail {

/// Two halves, two's complement; arithmetic wraps. Used where the compiler has no 128-bit integer,
/// and compared with it where it has one.
class Int128Halves {
 public:
    static Int128Halves Product(std::int64_t a, std::int64_t b) noexcept {
        return Int128Halves{a < 0 ? ~std::uint64_t{0} : 0, static_cast<std::uint64_t>(a)} * b;
    }

    friend Int128Halves operator+(Int128Halves a, Int128Halves b) noexcept {
        const std::uint64_t low = a.low_ + b.low_;
        return {a.high_ + b.high_ + (low < a.low_ ? 1U : 0U), low};
    }
    friend Int128Halves operator-(Int128Halves a, Int128Halves b) noexcept {
        return {a.high_ - b.high_ - (a.low_ < b.low_ ? 1U : 0U), a.low_ - b.low_};
    }
    friend Int128Halves operator*(Int128Halves a, std::int64_t factor) noexcept {
        const auto b = static_cast<std::uint64_t>(factor);
        std::uint64_t high = 0;
        const std::uint64_t low = Multiply(a.low_, b, high);
        high += a.high_ * b;
        high -= factor < 0 ? a.low_ : 0;  // b stands for factor + 2^64
        return {high, low};
    }

    [[nodiscard]] int Sign() const noexcept {
        if (static_cast<std::int64_t>(high_) < 0) {
            return -1;
        }
        return (high_ | low_) != 0 ? 1 : 0;
    }
    [[nodiscard]] double ToDouble() const noexcept {
        if (Sign() < 0) {  // of the magnitude, or a small negative number would cancel to nothing
            return -(Int128Halves{0, 0} - *this).ToDouble();
        }
        return static_cast<double>(high_) * 0x1p64 + static_cast<double>(low_);
    }

 private:
    Int128Halves(std::uint64_t high, std::uint64_t low) noexcept : high_(high), low_(low) {}

    static std::uint64_t Multiply(std::uint64_t a, std::uint64_t b, std::uint64_t& high) noexcept {
#if !defined(__SIZEOF_INT128__) && defined(_MSC_VER) && defined(_M_X64)
        return _umul128(a, b, &high);
#else
        constexpr std::uint64_t kLow = 0xFFFFFFFFU;
        const std::uint64_t low = (a & kLow) * (b & kLow);
        const std::uint64_t middle = (a >> 32U) * (b & kLow) + (low >> 32U);
        const std::uint64_t middle2 = (a & kLow) * (b >> 32U) + (middle & kLow);
        high = (a >> 32U) * (b >> 32U) + (middle >> 32U) + (middle2 >> 32U);
        return (middle2 << 32U) | (low & kLow);
#endif
    }

    std::uint64_t high_;
    std::uint64_t low_;
};

#if defined(__SIZEOF_INT128__)

/// The compiler's own.
class Int128Native {
 public:
    static Int128Native Product(std::int64_t a, std::int64_t b) noexcept {
        return Int128Native{static_cast<Value>(a) * b};
    }

    friend Int128Native operator+(Int128Native a, Int128Native b) noexcept {
        return Int128Native{a.value_ + b.value_};
    }
    friend Int128Native operator-(Int128Native a, Int128Native b) noexcept {
        return Int128Native{a.value_ - b.value_};
    }
    friend Int128Native operator*(Int128Native a, std::int64_t factor) noexcept {
        return Int128Native{a.value_ * factor};
    }

    [[nodiscard]] int Sign() const noexcept { return (value_ > 0 ? 1 : 0) - (value_ < 0 ? 1 : 0); }
    [[nodiscard]] double ToDouble() const noexcept { return static_cast<double>(value_); }

 private:
    __extension__ typedef __int128 Value;  // NOLINT(modernize-use-using): __extension__ needs it
    explicit Int128Native(Value value) noexcept : value_(value) {}

    Value value_;
};

using Int128 = Int128Native;

#else

using Int128 = Int128Halves;

#endif

}  // namespace Geom::detail
