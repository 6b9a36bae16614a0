#pragma once

// The calling thread's last error and the system's texts for error codes. Use the error factories
// and lmw::diag::impl::SysCodeAsString_ for texts that users see: they also cover codes without a
// text.

#include "common/export.h"

#include <string>

namespace sys {

/// The calling thread's last operating-system error: `GetLastError` on Windows, errno on Linux.
/// Changes nothing and calls nothing that could change it.
LMW_API unsigned LastError() noexcept;

/// Sets what LastError returns on this thread.
LMW_API void SetLastError(unsigned code) noexcept;

/// The system's text for a non-zero error code in the user's default language, as the system gives
/// it (on Windows it usually ends in a line end); empty when the system knows none. Windows: codes
/// 2100 to 2999 are looked up in "netmsg.dll" first. Linux: codes are errno values.
LMW_API std::wstring SystemErrorText(unsigned code);

/// The C runtime's text for an errno value; empty when it knows none.
LMW_API std::wstring RuntimeErrorText(int code);

}  // namespace sys
