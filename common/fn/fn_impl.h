#pragma once

// The base of every kind of function. Analyses hold functions by the handle IFn (ifn.h), evaluate
// them by lmw::fn::impl::SafeCalculate (evaluate.h), and define them through attributes
// (attributes.h). docs/write-a-function-kind.md shows how to derive a kind; most derive from FnKind
// (fn_kind.h), which adds name and description.

#include "common/export.h"
#include "common/fn/fn_attr.h"
#include "common/math/tolerance.h"
#include "common/status.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

namespace lmw::fn {
class IAttributeDictionary;
}

/// One function: its definition, and what is derived from it.
///
/// 1. It is defined through attributes, prepared by UpdateCalculatedValues, then evaluated any
///    number of times. Changing a definition attribute makes it out of date.
/// 2. What more a kind can do it offers by deriving from the interfaces of capabilities.h.
///
/// Threads: any number may call const functions of one prepared object at once, so a kind's const
/// functions write to nothing that is shared; in particular they neither store nor copy a status
/// (its count belongs to one thread) but make a new one for each failure. Everything else is for
/// one thread at a time. The reference count is atomic.
class LMW_API FnImpl {
 public:
    FnImpl& operator=(const FnImpl&) = delete;
    virtual ~FnImpl();

    /// The dictionary of the kind, through which all attributes are read and written.
    [[nodiscard]] virtual const lmw::fn::IAttributeDictionary& Attributes() const noexcept;

    /// The value at `*x` and, for kinds of two inputs, `*y` (else null). What is not finite, and
    /// the undefined value, count as failures. May throw
    /// lmw::fn::error::CalculationException or gtl::status_exception. Called through
    /// lmw::fn::impl::SafeCalculate.
    [[nodiscard]] virtual double Calculate(const double* x, const double* y) const = 0;

    /// A copy of its own, nobody's yet.
    [[nodiscard]] virtual std::unique_ptr<FnImpl> Clone() const = 0;

    /// The name by which lmw::fn::MakeFunction makes a function of this kind.
    [[nodiscard]] virtual std::wstring KindName() const = 0;

    /// The inputs that the kind can list, for plotting and review: how many, and each by its index
    /// from 0. None, and the undefined value, unless the kind says otherwise.
    [[nodiscard]] virtual int InputRangeNumPoints() const;
    [[nodiscard]] virtual double InputRangeAt(int index) const;

    /// Whether the function has a derivative, and the derivative by x at `x`. False and undefined
    /// unless the kind says otherwise. `tolerance` is for kinds that approximate.
    [[nodiscard]] virtual bool SupportsDyDx() const;
    [[nodiscard]] virtual double DyDx(double x,
                                      const math::algorithm::Tolerance<double>& tolerance) const;

    /// Likewise the integral over x from the lesser to the greater of `a` and `b`.
    [[nodiscard]] virtual bool SupportsIntegrate() const;
    [[nodiscard]] virtual double Integrate(
        double a, double b, const math::algorithm::Tolerance<double>& tolerance) const;

    /// Whether this function has the attribute now: the dictionary knows it with a storage type,
    /// and the kind, if its attributes depend on the instance (IFnDynamicAttributes), agrees.
    [[nodiscard]] bool HasAttribute(const FnAttr& attribute) const;
    [[nodiscard]] bool HasAttribute(unsigned id) const;

    /// The identifier of an attribute in the dictionary, lmw::fn::kNoAttribute when it has none. An
    /// operation of boundary conditions is found by its fixed identifier, and only in a dictionary
    /// that has an attribute without a key there.
    [[nodiscard]] unsigned AttributeIDOf_(const FnAttr& attribute) const;

    /// Whether a user may change the attribute; false when there is none.
    [[nodiscard]] bool IsAttributeEditable(const FnAttr& attribute) const;

    /// Prepares the function: success when the kind has nothing to prepare
    /// (IFnUpdateCalculatedValues). The function is up to date exactly when this succeeded.
    gtl::status UpdateCalculatedValues();

    [[nodiscard]] bool IsUpToDate() const noexcept { return up_to_date_; }

    /// Says that a definition attribute was changed. Dictionaries call it for every identifier from
    /// 3 on; a kind's own setters call it themselves.
    void DefinitionChanged() noexcept { up_to_date_ = false; }

    /// How many handles refer to this object, and their bookkeeping.
    [[nodiscard]] std::int32_t ReferenceCount() const noexcept {
        return reference_count_.load(std::memory_order_acquire);
    }
    void AddReference() noexcept { reference_count_.fetch_add(1, std::memory_order_relaxed); }
    void ReleaseReference() noexcept;

 protected:
    /// `dictionary` is the one of the kind and outlives all functions.
    explicit FnImpl(const lmw::fn::IAttributeDictionary& dictionary) noexcept
        : dictionary_(&dictionary) {}
    /// A copy has no references yet; it is as much up to date as the original.
    FnImpl(const FnImpl& other) noexcept
        : dictionary_(other.dictionary_), up_to_date_(other.up_to_date_) {}

 private:
    std::atomic<std::int32_t> reference_count_ = 0;
    const lmw::fn::IAttributeDictionary* dictionary_;
    bool up_to_date_ = false;
};

namespace lmw::fn {

/// Prepares `function` unless it is up to date, and stores the outcome of that in `outcome`, which
/// stays untouched when there was nothing to do.
LMW_API void EnsureValid(FnImpl& function, gtl::status& outcome);

/// The same, where there is no way to go on without the function: a failure ends the process
/// (lmw::Fatal, place "fnimpl", line 481).
LMW_API void EnsureValid(FnImpl& function);

}  // namespace lmw::fn
