#pragma once

// Version numbers of up to four parts.

#include <array>
#include <cstddef>
#include <cstdint>

namespace lmw::version {

/// Four unsigned 16-bit parts, of which 0xFFFF is unset. `Kind` keeps numbers of different things
/// apart: they neither compare nor convert. A default-constructed one is 0.0 with the last two
/// parts unset.
template <int Kind>
struct NumberKind {
    static constexpr std::uint16_t kUnset = 0xFFFF;

    std::array<std::uint16_t, 4> parts = {0, 0, kUnset, kUnset};

    /// `first` alone, the other parts unset.
    static constexpr NumberKind FromFirst(std::uint16_t first) noexcept {
        return {{first, kUnset, kUnset, kUnset}};
    }

    [[nodiscard]] constexpr std::uint16_t operator[](std::size_t part) const noexcept {
        return parts[part];
    }
    [[nodiscard]] constexpr bool IsSet(std::size_t part) const noexcept {
        return parts[part] != kUnset;
    }

    friend constexpr bool operator==(const NumberKind&, const NumberKind&) noexcept = default;
};

}  // namespace lmw::version
