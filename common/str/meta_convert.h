#pragma once

// Conversions between wide text and int, double and bool under the conventions of meta_enum.h, for
// code that converts values of any type through one name.

#include "common/export.h"
#include "common/meta_enum.h"
#include "common/status.h"

#include <string>

namespace meta {

/// Converts a value of one type to another. There are exactly the six conversions below; any other
/// pair does not compile. `format` and `context` are there for callers that forward them; none is
/// read.
///
/// 1. Numbers become the shortest text that reads back to the same value, whatever the locale
///    (str/number_text.h); truth values become "true" and "false".
/// 2. A text is converted as a whole or not at all: on failure the result stays untouched and the
///    status is that of gtl::Convert_error_status that fits. For bool "true", "false", "1" and "0"
///    are allowed.
template <class From, class To>
struct MetaConvertSrcDestFmtString;

template <>
struct LMW_API MetaConvertSrcDestFmtString<int, std::wstring> {
    static gtl::status Convert(const int& from, std::wstring& to, MetaFormatType format,
                               int context);
};

template <>
struct LMW_API MetaConvertSrcDestFmtString<double, std::wstring> {
    static gtl::status Convert(const double& from, std::wstring& to, MetaFormatType format,
                               int context);
};

template <>
struct LMW_API MetaConvertSrcDestFmtString<bool, std::wstring> {
    static gtl::status Convert(const bool& from, std::wstring& to, MetaFormatType format,
                               int context);
};

template <>
struct LMW_API MetaConvertSrcDestFmtString<std::wstring, int> {
    static gtl::status Convert(const std::wstring& from, int& to, MetaFormatType format,
                               int context);
};

template <>
struct LMW_API MetaConvertSrcDestFmtString<std::wstring, double> {
    static gtl::status Convert(const std::wstring& from, double& to, MetaFormatType format,
                               int context);
};

template <>
struct LMW_API MetaConvertSrcDestFmtString<std::wstring, bool> {
    static gtl::status Convert(const std::wstring& from, bool& to, MetaFormatType format,
                               int context);
};

}  // namespace meta
