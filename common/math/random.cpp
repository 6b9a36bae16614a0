#include "common/math/random.h"

#include "common/math/detail/box_muller.h"
#include "common/math/detail/mersenne_twister.h"
#include "common/undefined.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace math {

namespace {

bool IsNumber(double value) noexcept {
    return std::isfinite(value) && lmw::IsDefined(value);
}

bool IsRange(double a, double b) noexcept {
    return IsNumber(a) && IsNumber(b) && a < b;
}

bool IsNormalLaw(double mean, double sigma) noexcept {
    return IsNumber(mean) && IsNumber(sigma) && sigma > 0.0;
}

}  // namespace

Random::Random() : Random(DefaultSeed()) {}

Random::Random(unsigned seed)
    : stream_(std::make_unique<detail::MersenneTwister>(seed)), seed_(seed) {}

Random::Random(const Random& other)
    : stream_(std::make_unique<detail::MersenneTwister>(*other.stream_)),
      seed_(other.seed_),
      uniform_count_(other.uniform_count_),
      normal_count_(other.normal_count_) {}

Random& Random::operator=(const Random& other) {
    if (this != &other) {
        *stream_ = *other.stream_;
        seed_ = other.seed_;
        uniform_count_ = other.uniform_count_;
        normal_count_ = other.normal_count_;
    }
    return *this;
}

Random::~Random() = default;

unsigned Random::DefaultSeed() noexcept {
    return 7777777U;
}

unsigned Random::Seed() const noexcept {
    return seed_;
}

double Random::ComputeUniform(double a, double b) noexcept {
    if (!IsRange(a, b)) {
        return lmw::kUndefined;
    }
    ++uniform_count_;
    return detail::UniformMap(a, b)(stream_->Next());
}

void Random::ComputeUniform(std::vector<double>& out, double a, double b) noexcept {
    if (!IsRange(a, b)) {
        std::fill(out.begin(), out.end(), lmw::kUndefined);
        return;
    }
    const detail::UniformMap map(a, b);
    double* next = out.data();
    stream_->DrawRaw(out.size(), [&](const std::uint32_t* raw, std::size_t length) {
        map.Fill(raw, length, next);
        next += length;
    });
    uniform_count_ += static_cast<std::uint32_t>(out.size());
}

double Random::ComputeNormal(double mean, double sigma) noexcept {
    if (!IsNormalLaw(mean, sigma)) {
        return lmw::kUndefined;
    }
    const std::uint32_t first = stream_->Next();
    const std::array<std::uint32_t, 2> pair{first, stream_->Next()};
    double value = 0.0;
    detail::NormalsFromPairs(pair.data(), 1, mean, sigma, &value);
    normal_count_ += 2;
    return value;
}

void Random::ComputeNormal(std::vector<double>& out, double mean, double sigma) noexcept {
    if (!IsNormalLaw(mean, sigma)) {
        std::fill(out.begin(), out.end(), lmw::kUndefined);
        return;
    }
    // A block of the generator may end between the two outputs of a number: outputs are collected
    // in pairs first. The buffer stays in the first-level cache; it is written before it is read,
    // and clearing it would cost more than a small vector.
    constexpr std::size_t kPairs = 256;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): see above
    std::array<std::uint32_t, 2 * kPairs> outputs;
    std::size_t done = 0;
    while (done < out.size()) {
        const std::size_t pairs = std::min(kPairs, out.size() - done);
        std::uint32_t* next = outputs.data();
        stream_->DrawRaw(2 * pairs, [&](const std::uint32_t* raw, std::size_t length) {
            std::transform(raw, raw + length, next, detail::MersenneTwister::Temper);
            next += length;
        });
        detail::NormalsFromPairs(outputs.data(), pairs, mean, sigma, out.data() + done);
        done += pairs;
    }
    normal_count_ += static_cast<std::uint32_t>(out.size()) + 1U;
}

void Random::Reset() {
    *stream_ = detail::MersenneTwister(seed_);
    uniform_count_ = 0;
    normal_count_ = 0;
}

Random::PositionCounts Random::PositionInStream() const noexcept {
    return {uniform_count_, normal_count_};
}

void Random::SkipAhead(const PositionCounts& position) noexcept {
    stream_->Discard(2 * std::uint64_t{position.normal} + position.uniform);
    normal_count_ += 2U * position.normal;
    uniform_count_ += position.uniform;
}

void Random::JumpToPosition(const PositionCounts& position) {
    Reset();
    SkipAhead(position);
}

}  // namespace math
