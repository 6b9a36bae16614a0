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

constexpr unsigned kHeldBack = sys::kOverflow | sys::kZeroDivide | sys::kInvalid;

}  // namespace

// Changing the traps costs as much as preparing a few points; where there are none it is enough to
// look at the flags.
ConstructionScope::ConstructionScope() noexcept
    : trapping_(sys::TrappingFloatingPointExceptions()),
      flags_(sys::FloatingPointFlags()),
      previous_(constructing) {
    constructing = 1;
    if (trapping_ != 0) {
        sys::SetTrappingFloatingPointExceptions(0);
    }
}

ConstructionScope::~ConstructionScope() {
    if (trapping_ != 0) {
        sys::SetTrappingFloatingPointExceptions(trapping_);
        sys::SetFloatingPointFlags(flags_ & ~trapping_);
    } else if (const unsigned now = sys::FloatingPointFlags(); (now & kHeldBack & ~flags_) != 0) {
        sys::SetFloatingPointFlags(now & (~kHeldBack | flags_));
    }
    constructing = previous_;
}

}  // namespace detail
}  // namespace math::fn::interpolate
