#pragma once

// From the caller's points to an evaluable curve: cutting and closing or padding for a cycle,
// slopes, smoothing, and the errors of all that.

#include "common/math/curve_common.h"
#include "common/math/detail/curve_points.h"
#include "common/math/detail/prepared_curve.h"
#include "common/status.h"

#include <cstdint>
#include <memory>

namespace math::fn::interpolate::detail {

using SharedCurve = std::shared_ptr<const PreparedCurve>;

/// How a curve is to be prepared.
struct CurveForm {
    /// 0: straight lines.
    std::uint32_t tension = 0;
    /// Below 100 the points are smoothed, with tension only.
    std::uint32_t smooth = 100;
    ActiveRange::Ends ends = ActiveRange::Ends::kOfPolynomial;
};

/// Makes `prepared` from two or more points. On failure `prepared` stays null; what can fail is
/// listed at Linear and Spline. Catches everything the standard library throws.
///
/// The calling thread's construction mark is set meanwhile and floating-point exceptions do not
/// trap: a sum over the data that overflows is no fault of an evaluation that never asks for it.
gtl::status PrepareCurve(const CurvePoints& points, const algorithm::Common& common, double period,
                         const CurveForm& form, SharedCurve& prepared);

}  // namespace math::fn::interpolate::detail
