#pragma once

// What functions of data points share: points, tails, period and scales. The kinds are in
// fn_curves.h.

#include "common/export.h"
#include "common/fn/capabilities.h"
#include "common/fn/fn_kind.h"
#include "common/math/fpoint.h"
#include "common/math/tail_type.h"
#include "common/undefined.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A function of data points, evaluated through a curve: points (attribute "DataInit"), tails
/// ("SlopeBefore", "SlopeAfter"), the period of a cycle ("FunctionPeriod"), the scales ("LogInput",
/// "LogOutput") and the parameters of the data tables ("InputParam", "OutputParam"). "NumPoints"
/// can only be read.
///
/// 1. With LogInput the curve runs over log10 x, with LogOutput it gives log10 of the value; points
///    are given, and values returned, in plain numbers all the same. Slopes of tails and the period
///    belong to the curve, so they count in the logarithms. An x of 0 or less has no value on a
///    logarithmic input.
/// 2. Preparing fails when there are no points
///    (lmw::fn::error::FunctionDefinitionIncomplete), when a coordinate on a logarithmic scale is
///    not positive (gtl::impl::range_error::OutOfBounds), and as the curve's preparation does.
///    Between a change and the next preparation every value is undefined.
/// 3. The derivative is offered always, the integral on plain scales only.
/// 4. The values are bounded by those of the points unless a tail is a slope other than 0, or Calc
///    on a curve other than a step.
///
/// Copies share the prepared curve. An evaluation on plain scales is that of the curve and one
/// comparison.
class LMW_API FnPoints : public FnKind,
                         public lmw::fn::IFnUpdateCalculatedValues,
                         public lmw::fn::IFnLastError,
                         public lmw::fn::IFnOutputExtents,
                         public lmw::fn::IFnSupportsReview,
                         public lmw::fn::IFnReview {
 public:
    FnPoints& operator=(const FnPoints&) = delete;
    ~FnPoints() override;

    /// The attributes that the kinds share.
    [[nodiscard]] static const lmw::fn::AttributeDictionary& SharedDictionary();

    /// By increasing x, in the units of the two parameters.
    [[nodiscard]] const std::vector<FPOINT>& Points() const { return points_; }
    void SetPoints(const std::vector<FPOINT>& points);
    [[nodiscard]] std::uint32_t NumberOfPoints() const;

    [[nodiscard]] math::fn::TailType TailBefore() const { return tail_before_; }
    void SetTailBefore(const math::fn::TailType& tail);
    [[nodiscard]] math::fn::TailType TailAfter() const { return tail_after_; }
    void SetTailAfter(const math::fn::TailType& tail);
    /// Undefined for the span of the data.
    [[nodiscard]] double Period() const { return period_; }
    void SetPeriod(double period);

    [[nodiscard]] bool IsLogInput() const { return log_input_; }
    void SetLogInput(bool logarithmic);  // NOLINT: the attribute is a truth value
    [[nodiscard]] bool IsLogOutput() const { return log_output_; }
    void SetLogOutput(bool logarithmic);  // NOLINT: likewise

    [[nodiscard]] int InputRangeNumPoints() const override;
    [[nodiscard]] double InputRangeAt(int index) const override;
    [[nodiscard]] bool SupportsDyDx() const override;
    [[nodiscard]] bool SupportsIntegrate() const override;
    gtl::status Prepare() override;
    [[nodiscard]] gtl::status LastError() const override;
    [[nodiscard]] gtl::range<double> OutputExtents() const override;
    [[nodiscard]] const lmw::fn::IFnReview* Review() const override;
    [[nodiscard]] int NumPoints() const override;
    [[nodiscard]] FPOINT PointAt(int index) const override;
    [[nodiscard]] double ValueAt(int index) const override;

 protected:
    using FnKind::FnKind;
    FnPoints(const FnPoints&) = default;

    /// Says that the definition changed, and lets go of the curve.
    void CurveChanged_();

    /// Makes and prepares the curve through `points`, which are on the curve's scales.
    virtual gtl::status MakeCurve_(const std::vector<FPOINT>& points) = 0;
    virtual void DropCurve_() = 0;
    /// The curve itself, on its own scales.
    [[nodiscard]] virtual double CurveValue_(double x) const = 0;
    [[nodiscard]] virtual double CurveSlope_(double x) const = 0;
    /// Whether the tail keeps to the values of the points.
    [[nodiscard]] virtual bool IsLevel_(const math::fn::TailType& tail) const;

    /// Neither scale is logarithmic: the function is its curve.
    [[nodiscard]] bool IsPlain_() const { return is_plain_; }
    /// The value and the slope of the function where it is not its curve.
    [[nodiscard]] double ValueOnLogarithms_(double x) const;
    [[nodiscard]] double SlopeOnLogarithms_(double x) const;

 private:
    void ScalesChanged_();

    std::vector<FPOINT> points_;
    math::fn::TailType tail_before_;
    math::fn::TailType tail_after_;
    double period_ = lmw::kUndefined;
    bool log_input_ = false;
    bool log_output_ = false;
    bool is_plain_ = true;
};
