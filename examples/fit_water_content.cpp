// Which smooth water content curve fits measured points, and how well?

#include <common/fn/fred_xing.h>
#include <common/math/fpoint.h>
#include <common/math/unit_set.h>

#include <array>
#include <cmath>
#include <cstdio>

namespace {

using math::fn::flow::FredXing;
using math::fn::flow::FredXingFit;

// Measured on a sand: Vetterlein et al. (1985), Acta Hydrophysica 29, 275-290; water content at
// saturation 0.315. The source has suctions in cm of water; here they are pore-water pressures in
// metres of water, so negative.
constexpr std::array<FPOINT, 10> kSand = {{{-0.2, 0.276},
                                           {-0.4, 0.105},
                                           {-0.6, 0.065},
                                           {-0.8, 0.050},
                                           {-1.0, 0.043},
                                           {-1.5, 0.033},
                                           {-3.0, 0.025},
                                           {-10.0, 0.016},
                                           {-50.0, 0.012},
                                           {-150.0, 0.009}}};

}  // namespace

int main() {
    //! [fit]
    const math::UnitSet units = math::UnitSet::MetresOfWater();
    const double saturated = 0.315;
    const FredXingFit fit = FredXing::Fit(saturated, kSand, units, {1.0, 1.0, 1.0});
    if (fit.code != FredXingFit::kConverged) {
        std::printf("the points do not determine the curve (code %d)\n",
                    static_cast<int>(fit.code));
        return 1;
    }
    const FredXing content(fit.a, fit.n, fit.m, saturated, FredXing::CalcLimit(units));
    //! [fit]

    std::printf("points  %d\n", fit.points);
    std::printf("a       %.3f m of water, standard error %.3f\n", fit.a,
                std::sqrt(fit.covariance[0]));
    std::printf("n       %.4f, standard error %.4f\n", fit.n, std::sqrt(fit.covariance[4]));
    std::printf("m       %.4f, standard error %.4f\n", fit.m, std::sqrt(fit.covariance[8]));
    std::printf("root mean square of the residuals  %.5f\n", fit.root_mean_square);
    std::printf("pressure (m)  measured  curve\n");
    for (const FPOINT& point : kSand) {
        std::printf("%12.2f  %8.3f  %.4f\n", point.x, point.y, content(point.x));
    }
    return 0;
}
