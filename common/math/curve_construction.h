#pragma once

// Whether the calling thread is constructing a curve right now. A handler of floating-point
// exceptions asks this: what is raised inside a construction is no fault of an evaluation and is
// not to be reported as one.

#include "common/export.h"

namespace math::fn::interpolate {

/// 1 while the calling thread prepares a Linear or a Spline, else 0.
LMW_API unsigned ConstructingCurve() noexcept;

}  // namespace math::fn::interpolate
