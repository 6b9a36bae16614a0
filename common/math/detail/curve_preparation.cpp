#include "common/math/detail/curve_preparation.h"

#include "common/errors.h"
#include "common/math/curve_construction.h"
#include "common/math/detail/construction_scope.h"
#include "common/math/detail/cycle.h"
#include "common/math/detail/tension_spline.h"
#include "common/math/tolerance.h"
#include "common/range_error.h"
#include "common/str/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace math::fn::interpolate::detail {

namespace {

constexpr std::uint32_t kXNotIncreasing = 22762;

/// A cycle with tension is padded with up to this many points at either side.
constexpr std::size_t kMostPadding = 10;

gtl::status EngineStatus(const wchar_t* call, EngineError error) {
    return error == EngineError::kNone
               ? gtl::status()
               : LmwError::err_sysserv(call, std::to_wstring(static_cast<std::int32_t>(error)));
}

gtl::status PeriodStatus(double period) {
    return IsPeriod(period) ? gtl::status()
                            : gtl::impl::range_error::OutOfBounds(str::DoubleText(period), L"0",
                                                                  L"", gtl::bound_kind::exclusive,
                                                                  gtl::bound_kind::none);
}

/// Cuts the points at the end of the first period and closes it with the first value.
void CloseCycle(std::vector<double>& x, std::vector<double>& y, double period) {
    const double close_x = x.front() + period;
    const double close_y = y.front();
    const math::algorithm::Tolerance<double> tolerance(period);
    while (!x.empty() && tolerance.GreaterOrEqual(x.back(), close_x)) {
        x.pop_back();
        y.pop_back();
    }
    x.push_back(close_x);
    y.push_back(close_y);
}

/// Cuts the points at the end of the first period and repeats points on either side.
void PadCycle(std::vector<double>& x, std::vector<double>& y, double period) {
    const math::algorithm::Tolerance<double> tolerance(period);
    while (x.size() >= 2 && tolerance.GreaterOrEqual(x.back() - x.front(), period)) {
        x.pop_back();
        y.pop_back();
    }
    const std::size_t count = x.size();
    const std::size_t padding = std::min(count, kMostPadding);
    std::vector<double> padded_x;
    std::vector<double> padded_y;
    padded_x.reserve(count + 2 * padding);
    padded_y.reserve(count + 2 * padding);
    for (std::size_t i = count - padding; i < count; ++i) {
        padded_x.push_back(x[i] - period);
        padded_y.push_back(y[i]);
    }
    padded_x.insert(padded_x.end(), x.begin(), x.end());
    padded_y.insert(padded_y.end(), y.begin(), y.end());
    for (std::size_t i = 0; i < padding; ++i) {
        padded_x.push_back(x[i] + period);
        padded_y.push_back(y[i]);
    }
    x = std::move(padded_x);
    y = std::move(padded_y);
}

/// How many breakpoints of a padded cycle lie before the first point of the curve, and behind it.
std::size_t PaddingOf(std::size_t breakpoints) {
    return breakpoints < 3 * kMostPadding + 1 ? breakpoints / 3 : kMostPadding;
}

gtl::status MakeLines(const CurvePoints& points, bool cyclic, double period,
                      PiecewisePolynomial& polynomial) {
    std::vector<double> x(points.X().begin(), points.X().end());
    std::vector<double> y(points.Y().begin(), points.Y().end());
    EngineError error = EngineError::kNone;
    if (cyclic) {
        // The data are checked as they are: what a cycle cuts away has to be in order as well.
        error = polynomial.Start(x, y);
        CloseCycle(x, y, period);
    }
    if (error == EngineError::kNone) {
        error = polynomial.Start(std::move(x), std::move(y));
    }
    if (error != EngineError::kNone) {
        return EngineStatus(L"NewTask", error);
    }
    error = polynomial.SetOrder(kLinearOrder);
    if (error != EngineError::kNone) {
        return EngineStatus(L"EditSpline", error);
    }
    return EngineStatus(L"Construct", polynomial.Construct());
}

/// Message 22762 names the first point whose x is not above that of the point before it, counted
/// from 1.
gtl::status NotIncreasing(std::span<const double> x) {
    const auto after = std::adjacent_find(x.begin(), x.end(),
                                          [](double a, double b) { return !std::isless(a, b); });
    const std::ptrdiff_t point = after != x.end() ? after - x.begin() + 2 : 1;  // a lone NaN
    return gtl::status(kXNotIncreasing, std::to_wstring(point));
}

gtl::status MakeCubic(const CurvePoints& points, bool cyclic, double period, const CurveForm& form,
                      PiecewisePolynomial& polynomial) {
    std::vector<double> x(points.X().begin(), points.X().end());
    std::vector<double> y(points.Y().begin(), points.Y().end());
    if (!StrictlyIncreasing(x)) {
        return NotIncreasing(x);
    }
    if (cyclic) {
        PadCycle(x, y, period);
        if (!StrictlyIncreasing(x)) {  // a period that is lost in the rounding of x
            return NotIncreasing(x);
        }
    }
    TensionSpline spline(std::move(x), std::move(y), ShapeParameter(form.tension));
    spline.Smooth(form.smooth);
    std::vector<double> coefficients = spline.Coefficients();
    EngineError error = polynomial.Start(spline.TakeX(), spline.TakeY());
    if (error != EngineError::kNone) {
        return EngineStatus(L"NewTask", error);
    }
    error = polynomial.SetOrder(kCubicOrder);
    if (error == EngineError::kNone) {
        error = polynomial.SetCoefficients(std::move(coefficients));
    }
    return EngineStatus(L"EditSpline", error);
}

gtl::status Prepare(const CurvePoints& points, const algorithm::Common& common, double period,
                    const CurveForm& form, SharedCurve& prepared) {
    const bool cyclic = common.TailAfter() == TailType::Cycle();
    if (cyclic) {
        if (gtl::status result = PeriodStatus(period); result.Failed()) {
            return result;
        }
    }
    PiecewisePolynomial polynomial;
    gtl::status result = form.tension == 0 ? MakeLines(points, cyclic, period, polynomial)
                                           : MakeCubic(points, cyclic, period, form, polynomial);
    if (result.Failed()) {
        return result;
    }
    const bool padded = cyclic && form.tension != 0;
    const std::size_t padding = padded ? PaddingOf(polynomial.Size()) : 0;
    const std::size_t last = polynomial.Size() - (padded ? padding : 1);
    prepared = std::make_shared<const PreparedCurve>(std::move(polynomial),
                                                     ActiveRange{padding, last, form.ends},
                                                     common.TailBefore(), common.TailAfter());
    return {};
}

}  // namespace

gtl::status PrepareCurve(const CurvePoints& points, const algorithm::Common& common, double period,
                         const CurveForm& form, SharedCurve& prepared) {
    const ConstructionScope scope;
    try {
        return Prepare(points, common, period, form, prepared);
    } catch (const std::bad_alloc&) {
        return EngineStatus(L"NewTask", EngineError::kMemory);
    }
}

}  // namespace math::fn::interpolate::detail
