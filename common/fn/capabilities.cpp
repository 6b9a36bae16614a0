#include "common/fn/capabilities.h"

namespace lmw::fn {

IFnUpdateCalculatedValues::~IFnUpdateCalculatedValues() = default;
IFnLastError::~IFnLastError() = default;
IFnIsEqual::~IFnIsEqual() = default;
IFnOutputExtents::~IFnOutputExtents() = default;
IFnReview::~IFnReview() = default;
IFnSupportsReview::~IFnSupportsReview() = default;
IFnCustomAsString::~IFnCustomAsString() = default;
IFnDynamicAttributes::~IFnDynamicAttributes() = default;

}  // namespace lmw::fn
