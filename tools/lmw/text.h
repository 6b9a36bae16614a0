#pragma once

// Text as the program handles it: UTF-8 everywhere inside, whatever the platform's own encoding.
// Text that comes from outside may be ill-formed: read by characters, each ill-formed byte is
// U+FFFD, converted as a whole, each ill-formed sequence.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

namespace lmw::tool {

/// Takes the first character off `rest`, which must not be empty, and returns its code point:
/// U+FFFD for a byte that is not well-formed UTF-8.
char32_t TakeCodePoint(std::string_view& rest);

/// Adds one character to `text`.
void AppendUtf8(std::string& text, char32_t code_point);

/// Wide text (UTF-16 or UTF-32, as wide as the platform's wchar_t) as UTF-8 and back.
[[nodiscard]] std::string Utf8(std::wstring_view text);
[[nodiscard]] std::wstring Wide(std::string_view text);

/// The path that UTF-8 text names. Where paths are bytes, the bytes stay as they are.
[[nodiscard]] std::filesystem::path PathOf(std::string_view text);

/// A file's name without its folder and its type.
[[nodiscard]] std::string PlainName(std::string_view file);

/// The parts one after the other.
[[nodiscard]] std::string Joined(std::initializer_list<std::string_view> parts);

/// The text without blanks and tabs at either end.
[[nodiscard]] std::string_view Trimmed(std::string_view text);

/// The text with blanks after or before it, up to a width in characters.
[[nodiscard]] std::string Padded(std::string_view text, std::size_t width);
[[nodiscard]] std::string RightAligned(std::string_view text, std::size_t width);

/// The text on one line, harmless to a terminal: every control character becomes a blank, those
/// from U+0080 to U+009F too.
[[nodiscard]] std::string OneLine(std::string_view text);

/// Reads a number from the whole text, blanks at either end allowed; false when it is not one, or
/// is infinite or NaN. `value` stays untouched then.
[[nodiscard]] bool ReadFinite(std::string_view text, double& value);

/// Reads a whole number, 0 or greater, in the same way.
[[nodiscard]] bool ReadCount(std::string_view text, std::uint32_t& value);

/// How a text that was not understood is shown in a message: in double quotes, on one line, cut
/// when it is very long.
[[nodiscard]] std::string Quoted(std::string_view text);

}  // namespace lmw::tool
