#include "common/fn/fn_points.h"

#include "common/fn/fn_error.h"
#include "common/range_error.h"
#include "common/str/number_text.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using math::algorithm::Tolerance;
using math::fn::TailType;
using math::fn::interpolate::Linear;
using math::fn::interpolate::Spline;
using math::fn::interpolate::Step;

class PointsDictionary final : public lmw::fn::AttributeDictionary {
 public:
    PointsDictionary() {
        FnKind::RegisterIdentity_(*this);
        FnKind::RegisterParams_(*this);
        RegisterMember_(FnAttrDataInit(), &FnPoints::Points, &FnPoints::SetPoints);
        RegisterReadOnly_(FnAttrNumPoints(), &FnPoints::NumberOfPoints);
        RegisterMember_(FnAttrTailBefore(), &FnPoints::TailBefore, &FnPoints::SetTailBefore);
        RegisterMember_(FnAttrTailAfter(), &FnPoints::TailAfter, &FnPoints::SetTailAfter);
        RegisterMember_(FnAttrFunctionPeriod(), &FnPoints::Period, &FnPoints::SetPeriod);
        RegisterMember_(FnAttrLogInput(), &FnPoints::IsLogInput, &FnPoints::SetLogInput);
        RegisterMember_(FnAttrLogOutput(), &FnPoints::IsLogOutput, &FnPoints::SetLogOutput);
    }
};

class SplineDictionary final : public lmw::fn::AttributeDictionary {
 public:
    SplineDictionary() : AttributeDictionary(&FnPoints::SharedDictionary()) {
        FnKind::RegisterIdentity_(*this);
        RegisterMember_(FnAttrSmooth(), &FnSpline::Smooth, &FnSpline::SetSmooth);
        RegisterMember_(FnAttrTension(), &FnSpline::Tension, &FnSpline::SetTension);
    }
};

const lmw::fn::AttributeDictionary& DictionaryOfSplines() {
    static const SplineDictionary dictionary;
    return dictionary;
}

const FPOINT* First(const std::vector<FPOINT>& points) {
    return points.data();
}

const FPOINT* Last(const std::vector<FPOINT>& points) {
    return points.data() + points.size();
}

// Replaces a coordinate by its logarithm.
gtl::status ToLogarithm(double& coordinate) {
    if (!(coordinate > 0.0)) {
        return gtl::impl::range_error::OutOfBounds(str::DoubleText(coordinate), L"0", {},
                                                   gtl::bound_kind::exclusive,
                                                   gtl::bound_kind::none);
    }
    coordinate = std::log10(coordinate);
    return {};
}

}  // namespace

FnPoints::~FnPoints() = default;

const lmw::fn::AttributeDictionary& FnPoints::SharedDictionary() {
    static const PointsDictionary dictionary;
    return dictionary;
}

void FnPoints::CurveChanged_() {
    DropCurve_();
    DefinitionChanged();
}

void FnPoints::SetPoints(const std::vector<FPOINT>& points) {
    points_ = points;
    CurveChanged_();
}

void FnPoints::SetTailBefore(const TailType& tail) {
    tail_before_ = tail;
    CurveChanged_();
}

void FnPoints::SetTailAfter(const TailType& tail) {
    tail_after_ = tail;
    CurveChanged_();
}

void FnPoints::SetPeriod(double period) {
    period_ = period;
    CurveChanged_();
}

void FnPoints::SetLogInput(bool logarithmic) {
    log_input_ = logarithmic;
    CurveChanged_();
}

void FnPoints::SetLogOutput(bool logarithmic) {
    log_output_ = logarithmic;
    CurveChanged_();
}

std::uint32_t FnPoints::NumberOfPoints() const {
    return static_cast<std::uint32_t>(points_.size());
}

int FnPoints::InputRangeNumPoints() const {
    return NumPoints();
}

double FnPoints::InputRangeAt(int index) const {
    return PointAt(index).x;
}

bool FnPoints::SupportsDyDx() const {
    return true;
}

bool FnPoints::SupportsIntegrate() const {
    return IsPlain_();
}

gtl::status FnPoints::Prepare() {
    DropCurve_();
    if (points_.empty()) {
        return lmw::fn::error::FunctionDefinitionIncomplete();
    }
    if (IsPlain_()) {
        return MakeCurve_(points_);
    }
    std::vector<FPOINT> scaled = points_;
    for (FPOINT& point : scaled) {
        gtl::status result = log_input_ ? ToLogarithm(point.x) : gtl::status();
        if (result.Succeeded() && log_output_) {
            result = ToLogarithm(point.y);
        }
        if (result.Failed()) {
            return result;
        }
    }
    return MakeCurve_(scaled);
}

gtl::status FnPoints::LastError() const {
    return IsUpToDate() ? UnableToComputeValue_() : lmw::fn::error::FunctionDefinitionIncomplete();
}

bool FnPoints::IsLevel_(const TailType& tail) const {
    return tail == TailType::None() || tail == TailType::Cycle() || tail == TailType::Slope(0.0);
}

gtl::range<double> FnPoints::OutputExtents() const {
    if (points_.empty() || !IsLevel_(tail_before_) || !IsLevel_(tail_after_)) {
        return {};
    }
    const auto [least, most] = std::minmax_element(
        points_.begin(), points_.end(), [](const FPOINT& a, const FPOINT& b) { return a.y < b.y; });
    return {least->y, gtl::bound_kind::inclusive, most->y, gtl::bound_kind::inclusive};
}

const lmw::fn::IFnReview* FnPoints::Review() const {
    return this;
}

int FnPoints::NumPoints() const {
    return static_cast<int>(points_.size());
}

FPOINT FnPoints::PointAt(int index) const {
    return index >= 0 && index < NumPoints()
               ? points_[static_cast<std::size_t>(index)]
               : FPOINT{lmw::kUndefined, lmw::kUndefined, lmw::kUndefined};
}

double FnPoints::ValueAt(int index) const {
    const double x = PointAt(index).x;
    return lmw::IsDefined(x) ? Calculate(&x, nullptr) : lmw::kUndefined;
}

// v(x) = c(x), 10^c(x), c(log10 x) or 10^c(log10 x), c being the curve.
template <class Curve>
double FnPoints::ValueOn_(const Curve& curve, double x) const {
    if (IsPlain_()) {
        return curve(x);
    }
    if (log_input_) {
        if (x <= 0.0) {
            return lmw::kUndefined;
        }
        x = std::log10(x);
    }
    const double on_curve = curve(x);
    return log_output_ && lmw::IsDefined(on_curve) ? std::pow(10.0, on_curve) : on_curve;
}

// dv/dx = c' * (v ln 10 on a logarithmic output) / (x ln 10 on a logarithmic input).
template <class Curve>
double FnPoints::SlopeOn_(const Curve& curve, double x, const Tolerance<double>& tolerance) const {
    if (IsPlain_()) {
        return curve.DyDx(x, tolerance);
    }
    if (log_input_ && x <= 0.0) {
        return lmw::kUndefined;
    }
    const double on_curve = log_input_ ? std::log10(x) : x;
    double slope = curve.DyDx(on_curve, tolerance);
    if (!lmw::IsDefined(slope)) {
        return lmw::kUndefined;
    }
    if (log_output_) {
        const double exponent = curve(on_curve);
        if (!lmw::IsDefined(exponent)) {
            return lmw::kUndefined;
        }
        slope *= std::pow(10.0, exponent) * std::numbers::ln10;
    }
    return log_input_ ? slope / (x * std::numbers::ln10) : slope;
}

FnStep::FnStep() : FnPoints(SharedDictionary()), curve_(TailType(), TailType(), nullptr, nullptr) {}

FnStep::~FnStep() = default;

double FnStep::Calculate(const double* x, const double* /*y*/) const {
    return ValueOn_(curve_, *x);
}

std::unique_ptr<FnImpl> FnStep::Clone() const {
    return std::make_unique<FnStep>(*this);
}

std::wstring FnStep::KindName() const {
    return L"Step";
}

// By design: 0 everywhere, as the curve's own, also where the function has no value; the logarithms
// change nothing about it.
double FnStep::DyDx(double x, const Tolerance<double>& tolerance) const {
    return curve_.DyDx(x, tolerance);
}

double FnStep::Integrate(double a, double b, const Tolerance<double>& tolerance) const {
    return curve_.Integrate(a, b, tolerance);
}

gtl::status FnStep::MakeCurve_(const std::vector<FPOINT>& points) {
    curve_ = Step(TailBefore(), TailAfter(), First(points), Last(points));
    curve_.SetFunctionPeriod(Period());
    curve_.UpdateCalculatedValues();
    return {};
}

void FnStep::DropCurve_() {
    curve_ = Step(TailBefore(), TailAfter(), nullptr, nullptr);
}

// A slope before the data leads away from them, and one after them is even measured from their
// first point; Calc keeps the end value.
bool FnStep::IsLevel_(const TailType& tail) const {
    return FnPoints::IsLevel_(tail) || tail == TailType::Calc();
}

FnLinear::FnLinear()
    : FnPoints(SharedDictionary()), curve_(nullptr, nullptr, TailType(), TailType()) {}

FnLinear::~FnLinear() = default;

double FnLinear::Calculate(const double* x, const double* /*y*/) const {
    return ValueOn_(curve_, *x);
}

std::unique_ptr<FnImpl> FnLinear::Clone() const {
    return std::make_unique<FnLinear>(*this);
}

std::wstring FnLinear::KindName() const {
    return L"Linear";
}

double FnLinear::DyDx(double x, const Tolerance<double>& tolerance) const {
    return SlopeOn_(curve_, x, tolerance);
}

double FnLinear::Integrate(double a, double b, const Tolerance<double>& tolerance) const {
    return curve_.Integrate(a, b, tolerance);
}

gtl::status FnLinear::MakeCurve_(const std::vector<FPOINT>& points) {
    Linear curve(First(points), Last(points), TailBefore(), TailAfter());
    curve.SetFunctionPeriod(Period());
    gtl::status result = curve.UpdateCalculatedValues();
    if (result.Succeeded()) {
        curve_ = curve;
    }
    return result;
}

void FnLinear::DropCurve_() {
    curve_ = Linear(nullptr, nullptr, TailBefore(), TailAfter());
}

FnSpline::FnSpline()
    : FnPoints(DictionaryOfSplines()),
      curve_(smooth_, tension_, TailType(), TailType(), nullptr, nullptr, lmw::kUndefined) {}

FnSpline::~FnSpline() = default;

void FnSpline::SetSmooth(std::uint32_t smooth) {
    smooth_ = smooth;
    CurveChanged_();
}

void FnSpline::SetTension(std::uint32_t tension) {
    tension_ = tension;
    CurveChanged_();
}

double FnSpline::Calculate(const double* x, const double* /*y*/) const {
    return ValueOn_(curve_, *x);
}

std::unique_ptr<FnImpl> FnSpline::Clone() const {
    return std::make_unique<FnSpline>(*this);
}

std::wstring FnSpline::KindName() const {
    return L"Spline";
}

double FnSpline::DyDx(double x, const Tolerance<double>& tolerance) const {
    return SlopeOn_(curve_, x, tolerance);
}

double FnSpline::Integrate(double a, double b, const Tolerance<double>& tolerance) const {
    return curve_.Integrate(a, b, tolerance);
}

gtl::status FnSpline::MakeCurve_(const std::vector<FPOINT>& points) {
    Spline curve(smooth_, tension_, TailBefore(), TailAfter(), First(points), Last(points),
                 Period());
    gtl::status result = curve.UpdateCalculatedValues();
    if (result.Succeeded()) {
        curve_ = curve;
    }
    return result;
}

void FnSpline::DropCurve_() {
    curve_ = Spline(smooth_, tension_, TailBefore(), TailAfter(), nullptr, nullptr, Period());
}
