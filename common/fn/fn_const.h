#pragma once

// Constants: a plain number, and numbers that are measured in a quantity.

#include "common/export.h"
#include "common/fn/capabilities.h"
#include "common/fn/fn_kind.h"
#include "common/undefined.h"

#include <memory>
#include <string>
#include <vector>

/// The same value everywhere: kind "Const", attribute "Value", so that "Const(5)" defines one. A
/// default-made constant is undefined and cannot be prepared
/// (lmw::fn::error::FunctionDefinitionIncomplete). Its derivative is 0 and its integral the value
/// times the distance of the bounds.
class LMW_API FnConst : public FnKind,
                        public lmw::fn::IFnUpdateCalculatedValues,
                        public lmw::fn::IFnLastError,
                        public lmw::fn::IFnOutputExtents {
 public:
    explicit FnConst(double value = lmw::kUndefined) : FnConst(Dictionary(), value) {}
    FnConst(const FnConst&) = default;
    FnConst& operator=(const FnConst&) = delete;
    ~FnConst() override;

    [[nodiscard]] static const lmw::fn::AttributeDictionary& Dictionary();

    [[nodiscard]] double Value() const { return value_; }
    void SetValue(double value);

    [[nodiscard]] double Calculate(const double* x, const double* y) const override;
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override;
    [[nodiscard]] std::wstring KindName() const override;
    [[nodiscard]] bool SupportsDyDx() const override;
    [[nodiscard]] double DyDx(double x,
                              const math::algorithm::Tolerance<double>& tolerance) const override;
    [[nodiscard]] bool SupportsIntegrate() const override;
    [[nodiscard]] double Integrate(
        double a, double b, const math::algorithm::Tolerance<double>& tolerance) const override;
    gtl::status Prepare() override;
    [[nodiscard]] gtl::status LastError() const override;
    [[nodiscard]] gtl::range<double> OutputExtents() const override;

 protected:
    FnConst(const lmw::fn::IAttributeDictionary& dictionary, double value)
        : FnKind(dictionary), value_(value) {}

 private:
    double value_;
};

/// A constant measured in a quantity, in the units of the project: one kind for each of the sixteen
/// attributes "Const...", named by its key, such as "ConstPressure(ConstPressure=20)" or short
/// "ConstPressure(20)". lmw::fn::attributes::ConvertUnits changes its units.
class LMW_API FnUnitConst final : public FnConst, public lmw::fn::IFnDynamicAttributes {
 public:
    /// `attribute` is one of ConstAttributes(); any other makes the kind of the plain number
    /// (FnAttrConstNoUnits).
    explicit FnUnitConst(const FnAttr& attribute, double value = lmw::kUndefined);
    FnUnitConst(const FnUnitConst&) = default;
    FnUnitConst& operator=(const FnUnitConst&) = delete;
    ~FnUnitConst() override;

    /// The sixteen attributes.
    [[nodiscard]] static std::vector<FnAttr> ConstAttributes();

    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override;
    [[nodiscard]] std::wstring KindName() const override;
    /// The inherited attribute "Value" is the same number and only there to be set.
    [[nodiscard]] bool HasAttributeNow(unsigned id) const override;
};
