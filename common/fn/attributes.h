#pragma once

// Reading and writing the attributes of a function, by identifier or by name, in whatever type the
// caller has. What attributes a function has is in its dictionary (attribute_dictionary.h).

#include "common/export.h"
#include "common/fn/attribute_storage.h"
#include "common/fn/fn_attr.h"
#include "common/fn/fn_impl.h"
#include "common/fn/ifn.h"
#include "common/math/unit_set.h"
#include "common/status.h"

#include <string>
#include <utility>
#include <vector>

namespace lmw::fn::attributes {

// Values pass as pointers to the type that `type` names, and are converted between it and the type
// that the dictionary registered:
//
// 1. The same type passes unchanged.
// 2. Any type converts to text, and back to the same value, bit for bit: numbers are the shortest
//    text that reads back, truth values "true" and "false", tails as str::as_wstring, points
//    "x y;x y" without their third double, parameters their registry names (their numbers when
//    they have none, the empty text for Null).
// 3. Numbers, truth values (1 and 0), identifiers, parameters (their numbers) and tails (their
//    stored double) convert into each other where the value survives; else the status is that of
//    gtl::Convert_error_status. Points convert to and from text only.
// 4. On failure the output, and the function, stay as they were. kNoAttribute and identifiers
//    outside the dictionary give error::OperationNotSupported(); what a getter or setter returns
//    is passed on.

/// Reads the value of attribute `id` into `*out`.
LMW_API gtl::status ValueOf(const FnImpl* function, unsigned id, attribute::storage::Type type,
                            void* out);

/// Makes `*in` the value of attribute `id`.
LMW_API gtl::status SetValueOf(FnImpl* function, unsigned id, attribute::storage::Type type,
                               const void* in);

/// The value as it is stored in projects, as text.
LMW_API gtl::status PersistedValueOf(const FnImpl* function, unsigned id, std::wstring& out);

/// Makes `*in` the stored value, as a rule a std::wstring.
LMW_API gtl::status SetPersistedValueOf(FnImpl* function, unsigned id,
                                        attribute::storage::Type type, const void* in);

/// The same by name and C++ type:
///     double period = 0.0;
///     gtl::status result = lmw::fn::attributes::Get(*fn, FnAttrFunctionPeriod(), period);
template <class Value>
gtl::status Get(const FnImpl& function, const FnAttr& attribute, Value& out) {
    static_assert(attribute::storage::kTypeOf<Value> != attribute::storage::None);
    return ValueOf(&function, function.AttributeIDOf_(attribute),
                   attribute::storage::kTypeOf<Value>, &out);
}
template <class Value>
gtl::status Set(FnImpl& function, const FnAttr& attribute, const Value& in) {
    static_assert(attribute::storage::kTypeOf<Value> != attribute::storage::None);
    return SetValueOf(&function, function.AttributeIDOf_(attribute),
                      attribute::storage::kTypeOf<Value>, &in);
}

/// The quantity in which the value of a constant is measured: the second word of its key, such as
/// the pressure of "ConstPressure". kNone for "ConstNoUnits" and every other attribute.
LMW_API math::Quantity QuantityOf(const std::string& key);

/// Converts every constant of `function` from one set of units to another. Returns the first
/// failure; the others are converted nevertheless. Undefined values stay undefined.
LMW_API gtl::status ConvertUnits(FnImpl& function, const math::UnitSet& from,
                                 const math::UnitSet& to);

}  // namespace lmw::fn::attributes

namespace lmw::fn {

/// Gives `to` every value of an attribute that both functions have, found by key and converted
/// where the types differ; what cannot be changed in `to` is left out. Returns the first failure;
/// the others are copied nevertheless. Assignment to itself does nothing.
LMW_API gtl::status AssignAttributes(FnImpl& to, const FnImpl& from);

/// Sets attributes from keys and stored texts, in their order, as fn::string::Parse gives them.
/// Every pair that can be set is set; returns the first failure. A key that the kind does not know
/// is a failure (error::OperationNotSupported()): a caller that expects keys of newer versions
/// drops them first. Takes a copy of a shared implementation before the first change.
LMW_API gtl::status SetPersistedAttributes(
    IFn& function, const std::vector<std::pair<std::wstring, std::wstring>>& pairs);

/// The attributes that define `function`, as stored: what SetPersistedAttributes takes. The
/// identity is left out as far as it says nothing (no name of its own, empty descriptions), and so
/// is what cannot be set.
LMW_API std::vector<std::pair<std::wstring, std::wstring>> PersistedAttributes(
    const FnImpl& function);

}  // namespace lmw::fn
