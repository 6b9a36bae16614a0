#pragma once

// The host application, as far as the library needs it: the texts of messages by identifier, and
// its last word before the process ends. A program that installs no host gets the library's English
// texts.

#include "common/export.h"
#include "common/status.h"

#include <cstdint>
#include <string>

/// What a host application supplies. Derive from it and install the object with App::Install.
class LMW_API IApp {
 public:
    IApp() = default;
    IApp(const IApp&) = delete;
    IApp& operator=(const IApp&) = delete;
    virtual ~IApp();

    /// The template of a message in the user's language, with up to five printf-style placeholders
    /// that are filled with texts in argument order ("%s" fits every argument). Empty when the host
    /// has no such message; a host that knows only some forwards the rest to App::Default(). Called
    /// from any thread.
    [[nodiscard]] virtual std::wstring MessageText(std::uint32_t message_id) const = 0;

    /// Called once before the library ends the process for an error it cannot return
    /// (common/app/fatal.h): the place to save what can be saved and to tell the user. `place` and
    /// `line` say where the error was raised. On return the process is aborted. On the thread that
    /// failed; any work it was doing is half done. Does nothing unless overridden.
    virtual void Fatal(const gtl::status& reason, const char* place, int line) const noexcept;
};

/// Access to the host application.
class LMW_API App {
 public:
    App() = delete;

    /// The installed host, else Default(). Any thread.
    [[nodiscard]] static const IApp& Instance() noexcept;

    /// Installs `host` for the whole process, or with null returns to the default, and gives back
    /// the one installed before (null for the default). The caller keeps ownership; the object must
    /// outlive its time as host and every call that may still be using it, so a host is installed
    /// before the process starts working and removed after.
    static const IApp* Install(const IApp* host) noexcept;

    /// The default host: careful English texts for every message identifier the library uses, the
    /// empty text for others. Never destroyed.
    [[nodiscard]] static const IApp& Default() noexcept;
};
