#include "common/fn/fn_error.h"

namespace lmw::fn::error {

gtl::status MalformedFunctionText() {
    return gtl::status(20547);
}

gtl::status UnableToComputeValue(const std::wstring& a, const std::wstring& b,
                                 const std::wstring& detail) {
    const bool only_one = a.empty() != b.empty();
    gtl::status result(20548, only_one ? a + b : a + L" " + b);
    if (!detail.empty()) {
        result.AttachPart(detail);
    }
    return result;
}

gtl::status FunctionDefinitionIncomplete() {
    return gtl::status(20549);
}

gtl::status OperationNotSupported() {
    return gtl::status(21638);
}

CalculationException::~CalculationException() = default;

}  // namespace lmw::fn::error
