#include "tools/lmw/failure.h"

#include "tools/lmw/text.h"

namespace lmw::tool {

void Require(const gtl::status& result, const std::string& about) {
    if (result.Failed()) {
        throw Failure((about.empty() ? "" : about + ": ") + Utf8(result.as_wstring()));
    }
}

}  // namespace lmw::tool
