#pragma once

// A kind of function of one's own: the water content curve of van Genuchten.
// docs/write-a-function-kind.md walks through this file.

#include <common/fn/capabilities.h>
#include <common/fn/fn_error.h>
#include <common/fn/fn_kind.h>
#include <common/undefined.h>

#include <cmath>
#include <memory>
#include <string>

/// Volumetric water content over pore-water pressure; suctions are negative pressures.
///
///     theta(s) = theta_r + (theta_s - theta_r) * [1 + (s/a)^n]^-(1 - 1/n),  s = -pressure > 0
///
/// after M. Th. van Genuchten (1980), A closed-form equation for predicting the hydraulic
/// conductivity of unsaturated soils, Soil Science Society of America Journal 44, 892-898, eq. 3,
/// with a = 1/alpha in the unit of the pressures. A pressure of 0 or more gives theta_s.
class FnVanGenuchten final : public FnKind,
                             public lmw::fn::IFnUpdateCalculatedValues,
                             public lmw::fn::IFnLastError {
 public:
    FnVanGenuchten() : FnKind(Dictionary()) {}

    double A() const { return a_; }
    void SetA(double a) { Change(a_, a); }
    double N() const { return n_; }
    void SetN(double n) { Change(n_, n); }
    double Saturated() const { return theta_s_; }
    void SetSaturated(double theta_s) { Change(theta_s_, theta_s); }
    double Residual() const { return theta_r_; }
    void SetResidual(double theta_r) { Change(theta_r_, theta_r); }

    double Calculate(const double* x, const double* /*y*/) const override {
        if (!IsUpToDate()) {
            return lmw::kUndefined;
        }
        const double suction = -*x;
        if (suction <= 0.0) {
            return theta_s_;
        }
        return theta_r_ + (theta_s_ - theta_r_) * std::pow(1.0 + std::pow(suction / a_, n_), -m_);
    }

    std::unique_ptr<FnImpl> Clone() const override {
        return std::make_unique<FnVanGenuchten>(*this);
    }

    std::wstring KindName() const override { return L"VanGenuchten"; }

    // What follows from the definition is computed here, once, and only read afterwards.
    gtl::status Prepare() override {
        if (!lmw::IsDefined(a_) || !lmw::IsDefined(n_) || !lmw::IsDefined(theta_s_) || a_ <= 0.0 ||
            n_ <= 1.0) {
            return lmw::fn::error::FunctionDefinitionIncomplete();
        }
        m_ = 1.0 - 1.0 / n_;
        return {};
    }

    // A new status each time: many threads may ask at once.
    gtl::status LastError() const override {
        return IsUpToDate() ? UnableToComputeValue_()
                            : lmw::fn::error::FunctionDefinitionIncomplete();
    }

    // One dictionary for all functions of the kind, built on first use. Identity comes first.
    static const lmw::fn::AttributeDictionary& Dictionary() {
        struct Attributes : lmw::fn::AttributeDictionary {
            Attributes() {
                RegisterIdentity_(*this);
                RegisterMember_(FnAttrA(), &FnVanGenuchten::A, &FnVanGenuchten::SetA);
                RegisterMember_(FnAttrN(), &FnVanGenuchten::N, &FnVanGenuchten::SetN);
                RegisterMember_(FnAttrSatWC(), &FnVanGenuchten::Saturated,
                                &FnVanGenuchten::SetSaturated);
                RegisterMember_(FnAttrResWC(), &FnVanGenuchten::Residual,
                                &FnVanGenuchten::SetResidual);
            }
        };
        static const Attributes dictionary;
        return dictionary;
    }

 private:
    void Change(double& parameter, double value) {
        parameter = value;
        DefinitionChanged();
    }

    double a_ = lmw::kUndefined;
    double n_ = lmw::kUndefined;
    double theta_s_ = lmw::kUndefined;
    double theta_r_ = 0.0;
    double m_ = 0.0;  // derived
};
