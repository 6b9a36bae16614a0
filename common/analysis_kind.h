#pragma once

// The seven analysis modules and their names: the stable lookup name of files and settings, and the
// display text of messages.

#include "common/export.h"
#include "common/status.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The analysis module that a project or document belongs to.
enum class AnalysisKind : std::int32_t {
    Solute = 0,         ///< solute transport
    Tremor = 1,         ///< dynamic response
    Flow = 2,           ///< groundwater flow
    Deform = 3,         ///< stress and deformation
    Ridge = 4,          ///< slope stability
    Heat = 5,           ///< heat transport
    Gas = 6,            ///< gas transport
    None = 0x7FFFFFFF,  ///< no analysis module
};

/// The number of analysis modules; their values run from 0 to one below it.
inline constexpr std::int32_t kAnalysisKindCount = 7;

/// "solute", "tremor", "flow", "deform", "ridge", "heat" or "gas"; the empty text for None and for
/// any value outside 0 to 6.
LMW_API std::string LookupNameByKind(AnalysisKind kind);

/// The kind of a lookup name, compared byte by byte; None for a name that is none of the seven.
LMW_API AnalysisKind KindByLookupName(std::string_view name);

namespace str {

/// The display text from the host's messages; the empty text for None and for any value outside 0
/// to 6.
LMW_API std::wstring as_wstring(AnalysisKind kind);

/// The kind whose display text equals `text` exactly. When there is none (the empty text included)
/// the status is a conversion error that lists the seven texts, and `kind` stays untouched.
LMW_API gtl::status from_wstring(const std::wstring& text, AnalysisKind& kind);

}  // namespace str
