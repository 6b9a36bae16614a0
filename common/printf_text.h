#pragma once

// Text formatted by printf's rules from arguments whose types are known, for messages of
// diagnostics.
// Nothing reaches the C runtime, so a format that does not fit its arguments is a wrong text and
// never a fault, and the result is the same on every platform and in every locale. Templates that
// come from the host's messages are filled by str::fmt::FillTemplate instead.

#include "common/export.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace lmw::diag {

/// One argument of PrintfText with its type. Made implicitly and valid as long as what it was made
/// of: text is not copied.
class PrintfArgument {
 public:
    enum class Kind : std::uint8_t {
        kSigned,
        kUnsigned,
        kNarrowCharacter,
        kWideCharacter,
        kFloating,
        kNarrowText,
        kWideText,
        kPointer
    };

    /// Integers of every size, bool, and characters.
    template <std::integral Integer>
    PrintfArgument(Integer value) noexcept
        : kind_(KindOfInteger_<Integer>()),
          size_(sizeof(Integer)),
          bits_(static_cast<std::uint64_t>(value)) {}

    template <class Enumeration>
    requires std::is_enum_v<Enumeration> PrintfArgument(Enumeration value)
    noexcept : PrintfArgument(static_cast<std::underlying_type_t<Enumeration>>(value)) {}

    /// A long double loses what a double does not hold.
    template <std::floating_point Floating>
    PrintfArgument(Floating value) noexcept
        : kind_(Kind::kFloating), floating_(static_cast<double>(value)) {}

    /// Text that ends at its NUL, or before it where a precision says so. A null pointer is shown
    /// as "(null)".
    PrintfArgument(const char* text) noexcept : kind_(Kind::kNarrowText), pointer_(text) {}
    PrintfArgument(const wchar_t* text) noexcept : kind_(Kind::kWideText), pointer_(text) {}

    PrintfArgument(std::string_view text) noexcept
        : kind_(Kind::kNarrowText), pointer_(text.data()), length_(text.size()) {}
    PrintfArgument(std::wstring_view text) noexcept
        : kind_(Kind::kWideText), pointer_(text.data()), length_(text.size()) {}
    PrintfArgument(const std::string& text) noexcept : PrintfArgument(std::string_view(text)) {}
    PrintfArgument(const std::wstring& text) noexcept : PrintfArgument(std::wstring_view(text)) {}

    PrintfArgument(const void* pointer) noexcept : kind_(Kind::kPointer), pointer_(pointer) {}
    PrintfArgument(std::nullptr_t) noexcept : kind_(Kind::kPointer) {}

    [[nodiscard]] Kind GetKind() const noexcept { return kind_; }
    /// Bytes of an integer.
    [[nodiscard]] unsigned Size() const noexcept { return size_; }
    /// An integer's value, sign-extended.
    [[nodiscard]] std::uint64_t Bits() const noexcept { return bits_; }
    [[nodiscard]] double Floating() const noexcept { return floating_; }
    /// A pointer, or the first element of a text.
    [[nodiscard]] const void* Pointer() const noexcept { return pointer_; }
    /// Elements of a text, kUntilNul for one that ends at its NUL.
    [[nodiscard]] std::size_t Length() const noexcept { return length_; }

    static constexpr std::size_t kUntilNul = static_cast<std::size_t>(-1);

 private:
    template <class Integer>
    static constexpr Kind KindOfInteger_() {
        if constexpr (std::is_same_v<Integer, char>) {
            return Kind::kNarrowCharacter;
        } else if constexpr (std::is_same_v<Integer, wchar_t>) {
            return Kind::kWideCharacter;
        } else {
            return std::is_signed_v<Integer> ? Kind::kSigned : Kind::kUnsigned;
        }
    }

    Kind kind_ = Kind::kPointer;
    unsigned size_ = 0;
    std::uint64_t bits_ = 0;
    double floating_ = 0.0;
    const void* pointer_ = nullptr;
    std::size_t length_ = kUntilNul;
};

/// `format` with its placeholders filled by `arguments` in order.
///
/// A placeholder is "%", flags of "-+ #0", a width and "." with a precision (digits or "*"), length
/// modifiers and one of "d i u o x X c C s S p n f F e E g G a A".
///
/// 1. The type of the argument decides how it is read: length modifiers change nothing, and "%s",
///    "%S", "%hs" and "%ls" all take wide and narrow text. So "%s" in a wide format means a wide
///    string for a wide string. Narrow text is widened by sys::Widen, undecodable bytes become
///    U+FFFD.
/// 2. An argument that does not fit its conversion is inserted in its natural form: text as it is,
///    an integer in decimal, a double as the shortest text that reads back to it.
/// 3. The unsigned conversions of a negative integer show its two's complement in its own size.
/// 4. A placeholder without an argument or with an unknown conversion, and one cut short by the end
///    of the format, stay as they stand. Arguments without a placeholder are ignored.
/// 5. Text is never cut unless a precision asks for it. A precision counts the elements of the
///    argument (bytes of narrow text), and no more of them are read; a width counts wide
///    characters. Widths, and precisions of numbers, above 4096 are taken as 4096.
/// 6. "%n" takes its argument and inserts nothing; it never writes. "%p" shows "0x" and hexadecimal
///    digits.
LMW_API std::wstring PrintfText(std::wstring_view format,
                                std::span<const PrintfArgument> arguments);

}  // namespace lmw::diag
