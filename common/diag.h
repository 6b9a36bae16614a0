#pragma once

// The process-wide flags of diagnostics and the texts of reports. Messages are logged by
// common/log.h; diagnostic mode is a feature switch (common/app/feature.h).

#include "common/export.h"

#include <string>

namespace lmw::diag {

/// Whether the process runs in safe mode: the switch "/safemode" (or "-safemode") of its command
/// line until SetSafeMode says otherwise. Any thread, like all functions here.
LMW_API bool IsSafeMode();
LMW_API void SetSafeMode(bool safe_mode);

/// Whether a failed assertion should ask the user: the switch "/assertinteractive", or a debugger
/// that was attached at the first call, until SetAssertInteractive says otherwise.
LMW_API bool IsAssertInteractive();
LMW_API void SetAssertInteractive(bool interactive);

/// By design: always false. Assertions are not part of the library as it is shipped; a host that
/// asks must not wait for any.
LMW_API bool IsAssertEnabled();

/// The context of a report on an assertion or error: "Function: f\nLine: 12(file.cpp)". Null texts
/// count as empty.
LMW_API std::wstring FormatContext(const char* function, int line, const char* file);

/// A value of diagnostics as text: narrow text widened by sys::Widen (null counts as empty), and
/// for an integer the host's message of that identifier, empty when there is none.
LMW_API std::wstring to_wstring(const char* text);
LMW_API std::wstring to_wstring(int message_id);

}  // namespace lmw::diag
