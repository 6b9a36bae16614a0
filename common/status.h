#pragma once

// The result of a fallible operation. Almost every operation of the library that can fail returns a
// gtl::status by value; throw a gtl::status_exception only across a boundary that cannot return
// one. The standard errors are made by their factories (errors.h, convert_error.h, range_error.h);
// code elsewhere does not choose message numbers. Surprising: the reference count is not atomic, so
// one record never serves two threads.

#include "common/export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace gtl {

/// Success, or a counted reference to one error record.
///
/// 1. A default-constructed status is success. Success is a null pointer: it allocates nothing and
///    is free to copy, test and destroy.
/// 2. Copies of a failure share one record; the last one to go frees it.
/// 3. Testing, copying, moving, assigning and destroying never throw. A moved-from status is
///    success. Creating a failure allocates and may throw std::bad_alloc.
///
/// Threads: a status and its copies belong to one thread at a time. A record may be handed over to
/// another thread, never shared with it; nothing in the library caches a failure and hands it out
/// twice.
///
/// Example:
///     gtl::status result = curve.UpdateCalculatedValues();
///     if (result.Failed()) {
///         return result;
///     }
class [[nodiscard]] LMW_API status {
 public:
    class detail;

    /// A message has at most this many arguments.
    enum : std::size_t { kMaxArguments = 5 };

    /// Success.
    constexpr status() noexcept = default;

    /// A failure. The template of `message_id` is fetched from App::Instance() now, not when the
    /// text is asked for. Arguments fill the template's placeholders in order.
    explicit status(std::uint32_t message_id, std::wstring argument1 = {},
                    std::wstring argument2 = {}, std::wstring argument3 = {},
                    std::wstring argument4 = {}, std::wstring argument5 = {});

    /// A failure with a ready text and the message identifier 0. The text is kept to the letter,
    /// also where it contains "%".
    static status FromText(std::wstring_view text);

    status(const status& other) noexcept : detail_(other.detail_) {
        if (detail_ != nullptr) {
            AddReference_();
        }
    }
    status(status&& other) noexcept : detail_(other.detail_) { other.detail_ = nullptr; }
    status& operator=(const status& other) noexcept;
    status& operator=(status&& other) noexcept;
    ~status() {
        if (detail_ != nullptr) {
            Release_();
        }
    }

    [[nodiscard]] bool Succeeded() const noexcept { return detail_ == nullptr; }
    [[nodiscard]] bool Failed() const noexcept { return detail_ != nullptr; }

    /// The error record, null for success. Valid as long as a status refers to it.
    [[nodiscard]] const detail* Detail() const noexcept { return detail_; }

    /// The message identifier: 0 for success and for ready texts.
    [[nodiscard]] std::uint32_t MessageId() const noexcept;

    /// The formatted text; empty for success.
    [[nodiscard]] std::wstring as_wstring() const;

    /// Writes the place that raised the error into the record; does nothing on success. Only right
    /// after creation, while this is the record's one status. Returns this status.
    status& AttachSource(std::string_view file, int line);

    /// Adds a second part to the text: an empty line and `part`, to the letter also where it
    /// contains "%". The message identifier and the arguments stay. As AttachSource otherwise; does
    /// nothing on success.
    status& AttachPart(std::wstring_view part);

    /// The same failure with a record of its own, which may be handed to another thread while this
    /// one stays; success for success. Does not touch the count of this status, so that any number
    /// of threads may duplicate one failure that nobody changes.
    [[nodiscard]] status Duplicate() const;

    /// Becomes success.
    void Reset() noexcept { *this = status(); }

    /// Says at a call site that the result is dropped on purpose.
    void Ignore() const noexcept {}

 private:
    explicit status(detail* record) noexcept : detail_(record) {}
    void AddReference_() const noexcept;  // of a failure
    void Release_() noexcept;             // of a failure

    detail* detail_ = nullptr;
};

/// The error record of a failing status: made by the factories, unchanged after construction.
class LMW_API status::detail {
 public:
    detail(const detail&) = delete;
    detail& operator=(const detail&) = delete;

    /// How many statuses refer to the record.
    [[nodiscard]] std::uint32_t ReferenceCount() const noexcept { return reference_count_; }
    /// The message template, not yet filled; the escaped text of a ready-text status.
    [[nodiscard]] const std::wstring& Message() const noexcept { return message_; }
    /// The template's arguments; those not given are empty.
    [[nodiscard]] const std::array<std::wstring, kMaxArguments>& Arguments() const noexcept {
        return arguments_;
    }
    /// The source file that raised the error, empty unless attached.
    [[nodiscard]] const std::string& SourceFile() const noexcept { return source_file_; }
    /// The line of SourceFile, -1 unless attached.
    [[nodiscard]] int Line() const noexcept { return line_; }
    /// The message identifier, 0 for a ready text.
    [[nodiscard]] std::uint32_t MessageId() const noexcept { return message_id_; }

    /// The template with its arguments filled in (str::fmt::FillTemplate).
    /// By design: a template that ends in an unfinished placeholder gives the empty text, never a
    /// half-formatted one.
    [[nodiscard]] std::wstring as_wstring() const;

 private:
    friend class status;
    detail() = default;
    ~detail() = default;

    std::uint32_t reference_count_ = 0;
    std::wstring message_;
    std::array<std::wstring, kMaxArguments> arguments_;
    std::string source_file_;
    int line_ = -1;
    std::uint32_t message_id_ = 0;
};

/// Carries a status across a boundary that cannot return one.
class LMW_API status_exception : public std::exception {
 public:
    explicit status_exception(status reason) noexcept;
    status_exception(const status_exception&) noexcept = default;
    status_exception& operator=(const status_exception&) noexcept = default;
    ~status_exception() override;

    [[nodiscard]] const status& Status() const noexcept { return reason_; }

    /// The status's text in narrow form (sys::Narrow); empty for a success status.
    /// By design: the pointer is into one process-wide buffer that the next call on any thread
    /// overwrites, so copy the text at once. It always stays readable.
    [[nodiscard]] const char* what() const noexcept override;

 private:
    status reason_;
};

}  // namespace gtl
