#include "common/fn/fn_fred_xing.h"

#include "common/fn/fn_error.h"
#include "common/math/unit_set.h"
#include "common/range_error.h"
#include "common/str/number_text.h"

#include <cmath>
#include <numbers>

namespace {

using math::fn::flow::FredXing;

class FredXingDictionary final : public lmw::fn::AttributeDictionary {
 public:
    FredXingDictionary() {
        FnKind::RegisterIdentity_(*this);
        FnKind::RegisterParams_(*this);
        RegisterMember_(FnAttrA(), &FnFredXing::A, &FnFredXing::SetA);
        RegisterMember_(FnAttrN(), &FnFredXing::N, &FnFredXing::SetN);
        RegisterMember_(FnAttrM(), &FnFredXing::M, &FnFredXing::SetM);
        RegisterMember_(FnAttrSatWC(), &FnFredXing::SaturatedContent,
                        &FnFredXing::SetSaturatedContent);
        RegisterMember_(FnAttrSuctionLimit(), &FnFredXing::SuctionLimit,
                        &FnFredXing::SetSuctionLimit);
    }
};

const lmw::fn::AttributeDictionary& DictionaryOfCurves() {
    static const FredXingDictionary dictionary;
    return dictionary;
}

}  // namespace

FnFredXing::FnFredXing()
    : FnKind(DictionaryOfCurves()), limit_(FredXing::CalcLimit(math::UnitSet::KiloPascal())) {}

FnFredXing::~FnFredXing() = default;

void FnFredXing::Change_(double& parameter, double value) {
    parameter = value;
    curve_ = FredXing();
    DefinitionChanged();
}

void FnFredXing::SetA(double a) {
    Change_(a_, a);
}

void FnFredXing::SetN(double n) {
    Change_(n_, n);
}

void FnFredXing::SetM(double m) {
    Change_(m_, m);
}

void FnFredXing::SetSaturatedContent(double theta_s) {
    Change_(theta_s_, theta_s);
}

void FnFredXing::SetSuctionLimit(double limit) {
    Change_(limit_, limit);
}

double FnFredXing::Calculate(const double* x, const double* /*y*/) const {
    return curve_(*x);
}

std::unique_ptr<FnImpl> FnFredXing::Clone() const {
    return std::make_unique<FnFredXing>(*this);
}

std::wstring FnFredXing::KindName() const {
    return L"FredlundXing";
}

bool FnFredXing::SupportsDyDx() const {
    return true;
}

// With s the suction, r = 0.003 L, t = (s/a)^n and K = ln(1 + L/r), theta = theta_s C W, where
// C = 1 - ln(1 + s/r) / K and W = ln(e + t)^-m:
//     d theta / ds = theta_s (C' W + C W'),  C' = -1 / (K (r + s)),
//     W' = -m W / ln(e + t) * n/s * t / (e + t).
double FnFredXing::DyDx(double x, const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    const double content = curve_(x);
    if (!lmw::IsDefined(content) || std::isnan(x)) {
        return lmw::kUndefined;
    }
    if (x >= 0.0) {
        return 0.0;
    }
    const double suction = -x;
    const double residual = 0.003 * limit_;  // as the curve has it
    const double whole = std::log(1.0 + limit_ / residual);
    const double correction = 1.0 - std::log(1.0 + suction / residual) / whole;
    // As in the curve: where the power would leave the range of a double, e is nothing beside it.
    constexpr double kLogOfLargest = 709.0;
    const double log_power = n_ * std::log(suction / a_);
    const bool is_huge = log_power > kLogOfLargest;
    const double power = is_huge ? 0.0 : std::pow(suction / a_, n_);
    const double logarithm = is_huge ? log_power : std::log(std::numbers::e + power);
    const double share = is_huge ? 1.0 : power / (std::numbers::e + power);
    const double shape = std::pow(1.0 / logarithm, m_);
    const double shape_slope = -m_ * shape / logarithm * n_ / suction * share;
    const double by_suction =
        theta_s_ * (correction * shape_slope - shape / (whole * (residual + suction)));
    return -by_suction;
}

gtl::status FnFredXing::Prepare() {
    for (const double parameter : {a_, n_, m_, theta_s_, limit_}) {
        if (!lmw::IsDefined(parameter)) {
            return lmw::fn::error::FunctionDefinitionIncomplete();
        }
        if (!(parameter > 0.0)) {
            return gtl::impl::range_error::OutOfBounds(str::DoubleText(parameter), L"0", {},
                                                       gtl::bound_kind::exclusive,
                                                       gtl::bound_kind::none);
        }
    }
    curve_ = FredXing(a_, n_, m_, theta_s_, limit_);
    return {};
}

gtl::status FnFredXing::LastError() const {
    return IsUpToDate() ? UnableToComputeValue_() : lmw::fn::error::FunctionDefinitionIncomplete();
}
