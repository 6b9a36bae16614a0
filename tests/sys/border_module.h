#pragma once

// A second shared library beside lmwcommon, as a host's plug-in would be: the tests send exceptions
// and interfaces across its border.

#include "common/app/app.h"
#include "common/sys/dll_border.h"

#include <functional>
#include <memory>
#include <string>

#if defined(LMW_BUILDING_BORDER_MODULE)
#define LMW_BORDER_API LMW_DLL_EXPORT
#else
#define LMW_BORDER_API LMW_DLL_IMPORT
#endif

namespace lmw::test {

/// A second interface of an object, reached only by a run-time cast.
class LMW_BORDER_API Named {
 public:
    Named() = default;
    Named(const Named&) = delete;
    Named& operator=(const Named&) = delete;
    virtual ~Named();
    [[nodiscard]] virtual std::string Name() const = 0;
};

/// Throws what the library's users throw across borders, holding message 24181.
[[noreturn]] LMW_BORDER_API void ThrowStatus();
/// Throws std::out_of_range with the text.
[[noreturn]] LMW_BORDER_API void ThrowOutOfRange(const std::string& text);

/// What the module sees of an exception that `action` throws.
struct Caught {
    std::string as;           ///< the first of its handlers that takes it
    std::string text;         ///< its what()
    int uncaught_inside = 0;  ///< std::uncaught_exceptions() while the module's frame is unwound
    int uncaught_after = 0;   ///< the same after the handler
};
LMW_BORDER_API Caught CatchFrom(const std::function<void()>& action);

/// A host made by the module; it is Named "module" as well, which its static type does not say.
LMW_BORDER_API std::unique_ptr<IApp> MakeNamedHost();
/// The name of a host that is Named, else the empty text.
LMW_BORDER_API std::string NameOfHost(const IApp& host);

}  // namespace lmw::test
