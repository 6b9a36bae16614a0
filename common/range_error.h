#pragma once

// How the ends of a numeric range are bounded, and the texts and errors for a value outside a
// range.

#include "common/export.h"
#include "common/status.h"

#include <cstdint>
#include <string>

namespace gtl {

/// How one end of a range is bounded.
enum class bound_kind : std::uint32_t {
    inclusive = 0,       ///< the bound belongs to the range
    exclusive = 1,       ///< the bound does not belong to the range
    none = 0xFFFFFFFFU,  ///< there is no bound at this end
};

/// The error that a range is described wrongly or a value outside it is reported without details
/// (message 24389 with empty arguments).
LMW_API status RangeStatusFormat();

namespace impl {

/// Descriptions of ranges for messages, and the errors of values outside them. Bounds are passed as
/// text, rendered by the caller.
struct LMW_API range_error {
    static std::wstring DescGE(const std::wstring& lo);  ///< 20551
    static std::wstring DescGT(const std::wstring& lo);  ///< 20564
    static std::wstring DescLE(const std::wstring& hi);  ///< 20676
    static std::wstring DescLT(const std::wstring& hi);  ///< 20692
    static std::wstring DescInclusiveInclusive(const std::wstring& lo,
                                               const std::wstring& hi);  ///< 20452
    static std::wstring DescInclusiveExclusive(const std::wstring& lo,
                                               const std::wstring& hi);  ///< 20451
    static std::wstring DescExclusiveInclusive(const std::wstring& lo,
                                               const std::wstring& hi);  ///< 20450
    static std::wstring DescExclusiveExclusive(const std::wstring& lo,
                                               const std::wstring& hi);  ///< 20449
    static std::wstring DescNoLimit();                                   ///< 21622

    /// The one of the descriptions above that the kinds of the two ends ask for; the text of an end
    /// of kind `none` is not used.
    static std::wstring Description(const std::wstring& lo, const std::wstring& hi,
                                    bound_kind lo_kind, bound_kind hi_kind);

    /// Message 24389 with `value` and the range's description.
    static status OutOfBounds(const std::wstring& value, const std::wstring& lo,
                              const std::wstring& hi, bound_kind lo_kind, bound_kind hi_kind);

    /// Message 20914: a value was left out that must be given.
    static status ValueIsRequired();
};

}  // namespace impl
}  // namespace gtl
