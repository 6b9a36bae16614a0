#pragma once

// The state of a thread while it prepares a curve.

namespace math::fn::interpolate::detail {

/// Marks the calling thread as constructing a curve (curve_construction.h) and holds back
/// floating-point exceptions: none traps, and an overflow, a division by zero or an invalid
/// operation leaves no flag behind. Scopes nest; each restores what it found.
class ConstructionScope {
 public:
    ConstructionScope() noexcept;
    ~ConstructionScope();
    ConstructionScope(const ConstructionScope&) = delete;
    ConstructionScope& operator=(const ConstructionScope&) = delete;

 private:
    unsigned trapping_;
    unsigned flags_;
    unsigned previous_;
};

}  // namespace math::fn::interpolate::detail
