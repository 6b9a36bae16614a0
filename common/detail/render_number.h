#pragma once

// Renders numbers under printf's rules, in the C locale on every platform and without the C
// runtime. Who parses the placeholder and finds the number is the caller's business.

#include <cstdint>
#include <optional>
#include <string>

namespace lmw::detail {

/// One printf placeholder of a number, without its length modifier.
struct NumberSpec {
    bool left = false;         ///< "-"; overrides `zero`
    bool plus = false;         ///< "+"; overrides `space`
    bool space = false;        ///< " "
    bool alternative = false;  ///< "#"
    bool zero = false;         ///< "0"; no effect on integers with a precision, infinities and NaN
    unsigned width = 0;
    std::optional<unsigned> precision;
    char conversion = 'd';
};

/// An integer under one of "d i u o x X"; only d and i show a sign, in front of `magnitude`. Sign
/// and prefix flags that the conversion does not have are ignored.
std::string RenderInteger(bool negative, std::uint64_t magnitude, const NumberSpec& spec);

/// A number under one of "f F e E g G a A".
std::string RenderFloating(double value, const NumberSpec& spec);

}  // namespace lmw::detail
