#pragma once

// Random inputs for property tests: a fixed seed that a failure prints, magnitudes spread over the
// whole range, degenerate values drawn on purpose.

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <random>
#include <string>

namespace lmw::test {

/// A stream of random test inputs. The seed is fixed unless the environment variable LMW_TEST_SEED
/// gives another; as long as the stream lives, failures tell it, so that they can be repeated.
class PropertyRandom {
 public:
    explicit PropertyRandom(std::uint64_t seed = 20240501);

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
    /// One of the elements.
    template <class Range>
    const auto& Pick(const Range& range) {
        return std::data(range)[Integer(0, static_cast<int>(std::size(range)) - 1)];
    }
    /// Up to `longest` letters of an alphabet.
    template <class String>
    String Text(const String& alphabet, int longest) {
        String text;
        for (int length = Integer(0, longest); length > 0; --length) {
            text += Pick(alphabet);
        }
        return text;
    }

    [[nodiscard]] std::mt19937_64& Engine() noexcept { return engine_; }

 private:
    std::uint64_t seed_;
    std::mt19937_64 engine_;
    testing::ScopedTrace trace_{__FILE__, __LINE__, Trace()};
};

/// `value` with 17 significant digits, ready to be pasted into a table row.
[[nodiscard]] std::string Exact(double value);

}  // namespace lmw::test
