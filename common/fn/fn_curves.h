#pragma once

// Functions of data points: steps, straight lines and splines. Each evaluates through the curve of
// the same name in common/math, whose headers say what holds between and beyond the points;
// fn_points.h says what the attributes add.

#include "common/export.h"
#include "common/fn/fn_points.h"
#include "common/math/linear.h"
#include "common/math/spline.h"
#include "common/math/step.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

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
    [[nodiscard]] double CurveValue_(double x) const override;
    [[nodiscard]] double CurveSlope_(double x) const override;
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
    [[nodiscard]] double CurveValue_(double x) const override;
    [[nodiscard]] double CurveSlope_(double x) const override;

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
    [[nodiscard]] double CurveValue_(double x) const override;
    [[nodiscard]] double CurveSlope_(double x) const override;

    std::uint32_t smooth_ = 100;
    std::uint32_t tension_ = 0;
    math::fn::interpolate::Spline curve_;
};
