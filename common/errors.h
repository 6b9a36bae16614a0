#pragma once

// The factories of the library's general errors. Conversions have theirs in convert_error.h, ranges
// in range_error.h. Each factory makes a new status with the message identifier named above it; its
// parameters become the message's arguments in the order given.

#include "common/export.h"
#include "common/status.h"

#include <cstdint>
#include <span>
#include <string>

struct LMW_API LmwError {
    /// Message 24181, five empty arguments: an error of which nothing is known.
    static gtl::status Undefined();

    /// Message 20471 with the text of `main` and a list of the texts of `parts`, each on a line of
    /// its own ("\r\n"), indented by two blanks and numbered from 1; an empty list gives the empty
    /// text.
    static gtl::status compound(const gtl::status& main, std::span<const gtl::status> parts);

    /// Message 20503: a library could not be loaded.
    static gtl::status dll_load(const std::wstring& library, const std::wstring& reason);

    /// Message 20755: a service beneath the library failed.
    static gtl::status err_sysserv(const std::wstring& service, const std::wstring& code);
    static gtl::status err_sysserv(const std::wstring& service, const std::wstring& code,
                                   const std::wstring& detail);

    /// Message 20571: a programming error. The thread's last operating-system error is read before
    /// anything else can change it; its text becomes the second argument, which is empty when that
    /// error is 0. `file` and `line` become the source location. Null texts count as empty.
    static gtl::status internal(const char* text, const char* file, unsigned line);

    /// A ready text without a message identifier: the text of `first`, an empty line, that of
    /// `second`.
    static gtl::status join(const gtl::status& first, const gtl::status& second);

    /// Message 20706: a required system service is not available.
    static gtl::status mngsrv();

    /// Message 20754: a text breaks the rules of its language.
    static gtl::status syntax(const std::string& text);
    static gtl::status syntax(const std::wstring& text);

    /// Message 20654: an exception of unknown kind was stopped at the library's edge.
    static gtl::status unexpected_exception(const std::string& text);
    static gtl::status unexpected_exception(const std::wstring& text);

    struct File;
};

/// Errors of the file system; `reason` is usually the text of an operating-system error.
struct LMW_API LmwError::File {
    static gtl::status copy(const std::wstring& source, const std::wstring& destination,
                            const std::wstring& reason);                                  ///< 20516
    static gtl::status create_dir(const std::wstring& path, const std::wstring& reason);  ///< 20517
    static gtl::status del(const std::wstring& path, const std::wstring& reason);         ///< 20518
    static gtl::status file_not_found(const std::wstring& path);                          ///< 20524
    static gtl::status file_path_too_long(const std::wstring& path,
                                          std::uint64_t max_length);                ///< 20527
    static gtl::status find(const std::wstring& path, const std::wstring& reason);  ///< 20519
    static gtl::status get_temp_path(const std::wstring& reason);                   ///< 20520
    static gtl::status invalid_path(const std::wstring& path);                      ///< 20521
    static gtl::status open(const std::wstring& path, const std::wstring& reason);  ///< 20526
    static gtl::status read(const std::wstring& path, const std::wstring& reason);  ///< 20536
    static gtl::status rename(const std::wstring& old_path, const std::wstring& new_path,
                              const std::wstring& reason);                                ///< 20538
    static gtl::status save_over_readonly(const std::wstring& path);                      ///< 20539
    static gtl::status set_attrib(const std::wstring& path, const std::wstring& reason);  ///< 20540
    static gtl::status shell_missing_association(const std::wstring& path,
                                                 const std::wstring& reason);        ///< 20514
    static gtl::status unknown_file_type(const std::wstring& path);                  ///< 20758
    static gtl::status write(const std::wstring& path, const std::wstring& reason);  ///< 20541
};
