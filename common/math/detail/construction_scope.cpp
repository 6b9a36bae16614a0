#include "common/math/detail/construction_scope.h"

#include "common/math/curve_construction.h"
#include "common/sys/floating_point.h"

namespace math::fn::interpolate {

namespace {

thread_local unsigned constructing = 0;

}  // namespace

unsigned ConstructingCurve() noexcept {
    return constructing;
}

namespace detail {

namespace {

constexpr int kHeldBack = FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID;

}  // namespace

// Saving and restoring the whole environment costs as much as preparing a few points; without traps
// it is enough to look at the flags.
ConstructionScope::ConstructionScope() noexcept
    : trapping_(sys::TrappingFloatingPointExceptions() != 0), previous_(constructing) {
    constructing = 1;
    if (trapping_) {
        std::feholdexcept(&environment_);
    } else {
        flags_ = std::fetestexcept(kHeldBack);
    }
}

ConstructionScope::~ConstructionScope() {
    if (trapping_) {
        std::fesetenv(&environment_);
    } else if (const int raised = std::fetestexcept(kHeldBack) & ~flags_; raised != 0) {
        std::feclearexcept(raised);
    }
    constructing = previous_;
}

}  // namespace detail
}  // namespace math::fn::interpolate
