// Rows of Boost.Math: its two shape-preserving cubics. It has neither a linear curve nor integrals.

#include "bench/math/curve_inputs.h"

#include <math.h>  // pchip.hpp calls isnan unqualified

#include <boost/math/interpolators/makima.hpp>
#include <boost/math/interpolators/pchip.hpp>
#include <string>
#include <vector>

namespace {

using bench::Input;

template <class Curve>
Curve MakeCurve(const Input& input) {
    std::vector<double> x = input.x;
    std::vector<double> y = input.y;
    return Curve(std::move(x), std::move(y));
}

template <class Curve>
void RegisterCurve(const std::string& name) {
    bench::RegisterPerSite(name + ".cubic.value", [](const Input& input) {
        return [curve = MakeCurve<Curve>(input)](double x, double) { return curve(x); };
    });
    bench::RegisterPerSite(name + ".cubic.derivative", [](const Input& input) {
        return [curve = MakeCurve<Curve>(input)](double x, double) { return curve.prime(x); };
    });
    bench::RegisterPreparation(name + ".cubic.prepare", [](const Input& input) {
        auto curve = MakeCurve<Curve>(input);
        benchmark::DoNotOptimize(curve);
    });
}

[[maybe_unused]] const bool registered = [] {
    RegisterCurve<boost::math::interpolators::pchip<std::vector<double>>>("boost_pchip");
    RegisterCurve<boost::math::interpolators::makima<std::vector<double>>>("boost_makima");
    return true;
}();

}  // namespace
