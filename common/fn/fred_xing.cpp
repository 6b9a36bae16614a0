#include "common/fn/fred_xing.h"

#include <cmath>
#include <numbers>

namespace math::fn::flow {

namespace {

// 1e6 kPa.
constexpr double kStandardLimitPascals = 1e9;

constexpr double kResidualFraction = 0.003;

constexpr double kLogOfLargest = 709.0;  // exp of it is within the range of a double

}  // namespace

double FredXing::operator()(const double& pressure) const noexcept {
    for (const double parameter : {a_, n_, m_, limit_, theta_s_}) {
        if (!lmw::IsDefined(parameter)) {
            return lmw::kUndefined;
        }
    }
    if (pressure >= 0.0 || a_ <= 0.0) {
        return theta_s_;
    }
    const double suction = -pressure;
    const double residual = kResidualFraction * limit_;
    const double correction =
        1.0 - std::log(1.0 + suction / residual) / std::log(1.0 + limit_ / residual);
    // Where the power would leave the range of a double, which could trap, e is nothing beside it.
    const double log_power = n_ * std::log(suction / a_);
    const double logarithm = log_power > kLogOfLargest
                                 ? log_power
                                 : std::log(std::numbers::e + std::pow(suction / a_, n_));
    return theta_s_ * correction * std::pow(1.0 / logarithm, m_);
}

bool FredXing::IsValid() const noexcept {
    return lmw::IsDefined(a_) && lmw::IsDefined(n_) && lmw::IsDefined(m_) &&
           lmw::IsDefined(limit_) && a_ > 0.0 && n_ > 0.0 && m_ > 0.0 && theta_s_ > 0.0;
}

double FredXing::CalcLimit(const math::UnitSet& units) noexcept {
    return units.FromSi(Quantity::kPressure, kStandardLimitPascals);
}

int FredXing::EstimateParam(const double& thetaS, FPOINT* points, int count,
                            const math::UnitSet& units, double& a, double& n, double& m) {
    if (points == nullptr || count < 0) {
        return FredXingFit::kBadInput;
    }
    const FredXingFit fit =
        Fit(thetaS, {points, static_cast<std::size_t>(count)}, units, {a, n, m});
    if (fit.code != FredXingFit::kBadInput) {
        a = fit.a;
        n = fit.n;
        m = fit.m;
    }
    return fit.code;
}

}  // namespace math::fn::flow
