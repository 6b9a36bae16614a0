#include "common/math/step.h"

#include "common/math/detail/construction_scope.h"
#include "common/math/detail/cycle.h"
#include "common/math/detail/step_table.h"
#include "common/math/detail/unprepared_curve.h"
#include "common/undefined.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>

namespace math::fn::interpolate {

namespace {

/// A level line stays level at infinity, where 0 times the run would be invalid.
double OnLine(double value, double slope, double run) noexcept {
    return slope == 0.0 ? value : value + slope * run;
}

/// The piece that holds `x` by plain search: the last point whose x is not greater. Within the
/// points whatever their order is.
std::size_t SearchedPiece(std::span<const FPOINT> points, double x) noexcept {
    const auto next =
        std::upper_bound(points.begin(), points.end(), x,
                         [](double site, const FPOINT& point) { return site < point.x; });
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(next - points.begin() - 1, 0));
}

}  // namespace

Step::Step(const TailType& before, const TailType& after, const FPOINT* first, const FPOINT* last)
    : Common(before, after), points_(first, last) {}

void Step::UpdateCalculatedValues() {
    table_.reset();
    if (!detail::StepTable::Accepts(points_)) {
        return;
    }
    const detail::ConstructionScope scope;
    try {
        table_ = std::make_shared<const detail::StepTable>(points_);
    } catch (const std::bad_alloc&) {
        table_.reset();  // the plain search needs no memory
    }
}

double Step::operator()(const double& x) const {
    if (table_ && std::isgreaterequal(x, table_->First()) && std::isless(x, table_->Last())) {
        return table_->Value(x);
    }
    return ValueOf_(x);
}

double Step::ValueOf_(double x) const noexcept {
    if (points_.empty()) {
        return lmw::kUndefined;
    }
    if (std::isnan(x)) {
        return x;
    }
    const FPOINT& first = points_.front();
    const FPOINT& last = points_.back();
    if (x < first.x) {
        return ValueBefore_(x);
    }
    if (!(x >= last.x)) {
        return points_[SearchedPiece(points_, x)].y;
    }
    // By design: the last point itself belongs to the tail. Taking it as data would change every
    // curve whose slope tail does not happen to start with the last y.
    if (TailAfter() == TailType::Calc()) {
        return last.y;
    }
    if (TailAfter() == TailType::None()) {
        return lmw::kUndefined;
    }
    if (TailAfter() == TailType::Cycle()) {
        return ValueInCycle_(x);
    }
    // By design: the run is counted from the first point, not from the last. Projects hold slopes
    // that were chosen for this.
    return OnLine(last.y, TailAfter().value, x - first.x);
}

double Step::ValueBefore_(double x) const noexcept {
    const FPOINT& first = points_.front();
    if (TailBefore() == TailType::Calc()) {
        return first.y;
    }
    // By design: a step function does not cycle backwards. Values there would appear in analyses
    // that now stop at the missing one.
    if (TailBefore() == TailType::Cycle() || TailBefore() == TailType::None()) {
        return lmw::kUndefined;
    }
    // By design: the slope counts positive away from the data, to the left. With the usual sign
    // stored projects would be mirrored.
    return OnLine(first.y, TailBefore().value, first.x - x);
}

double Step::ValueInCycle_(double x) const noexcept {
    const FPOINT& first = points_.front();
    if (points_.size() < 2) {
        return first.y;
    }
    const double period = GetFunctionPeriodForCalculation();
    const double phase =
        detail::IsPeriod(period) ? detail::CyclePhase(x - first.x, period) : lmw::kUndefined;
    if (!lmw::IsDefined(phase)) {
        return lmw::kUndefined;
    }
    return points_[PieceOf_(std::min(first.x + phase, points_.back().x))].y;
}

/// The piece of any x not before the first point; the last point has one of its own.
std::size_t Step::PieceOf_(double x) const noexcept {
    if (!(x < points_.back().x)) {
        return points_.size() - 1;
    }
    return table_ ? table_->Piece(x) : SearchedPiece(points_, x);
}

double Step::DyDx(double /*x*/, const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    return 0.0;
}

double Step::Integrate(double a, double b,
                       const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    if (points_.empty()) {
        return lmw::kUndefined;
    }
    if (!std::isfinite(a) || !std::isfinite(b)) {
        return std::isnan(a) ? a : std::isnan(b) ? b : lmw::kUndefined;
    }
    const double from = std::min(a, b);
    const double to = std::max(a, b);
    const double first_x = points_.front().x;
    const double last_x = points_.back().x;
    double sum = 0.0;
    if (from < first_x) {
        const double value = ValueBefore_(from);
        if (!lmw::IsDefined(value)) {
            return lmw::kUndefined;
        }
        sum += value * (std::min(to, first_x) - from);
    }
    if (from < last_x && to > first_x) {
        sum += IntegralOfData_(std::max(from, first_x), std::min(to, last_x));
    }
    if (to > last_x) {
        const double after = IntegralAfter_(std::max(from, last_x), to);
        if (!lmw::IsDefined(after)) {
            return lmw::kUndefined;
        }
        sum += after;
    }
    return sum;
}

/// first x <= from <= to <= last x.
double Step::IntegralOfData_(double from, double to) const noexcept {
    const std::size_t begin = PieceOf_(from);
    const std::size_t end = PieceOf_(to);
    if (end <= begin) {
        return points_[begin].y * (to - from);
    }
    double sum = points_[begin].y * (points_[begin + 1].x - from);
    if (table_ && table_->HasSums()) {
        sum += table_->WholePieces(begin + 1, end);
    } else {
        for (std::size_t i = begin + 1; i < end; ++i) {
            sum += points_[i].y * (points_[i + 1].x - points_[i].x);
        }
    }
    return sum + points_[end].y * (to - points_[end].x);
}

/// last x <= from < to.
double Step::IntegralAfter_(double from, double to) const noexcept {
    if (TailAfter() != TailType::Cycle() || points_.size() < 2) {
        // A slope tail is one piece like any other, with the value at its left end.
        const double value = ValueOf_(from);
        return lmw::IsDefined(value) ? value * (to - from) : lmw::kUndefined;
    }
    const double period = GetFunctionPeriodForCalculation();
    if (!detail::IsPeriod(period)) {
        return lmw::kUndefined;
    }
    const double first_x = points_.front().x;
    const double last_x = points_.back().x;
    return detail::IntegralOverCycles(
        from - first_x, to - first_x, period, [&](double u, double v) {
            const double begin = first_x + u;
            const double end = first_x + v;
            double sum = 0.0;
            if (begin < last_x) {
                sum += IntegralOfData_(begin, std::min(end, last_x));
            }
            if (end > last_x) {  // the last value holds to the end of a period longer than the data
                sum += points_.back().y * (end - std::max(begin, last_x));
            }
            return sum;
        });
}

double Step::GetFunctionPeriodForCalculation() const {
    if (lmw::IsDefined(FunctionPeriod()) || points_.empty()) {
        return FunctionPeriod();
    }
    return points_.back().x - points_.front().x;
}

void Step::Evaluate(std::span<const double> x, std::span<double> values) const {
    detail::ForEach(x, values, [this](double site) { return (*this)(site); });
}

void Step::DyDx(std::span<const double> x, std::span<double> slopes) const {
    std::fill_n(slopes.begin(), std::min(x.size(), slopes.size()), 0.0);
}

void Step::Integrate(double from, std::span<const double> to, std::span<double> integrals) const {
    const math::algorithm::Tolerance<double> tolerance;
    detail::ForEach(to, integrals, [&](double bound) { return Integrate(from, bound, tolerance); });
}

CurveDomain Step::Domain() const {
    if (points_.empty()) {
        return {};
    }
    CurveDomain domain{points_.front().x, points_.back().x};
    const bool open_before = TailBefore() == TailType::None() || TailBefore() == TailType::Cycle();
    domain.before = open_before ? Beyond::kUndefined : Beyond::kLine;
    domain.after = detail::KindAfter(TailAfter());
    if (domain.after == Beyond::kRepeats) {
        domain.period = GetFunctionPeriodForCalculation();
        if (points_.size() < 2) {
            domain.after = Beyond::kLine;
            domain.period = lmw::kUndefined;
        } else if (!detail::IsPeriod(domain.period)) {
            domain.after = Beyond::kUndefined;
            domain.period = lmw::kUndefined;
        }
    }
    return domain;
}

}  // namespace math::fn::interpolate
