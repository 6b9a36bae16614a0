#pragma once

// Random inputs for property tests: a fixed seed that a failure prints, magnitudes spread over the
// whole range, degenerate values drawn on purpose.

#include <cstdint>
#include <random>
#include <string>

namespace lmw::test {

/// A stream of random test inputs. The seed is fixed unless the environment variable LMW_TEST_SEED
/// gives another; put `Trace()` into a SCOPED_TRACE so that a failure can be repeated.
class PropertyRandom {
 public:
    explicit PropertyRandom(std::uint64_t seed = 20240501);

    [[nodiscard]] std::uint64_t Seed() const noexcept { return seed_; }
    [[nodiscard]] std::string Trace() const;

    /// Uniform in [low, high).
    double Uniform(double low, double high);
    /// Positive, its logarithm uniform between those of `low` and `high` (both positive).
    double LogUniform(double low = 1e-15, double high = 1e15);
    /// As LogUniform, with either sign.
    double SignedLogUniform(double low = 1e-15, double high = 1e15);
    /// Uniform in [low, high], both ends included.
    int Integer(int low, int high);
    /// True with the given probability.
    bool Chance(double probability);

    [[nodiscard]] std::mt19937_64& Engine() noexcept { return engine_; }

 private:
    std::uint64_t seed_;
    std::mt19937_64 engine_;
};

/// `value` with 17 significant digits, ready to be pasted into a table row.
[[nodiscard]] std::string Exact(double value);

}  // namespace lmw::test
