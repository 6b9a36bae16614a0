#include "common/app/fatal.h"

#include "common/app/app.h"
#include "common/log.h"
#include "common/log_category.h"
#include "common/log_level.h"

#include <cstdlib>

namespace lmw {

void Fatal(const gtl::status& reason, const char* place, int line) noexcept {
    diag::LogMacroHandler(diag::kCritical, diag::kDefaultCategories, place, line,
                          "")(reason.as_wstring());
    App::Instance().Fatal(reason, place, line);
    std::abort();
}

}  // namespace lmw
