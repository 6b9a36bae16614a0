#pragma once

// The format template tokenizer: cuts the printf-style placeholders out of a message template.
// A caller renders each argument by its own placeholder and then prints the normalised template
// with text arguments only, so that no text from outside ever reaches a printing routine as a
// format. Surprising: only one flag is accepted, and what is not recognised is removed from the
// template.

#include "common/export.h"

#include <cstdint>
#include <string>

namespace str::fmt {

/// The argument that one placeholder asks for. In the right column, "none" is no length modifier.
enum class arg_type : std::int32_t {
    narrow_char = 0,    ///< c (none), hc, hC
    wide_char = 1,      ///< C (none), lc, lC, wc, wC
    narrow_string = 2,  ///< s (none), hs, hS
    wide_string = 3,    ///< S (none), ls, lS, ws, wS
    int16 = 4,          ///< hd, hi
    int32 = 5,          ///< d, i (none or I or I32)
    int64 = 6,          ///< d, i with l or I64
    uint16 = 7,         ///< X, o, u, x with h
    uint32 = 8,         ///< X, o, u, x (none or I or I32)
    uint64 = 9,         ///< X, o, u, x with l or I64
    floating = 10,      ///< G, e, f, g (none); r, which is rewritten to f
    pointer = 11,       ///< p (none)
    boolean = 12,       ///< b (none)
};

/// Normalises `text` in place and classifies its placeholders.
///
/// A placeholder is "%", at most one flag of "# +-0", a width in digits, "." and a precision in
/// digits, a length modifier (h, l, w, I, I32, I64) and a conversion character.
///
/// 1. The k-th recognised placeholder, k below `max_count`, is stored as it stood in `specs[k]`,
///    its type in `types[k]`, and is replaced in `text` by "%s". Entries that are not reached stay
///    untouched.
/// 2. A placeholder that is not recognised is removed from `text` and takes no index, and so is
///    every placeholder after the first `max_count`.
/// 3. "%%" stays in `text`. A placeholder cut short by the end of the text stays as it stands.
/// 4. Returns the number of literal characters, "%%" counting as one: the length of the printed
///    text less the lengths of its arguments.
///
/// `specs` and `types` hold `max_count` entries each. Linear in the length; allocates only for
/// `specs`.
LMW_API unsigned tokenize(std::string& text, unsigned max_count, std::string* specs,
                          arg_type* types);
LMW_API unsigned tokenize(std::wstring& text, unsigned max_count, std::wstring* specs,
                          arg_type* types);

}  // namespace str::fmt
