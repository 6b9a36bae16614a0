#pragma once

// The errors of text-to-value conversion. Conversions themselves are in str/number_text.h and
// meta_enum.h.

#include "common/export.h"
#include "common/status.h"

#include <string>

namespace gtl {

/// Factories of conversion errors. `text` is what was to be converted, `type` names what it was to
/// become: one of the two type names below, or a list of the texts that are allowed.
struct LMW_API Convert_error_status {
    /// Message 20218: the text holds something that does not belong to such a value.
    static status InvalidCharStatus(const std::wstring& text, const std::wstring& type);
    /// Message 20219: there is no such conversion.
    static status NotSupportedStatus(const std::wstring& text, const std::wstring& type);
    /// Message 20220: a value, but not one that is allowed.
    static status OutOfRangeStatus(const std::wstring& text, const std::wstring& type);
    /// Message 20221: too large for the type.
    static status OverflowStatus(const std::wstring& text, const std::wstring& type);

    /// The name of the floating-point type (message 20898).
    static std::wstring FloatingPointString();
    /// The name of the whole-number type (message 21652).
    static std::wstring WholeNumberString();
};

}  // namespace gtl
