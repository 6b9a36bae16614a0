// What are the value, the slope and the integral of a measured curve, between its points and
// beyond?

#include <common/math/fpoint.h>
#include <common/math/spline.h>
#include <common/math/step.h>
#include <common/math/tail_type.h>
#include <common/sys/text_encoding.h>
#include <common/undefined.h>

#include <array>
#include <cstdio>

namespace {

using math::algorithm::Tolerance;
using math::fn::TailType;
using math::fn::interpolate::Spline;
using math::fn::interpolate::Step;

// Water content of a loess over suction in cm of water: W. Ehlers (1977), Geoderma 19, 293-306.
constexpr std::array<FPOINT, 7> kLoess = {
    {{11, 0.38}, {83, 0.35}, {316, 0.32}, {880, 0.28}, {2450, 0.24}, {7500, 0.20}, {14700, 0.18}}};

// Rain at Seattle in 2012, in mm/month from the start of a month: NOAA daily values, summed.
constexpr std::array<FPOINT, 12> kRain = {{{0, 173.3},
                                           {1, 92.3},
                                           {2, 183.0},
                                           {3, 68.1},
                                           {4, 52.2},
                                           {5, 75.1},
                                           {6, 26.3},
                                           {7, 0.0},
                                           {8, 0.9},
                                           {9, 170.3},
                                           {10, 210.5},
                                           {11, 174.0}}};

void Print(const char* what, double value) {
    if (lmw::IsDefined(value)) {
        std::printf("%-42s %10.5f\n", what, value);
    } else {
        std::printf("%-42s  undefined\n", what);
    }
}

}  // namespace

int main() {
    //! [curve]
    // A smooth curve through the points: level before the first one, nothing beyond the last.
    Spline content(100, 50, TailType::Slope(0.0), TailType::None(), kLoess.data(),
                   kLoess.data() + kLoess.size(), lmw::kUndefined);
    if (const gtl::status prepared = content.UpdateCalculatedValues(); prepared.Failed()) {
        std::printf("%s\n", sys::Narrow(prepared.as_wstring()).c_str());
        return 1;
    }
    Print("water content at 500 cm", content(500));
    Print("its slope there, per 1000 cm", 1000 * content.DyDx(500, Tolerance<double>()));
    Print("its mean from 100 to 1000 cm", content.Integrate(100, 1000, Tolerance<double>()) / 900);
    Print("before the first point, at 1 cm", content(1));
    Print("beyond the last point, at 20000 cm", content(20000));
    //! [curve]

    //! [cycle]
    // A series that repeats after a year: the value of a month holds until the next one begins.
    Step rain(TailType::None(), TailType::Cycle(), kRain.data(), kRain.data() + kRain.size());
    rain.SetFunctionPeriod(12.0);
    rain.UpdateCalculatedValues();
    Print("rain in the third May, mm/month", rain(28.5));
    Print("rain of a year, mm", rain.Integrate(0, 12, Tolerance<double>()));
    Print("rain of 30 months, mm", rain.Integrate(0, 30, Tolerance<double>()));
    //! [cycle]
    return 0;
}
