#include "common/math/detail/breakpoint_index.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace {

using lmw::test::Exact;
using lmw::test::PropertyRandom;
using math::fn::interpolate::detail::BreakpointIndex;

std::size_t PlainInterval(const std::vector<double>& x, double site) {
    const auto inner = std::upper_bound(x.begin() + 1, x.end() - 1, site);
    return static_cast<std::size_t>(inner - (x.begin() + 1));
}

// Spacings for which one of the bucket rules is made, and those that none of them likes.
TEST(BreakpointIndex, AgreesWithBinarySearchForEverySpacing) {
    PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    const std::vector<std::function<double()>> spacings = {
        [&] { return random.Uniform(-3.0, 1000.0); },
        [&] { return random.LogUniform(1e-2, 1e6); },
        [&] { return -random.LogUniform(1e-2, 1e6); },
        [&] { return random.SignedLogUniform(1e-300, 1e300); },
        [&] { return 1e9 + random.Uniform(0.0, 1e-5); },
        [&] { return random.Integer(0, 5) + 1e-6 * random.Uniform(0.0, 1.0); },
        [&] { return static_cast<double>(random.Integer(-3, 3)); },
        [&] { return random.Chance(0.5) ? 0.0 : random.LogUniform(1e-5, 1e5); },
        [&] { return 5e-324 * random.Integer(0, 40); },
        [&] { return random.Chance(0.5) ? -1.5e308 : 1e308 * random.Uniform(-1.0, 1.0); },
        [&] { return random.Chance(0.1) ? 1e300 : random.Uniform(0.0, 1.0); },
    };
    for (int round = 0; round < 2000; ++round) {
        const auto& spacing = spacings[static_cast<std::size_t>(
            random.Integer(0, static_cast<int>(spacings.size()) - 1))];
        std::vector<double> x;
        for (int i = random.Integer(2, 60); i > 0; --i) {
            x.push_back(spacing());
        }
        std::sort(x.begin(), x.end());
        if (x.front() == x.back()) {
            continue;  // no site lies in [first, last)
        }
        BreakpointIndex index;
        index.Build(x);
        std::vector<double> sites;
        for (const double breakpoint : x) {
            sites.insert(sites.end(), {breakpoint, std::nextafter(breakpoint, -HUGE_VAL),
                                       std::nextafter(breakpoint, HUGE_VAL)});
        }
        sites.push_back(0.0);
        sites.push_back(-0.0);
        for (int i = 0; i < 30; ++i) {
            sites.push_back(spacing());
        }
        for (const double site : sites) {
            if (site >= x.front() && site < x.back()) {
                ASSERT_EQ(index.Find(x.data(), site), PlainInterval(x, site))
                    << Exact(site) << " in " << testing::PrintToString(x);
            }
        }
    }
}

}  // namespace
