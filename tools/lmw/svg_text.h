#pragma once

// Text in SVG pictures: escaping, and how wide it will be. Without the viewer's font a width is an
// estimate; it is made for a wide sans-serif face, so that text that fits here fits everywhere.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::tool {

/// The text as XML character data or attribute value. What XML cannot hold (control characters,
/// ill-formed UTF-8) becomes U+FFFD.
[[nodiscard]] std::string XmlEscaped(std::string_view text);

/// The estimated width of one line of text, in the unit of `font_size`.
[[nodiscard]] double TextWidth(std::string_view text, double font_size);

/// The text, cut and ended by "…" when it is wider than `width`.
[[nodiscard]] std::string Shortened(std::string_view text, double font_size, double width);

/// The text cut at blanks into at most `max_lines` lines no wider than `width`; the last one is
/// shortened when there is more. No lines for an empty text.
[[nodiscard]] std::vector<std::string> Wrapped(std::string_view text, double font_size,
                                               double width, std::size_t max_lines);

/// A coordinate or length with at most two decimals, the shortest text of it.
[[nodiscard]] std::string Pixels(double value);

}  // namespace lmw::tool
