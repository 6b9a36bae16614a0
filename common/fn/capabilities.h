#pragma once

// What a kind of function may offer beyond a value: small interfaces that it derives from beside
// FnImpl. Callers do not cast; they ask the functions of evaluate.h, which find the interface and
// know what holds without it. All const functions may be called by many threads at once.

#include "common/export.h"
#include "common/math/fpoint.h"
#include "common/range.h"
#include "common/status.h"

#include <string>

class FnImpl;

namespace lmw::fn {

/// Derives data from the definition. Without it a function is always ready.
class LMW_API IFnUpdateCalculatedValues {
 public:
    virtual ~IFnUpdateCalculatedValues();
    /// Called by FnImpl::UpdateCalculatedValues, which keeps account of the outcome; callers use
    /// that. On failure the function evaluates to the undefined value.
    virtual gtl::status Prepare() = 0;

 protected:
    IFnUpdateCalculatedValues() = default;
    IFnUpdateCalculatedValues(const IFnUpdateCalculatedValues&) = default;
    IFnUpdateCalculatedValues& operator=(const IFnUpdateCalculatedValues&) = default;
};

/// Says why a calculation has no value. Without it the reason is success: not known.
class LMW_API IFnLastError {
 public:
    virtual ~IFnLastError();
    /// A new status at each call, never a stored one: evaluation is const and shared by threads.
    /// Asked right after a failed calculation on the same thread, when somebody wants to know.
    [[nodiscard]] virtual gtl::status LastError() const = 0;

 protected:
    IFnLastError() = default;
    IFnLastError(const IFnLastError&) = default;
    IFnLastError& operator=(const IFnLastError&) = default;
};

/// Compares by more, or less, than the attributes. Without it the attributes are compared.
class LMW_API IFnIsEqual {
 public:
    virtual ~IFnIsEqual();
    [[nodiscard]] virtual bool IsEqual(const FnImpl& other) const = 0;

 protected:
    IFnIsEqual() = default;
    IFnIsEqual(const IFnIsEqual&) = default;
    IFnIsEqual& operator=(const IFnIsEqual&) = default;
};

/// Knows the range of its values. Without it the range is unbounded.
class LMW_API IFnOutputExtents {
 public:
    virtual ~IFnOutputExtents();
    [[nodiscard]] virtual gtl::range<double> OutputExtents() const = 0;

 protected:
    IFnOutputExtents() = default;
    IFnOutputExtents(const IFnOutputExtents&) = default;
    IFnOutputExtents& operator=(const IFnOutputExtents&) = default;
};

/// A definition laid out for a reviewer. Belongs to its function and lives as long.
class LMW_API IFnReview {
 public:
    virtual ~IFnReview();
    /// The points that define the function, by increasing x, index from 0.
    [[nodiscard]] virtual int NumPoints() const = 0;
    [[nodiscard]] virtual FPOINT PointAt(int index) const = 0;
    /// The value the prepared function has at the x of that point; differs from the point's y
    /// where the definition asks for smoothing. Undefined where there is none.
    [[nodiscard]] virtual double ValueAt(int index) const = 0;

 protected:
    IFnReview() = default;
    IFnReview(const IFnReview&) = default;
    IFnReview& operator=(const IFnReview&) = default;
};

/// Has a definition to review. Without it there is none.
class LMW_API IFnSupportsReview {
 public:
    virtual ~IFnSupportsReview();
    [[nodiscard]] virtual const IFnReview* Review() const = 0;

 protected:
    IFnSupportsReview() = default;
    IFnSupportsReview(const IFnSupportsReview&) = default;
    IFnSupportsReview& operator=(const IFnSupportsReview&) = default;
};

/// Has a text form of its own. Without it the text is that of fn::string, made of the attributes.
class LMW_API IFnCustomAsString {
 public:
    virtual ~IFnCustomAsString();
    [[nodiscard]] virtual std::wstring as_wstring() const = 0;

 protected:
    IFnCustomAsString() = default;
    IFnCustomAsString(const IFnCustomAsString&) = default;
    IFnCustomAsString& operator=(const IFnCustomAsString&) = default;
};

/// Has attributes only in some instances. Without it every instance has all of its dictionary.
class LMW_API IFnDynamicAttributes {
 public:
    virtual ~IFnDynamicAttributes();
    /// Whether this instance has the attribute `id` of its dictionary. One it has not is left out
    /// of the text form, and can still be read and set.
    [[nodiscard]] virtual bool HasAttributeNow(unsigned id) const = 0;

 protected:
    IFnDynamicAttributes() = default;
    IFnDynamicAttributes(const IFnDynamicAttributes&) = default;
    IFnDynamicAttributes& operator=(const IFnDynamicAttributes&) = default;
};

}  // namespace lmw::fn
