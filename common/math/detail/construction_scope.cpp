#include "common/math/detail/construction_scope.h"

#include "common/math/curve_construction.h"

namespace math::fn::interpolate {

namespace {

thread_local unsigned constructing = 0;

}  // namespace

unsigned ConstructingCurve() noexcept {
    return constructing;
}

namespace detail {

ConstructionScope::ConstructionScope() noexcept : previous_(constructing) {
    constructing = 1;
    std::feholdexcept(&environment_);
}

ConstructionScope::~ConstructionScope() {
    std::fesetenv(&environment_);
    constructing = previous_;
}

}  // namespace detail
}  // namespace math::fn::interpolate
