#include "common/fn/evaluate.h"

#include <utility>

namespace lmw::fn {

IErrorHandler::~IErrorHandler() = default;

namespace {

thread_local IErrorHandler* current_handler = nullptr;

}  // namespace

namespace impl {

IErrorHandler* SetErrorHandler(IErrorHandler* handler) noexcept {
    return std::exchange(current_handler, handler);
}

IErrorHandler* CurrentErrorHandler() noexcept {
    return current_handler;
}

double ReportFailure_(const FnImpl& function, const double* x, const double* y) {
    return current_handler != nullptr ? ReportFailure_(function, x, y, LastError(function))
                                      : kUndefined;
}

double ReportFailure_(const FnImpl& function, const double* x, const double* y,
                      const gtl::status& why) {
    if (current_handler != nullptr) {
        current_handler->CalculationFailed(function, x, y, why);
    }
    return kUndefined;
}

}  // namespace impl
}  // namespace lmw::fn
