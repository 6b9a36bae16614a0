#include "common/fn/fn_curves.h"

namespace {

using math::algorithm::Tolerance;
using math::fn::TailType;
using math::fn::interpolate::Linear;
using math::fn::interpolate::Spline;
using math::fn::interpolate::Step;

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

}  // namespace

FnStep::FnStep() : FnPoints(SharedDictionary()), curve_(TailType(), TailType(), nullptr, nullptr) {}

FnStep::~FnStep() = default;

double FnStep::Calculate(const double* x, const double* /*y*/) const {
    return IsPlain_() ? curve_(*x) : ValueOnLogarithms_(*x);
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

double FnStep::CurveValue_(double x) const {
    return curve_(x);
}

double FnStep::CurveSlope_(double x) const {
    return curve_.DyDx(x, Tolerance<double>());
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
    return IsPlain_() ? curve_(*x) : ValueOnLogarithms_(*x);
}

std::unique_ptr<FnImpl> FnLinear::Clone() const {
    return std::make_unique<FnLinear>(*this);
}

std::wstring FnLinear::KindName() const {
    return L"Linear";
}

double FnLinear::DyDx(double x, const Tolerance<double>& tolerance) const {
    return IsPlain_() ? curve_.DyDx(x, tolerance) : SlopeOnLogarithms_(x);
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

double FnLinear::CurveValue_(double x) const {
    return curve_(x);
}

double FnLinear::CurveSlope_(double x) const {
    return curve_.DyDx(x, Tolerance<double>());
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
    return IsPlain_() ? curve_(*x) : ValueOnLogarithms_(*x);
}

std::unique_ptr<FnImpl> FnSpline::Clone() const {
    return std::make_unique<FnSpline>(*this);
}

std::wstring FnSpline::KindName() const {
    return L"Spline";
}

double FnSpline::DyDx(double x, const Tolerance<double>& tolerance) const {
    return IsPlain_() ? curve_.DyDx(x, tolerance) : SlopeOnLogarithms_(x);
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

double FnSpline::CurveValue_(double x) const {
    return curve_(x);
}

double FnSpline::CurveSlope_(double x) const {
    return curve_.DyDx(x, Tolerance<double>());
}
