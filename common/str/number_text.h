#pragma once

// Numbers as text and back, for files, attributes and messages: independent of every locale, exact
// in both directions, and strict, so that a damaged number is reported instead of half read.

#include "common/export.h"
#include "common/status.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace str {

/// The shortest text that reads back to the same double, bit for bit (NaN: to a NaN). Plain or
/// exponent form, whichever is shorter: L"0.1", L"1e+300", L"-0", L"inf", L"nan".
LMW_API std::wstring DoubleText(double value);

/// The same in narrow text.
LMW_API std::string DoubleNarrowText(double value);

/// Read a number from the whole of `text`; one leading "+" is accepted, blanks are not.
///
/// 1. On failure `value` stays untouched and the status is that of gtl::Convert_error_status:
///    InvalidCharStatus when the text is empty or is not such a number from end to end,
///    OverflowStatus when the number is too large in magnitude for the type,
///    OutOfRangeStatus when it is not zero but nearer to zero than the smallest double.
/// 2. ParseDouble(DoubleText(x)) gives x back, infinities and NaN included.
LMW_API gtl::status ParseDouble(std::wstring_view text, double& value);
LMW_API gtl::status ParseDouble(std::string_view text, double& value);
LMW_API gtl::status ParseInt(std::wstring_view text, std::int32_t& value);
LMW_API gtl::status ParseUInt(std::wstring_view text, std::uint32_t& value);
LMW_API gtl::status ParseInt64(std::wstring_view text, std::int64_t& value);
LMW_API gtl::status ParseUInt64(std::wstring_view text, std::uint64_t& value);

}  // namespace str
