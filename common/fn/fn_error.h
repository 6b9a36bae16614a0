#pragma once

// The errors of function objects. Messages of other subjects are in common/errors.h.

#include "common/export.h"
#include "common/status.h"

#include <string>

namespace lmw::fn::error {

/// Message 20547: the text of a function lacks a parenthesis or has them the wrong way round.
LMW_API gtl::status MalformedFunctionText();

/// Message 20548: a value could not be computed. The argument is `a` or `b` when the other is
/// empty, else both with a blank between them. By design: two empty texts leave the blank alone;
/// the message always has its argument. A `detail` that is not empty becomes the second part of the
/// status (gtl::status::AttachPart).
LMW_API gtl::status UnableToComputeValue(const std::wstring& a, const std::wstring& b,
                                         const std::wstring& detail);

/// Message 20549: an attribute that the kind of function needs is missing.
LMW_API gtl::status FunctionDefinitionIncomplete();

/// Message 21638: the kind of function does not offer the operation asked for.
LMW_API gtl::status OperationNotSupported();

/// What a kind of function may throw from its calculation; the guarded evaluation turns it into the
/// undefined value and hands the status on.
class LMW_API CalculationException : public gtl::status_exception {
 public:
    using gtl::status_exception::status_exception;
    CalculationException(const CalculationException&) noexcept = default;
    CalculationException& operator=(const CalculationException&) noexcept = default;
    ~CalculationException() override;
};

}  // namespace lmw::fn::error
