#pragma once

// The step mark: up to which step results exist.

#include "common/file/step.h"

#include <cstdint>

namespace doc::file::mark {

/// A step number or one of two special marks: no mark (raw -1, a default-constructed one) and all
/// results (raw 0x7FFFFFFF, AllResults()).
struct MarkStep {
 public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;
    static constexpr std::uint32_t kAllResults = 0x7FFFFFFF;

    constexpr MarkStep() noexcept = default;
    /// The mark of a step. By design: no step (-1) becomes the mark of all results, not no mark;
    /// otherwise a caller that names no step would be told that nothing is there.
    constexpr explicit MarkStep(StepNumber number) noexcept { AssignStepNumber_(number); }

    [[nodiscard]] constexpr int raw_int() const noexcept { return static_cast<int>(mark_); }

    /// The number of the marked step; no step for both special marks.
    [[nodiscard]] constexpr StepNumber AsStepNumber() const noexcept {
        return mark_ == kAllResults ? StepNumber() : StepNumber(mark_);
    }

    friend constexpr bool operator==(const MarkStep& a, const MarkStep& b) noexcept = default;

 private:
    constexpr void AssignStepNumber_(unsigned number) noexcept {
        mark_ = number == StepNumber::kNone ? kAllResults : number;
    }

    std::uint32_t mark_ = kNone;
};

/// The mark of results of every step.
[[nodiscard]] constexpr MarkStep AllResults() noexcept {
    return MarkStep(StepNumber());
}

/// The step a mark stands for when `last` is the last one: `last` for all results, 0 for no mark.
[[nodiscard]] constexpr StepNumber ConvertToStepNumber(const MarkStep& mark,
                                                       unsigned last) noexcept {
    if (mark == AllResults()) {
        return last;
    }
    return mark == MarkStep() ? lmw::step::Init().AsStepNumber() : mark.AsStepNumber();
}

/// Whether results at `step` are available when `available` marks those that are: always for all
/// results as `step`; otherwise never where either is no mark or `available` is all results; else
/// when step >= available as unsigned numbers.
/// By design: the comparison asks for a step at or after the mark, all results included as a step
/// only. Turning it round, or letting the special marks match, would change what every reader of
/// marks is shown.
[[nodiscard]] constexpr bool IsResultsAvailable(MarkStep step, const MarkStep& available) noexcept {
    if (step == AllResults()) {
        return true;
    }
    if (available == AllResults() || step == MarkStep() || available == MarkStep()) {
        return false;
    }
    return step.AsStepNumber() >= available.AsStepNumber();
}

}  // namespace doc::file::mark
