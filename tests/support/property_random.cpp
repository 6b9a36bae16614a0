#include "tests/support/property_random.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace lmw::test {

namespace {

std::uint64_t SeedOrOverride(std::uint64_t seed) {
    const char* text = std::getenv("LMW_TEST_SEED");  // NOLINT(concurrency-mt-unsafe): read only
    return text != nullptr ? std::strtoull(text, nullptr, 10) : seed;
}

}  // namespace

PropertyRandom::PropertyRandom(std::uint64_t seed) : seed_(SeedOrOverride(seed)), engine_(seed_) {}

std::string PropertyRandom::Trace() const {
    return "LMW_TEST_SEED=" + std::to_string(seed_);
}

double PropertyRandom::Uniform(double low, double high) {
    const double fraction = static_cast<double>(engine_() >> 11U) * 0x1p-53;
    return low + fraction * (high - low);
}

double PropertyRandom::LogUniform(double low, double high) {
    return std::exp(Uniform(std::log(low), std::log(high)));
}

double PropertyRandom::SignedLogUniform(double low, double high) {
    return Chance(0.5) ? LogUniform(low, high) : -LogUniform(low, high);
}

int PropertyRandom::Integer(int low, int high) {
    const auto span = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low) + 1U;
    return static_cast<int>(low + static_cast<std::int64_t>(engine_() % span));
}

bool PropertyRandom::Chance(double probability) {
    return Uniform(0.0, 1.0) < probability;
}

std::string Exact(double value) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%.17g", value);
    return text.data();
}

}  // namespace lmw::test
