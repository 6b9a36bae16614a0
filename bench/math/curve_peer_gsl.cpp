// Rows of the GNU Scientific Library: linear and natural cubic interpolation, through the
// accelerator that its manual recommends and without it.

#include "bench/math/curve_inputs.h"

#include <gsl/gsl_spline.h>

#include <algorithm>
#include <memory>
#include <string>

namespace {

using bench::Input;

struct FreeSpline {
    void operator()(gsl_spline* spline) const { gsl_spline_free(spline); }
};
struct FreeAccelerator {
    void operator()(gsl_interp_accel* accelerator) const { gsl_interp_accel_free(accelerator); }
};

std::shared_ptr<gsl_spline> MakeSpline(const gsl_interp_type* type, const Input& input) {
    std::shared_ptr<gsl_spline> spline(gsl_spline_alloc(type, input.x.size()), FreeSpline());
    gsl_spline_init(spline.get(), input.x.data(), input.y.data(), input.x.size());
    return spline;
}

void RegisterCurve(const std::string& name, const gsl_interp_type* type) {
    for (const bool accelerated : {false, true}) {
        const std::string row = (accelerated ? "gsl_accel." : "gsl.") + name;
        const auto make = [=](auto evaluate) {
            return [=](const Input& input) {
                std::shared_ptr<gsl_interp_accel> accelerator;
                if (accelerated) {
                    accelerator.reset(gsl_interp_accel_alloc(), FreeAccelerator());
                }
                return
                    [spline = MakeSpline(type, input), accelerator, evaluate](double a, double b) {
                        return evaluate(spline.get(), a, b, accelerator.get());
                    };
            };
        };
        bench::RegisterPerSite(row + ".value", make([](const gsl_spline* spline, double x, double,
                                                       gsl_interp_accel* accelerator) {
                                   return gsl_spline_eval(spline, x, accelerator);
                               }));
        bench::RegisterPerSite(row + ".derivative", make([](const gsl_spline* spline, double x,
                                                            double, gsl_interp_accel* accelerator) {
                                   return gsl_spline_eval_deriv(spline, x, accelerator);
                               }));
        bench::RegisterPerSite(
            row + ".integral",
            make([](const gsl_spline* spline, double a, double b, gsl_interp_accel* accelerator) {
                return gsl_spline_eval_integ(spline, std::min(a, b), std::max(a, b), accelerator);
            }));
    }
    bench::RegisterPreparation("gsl." + name + ".prepare", [=](const Input& input) {
        auto spline = MakeSpline(type, input);
        benchmark::DoNotOptimize(spline);
    });
}

[[maybe_unused]] const bool registered = [] {
    RegisterCurve("linear", gsl_interp_linear);
    RegisterCurve("cubic", gsl_interp_cspline);
    return true;
}();

}  // namespace
