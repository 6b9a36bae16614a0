#pragma once

// Keeps the thread's last operating-system error through work that may change it: a message that is
// logged between a failure and its report must not change what is reported.

#include "common/sys/last_error.h"

namespace lmw::detail {

class LastErrorKeeper {
 public:
    LastErrorKeeper() noexcept : code_(sys::LastError()) {}
    LastErrorKeeper(const LastErrorKeeper&) = delete;
    LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;
    ~LastErrorKeeper() { sys::SetLastError(code_); }

 private:
    unsigned code_;
};

}  // namespace lmw::detail
