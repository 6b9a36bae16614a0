#pragma once

// Fills the placeholders of a message template with texts. Our own substitution, not the C
// runtime's: the same result on every platform and in every locale, and no text from outside is
// ever a format.

#include "common/export.h"

#include <span>
#include <string>
#include <string_view>

namespace str::fmt {

/// A template has at most this many placeholders; more are removed.
inline constexpr unsigned kMaxPlaceholders = 5;

/// Widths and precisions above this are taken as this, so that no template can ask for a huge text.
inline constexpr unsigned kMaxFieldWidth = 4096;

/// The template's text with its placeholders (as tokenize finds them) filled by `arguments` in
/// order.
///
/// 1. A text, character, pointer or boolean placeholder inserts its argument under the
///    placeholder's width; a text placeholder also under its precision, counted in code units.
/// 2. A numeric placeholder formats its argument as it asks when the whole argument reads as a
///    number of that type (16, 32 or 64 bits, signed or not, or a double); otherwise the argument
///    is inserted as it is. Formatting is that of the C locale.
/// 3. Placeholders without an argument are filled with the empty text; arguments without a
///    placeholder are ignored.
/// 4. "%%" gives "%".
/// 5. By design: a template that ends in an unfinished placeholder gives the empty text, never a
///    half-formatted one; callers show their own fallback for an empty message.
LMW_API std::wstring FillTemplate(std::wstring_view text, std::span<const std::wstring> arguments);

/// `text` as a template that FillTemplate turns back into `text`: every "%" is doubled.
LMW_API std::wstring Escape(std::wstring_view text);

}  // namespace str::fmt
