// The promises of the curves: a value, a derivative and an integral cost one look-up each, whatever
// the number of points, and preparation is cheap. Row names: <library>.<curve>.<what>/<input>; rows
// of one <curve>.<what> and input are comparable, and only ratios within one run mean something.

#include "common/math/linear.h"
#include "common/math/spline.h"
#include "common/math/step.h"

#include "bench/math/curve_inputs.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using bench::Input;
using math::algorithm::Tolerance;
using math::fn::TailType;
using math::fn::interpolate::Linear;
using math::fn::interpolate::Spline;
using math::fn::interpolate::Step;

Linear MakeLinear(const Input& input) {
    Linear curve(input.points.data(), input.points.data() + input.points.size(), TailType::Calc(),
                 TailType::Calc());
    curve.UpdateCalculatedValues().Ignore();
    return curve;
}

template <std::uint32_t tension>
Spline MakeCubic(const Input& input) {
    Spline curve(100, tension, TailType::Calc(), TailType::Calc(), input.points.data(),
                 input.points.data() + input.points.size(), lmw::kUndefined);
    curve.UpdateCalculatedValues().Ignore();
    return curve;
}

Step MakeStep(const Input& input) {
    Step curve(TailType::Calc(), TailType::Calc(), input.points.data(),
               input.points.data() + input.points.size());
    curve.UpdateCalculatedValues();
    return curve;
}

template <class MakeCurve>
void RegisterCurve(const std::string& name, MakeCurve make_curve) {
    bench::RegisterPerSite("lmw." + name + ".value", [=](const Input& input) {
        return [curve = make_curve(input)](double x, double) { return curve(x); };
    });
    bench::RegisterPerSite("lmw." + name + ".derivative", [=](const Input& input) {
        return [curve = make_curve(input), tolerance = Tolerance<double>()](double x, double) {
            return curve.DyDx(x, tolerance);
        };
    });
    bench::RegisterPerSite("lmw." + name + ".integral", [=](const Input& input) {
        return [curve = make_curve(input), tolerance = Tolerance<double>()](double a, double b) {
            return curve.Integrate(a, b, tolerance);
        };
    });
    // One span call for all sites; a row's time is that of one site.
    bench::RegisterPerSite("lmw." + name + ".span", [=](const Input& input) {
        return
            [&input, curve = make_curve(input), results = std::vector<double>(input.sites.size()),
             next = input.sites.size()](double, double) mutable {
                if (next == results.size()) {
                    curve.Evaluate(input.sites, results);
                    next = 0;
                }
                return results[next++];
            };
    });
    bench::RegisterPreparation("lmw." + name + ".prepare", [=](const Input& input) {
        auto curve = make_curve(input);
        benchmark::DoNotOptimize(curve);
    });
}

[[maybe_unused]] const bool registered = [] {
    RegisterCurve("step", MakeStep);
    RegisterCurve("linear", MakeLinear);
    RegisterCurve("cubic", MakeCubic<50>);
    bench::RegisterPreparation("lmw.cubic_tension_100.prepare", [](const Input& input) {
        auto curve = MakeCubic<100>(input);
        benchmark::DoNotOptimize(curve);
    });
    bench::RegisterPreparation("lmw.cubic_tension_37.prepare", [](const Input& input) {
        auto curve = MakeCubic<37>(input);
        benchmark::DoNotOptimize(curve);
    });
    return true;
}();

}  // namespace
