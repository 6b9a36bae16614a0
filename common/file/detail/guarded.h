#pragma once

// The edge of the file room: no exception leaves it.

#include "common/errors.h"
#include "common/status.h"

#include <exception>
#include <string>
#include <utility>

namespace lmw::file::detail {

/// Runs `work`, which returns a status; an exception becomes one.
template <class Work>
gtl::status Guarded(Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const gtl::status_exception& failure) {
        return failure.Status();
    } catch (const std::exception& failure) {
        return LmwError::unexpected_exception(std::string(failure.what()));
    } catch (...) {
        return LmwError::unexpected_exception(std::string());
    }
}

}  // namespace lmw::file::detail
