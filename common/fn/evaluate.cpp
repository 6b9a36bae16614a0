#include "common/fn/evaluate.h"

#include "common/fn/attribute_dictionary.h"
#include "common/fn/attributes.h"
#include "common/fn/detail/attribute_value.h"
#include "common/fn/fn_error.h"
#include "common/fn/fn_string.h"
#include "common/fn/fn_undefined.h"
#include "common/math/tail_type.h"

#include <cmath>
#include <string_view>
#include <typeinfo>

namespace lmw::fn {

namespace impl {

namespace {

// `calculate` guarded as a value is; `x` is what the handler is told.
template <class Calculate>
ComputedResult Guarded(const FnImpl& function, double x, const Calculate& calculate) {
    try {
        return {true, calculate()};
    } catch (const gtl::status_exception& failure) {
        return {false, ReportFailure_(function, &x, nullptr, failure.Status())};
    }
}

bool HasEqualValue(const FnImpl& a, const FnImpl& b, unsigned id) {
    // One C++ type may serve several kinds: the constants with a unit differ in their key alone.
    const attribute::storage::Type type = a.Attributes().TypeByAttributeID(id);
    if (type != b.Attributes().TypeByAttributeID(id) ||
        a.Attributes().NameByAttributeID(id) != b.Attributes().NameByAttributeID(id)) {
        return false;
    }
    if (type == attribute::storage::None) {
        return true;
    }
    detail::AttributeValue of_a(type);
    detail::AttributeValue of_b(type);
    const bool has_a = a.Attributes().ValueOf(&a, id, of_a.Data()).Succeeded();
    const bool has_b = b.Attributes().ValueOf(&b, id, of_b.Data()).Succeeded();
    return has_a == has_b && (!has_a || of_a.Equals(of_b));
}

bool IsCycling(const FnImpl& function, const FnAttr& end) {
    ::math::fn::TailType tail;
    return attributes::Get(function, end, tail).Succeeded() &&
           tail == ::math::fn::TailType::Cycle();
}

}  // namespace

ComputedResult DyDx(double x, const math::algorithm::Tolerance<double>& tolerance,
                    const FnImpl& function) {
    if (!function.SupportsDyDx()) {
        return {};
    }
    return Guarded(function, x, [&] { return function.DyDx(x, tolerance); });
}

ComputedResult Integrate(double a, double b, const math::algorithm::Tolerance<double>& tolerance,
                         const FnImpl& function) {
    if (!function.SupportsIntegrate()) {
        return {};
    }
    return Guarded(function, a, [&] { return function.Integrate(a, b, tolerance); });
}

gtl::status LastError(const FnImpl& function) {
    const auto* const kind = dynamic_cast<const IFnLastError*>(&function);
    return kind != nullptr ? kind->LastError() : gtl::status();
}

gtl::range<double> OutputExtents(const FnImpl& function) {
    const auto* const kind = dynamic_cast<const IFnOutputExtents*>(&function);
    return kind != nullptr ? kind->OutputExtents() : gtl::range<double>();
}

const IFnReview* Review(const FnImpl& function) {
    const auto* const kind = dynamic_cast<const IFnSupportsReview*>(&function);
    return kind != nullptr ? kind->Review() : nullptr;
}

std::wstring as_wstring(const FnImpl& function) {
    const auto* const kind = dynamic_cast<const IFnCustomAsString*>(&function);
    return kind != nullptr
               ? kind->as_wstring()
               : ::fn::string::Serialize(function.KindName(), PersistedAttributes(function));
}

bool IsEqual(const FnImpl& a, const FnImpl& b) {
    if (const auto* const kind = dynamic_cast<const IFnIsEqual*>(&a); kind != nullptr) {
        return kind->IsEqual(b);
    }
    const unsigned end = a.Attributes().EndAttributeID();
    if (end != b.Attributes().EndAttributeID() ||
        std::string_view(typeid(a).name()) != typeid(b).name()) {
        return false;
    }
    for (unsigned id = kFirstDefinitionAttribute; id < end; ++id) {
        if (!HasEqualValue(a, b, id)) {
            return false;
        }
    }
    return true;
}

bool IsUndefined(const FnImpl* function) {
    return function == nullptr || &function->Attributes() == &FnUndefined::Dictionary();
}

math::TailCycleLocation::Type TailCycleLocation(const FnImpl& function) {
    const bool before = IsCycling(function, FnAttrTailBefore());
    const bool after = IsCycling(function, FnAttrTailAfter());
    if (before) {
        return after ? math::TailCycleLocation::Both : math::TailCycleLocation::Before;
    }
    return after ? math::TailCycleLocation::After : math::TailCycleLocation::None;
}

}  // namespace impl
}  // namespace lmw::fn
