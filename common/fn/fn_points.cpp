#include "common/fn/fn_points.h"

#include "common/fn/fn_error.h"
#include "common/range_error.h"
#include "common/str/number_text.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using math::fn::TailType;

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
    ScalesChanged_();
}

void FnPoints::SetLogOutput(bool logarithmic) {
    log_output_ = logarithmic;
    ScalesChanged_();
}

void FnPoints::ScalesChanged_() {
    is_plain_ = !log_input_ && !log_output_;
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

// v(x) = 10^c(x), c(log10 x) or 10^c(log10 x), c being the curve.
double FnPoints::ValueOnLogarithms_(double x) const {
    if (log_input_) {
        if (x <= 0.0) {
            return lmw::kUndefined;
        }
        x = std::log10(x);
    }
    const double on_curve = CurveValue_(x);
    return log_output_ && lmw::IsDefined(on_curve) ? std::pow(10.0, on_curve) : on_curve;
}

// dv/dx = c' * (v ln 10 on a logarithmic output) / (x ln 10 on a logarithmic input).
double FnPoints::SlopeOnLogarithms_(double x) const {
    if (log_input_ && x <= 0.0) {
        return lmw::kUndefined;
    }
    const double on_curve = log_input_ ? std::log10(x) : x;
    double slope = CurveSlope_(on_curve);
    const double exponent = log_output_ ? CurveValue_(on_curve) : 0.0;
    if (!lmw::IsDefined(slope) || !lmw::IsDefined(exponent)) {
        return lmw::kUndefined;
    }
    if (log_output_) {
        slope *= std::pow(10.0, exponent) * std::numbers::ln10;
    }
    return log_input_ ? slope / (x * std::numbers::ln10) : slope;
}
