#pragma once

// The Fredlund-Xing water content curve as a function object. The formula, and its fit to measured
// points, are in common/fn/fred_xing.h.

#include "common/export.h"
#include "common/fn/capabilities.h"
#include "common/fn/fn_kind.h"
#include "common/fn/fred_xing.h"
#include "common/undefined.h"

#include <memory>
#include <string>

/// Volumetric water content over pore-water pressure: kind "FredlundXing", attributes "A", "N",
/// "M", "SatWC" (the saturated content) and "SuctionLimit". "A" and the limit are suctions in the
/// unit of the pressures; the limit is 1e6 unless set, the standard one in kPa.
///
/// Preparing fails when an attribute is undefined (lmw::fn::error::FunctionDefinitionIncomplete) or
/// not positive (gtl::impl::range_error::OutOfBounds). The derivative by pressure is analytic, 0
/// from pressure 0 on; there is no integral.
class LMW_API FnFredXing final : public FnKind,
                                 public lmw::fn::IFnUpdateCalculatedValues,
                                 public lmw::fn::IFnLastError {
 public:
    FnFredXing();
    FnFredXing(const FnFredXing&) = default;
    FnFredXing& operator=(const FnFredXing&) = delete;
    ~FnFredXing() override;

    [[nodiscard]] double A() const { return a_; }
    void SetA(double a);
    [[nodiscard]] double N() const { return n_; }
    void SetN(double n);
    [[nodiscard]] double M() const { return m_; }
    void SetM(double m);
    [[nodiscard]] double SaturatedContent() const { return theta_s_; }
    void SetSaturatedContent(double theta_s);
    [[nodiscard]] double SuctionLimit() const { return limit_; }
    void SetSuctionLimit(double limit);

    [[nodiscard]] double Calculate(const double* x, const double* y) const override;
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override;
    [[nodiscard]] std::wstring KindName() const override;
    [[nodiscard]] bool SupportsDyDx() const override;
    [[nodiscard]] double DyDx(double x,
                              const math::algorithm::Tolerance<double>& tolerance) const override;
    gtl::status Prepare() override;
    [[nodiscard]] gtl::status LastError() const override;

 private:
    void Change_(double& parameter, double value);

    double a_ = lmw::kUndefined;
    double n_ = lmw::kUndefined;
    double m_ = lmw::kUndefined;
    double theta_s_ = lmw::kUndefined;
    double limit_ = 0.0;
    math::fn::flow::FredXing curve_;
};
