#include "common/math/linear.h"

#include "common/math/detail/curve_points.h"
#include "common/math/detail/curve_preparation.h"
#include "common/math/detail/prepared_curve.h"
#include "common/math/detail/unprepared_curve.h"

namespace math::fn::interpolate {

Linear::Linear(const FPOINT* first, const FPOINT* last, const TailType& before,
               const TailType& after)
    : Common(before, after), points_(detail::SharePoints(first, last)) {}

void Linear::Assign(const FPOINT* first, const FPOINT* last) {
    prepared_.reset();
    points_ = detail::SharePoints(first, last);
}

gtl::status Linear::UpdateCalculatedValues() {
    if (prepared_ || NumberOfDataPoints() < 2) {
        return {};
    }
    return detail::PrepareCurve(*points_, *this, GetFunctionPeriodForCalculation(), {}, prepared_);
}

double Linear::operator()(const double& x) const {
    return prepared_ ? prepared_->Value<detail::kLinearOrder>(x) : detail::UnpreparedValue(points_);
}

double Linear::DyDx(double x, const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    return prepared_ ? prepared_->Derivative<detail::kLinearOrder>(x)
                     : detail::UnpreparedDerivative(points_);
}

double Linear::Integrate(double a, double b,
                         const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    return prepared_ ? prepared_->Integral<detail::kLinearOrder>(a, b)
                     : detail::UnpreparedIntegral(points_, a, b);
}

void Linear::Evaluate(std::span<const double> x, std::span<double> values) const {
    detail::ForEach(x, values, [this](double site) { return (*this)(site); });
}

void Linear::DyDx(std::span<const double> x, std::span<double> slopes) const {
    const math::algorithm::Tolerance<double> tolerance;
    detail::ForEach(x, slopes, [&](double site) { return DyDx(site, tolerance); });
}

void Linear::Integrate(double from, std::span<const double> to, std::span<double> integrals) const {
    const math::algorithm::Tolerance<double> tolerance;
    detail::ForEach(to, integrals, [&](double bound) { return Integrate(from, bound, tolerance); });
}

void Linear::SetTailBefore(const TailType& tail) {
    prepared_.reset();
    Common::SetTailBefore(tail);
}

void Linear::SetTailAfter(const TailType& tail) {
    prepared_.reset();
    Common::SetTailAfter(tail);
}

void Linear::SetFunctionPeriod(double period) {
    prepared_.reset();
    Common::SetFunctionPeriod(period);
}

double Linear::GetFunctionPeriodForCalculation() const {
    return detail::PeriodForCalculation(FunctionPeriod(), points_);
}

CurveDomain Linear::Domain() const {
    return detail::DomainOf(points_, *this, GetFunctionPeriodForCalculation());
}

std::size_t Linear::NumberOfDataPoints() const {
    return detail::NumberOf(points_);
}

const double* Linear::begin() const {
    return points_ ? points_->X().data() : nullptr;
}

const double* Linear::end() const {
    return points_ ? points_->X().data() + points_->Size() : nullptr;
}

}  // namespace math::fn::interpolate
