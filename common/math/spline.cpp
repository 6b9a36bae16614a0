#include "common/math/spline.h"

#include "common/math/detail/curve_points.h"
#include "common/math/detail/curve_preparation.h"
#include "common/math/detail/prepared_curve.h"
#include "common/math/detail/unprepared_curve.h"

namespace math::fn::interpolate {

namespace {

/// The smooth value with which the curve ends in the end points themselves.
constexpr std::uint32_t kExactEnds = 100;

}  // namespace

Spline::Spline(std::uint32_t smooth, std::uint32_t tension, const TailType& before,
               const TailType& after, const FPOINT* first, const FPOINT* last, double period)
    : Common(before, after, period),
      smooth_(smooth),
      tension_(tension),
      points_(detail::SharePoints(first, last)) {}

void Spline::Assign(const FPOINT* first, const FPOINT* last) {
    prepared_.reset();
    points_ = detail::SharePoints(first, last);
}

gtl::status Spline::UpdateCalculatedValues() {
    if (prepared_ || NumberOfDataPoints() < 2) {
        return {};
    }
    const detail::CurveForm form{tension_, smooth_,
                                 smooth_ == kExactEnds ? detail::ActiveRange::Ends::kOfPoints
                                                       : detail::ActiveRange::Ends::kOfPolynomial};
    return detail::PrepareCurve(*points_, *this, GetFunctionPeriodForCalculation(), form,
                                prepared_);
}

double Spline::operator()(const double& x) const {
    if (!prepared_) {
        return detail::UnpreparedValue(points_);
    }
    return Order() == detail::kCubicOrder ? prepared_->Value<detail::kCubicOrder>(x)
                                          : prepared_->Value<detail::kLinearOrder>(x);
}

double Spline::DyDx(double x, const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    if (!prepared_) {
        return detail::UnpreparedDerivative(points_);
    }
    return Order() == detail::kCubicOrder ? prepared_->Derivative<detail::kCubicOrder>(x)
                                          : prepared_->Derivative<detail::kLinearOrder>(x);
}

double Spline::Integrate(double a, double b,
                         const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    if (!prepared_) {
        return detail::UnpreparedIntegral(points_, a, b);
    }
    return Order() == detail::kCubicOrder ? prepared_->Integral<detail::kCubicOrder>(a, b)
                                          : prepared_->Integral<detail::kLinearOrder>(a, b);
}

void Spline::Evaluate(std::span<const double> x, std::span<double> values) const {
    detail::ForEach(x, values, [this](double site) { return (*this)(site); });
}

void Spline::DyDx(std::span<const double> x, std::span<double> slopes) const {
    const math::algorithm::Tolerance<double> tolerance;
    detail::ForEach(x, slopes, [&](double site) { return DyDx(site, tolerance); });
}

void Spline::Integrate(double from, std::span<const double> to, std::span<double> integrals) const {
    const math::algorithm::Tolerance<double> tolerance;
    detail::ForEach(to, integrals, [&](double bound) { return Integrate(from, bound, tolerance); });
}

void Spline::SetSmooth(std::uint32_t smooth) {
    prepared_.reset();
    smooth_ = smooth;
}

void Spline::SetTension(std::uint32_t tension) {
    prepared_.reset();
    tension_ = tension;
}

void Spline::SetTailBefore(const TailType& tail) {
    prepared_.reset();
    Common::SetTailBefore(tail);
}

void Spline::SetTailAfter(const TailType& tail) {
    prepared_.reset();
    Common::SetTailAfter(tail);
}

void Spline::SetFunctionPeriod(double period) {
    prepared_.reset();
    Common::SetFunctionPeriod(period);
}

double Spline::GetFunctionPeriodForCalculation() const {
    return detail::PeriodForCalculation(FunctionPeriod(), points_);
}

CurveDomain Spline::Domain() const {
    return detail::DomainOf(points_, *this, GetFunctionPeriodForCalculation());
}

std::size_t Spline::NumberOfDataPoints() const {
    return detail::NumberOf(points_);
}

double Spline::Min() const {
    return detail::FirstX(points_);
}

double Spline::Max() const {
    return detail::LastX(points_);
}

const double* Spline::begin() const {
    return points_ ? points_->X().data() : nullptr;
}

const double* Spline::end() const {
    return points_ ? points_->X().data() + points_->Size() : nullptr;
}

std::span<const double> Spline::GetCoefficients() const {
    return prepared_ ? prepared_->Coefficients() : std::span<const double>();
}

}  // namespace math::fn::interpolate
