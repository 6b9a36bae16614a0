#pragma once

// Functions of data points: steps, straight lines and splines. Each evaluates through the curve of
// the same name in common/math, whose headers say what holds between and beyond the points; this
// header says what the attributes add.

#include "common/export.h"
#include "common/fn/capabilities.h"
#include "common/fn/fn_kind.h"
#include "common/math/fpoint.h"
#include "common/math/linear.h"
#include "common/math/spline.h"
#include "common/math/step.h"
#include "common/math/tail_type.h"
#include "common/undefined.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// What the three kinds share: points (attribute "DataInit"), tails ("SlopeBefore", "SlopeAfter"),
/// the period of a cycle ("FunctionPeriod"), the scales ("LogInput", "LogOutput") and the
/// parameters of the data tables ("InputParam", "OutputParam"). "NumPoints" can only be read.
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
    /// Whether the tail leads away from the values of the points.
    [[nodiscard]] virtual bool IsLevel_(const math::fn::TailType& tail) const;

    /// A curve's value and derivative on the scales of the function.
    template <class Curve>
    [[nodiscard]] double ValueOn_(const Curve& curve, double x) const;
    template <class Curve>
    [[nodiscard]] double SlopeOn_(const Curve& curve, double x,
                                  const math::algorithm::Tolerance<double>& tolerance) const;

 private:
    [[nodiscard]] bool IsPlain_() const { return !log_input_ && !log_output_; }

    std::vector<FPOINT> points_;
    math::fn::TailType tail_before_;
    math::fn::TailType tail_after_;
    double period_ = lmw::kUndefined;
    bool log_input_ = false;
    bool log_output_ = false;
};

/// Kind "Step": see math::fn::interpolate::Step.
class LMW_API FnStep final : public FnPoints {
 public:
    FnStep();
    FnStep(const FnStep&) = default;
    FnStep& operator=(const FnStep&) = delete;
    ~FnStep() override;

    [[nodiscard]] double Calculate(const double* x, const double* y) const override;
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override;
    [[nodiscard]] std::wstring KindName() const override;
    [[nodiscard]] double DyDx(double x,
                              const math::algorithm::Tolerance<double>& tolerance) const override;
    [[nodiscard]] double Integrate(
        double a, double b, const math::algorithm::Tolerance<double>& tolerance) const override;

 private:
    gtl::status MakeCurve_(const std::vector<FPOINT>& points) override;
    void DropCurve_() override;
    [[nodiscard]] bool IsLevel_(const math::fn::TailType& tail) const override;

    math::fn::interpolate::Step curve_;
};

/// Kind "Linear": see math::fn::interpolate::Linear.
class LMW_API FnLinear final : public FnPoints {
 public:
    FnLinear();
    FnLinear(const FnLinear&) = default;
    FnLinear& operator=(const FnLinear&) = delete;
    ~FnLinear() override;

    [[nodiscard]] double Calculate(const double* x, const double* y) const override;
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override;
    [[nodiscard]] std::wstring KindName() const override;
    [[nodiscard]] double DyDx(double x,
                              const math::algorithm::Tolerance<double>& tolerance) const override;
    [[nodiscard]] double Integrate(
        double a, double b, const math::algorithm::Tolerance<double>& tolerance) const override;

 private:
    gtl::status MakeCurve_(const std::vector<FPOINT>& points) override;
    void DropCurve_() override;

    math::fn::interpolate::Linear curve_;
};

/// Kind "Spline", with the further attributes "Smooth" and "Tension": see
/// math::fn::interpolate::Spline. A default-made one passes through its points in straight lines
/// (smooth 100, tension 0).
class LMW_API FnSpline final : public FnPoints {
 public:
    FnSpline();
    FnSpline(const FnSpline&) = default;
    FnSpline& operator=(const FnSpline&) = delete;
    ~FnSpline() override;

    [[nodiscard]] std::uint32_t Smooth() const { return smooth_; }
    void SetSmooth(std::uint32_t smooth);
    [[nodiscard]] std::uint32_t Tension() const { return tension_; }
    void SetTension(std::uint32_t tension);

    [[nodiscard]] double Calculate(const double* x, const double* y) const override;
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override;
    [[nodiscard]] std::wstring KindName() const override;
    [[nodiscard]] double DyDx(double x,
                              const math::algorithm::Tolerance<double>& tolerance) const override;
    [[nodiscard]] double Integrate(
        double a, double b, const math::algorithm::Tolerance<double>& tolerance) const override;

 private:
    gtl::status MakeCurve_(const std::vector<FPOINT>& points) override;
    void DropCurve_() override;

    std::uint32_t smooth_ = 100;
    std::uint32_t tension_ = 0;
    math::fn::interpolate::Spline curve_;
};
