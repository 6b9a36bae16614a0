#pragma once

// One value of any storage type, and the conversions between the types.

#include "common/fn/attribute_storage.h"
#include "common/status.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace lmw::fn::detail {

/// Converts `*in` of the type `from` into `*out` of the type `to`, as attributes.h describes. On
/// failure `*out` stays untouched.
gtl::status ConvertValue(attribute::storage::Type from, const void* in, attribute::storage::Type to,
                         void* out);

/// Room for one value of a storage type that is known at run time.
class AttributeValue {
 public:
    explicit AttributeValue(attribute::storage::Type type);

    /// Points at an object of the type; null for None.
    [[nodiscard]] void* Data() noexcept;

    /// Whether both have the same type and values. Numbers are equal as numbers, and NaN equals
    /// itself; of points x and y count.
    [[nodiscard]] bool Equals(const AttributeValue& other) const;

 private:
    attribute::storage::Type type_;
    std::variant<std::monostate, bool, std::int32_t, std::uint32_t, double, std::wstring,
                 ::math::fn::TailType, std::vector<FPOINT>, DataParamType>
        value_;
};

}  // namespace lmw::fn::detail
