#pragma once

// Step numbers: the plain number (StepNumber) and the step of a project name (Step), which has
// special values besides. How far results exist is said by doc::file::mark::MarkStep (mark_step.h).

#include <cstdint>

/// The index of a step counted from 0; 0xFFFFFFFF means no step. Converts freely from and to its
/// number, so that tables can be indexed with it.
struct StepNumber {
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    constexpr StepNumber() noexcept = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a number is a step number
    constexpr StepNumber(std::uint32_t number) noexcept : value(number) {}
    // NOLINTNEXTLINE(google-explicit-constructor): likewise
    constexpr operator std::uint32_t() const noexcept { return value; }

    std::uint32_t value = kNone;
};

/// The step of a project name: an ordinary step, or one of the special ones of lmw::step. A
/// default-constructed one is unset (no step given).
class Step {
 public:
    constexpr Step() noexcept = default;

    /// The int becomes the raw code unchanged, special codes included.
    static constexpr Step CreateFromInt(int code) noexcept {
        Step step;
        step.code_ = static_cast<std::uint32_t>(code);
        return step;
    }

    /// The step with that number; no step (StepNumber::kNone) becomes unset.
    static constexpr Step CreateFromStepNumber(StepNumber number) noexcept {
        Step step;
        step.AssignStepNumber_(number);
        return step;
    }

    /// The number of an ordinary step; 0 for the initial step, in the older encoding too; no step
    /// for the last, the unset, all steps and every unknown code.
    [[nodiscard]] constexpr StepNumber AsStepNumber() const noexcept {
        if (code_ == kDeprecatedInit) {
            return 0;
        }
        return code_ < kLast ? StepNumber(code_) : StepNumber();
    }

    /// The raw code.
    [[nodiscard]] constexpr std::uint32_t raw() const noexcept { return code_; }

    friend constexpr bool operator==(const Step& a, const Step& b) noexcept = default;

    static constexpr std::uint32_t kInit = 0;
    static constexpr std::uint32_t kLast = 0x7FFFFFFE;
    static constexpr std::uint32_t kUnset = 0x7FFFFFFF;
    static constexpr std::uint32_t kAll = 0xFFFFFFFE;
    static constexpr std::uint32_t kDeprecatedInit = 0xFFFFFFFF;

 private:
    constexpr void AssignStepNumber_(unsigned number) noexcept {
        code_ = number == StepNumber::kNone ? kUnset : number;
    }

    std::uint32_t code_ = kUnset;
};

namespace lmw::step {

/// The initial step.
[[nodiscard]] constexpr Step Init() noexcept {
    return Step::CreateFromInt(0);
}
/// The last step there is.
[[nodiscard]] constexpr Step Last() noexcept {
    return Step::CreateFromInt(static_cast<int>(Step::kLast));
}
/// All steps: a selection, not a step.
[[nodiscard]] constexpr Step All() noexcept {
    return Step::CreateFromInt(static_cast<int>(Step::kAll));
}

namespace deprecated {
/// The initial step as older projects encode it.
[[nodiscard]] constexpr Step Init() noexcept {
    return Step::CreateFromInt(static_cast<int>(Step::kDeprecatedInit));
}
}  // namespace deprecated

/// True exactly for the initial step (both encodings), the last, the unset and all steps.
/// By design: the initial step 0 is special although it has a number. Callers treat it apart from
/// the steps of a solution; counting it as ordinary would list it among them.
[[nodiscard]] constexpr bool IsSpecialStep(const Step& step) noexcept {
    return step.raw() == Step::kInit || step.raw() == Step::kLast || step.raw() == Step::kUnset ||
           step.raw() == Step::kAll || step.raw() == Step::kDeprecatedInit;
}

}  // namespace lmw::step
