#pragma once

// Evaluating functions, and asking them what they may or may not offer. SafeCalculate is the only
// way in which analyses evaluate; it never throws and never reports: the caller sees a number, the
// reason of a missing one goes to the thread's error handler.

#include "common/export.h"
#include "common/fn/capabilities.h"
#include "common/fn/fn_impl.h"
#include "common/math/tail_cycle_location.h"
#include "common/math/tolerance.h"
#include "common/range.h"
#include "common/status.h"
#include "common/undefined.h"

#include <bit>
#include <cstdint>
#include <string>

namespace lmw::fn {

/// Is told of every evaluation without a value on the threads that installed it.
class LMW_API IErrorHandler {
 public:
    virtual ~IErrorHandler();

    /// `x` and `y` are the inputs of the failed evaluation (`y` may be null), valid during the
    /// call. `why` is success when the function cannot say why. Called within the evaluation, so it
    /// is quick; it may evaluate other functions.
    virtual void CalculationFailed(const FnImpl& function, const double* x, const double* y,
                                   const gtl::status& why) noexcept = 0;

 protected:
    IErrorHandler() = default;
    IErrorHandler(const IErrorHandler&) = default;
    IErrorHandler& operator=(const IErrorHandler&) = default;
};

namespace impl {

/// The value of `function` at `*x` (and `*y` for kinds of two inputs, else null), or the undefined
/// value.
///
/// 1. A value that is not finite is undefined. -1.797e308 is a value.
/// 2. error::CalculationException and gtl::status_exception make the value undefined; any other
///    exception passes on.
/// 3. When the value is undefined and this thread has an error handler, the handler is called, with
///    the status of the exception if there was one, else with LastError(function). Without a
///    handler nobody is asked for a reason.
/// 4. On success nothing is allocated and no type is asked for.
///
/// Any number of threads may evaluate one prepared function.
inline double SafeCalculate(const FnImpl& function, const double* x, const double* y);

/// A value that may not be available.
struct ComputedResult {
    bool computed = false;
    double value = kUndefined;   ///< undefined when not computed
    double second = kUndefined;  ///< for kinds that give two values
};

/// The derivative by x at `x`, the integral over x between `a` and `b`: computed when the kind
/// offers it, undefined where the curve is. An exception of SafeCalculate's two types counts as not
/// computed and goes to the error handler.
LMW_API ComputedResult DyDx(double x, const math::algorithm::Tolerance<double>& tolerance,
                            const FnImpl& function);
LMW_API ComputedResult Integrate(double a, double b,
                                 const math::algorithm::Tolerance<double>& tolerance,
                                 const FnImpl& function);

/// Why the last calculation on this thread had no value, as far as the kind can say; success when
/// it cannot (IFnLastError).
LMW_API gtl::status LastError(const FnImpl& function);

/// The range of the values; unbounded when the kind does not know (IFnOutputExtents).
LMW_API gtl::range<double> OutputExtents(const FnImpl& function);

/// The definition laid out for review; null when there is none (IFnSupportsReview).
LMW_API const IFnReview* Review(const FnImpl& function);

/// The definition as text: the kind's own (IFnCustomAsString), else that of fn::string with the
/// kind's name and PersistedAttributes. lmw::fn::Create makes an equal function of the latter.
LMW_API std::wstring as_wstring(const FnImpl& function);

/// Whether two functions are defined alike: as `a` decides (IFnIsEqual), else when their C++ types
/// have the same name, their dictionaries end alike, and all attributes from identifier 3 on have
/// equal keys, types and values (numbers as numbers, NaN equal to itself, points by x and y).
/// By design: identifiers 0 to 2 do not count. They are identity, and two functions that differ in
/// name only are the same definition; comparing names would recompute what is shared.
LMW_API bool IsEqual(const FnImpl& a, const FnImpl& b);

/// Whether the dictionary is that of the undefined functions. Null is undefined.
LMW_API bool IsUndefined(const FnImpl* function);

/// At which of its ends the function repeats itself, by its attributes FnAttrTailBefore and
/// FnAttrTailAfter; a tail that it does not have does not cycle.
LMW_API math::TailCycleLocation::Type TailCycleLocation(const FnImpl& function);

/// Installs a handler for this thread (null for none) and returns the one before. The caller keeps
/// ownership and takes the handler away before destroying it.
LMW_API IErrorHandler* SetErrorHandler(IErrorHandler* handler) noexcept;
LMW_API IErrorHandler* CurrentErrorHandler() noexcept;

/// Installs a handler for this thread as long as it lives, then the one before again.
class ScopedErrorHandler {
 public:
    explicit ScopedErrorHandler(IErrorHandler* handler) noexcept
        : previous_(SetErrorHandler(handler)) {}
    ScopedErrorHandler(const ScopedErrorHandler&) = delete;
    ScopedErrorHandler& operator=(const ScopedErrorHandler&) = delete;
    ~ScopedErrorHandler() { SetErrorHandler(previous_); }

 private:
    IErrorHandler* previous_;
};

// Implementation. In the header, because the guard would otherwise cost as much again as the
// evaluation of a curve.

/// The end of an evaluation without a value: tells the thread's error handler, if there is one, and
/// returns the undefined value.
LMW_API double ReportFailure_(const FnImpl& function, const double* x, const double* y);
LMW_API double ReportFailure_(const FnImpl& function, const double* x, const double* y,
                              const gtl::status& why);

/// Whether `value` is finite and not the undefined value. By its bits, so that it also holds in
/// programs compiled as if there were no NaN, and raises no floating-point exception.
[[nodiscard]] constexpr bool IsValue_(double value) noexcept {
    constexpr std::uint64_t kSign = std::uint64_t{1} << 63U;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const auto most = std::bit_cast<std::uint64_t>(kUndefined);
    return (bits & ~kSign) < most || bits == (most | kSign);
}

inline double SafeCalculate(const FnImpl& function, const double* x, const double* y) {
    double value = kUndefined;
    try {
        value = function.Calculate(x, y);
    } catch (const gtl::status_exception& failure) {  // error::CalculationException is one
        return ReportFailure_(function, x, y, failure.Status());
    }
    return IsValue_(value) ? value : ReportFailure_(function, x, y);
}

}  // namespace impl
}  // namespace lmw::fn
